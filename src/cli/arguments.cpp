#include "cli/arguments.h"

#include <algorithm>
#include <charconv>
#include <set>

#include "compile/compile_options.h"

namespace ferrowand {
namespace {

struct Command {
  std::string_view name;
  std::size_t operands;
  std::string_view options;  // each with a blank behind it
};

constexpr Command COMMANDS[] = {
    {"info", 1, "--wad-path --qc "},
    {"convert", 2, "--wad-path --qc --visible-only "},
    {"check", 1, "--wad-path --qc --strict "},
    {"compile", 1, "--wad-path --qc --visible-only --tools --flags --profile --quake --report "},
    {"bsp", 1, ""},
    {"wad", 1, ""},
    {"classes", 1, ""},
};

const Command* FindCommand(std::string_view name) {
  const auto* found = std::ranges::find(COMMANDS, name, &Command::name);
  return found == std::end(COMMANDS) ? nullptr : found;
}

// Decimal, or with 0x in front.
std::optional<std::uint16_t> ReadFlags(std::string_view text) {
  const bool isHex = text.starts_with("0x") || text.starts_with("0X");
  if (isHex) text.remove_prefix(2);
  std::uint16_t flags = 0;
  const char* end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, flags, isHex ? 16 : 10);
  const bool isWhole = read.ec == std::errc() && read.ptr == end;
  return isWhole && (flags & ~COMPILE_ALL_FLAGS) == 0 ? std::optional(flags) : std::nullopt;
}

// False for an option that nobody knows.
bool TakeSwitch(std::string_view option, CliArguments& result) {
  if (option == "--visible-only") return result.visibleOnly = true;
  if (option == "--strict") return result.strict = true;
  return false;
}

// The same of one with a value; one that makes no sense is an error of the whole.
bool TakeValue(std::string_view option, const std::string& value, CliArguments& result) {
  struct Text {
    std::string_view option;
    std::string CliArguments::*field;
  };
  constexpr Text TEXTS[] = {{"--tools", &CliArguments::tools},
                            {"--quake", &CliArguments::quake},
                            {"--report", &CliArguments::report},
                            {"--profile", &CliArguments::profile}};
  for (const Text& text : TEXTS) {
    if (option != text.option) continue;
    result.*text.field = value;
    return true;
  }
  if (option == "--wad-path") {
    result.wadPath.push_back(value);
  } else if (option == "--qc") {
    result.qcFile = value;
  } else if (option == "--flags") {
    result.flags = ReadFlags(value);
    if (!result.flags) result.error = "--flags wants a number up to 16383";
  } else {
    return false;
  }
  return true;
}

// What is wrong with the whole.
std::string Misfit(const CliArguments& result, const std::set<std::string>& options) {
  const Command* command = FindCommand(result.command);
  if (!command) {
    return result.command.empty() ? "no command" : "unknown command " + result.command;
  }
  if (result.operands.size() != command->operands) {
    return result.command + " wants " + std::to_string(command->operands) + " file name" +
           (command->operands == 1 ? "" : "s");
  }
  for (const std::string& option : options) {
    if (command->options.find(option + ' ') == std::string_view::npos) {
      return option + " is not for " + result.command;
    }
  }
  if (result.command == "compile" && result.tools.empty()) return "compile wants --tools";
  return "";
}

}  // namespace

CliArguments ParseCliArguments(std::span<const std::string> arguments) {
  CliArguments result;
  std::set<std::string> options;
  for (std::size_t i = 0; i < arguments.size() && result.error.empty(); ++i) {
    const std::string& argument = arguments[i];
    if (!argument.starts_with("--")) {
      if (result.command.empty()) {
        result.command = argument;
      } else {
        result.operands.push_back(argument);
      }
      continue;
    }
    options.insert(argument);
    if (TakeSwitch(argument, result)) continue;
    const bool hasValue = i + 1 < arguments.size();
    if (!TakeValue(argument, hasValue ? arguments[i + 1] : "", result)) {
      result.error = "unknown option " + argument;
    } else if (!hasValue) {
      result.error = argument + " wants a value";
    }
    ++i;
  }
  if (result.error.empty()) result.error = Misfit(result, options);
  return result;
}

std::string_view CliUsage() {
  return "usage: ferrowand-cli COMMAND ...\n"
         "  info MAP                        counts of what the map holds\n"
         "  convert IN OUT                  write the map again: a Quake map if OUT ends in .map,\n"
         "                                  else an Extended Map\n"
         "      --visible-only              leave out what is hidden\n"
         "  check MAP                       what is wrong with the map, a line each\n"
         "      --strict                    points lie on their planes to 0.01 units, not 0.1\n"
         "  compile MAP --tools DIR         run qbsp, light and vis of DIR over the map\n"
         "      --profile NAME              by choices that the editor has kept under the name;\n"
         "                                  the game they may ask for is not run\n"
         "      --flags N                   instead, or instead of theirs: the editor's \"QBSP "
         "flags\"\n"
         "      --visible-only              leave out what is hidden\n"
         "      --quake DIR                 copy the level to id1/maps there\n"
         "      --report FILE               save the report of the run\n"
         "  bsp FILE                        what a compiled level holds\n"
         "  wad FILE                        one texture a line: name, size, padded size, offset\n"
         "  classes FILE                    one entity class a line, of a .qc, .def or .fgd\n"
         "for info, convert, check and compile:\n"
         "  --wad-path DIR                  look for WADs in DIR instead of the usual places, then "
         "around\n"
         "                                  the map; may be given more than once\n"
         "  --qc FILE                       entity classes, whatever file the map names\n"
         "exit status: 0 clean; 1 something was reported or found, a stage of a compile failed, or "
         "the\n"
         "map leaks; 2 a file could not be opened or written\n";
}

}  // namespace ferrowand
