#include "compile/compile_options.h"

#include <algorithm>

#include "base/number_text.h"
#include "base/options.h"
#include "base/path_text.h"
#include "base/text_parts.h"

namespace ferrowand {
namespace {

std::string Cut(std::string_view text) {
  return std::string(text.substr(0, Options::TEXTLENGTH - 1));
}

struct ParamsRow {
  std::string_view word;
  std::string CompileOptions::*field;
};
constexpr ParamsRow PARAMS[] = {{"qbsp", &CompileOptions::qbspParams},
                                {"light", &CompileOptions::lightParams},
                                {"vis", &CompileOptions::visParams},
                                {"quake", &CompileOptions::quakeParams}};

void TakeLine(std::string_view line, CompileOptions& options) {
  const std::size_t end = std::min(line.find_first_of(" \t"), line.size());
  const std::string_view word = line.substr(0, end), value = Trimmed(line.substr(end));
  if (EqualNoCase(word, "flags")) {
    options.flags = static_cast<std::uint16_t>(ParseInt(value) & COMPILE_ALL_FLAGS);
  } else if (EqualNoCase(word, "level")) {
    options.visLevel = static_cast<std::uint8_t>(std::clamp(ParseInt(value), 1, int{MAXVISLEVEL}));
  } else if (EqualNoCase(word, "threads")) {
    options.threads = static_cast<std::uint8_t>(std::clamp(ParseInt(value), 0, 255));
  }
  for (const ParamsRow& row : PARAMS) {
    if (EqualNoCase(word, row.word)) options.*row.field = Cut(value);
  }
}

}  // namespace

CompileOptions CompileOptionsOf(const Options& options) {
  return {options.qbspFlags,   options.visLevel,  options.compileThreads, options.qbspParams,
          options.lightParams, options.visParams, options.quakeParams};
}

void StoreCompileFlags(const CompileOptions& chosen, Options& options) {
  options.qbspFlags = chosen.flags;
  options.visLevel = chosen.visLevel;
  options.compileThreads = chosen.threads;
}

void StoreCompileParams(const CompileOptions& chosen, Options& options) {
  options.qbspParams = Cut(chosen.qbspParams);
  options.lightParams = Cut(chosen.lightParams);
  options.visParams = Cut(chosen.visParams);
  options.quakeParams = Cut(chosen.quakeParams);
}

std::string ProfilesText(std::span<const CompileProfile> profiles) {
  std::string text;
  for (const CompileProfile& profile : profiles) {
    const CompileOptions& options = profile.options;
    text += '[' + profile.name + "]\n";
    text += "flags " + std::to_string(options.flags) + '\n';
    text += "level " + std::to_string(options.visLevel) + '\n';
    text += "threads " + std::to_string(options.threads) + '\n';
    for (const ParamsRow& row : PARAMS) {
      text.append(row.word).append(" ").append(options.*row.field).append("\n");
    }
  }
  return text;
}

std::vector<CompileProfile> ReadProfiles(std::string_view text) {
  std::vector<CompileProfile> profiles;
  CompileProfile open;
  const auto close = [&] {
    if (!open.name.empty()) PutProfile(profiles, open);
  };
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = Trimmed(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.size() > 2 && line.front() == '[' && line.back() == ']') {
      close();
      open = {Cut(Trimmed(line.substr(1, line.size() - 2))), {}};
    } else {
      TakeLine(line, open.options);
    }
  }
  close();
  return profiles;
}

void PutProfile(std::vector<CompileProfile>& profiles, const CompileProfile& profile) {
  std::erase_if(profiles,
                [&](const CompileProfile& p) { return EqualNoCase(p.name, profile.name); });
  profiles.push_back(profile);
}

const CompileProfile* FindProfile(std::span<const CompileProfile> profiles, std::string_view name) {
  const auto found = std::ranges::find_if(
      profiles, [name](const CompileProfile& p) { return EqualNoCase(p.name, name); });
  return found == profiles.end() ? nullptr : &*found;
}

std::string ProfilesFile(const std::string& dataFolder) {
  return InFolder(dataFolder, "compile profiles.txt");
}

}  // namespace ferrowand
