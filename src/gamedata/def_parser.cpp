#include "gamedata/def_parser.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "base/number_text.h"
#include "base/path_text.h"
#include "base/text_parts.h"
#include "gamedata/class_help.h"
#include "gamedata/class_log.h"

namespace ferrowand {
namespace {

constexpr std::string_view OPENING = "/*quaked";
constexpr std::string_view WHITE(" \t\r\n\0", 5), BETWEEN(" \t,\0", 4);
constexpr std::size_t MAXDEFFLAGS = 32, MAXDEFKEYS = 1000, MAXDEFCHOICES = 1000;
constexpr float LARGESTBOX = 32767;

std::size_t FindNoCase(std::string_view text, std::string_view wanted, std::size_t from) {
  const auto* const found =
      std::search(text.begin() + from, text.end(), wanted.begin(), wanted.end(),
                  [](char a, char b) { return a == b || (a >= 'A' && a <= 'Z' && a + 32 == b); });
  return found == text.end() ? text.npos : static_cast<std::size_t>(found - text.begin());
}

void Skip(std::string_view& text, std::string_view what) {
  text.remove_prefix(std::min(text.find_first_not_of(what), text.size()));
}

std::string_view TakeTo(std::string_view& text, std::string_view ends) {
  const std::string_view front = text.substr(0, text.find_first_of(ends));
  text.remove_prefix(front.size());
  return front;
}

std::int16_t ToCoordinate(float value) {
  return static_cast<std::int16_t>(std::clamp(value, -LARGESTBOX, LARGESTBOX));
}

KeyDefinition& KeyOf(ClassRecord& record, std::string_view name) {
  const auto known = std::ranges::find_if(
      record.keys, [&](const KeyDefinition& key) { return EqualNoCase(key.name, name); });
  if (known != record.keys.end()) return *known;
  record.keys.push_back({std::string(name), UsualKeyType(name), "", "", "", {}});
  return record.keys.back();
}

}  // namespace

std::vector<ClassDefinition> DefParser::Read() {
  std::vector<ClassDefinition> definitions;
  for (Comment comment; FindNext(comment);) definitions.push_back(ReadComment(comment));
  return definitions;
}

// A comment that is not closed ends where the next class begins.
bool DefParser::FindNext(Comment& comment) {
  const std::size_t open = FindNoCase(text_, OPENING, position_);
  if (open == text_.npos) return false;
  comment.begin = open + OPENING.size();
  if (nextClose_ < comment.begin) nextClose_ = text_.find("*/", comment.begin);
  const std::size_t nextOpen = FindNoCase(text_, OPENING, comment.begin);
  comment.end = std::min({nextClose_, nextOpen, text_.size()});
  if (comment.end != nextClose_) {
    Complain("Expecting '*/' at the end of a class", text_.substr(open));
  }
  position_ = comment.end;
  return true;
}

ClassDefinition DefParser::ReadComment(const Comment& comment) {
  ClassDefinition definition;
  std::string_view text = text_.substr(comment.begin, comment.end - comment.begin);
  definition.place = place_;
  definition.line = LineOf(text.data());
  ReadHeader(text, definition);
  Skip(text, WHITE);
  ClassRecord& record = definition.record;
  if (text.starts_with('~')) {
    text.remove_prefix(1);
    record.hasTilde = true;
    record.tildeValue = ParseInt(TakeTo(text, WHITE));
    Skip(text, WHITE);
  }
  if (text.starts_with('{')) ReadBraces(text, definition);
  record.description = WithCrLf(Trimmed(text));
  for (KeyDefinition& told : KeysOfHelp(record.description, record.flags)) {
    KeyDefinition& key = KeyOf(record, told.name);
    if (key.help.empty()) key.help = std::move(told.help);
    if (key.defaultValue.empty()) key.defaultValue = std::move(told.defaultValue);
    if (!key.choices.empty()) continue;
    key.choices = std::move(told.choices);
    key.type = told.type;
  }
  return definition;
}

void DefParser::ReadHeader(std::string_view& text, ClassDefinition& definition) {
  Skip(text, " \t");
  definition.record.classname = TakeTo(text, " \t\r\n(");
  ReadColour(text, definition);
  ReadBox(text, definition);
  std::string_view line = TakeLine(text);
  std::vector<std::string>& flags = definition.record.flags;
  for (Skip(line, BETWEEN); !line.empty() && flags.size() < MAXDEFFLAGS; Skip(line, BETWEEN)) {
    const std::string_view name = TakeTo(line, BETWEEN);
    flags.emplace_back(name == "-" || name == "?" ? std::string_view("x") : name);
  }
}

void DefParser::ReadColour(std::string_view& text, ClassDefinition& definition) {
  float parts[3];
  if (!ReadTriad(text, parts)) return Complain("Expecting a colour behind the name", text);
  const float whole = std::ranges::max(parts) > 1 ? 255.0f : 1.0f;
  definition.record.red = parts[0] / whole;
  definition.record.green = parts[1] / whole;
  definition.record.blue = parts[2] / whole;
  definition.hasColour = true;
}

// "?" or two corners. Neither: the class may have it from a base.
void DefParser::ReadBox(std::string_view& text, ClassDefinition& definition) {
  Skip(text, " \t");
  if (text.starts_with('?')) {
    text.remove_prefix(1);
    definition.kind = ClassKind::Brush;
    return;
  }
  float mins[3], maxs[3];
  if (!ReadTriad(text, mins)) return;
  if (!ReadTriad(text, maxs)) return Complain("Expecting the second corner of a box", text);
  ClassRecord& record = definition.record;
  record.minx = ToCoordinate(std::min(mins[0], maxs[0]));
  record.miny = ToCoordinate(std::min(mins[1], maxs[1]));
  record.minz = ToCoordinate(std::min(mins[2], maxs[2]));
  record.maxx = ToCoordinate(std::max(mins[0], maxs[0]));
  record.maxy = ToCoordinate(std::max(mins[1], maxs[1]));
  record.maxz = ToCoordinate(std::max(mins[2], maxs[2]));
  definition.hasBox = true;
}

// Three numbers in brackets, on one line; else the text stays as it is.
bool DefParser::ReadTriad(std::string_view& text, float (&triad)[3]) const {
  std::string_view rest = text;
  Skip(rest, " \t");
  if (!rest.starts_with('(')) return false;
  rest.remove_prefix(1);
  for (float& part : triad) {
    Skip(rest, BETWEEN);
    const auto number = ReadNumber(TakeTo(rest, " \t,)\r\n"));
    if (!number) return false;
    part = static_cast<float>(*number);
  }
  Skip(rest, BETWEEN);
  if (!rest.starts_with(')')) return false;
  text = rest.substr(1);
  return true;
}

// "{ choice "key" ((0,"a") (1,"b")); default("key", "1"); base("class"); model(...) }"
void DefParser::ReadBraces(std::string_view& text, ClassDefinition& definition) {
  ClassLexer lexer(text, LineOf(text.data()));
  lexer.Take();
  while (!lexer.Peek().Is('}') && lexer.Peek().kind != ClassToken::Kind::End) {
    ReadProperty(lexer, definition);
  }
  if (!lexer.Peek().Is('}')) Complain("Expecting '}'", text);
  text = lexer.Rest();
}

void DefParser::ReadProperty(ClassLexer& lexer, ClassDefinition& definition) {
  const ClassToken name = lexer.Take();
  if (name.IsWord("choice")) {
    ReadChoices(lexer, definition);
  } else if (name.IsWord("default")) {
    ReadDefault(lexer, definition);
  } else if (name.IsWord("base") && lexer.TakeIf('(')) {
    if (lexer.Peek().kind == ClassToken::Kind::Text)
      definition.bases.emplace_back(lexer.Take().text);
    lexer.SkipBrackets();
  } else if (name.Is('(') || name.Is('{') || name.Is('[')) {
    lexer.SkipBrackets();
  }
}

void DefParser::ReadChoices(ClassLexer& lexer, ClassDefinition& definition) {
  if (lexer.Peek().kind != ClassToken::Kind::Text) return;
  const ClassToken name = lexer.Take();
  if (!lexer.TakeIf('(') || definition.record.keys.size() >= MAXDEFKEYS) return;
  KeyDefinition& key = KeyOf(definition.record, name.text);
  key.type = KeyType::Choices;
  while (lexer.TakeIf('(')) {
    KeyChoice choice;
    if (!lexer.Peek().Is(',')) choice.value = lexer.Take().text;
    if (lexer.TakeIf(',')) choice.caption = lexer.Take().text;
    lexer.SkipBrackets();
    lexer.TakeIf(',');
    if (key.choices.size() < MAXDEFCHOICES) key.choices.push_back(std::move(choice));
  }
  lexer.SkipBrackets();
}

void DefParser::ReadDefault(ClassLexer& lexer, ClassDefinition& definition) {
  if (!lexer.TakeIf('(')) return;
  const ClassToken name = lexer.Take();
  if (name.kind == ClassToken::Kind::Text && lexer.TakeIf(',') &&
      definition.record.keys.size() < MAXDEFKEYS) {
    KeyOf(definition.record, name.text).defaultValue = lexer.Take().text;
  }
  lexer.SkipBrackets();
}

// Asked for in the order of the text.
unsigned long DefParser::LineOf(const char* at) {
  const auto place = static_cast<std::size_t>(at - text_.data());
  if (place < countedTo_) {
    countedTo_ = 0;
    countedLine_ = 1;
  }
  countedLine_ += static_cast<unsigned long>(
      std::count(text_.begin() + countedTo_, text_.begin() + place, '\n'));
  countedTo_ = place;
  return countedLine_;
}

void DefParser::Complain(const std::string& what, std::string_view at) {
  log_.Add(what, place_, LineOf(at.data()));
}

}  // namespace ferrowand
