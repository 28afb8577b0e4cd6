#include "gamedata/fgd_parser.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <optional>
#include <utility>

#include "base/number_text.h"
#include "base/path_text.h"
#include "base/safe_file.h"
#include "base/text_parts.h"
#include "gamedata/class_log.h"

namespace ferrowand {
namespace {

constexpr std::size_t MAXFILE = std::size_t{32} << 20;  // bytes that are read of one file
constexpr std::size_t MAXFILES = 100;
constexpr int MAXINCLUDED = 16;  // files within files
constexpr std::size_t MAXCLASSKEYS = 1000, MAXLIST = 1000;
constexpr float LARGESTBOX = 32767;

struct TypeName {
  std::string_view name;
  KeyType type;
};

constexpr TypeName TYPENAMES[] = {
    {"integer", KeyType::Whole},      {"int", KeyType::Whole},
    {"float", KeyType::Number},       {"choices", KeyType::Choices},
    {"boolean", KeyType::Choices},    {"bool", KeyType::Choices},
    {"target_source", KeyType::Name}, {"target_destination", KeyType::Link},
    {"color255", KeyType::Colour},    {"color1", KeyType::Colour},
    {"color", KeyType::Colour},       {"angle", KeyType::Angle},
    {"studio", KeyType::File},        {"sprite", KeyType::File},
    {"sound", KeyType::File},         {"model", KeyType::File},
    {"flags", KeyType::Whole},
};

KeyType TypeOf(std::string_view name) {
  const auto* found = std::ranges::find_if(
      TYPENAMES, [&](const TypeName& type) { return EqualNoCase(type.name, name); });
  return found == std::end(TYPENAMES) ? KeyType::Text : found->type;
}

// What is read by people: "\n" is a line end there, and "\"" a quote.
std::string Readable(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char next = text[i] == '\\' && i + 1 < text.size() ? text[i + 1] : '\0';
    if (next == 'n' || next == '"') {
      result += next == 'n' ? '\n' : '"';
      ++i;
    } else {
      result += text[i];
    }
  }
  return WithCrLf(result);
}

std::int16_t ToCoordinate(float value) {
  return static_cast<std::int16_t>(std::clamp(value, -LARGESTBOX, LARGESTBOX));
}

}  // namespace

FgdParser::Item FgdParser::Next() {
  Item item;
  for (lexer_.SkipToDirective(); lexer_.Peek().Is('@'); lexer_.SkipToDirective()) {
    lexer_.Take();
    item.line = lexer_.Line();
    const ClassToken directive = lexer_.Peek();
    if (directive.IsWord("include")) {
      lexer_.Take();
      item.kind = Item::Kind::Include;
      item.include = lexer_.Peek().kind == ClassToken::Kind::Text ? lexer_.Take().text : "";
      return item;
    }
    if (directive.kind != ClassToken::Kind::Word || directive.text.size() <= 5) continue;
    if (!EqualNoCase(directive.text.substr(directive.text.size() - 5), "class")) continue;
    lexer_.Take();
    item.definition = {};
    item.definition.place = place_;
    item.definition.line = item.line;
    if (!ReadClass(directive.text, item.definition)) continue;
    item.kind = Item::Kind::Class;
    return item;
  }
  return item;
}

// Whether it has a name; what is wrong behind that costs no more than what stands there.
bool FgdParser::ReadClass(std::string_view directive, ClassDefinition& definition) {
  definition.kind = EqualNoCase(directive, "baseclass")    ? ClassKind::Base
                    : EqualNoCase(directive, "solidclass") ? ClassKind::Brush
                                                           : ClassKind::Point;
  if (!ReadHeader(definition)) return false;
  if (lexer_.TakeIf(':')) definition.record.description = Readable(ReadField());
  while (lexer_.TakeIf(':')) ReadField();  // where more is to be read of it
  // A class may have no body.
  if (lexer_.TakeIf('[') && !ReadBody(definition)) return true;
  if (!lexer_.Peek().Is('@') && lexer_.Peek().kind != ClassToken::Kind::End) {
    Complain("Expecting a class");
  }
  return true;
}

// Helpers, "=", the name.
bool FgdParser::ReadHeader(ClassDefinition& definition) {
  while (lexer_.Peek().kind == ClassToken::Kind::Word) {
    const ClassToken name = lexer_.Take();
    if (lexer_.TakeIf('(')) ReadHelper(name.text, definition);
  }
  if (!Expect('=')) return false;
  const ClassToken name = lexer_.Peek();
  if (name.kind != ClassToken::Kind::Word && name.kind != ClassToken::Kind::Text) {
    Complain("Expecting the name of a class");
    return false;
  }
  definition.record.classname = lexer_.Take().text;
  return !definition.record.classname.empty();
}

void FgdParser::ReadHelper(std::string_view name, ClassDefinition& definition) {
  if (EqualNoCase(name, "base")) {
    ReadBases(definition);
  } else if (EqualNoCase(name, "size")) {
    ReadSize(definition);
  } else if (EqualNoCase(name, "color")) {
    ReadColour(definition);
  }
  lexer_.SkipBrackets();
}

void FgdParser::ReadBases(ClassDefinition& definition) {
  while (lexer_.Peek().kind == ClassToken::Kind::Word || lexer_.Peek().Is(',')) {
    const ClassToken token = lexer_.Take();
    if (token.kind == ClassToken::Kind::Word) definition.bases.emplace_back(token.text);
  }
}

// Numbers, whatever signs part them, up to what is none.
std::vector<float> FgdParser::ReadNumbers(bool* haveFraction) {
  std::vector<float> numbers;
  while (numbers.size() < 6) {
    const ClassToken& token = lexer_.Peek();
    if (token.Is(',') || token.Is('+')) {
      lexer_.Take();
      continue;
    }
    const auto number =
        token.kind == ClassToken::Kind::Word ? ReadNumber(token.text) : std::nullopt;
    if (!number) break;
    if (haveFraction) *haveFraction |= token.text.find('.') != token.text.npos;
    numbers.push_back(static_cast<float>(*number));
    lexer_.Take();
  }
  return numbers;
}

// Two corners, or the extent of a box around the origin.
void FgdParser::ReadSize(ClassDefinition& definition) {
  std::vector<float> numbers = ReadNumbers();
  if (numbers.size() == 3) {
    for (float& extent : numbers) extent = std::fabs(extent) / 2;
    numbers = {-numbers[0], -numbers[1], -numbers[2], numbers[0], numbers[1], numbers[2]};
  }
  if (numbers.size() != 6) return Complain("Expecting three or six numbers of a size");
  ClassRecord& record = definition.record;
  std::int16_t* const mins[] = {&record.minx, &record.miny, &record.minz};
  std::int16_t* const maxs[] = {&record.maxx, &record.maxy, &record.maxz};
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const auto [low, high] = std::minmax(numbers[axis], numbers[axis + 3]);
    *mins[axis] = ToCoordinate(low);
    *maxs[axis] = ToCoordinate(high);
  }
  definition.hasBox = true;
}

// 0 to 255, or 0 to 1 where a full stop tells so.
void FgdParser::ReadColour(ClassDefinition& definition) {
  bool haveFraction = false;
  std::vector<float> parts = ReadNumbers(&haveFraction);
  if (parts.size() != 3) return Complain("Expecting three numbers of a colour");
  const bool areOfOne = haveFraction && std::ranges::max(parts) <= 1;
  for (float& part : parts) part = std::clamp(areOfOne ? part : part / 255, 0.0f, 1.0f);
  definition.record.red = parts[0];
  definition.record.green = parts[1];
  definition.record.blue = parts[2];
  definition.hasColour = true;
}

// False where it does not end as it should.
bool FgdParser::ReadBody(ClassDefinition& definition) {
  while (!lexer_.TakeIf(']')) {
    if (lexer_.Peek().kind == ClassToken::Kind::End ||
        (lexer_.Peek().Is('@') && lexer_.Peek().isFirstOfLine)) {
      Complain("Expecting ']' at the end of class", definition.record.classname);
      return false;
    }
    if (!ReadProperty(definition)) return false;
  }
  return true;
}

// "name(type) : "caption" : default : "help" = [ choices ]", or an input or output, which have no
// place here.
bool FgdParser::ReadProperty(ClassDefinition& definition) {
  const ClassToken first = lexer_.Peek();
  if (first.kind != ClassToken::Kind::Word && first.kind != ClassToken::Kind::Text) {
    Complain("Expecting the name of a key in class", definition.record.classname);
    return false;
  }
  lexer_.Take();
  KeyDefinition key;
  key.name = first.text;
  const bool isWire = (first.IsWord("input") || first.IsWord("output")) &&
                      lexer_.Peek().kind == ClassToken::Kind::Word;
  if (isWire) lexer_.Take();
  std::string type;
  if (!ReadType(type)) return false;
  key.type = TypeOf(type);
  ReadFields(key);
  std::vector<ListItem> list;
  if (lexer_.TakeIf('=') && !ReadList(key.name, list)) return false;
  if (EqualNoCase(key.name, "spawnflags")) {
    TakeFlags(list, definition);
    return true;
  }
  for (ListItem& item : list) key.choices.push_back(std::move(item.choice));
  if (!key.choices.empty()) key.type = KeyType::Choices;
  if (key.choices.empty() && EqualNoCase(type.substr(0, 4), "bool")) {
    key.choices = {{"0", "No"}, {"1", "Yes"}};
  }
  const auto isSame = [&](const KeyDefinition& k) { return EqualNoCase(k.name, key.name); };
  std::vector<KeyDefinition>& keys = definition.record.keys;
  std::erase_if(keys, isSame);  // the last holds
  if (!isWire && keys.size() < MAXCLASSKEYS) keys.push_back(std::move(key));
  return true;
}

// In its brackets, with what may stand behind them ("readonly").
bool FgdParser::ReadType(std::string& type) {
  if (!Expect('(')) return false;
  if (lexer_.Peek().kind == ClassToken::Kind::Word) type = lexer_.Take().text;
  lexer_.SkipBrackets();
  while (lexer_.Peek().IsWord("readonly") || lexer_.Peek().IsWord("report")) lexer_.Take();
  return true;
}

void FgdParser::ReadFields(KeyDefinition& key) {
  if (lexer_.TakeIf(':')) key.caption = Readable(ReadField());
  if (lexer_.TakeIf(':')) key.defaultValue = ReadField();
  if (lexer_.TakeIf(':')) key.help = Readable(ReadField());
  while (lexer_.TakeIf(':')) ReadField();
}

// Texts joined by "+", or the bare words of one line; nothing where the next sign comes at once.
std::string FgdParser::ReadField() {
  std::string field;
  if (lexer_.Peek().kind == ClassToken::Kind::Text) {
    do {
      const ClassToken text = lexer_.Take();
      field += text.text;
      if (!text.isClosed) Complain("Expecting '\"' at the end of a text");
    } while (lexer_.TakeIf('+') && lexer_.Peek().kind == ClassToken::Kind::Text);
    return field;
  }
  while (lexer_.Peek().kind == ClassToken::Kind::Word) {
    const ClassToken& next = lexer_.Peek();
    if (!field.empty() && next.isFirstOfLine) break;
    ClassLexer ahead = lexer_;
    ahead.Take();
    if (ahead.Peek().Is('(')) break;  // the next key
    if (!field.empty()) field += ' ';
    field += lexer_.Take().text;
  }
  return field;
}

// The same in a list, where a bare word is followed by the next value.
std::string FgdParser::ReadListField() {
  const bool isWord = lexer_.Peek().kind == ClassToken::Kind::Word;
  return isWord ? std::string(lexer_.Take().text) : ReadField();
}

// "[ value : "caption" : default : "help" ... ]", of choices and of flags.
bool FgdParser::ReadList(std::string_view keyName, std::vector<ListItem>& list) {
  if (!Expect('[')) return false;
  while (!lexer_.TakeIf(']')) {
    const ClassToken::Kind kind = lexer_.Peek().kind;
    if (kind != ClassToken::Kind::Word && kind != ClassToken::Kind::Text) {
      Complain("Expecting ']' at the end of the choices of key", keyName);
      return false;
    }
    ListItem item;
    item.choice.value = lexer_.Take().text;
    item.choice.caption = lexer_.TakeIf(':') ? Readable(ReadListField()) : item.choice.value;
    if (lexer_.TakeIf(':')) item.isOn = ReadListField() == "1";
    if (lexer_.TakeIf(':')) item.help = Readable(ReadListField());
    while (lexer_.TakeIf(':')) ReadListField();
    if (list.size() < MAXLIST) list.push_back(std::move(item));
  }
  return true;
}

void FgdParser::TakeFlags(const std::vector<ListItem>& list, ClassDefinition& definition) {
  std::vector<std::string>& flags = definition.record.flags;
  for (const ListItem& item : list) {
    const auto value = ReadNumber(item.choice.value);
    const auto bits =
        value && *value > 0 && *value < 4294967296.0 ? static_cast<std::uint32_t>(*value) : 0;
    if (!std::has_single_bit(bits)) {
      Complain("Expecting one bit as the value of flag", item.choice.caption);
      continue;
    }
    const auto bit = static_cast<std::size_t>(std::countr_zero(bits));
    if (flags.size() <= bit) flags.resize(bit + 1);
    flags[bit] = item.choice.caption;
    if (item.isOn) definition.record.flagDefaults |= bits;
    definition.flagHelp.resize(flags.size());
    definition.flagHelp[bit] = item.help;
  }
}

bool FgdParser::Expect(char sign) {
  if (lexer_.TakeIf(sign)) return true;
  Complain(std::string("Expecting '") + sign + "'");
  return false;
}

void FgdParser::Complain(const std::string& what, std::string_view subject) {
  log_.Add(what, place_, lexer_.Line(), subject);
}

namespace {

// One file after the other, those that are included in the place where they are named.
class FgdReader {
 public:
  FgdReader(std::vector<ClassDefinition>& definitions, std::vector<ClassSource>& sources,
            ClassLog& log)
      : definitions_(definitions), sources_(sources), log_(log) {}

  bool Read(const std::string& path, int depth) {
    sources_.push_back({path, file::Stamp(path)});
    const std::optional<std::string> text = FileBytes(path, MAXFILE);
    if (!text) return false;
    const PathParts parts = SplitPath(path);
    const std::string place = parts.base + parts.extension;
    FgdParser parser(*text, place, log_);
    for (FgdParser::Item item = parser.Next(); item.kind != FgdParser::Item::Kind::End;
         item = parser.Next()) {
      if (item.kind == FgdParser::Item::Kind::Class) {
        definitions_.push_back(std::move(item.definition));
      } else if (!Include(parts.directory, item.include, depth)) {
        log_.Add("Cannot include", place, item.line, item.include);
      }
    }
    return true;
  }

 private:
  bool Include(const std::string& folder, const std::string& name, int depth) {
    const std::string path = folder + name;
    const auto isSame = [&](const ClassSource& source) {
      return EqualNoCase(source.path, path) || file::IsSame(source.path, path);
    };
    if (std::ranges::any_of(sources_, isSame)) return true;  // its classes are there
    return !name.empty() && depth < MAXINCLUDED && sources_.size() < MAXFILES &&
           Read(path, depth + 1);
  }

  std::vector<ClassDefinition>& definitions_;
  std::vector<ClassSource>& sources_;
  ClassLog& log_;
};

}  // namespace

bool ReadFgd(const std::string& path, std::vector<ClassDefinition>& definitions,
             std::vector<ClassSource>& sources, ClassLog& log) {
  return FgdReader(definitions, sources, log).Read(path, 0);
}

}  // namespace ferrowand
