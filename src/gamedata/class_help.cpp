#include "gamedata/class_help.h"

#include <algorithm>
#include <optional>

#include "base/number_text.h"
#include "base/path_text.h"
#include "base/text_parts.h"

namespace ferrowand {
namespace {

constexpr std::size_t MAXHELPKEYS = 250, MAXCHOICES = 250, MAXNAME = 32;
constexpr std::string_view BLANKS = " \t";

struct UsualKey {
  std::string_view name;
  KeyType type;
};

constexpr UsualKey USUALKEYS[] = {
    {"targetname", KeyType::Name},  {"target", KeyType::Link},     {"target2", KeyType::Link},
    {"target3", KeyType::Link},     {"target4", KeyType::Link},    {"killtarget", KeyType::Link},
    {"killtarget2", KeyType::Link}, {"angle", KeyType::Angle},     {"_color", KeyType::Colour},
    {"color", KeyType::Colour},     {"noise", KeyType::File},      {"noise1", KeyType::File},
    {"noise2", KeyType::File},      {"noise3", KeyType::File},     {"noise4", KeyType::File},
    {"model", KeyType::File},       {"mdl", KeyType::File},        {"sounds", KeyType::Whole},
    {"style", KeyType::Whole},      {"count", KeyType::Whole},     {"cnt", KeyType::Whole},
    {"worldtype", KeyType::Whole},  {"speed", KeyType::Number},    {"wait", KeyType::Number},
    {"delay", KeyType::Number},     {"health", KeyType::Number},   {"lip", KeyType::Number},
    {"dmg", KeyType::Number},       {"height", KeyType::Number},   {"light", KeyType::Number},
    {"random", KeyType::Number},    {"volume", KeyType::Number},   {"gravity", KeyType::Number},
    {"t_width", KeyType::Number},   {"t_length", KeyType::Number}, {"message", KeyType::Text},
    {"map", KeyType::Text},         {"netname", KeyType::Text},    {"origin", KeyType::Text},
    {"mangle", KeyType::Text},      {"wad", KeyType::Text},        {"sky", KeyType::Text},
};

const UsualKey* FindUsual(std::string_view name) {
  const auto* found = std::ranges::find_if(
      USUALKEYS, [&](const UsualKey& key) { return EqualNoCase(key.name, name); });
  return found == std::end(USUALKEYS) ? nullptr : found;
}

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

bool IsNameByte(char c) {
  return IsDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

// The name at the front, which begins with no digit; empty for none.
std::string_view NameAt(std::string_view text) {
  const auto* end = std::ranges::find_if_not(text, IsNameByte);
  const auto length = static_cast<std::size_t>(end - text.begin());
  if (length == 0 || length > MAXNAME || IsDigit(text[0])) return {};
  return text.substr(0, length);
}

std::string_view NumberAt(std::string_view text) {
  std::size_t end = text.starts_with('-') || text.starts_with('+') ? 1 : 0;
  const std::size_t first = end;
  while (end < text.size() && IsDigit(text[end])) ++end;
  if (end + 1 < text.size() && text[end] == '.' && IsDigit(text[end + 1])) {
    do ++end;
    while (end < text.size() && IsDigit(text[end]));
  }
  return text.substr(0, end > first ? end : 0);
}

std::string_view Without(std::string_view text, std::string_view front) {
  text.remove_prefix(std::min(text.find_first_not_of(front), text.size()));
  return text;
}

// Behind the word: "default 100", "default: 100", "default is 100".
std::string_view NumberBehind(std::string_view text) {
  text = Without(text, " \t:=");
  for (const std::string_view word : {"value ", "is ", "of ", "to "}) {
    if (text.starts_with(word)) text = Without(text.substr(word.size()), BLANKS);
  }
  return NumberAt(text);
}

// In front of it: "100 default", "100 is default".
std::string_view NumberBefore(std::string_view text) {
  text = Trimmed(text);
  for (const std::string_view word : {" is the", " is", " by"}) {
    if (text.ends_with(word)) text = Trimmed(text.substr(0, text.size() - word.size()));
  }
  const std::size_t begin = text.find_last_not_of("0123456789.+-") + 1;
  const std::string_view number = text.substr(begin);
  return NumberAt(number).size() == number.size() ? number : std::string_view();
}

std::string_view ToldDefault(std::string_view help, std::string_view lower) {
  constexpr std::string_view WORD = "default";
  for (std::size_t at = lower.find(WORD); at != lower.npos; at = lower.find(WORD, at + 1)) {
    // Cut by the places in the original, which the number is a part of.
    const std::size_t behind = at + WORD.size();
    const std::string_view next = NumberBehind(lower.substr(behind));
    const std::string_view number = next.empty() ? NumberBefore(lower.substr(0, at)) : next;
    if (!number.empty()) {
      return help.substr(static_cast<std::size_t>(number.data() - lower.data()), number.size());
    }
  }
  return {};
}

// "... (40)" at the end of the text: one number, or several.
std::string_view DefaultAtEnd(std::string_view help) {
  const std::size_t open = help.rfind('(');
  if (open == help.npos || !help.ends_with(')')) return {};
  const std::string_view inside = help.substr(open + 1, help.size() - open - 2);
  for (std::string_view left = Without(inside, BLANKS); !left.empty();) {
    const std::string_view number = NumberAt(left);
    if (number.empty()) return {};
    left.remove_prefix(number.size());
    if (!left.empty() && BLANKS.find(left[0]) == BLANKS.npos) return {};
    left = Without(left, BLANKS);
  }
  return Trimmed(inside);
}

// "0 none, 1 stone, 2 machine": two or more at the front of the text.
std::vector<KeyChoice> ChoicesInLine(std::string_view help) {
  std::vector<KeyChoice> choices;
  std::string_view list = help.substr(0, help.find_first_of(":;("));
  while (!list.empty() && choices.size() < MAXCHOICES) {
    const std::size_t comma = std::min(list.find(','), list.size());
    const std::string_view item = Trimmed(list.substr(0, comma));
    const std::string_view number = NumberAt(item);
    const std::string_view caption = item.substr(number.size());
    if (number.empty() || caption.empty() || BLANKS.find(caption[0]) == BLANKS.npos) break;
    choices.push_back({std::string(number), std::string(Trimmed(caption))});
    list.remove_prefix(std::min(comma + 1, list.size()));
  }
  if (choices.size() < 2) choices.clear();
  return choices;
}

// "1) stone", "1 = stone", "-1: none"; none for any other line.
std::optional<KeyChoice> ChoiceOf(std::string_view line) {
  const std::string_view number = NumberAt(line);
  if (number.empty() || number.find('.') != number.npos) return std::nullopt;
  const std::string_view rest = Without(line.substr(number.size()), BLANKS);
  if (rest.empty() || std::string_view(").:=-").find(rest[0]) == std::string_view::npos) {
    return std::nullopt;
  }
  return KeyChoice{std::string(number), std::string(Trimmed(Without(rest, ").:=- \t")))};
}

class HelpReader {
 public:
  explicit HelpReader(std::span<const std::string> flags) : flags_(flags) {}

  void Read(std::string_view help) {
    while (!help.empty()) ReadLine(TakeLine(help));
  }
  std::vector<KeyDefinition> Take();

 private:
  enum class Section { None, Keys, Other };
  static constexpr std::size_t NONE = -1;

  void ReadLine(std::string_view line);
  bool ReadHeading(std::string_view line);
  bool ReadChoice(std::string_view line);
  bool ReadQuotedKey(std::string_view line);
  bool ReadListedKey(std::string_view line, bool isIndented);
  bool ReadBareKey(std::string_view line);
  void ReadSentence(std::string_view line);
  void ReadDefaultSentence(std::string_view line);
  void Expect(std::string_view line);
  bool IsFlag(std::string_view name) const;
  KeyDefinition* Define(std::string_view name, std::string_view help);

  std::span<const std::string> flags_;
  std::vector<KeyDefinition> keys_;
  Section section_ = Section::None;
  std::size_t current_ = NONE;  // what the next lines may tell more of
  std::string expected_;        // a key, if choices follow
};

std::vector<KeyDefinition> HelpReader::Take() {
  for (KeyDefinition& key : keys_) {
    if (!key.choices.empty()) {
      key.type = KeyType::Choices;
    } else if (const UsualKey* usual = FindUsual(key.name)) {
      key.type = usual->type;
    } else if (ReadNumber(key.defaultValue)) {
      key.type = KeyType::Number;
    }
  }
  return std::move(keys_);
}

bool HelpReader::IsFlag(std::string_view name) const {
  return std::ranges::any_of(flags_, [&](const auto& flag) { return EqualNoCase(flag, name); });
}

// What has been told of a key stays. Null where there are too many.
KeyDefinition* HelpReader::Define(std::string_view name, std::string_view help) {
  const auto known = std::ranges::find_if(
      keys_, [&](const KeyDefinition& key) { return EqualNoCase(key.name, name); });
  current_ = static_cast<std::size_t>(known - keys_.begin());
  if (known == keys_.end()) {
    if (keys_.size() >= MAXHELPKEYS) return nullptr;
    keys_.push_back({std::string(name), KeyType::Text, "", "", "", {}});
  }
  KeyDefinition& key = keys_[current_];
  if (key.help.empty()) key.help = help;
  const std::string lower = LowerCase(help);
  if (key.defaultValue.empty()) key.defaultValue = ToldDefault(help, lower);
  return &key;
}

void HelpReader::ReadLine(std::string_view line) {
  const bool isIndented = line.starts_with("  ") || line.starts_with('\t');
  line = Trimmed(line);
  if (line.empty()) {
    section_ = Section::None;
    current_ = NONE;
    expected_.clear();
    return;
  }
  if (ReadHeading(line) || ReadChoice(line) || ReadQuotedKey(line)) return;
  if (section_ == Section::Other) return;
  if (ReadListedKey(line, isIndented) || ReadBareKey(line)) return;
  ReadSentence(line);
  Expect(line);
}

bool HelpReader::ReadHeading(std::string_view line) {
  const std::size_t first = line.find_first_not_of("-=* \t");
  if (first == line.npos) return true;  // a line of dashes
  const std::string heading =
      LowerCase(line.substr(first, line.find_last_not_of("-=*: \t") + 1 - first));
  if (heading == "keys") {
    section_ = Section::Keys;
  } else if (heading == "spawnflags" || heading == "flags" || heading == "notes") {
    section_ = Section::Other;
  } else {
    return false;
  }
  current_ = NONE;
  return true;
}

bool HelpReader::ReadChoice(std::string_view line) {
  auto choice = section_ == Section::Other ? std::nullopt : ChoiceOf(line);
  if (!choice) return false;
  if (!expected_.empty()) Define(expected_, "");
  expected_.clear();
  if (current_ >= keys_.size()) return false;
  std::vector<KeyChoice>& choices = keys_[current_].choices;
  if (choices.size() < MAXCHOICES) choices.push_back(std::move(*choice));
  return true;
}

bool HelpReader::ReadQuotedKey(std::string_view line) {
  if (line[0] != '"') return false;
  const std::string_view name = NameAt(line.substr(1));
  if (name.empty() || !line.substr(name.size() + 1).starts_with('"')) return false;
  Define(name, Trimmed(Without(line.substr(name.size() + 2), " \t:=-")));
  expected_.clear();
  return true;
}

// A name, then two blanks, a tab, a colon or an equals sign; what is indented goes on.
bool HelpReader::ReadListedKey(std::string_view line, bool isIndented) {
  if (section_ != Section::Keys) return false;
  const std::string_view name = NameAt(line);
  const std::string_view rest = line.substr(name.size());
  const bool isKey = !name.empty() && (rest.empty() || rest.starts_with("  ") || rest[0] == '\t' ||
                                       Without(rest, BLANKS).find_first_of(":=") == 0);
  if (!isKey) {
    if (isIndented && current_ < keys_.size()) keys_[current_].help.append(" ").append(line);
    return true;
  }
  const std::string_view help = Trimmed(Without(rest, " \t:="));
  KeyDefinition* key = Define(name, help);
  if (!key) return true;
  if (key->defaultValue.empty()) key->defaultValue = DefaultAtEnd(help);
  if (key->choices.empty()) key->choices = ChoicesInLine(help);
  return true;
}

// The same outside such a list, where it is less sure: "speed  default 100", "wait = seconds", a
// usual key alone on its line.
bool HelpReader::ReadBareKey(std::string_view line) {
  const std::string_view name = NameAt(line);
  if (name.empty() || LowerCase(name) != name || IsFlag(name)) return false;
  const std::string_view rest = line.substr(name.size());
  const std::string_view help = Without(rest, " \t:=");
  const bool isApart = rest.starts_with("  ") || rest.starts_with('\t') || rest.starts_with(" = ");
  const bool isUsual = FindUsual(name) != nullptr;
  const bool isKey = help.empty() ? isUsual
                                  : isApart && (isUsual || rest.find('=') < rest.find(help) ||
                                                LowerCase(help).starts_with("default"));
  if (isKey) Define(name, help);
  return isKey;
}

// 'If "delay" is set, ...', 'Set message to the name of the level.'
void HelpReader::ReadSentence(std::string_view line) {
  const std::string lower = LowerCase(line);
  for (std::size_t at = line.find('"'); at != line.npos; at = line.find('"', at + 1)) {
    const std::string_view name = NameAt(line.substr(at + 1));
    const std::string_view behind = std::string_view(lower).substr(at + 1 + name.size());
    if (name.empty() || !behind.starts_with('"')) continue;
    const bool isKey = FindUsual(name) || std::string_view(lower).substr(0, at).ends_with("set ") ||
                       behind.starts_with("\" is set") || behind.starts_with("\" key");
    if (isKey) Define(name, line);
    at += name.size() + 1;
  }
  if (lower.starts_with("set ")) {
    const std::string_view name = NameAt(line.substr(4));
    if (FindUsual(name) && line.substr(4 + name.size()).starts_with(" to ")) Define(name, line);
  }
  ReadDefaultSentence(line);
}

// "Default light value is 300": "light" is a key.
void HelpReader::ReadDefaultSentence(std::string_view line) {
  constexpr std::string_view WORD = "default ";
  if (!EqualNoCase(line.substr(0, WORD.size()), WORD)) return;
  const std::string_view name = NameAt(line.substr(WORD.size()));
  const std::string_view number = NumberBehind(line.substr(WORD.size() + name.size()));
  if (name.empty() || number.empty()) return;
  KeyDefinition* key = Define(name, line);
  if (key && key->defaultValue.empty()) key->defaultValue = number;
}

// "World Types:", 'Set "sounds" to one of the following:', "sounds".
void HelpReader::Expect(std::string_view line) {
  expected_.clear();
  if (!line.ends_with(':')) return;
  const std::size_t quote = line.find('"');
  if (quote != line.npos) {
    expected_ = NameAt(line.substr(quote + 1));
    return;
  }
  std::string joined = LowerCase(line.substr(0, line.size() - 1));
  std::erase(joined, ' ');
  if (joined.ends_with('s') && !FindUsual(joined)) joined.pop_back();
  if (FindUsual(joined)) expected_ = joined;
}

}  // namespace

std::vector<KeyDefinition> KeysOfHelp(std::string_view help, std::span<const std::string> flags) {
  HelpReader reader(flags);
  reader.Read(help);
  return reader.Take();
}

KeyType UsualKeyType(std::string_view name) {
  const UsualKey* usual = FindUsual(name);
  return usual ? usual->type : KeyType::Text;
}

}  // namespace ferrowand
