#include "cli/arguments.h"

#include <array>

namespace ferrowand {
namespace {

struct Command {
  std::string_view name;
  std::size_t operands;
  bool readsMap;  // and so takes --wad-path and --qc
};

constexpr std::array<Command, 4> COMMANDS{{
    {"info", 1, true},
    {"convert", 2, true},
    {"wad", 1, false},
    {"classes", 1, false},
}};

const Command* FindCommand(std::string_view name) {
  for (const Command& command : COMMANDS) {
    if (command.name == name) return &command;
  }
  return nullptr;
}

}  // namespace

CliArguments ParseCliArguments(std::span<const std::string> arguments) {
  CliArguments result;
  bool forMaps = false;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    if (argument == "--visible-only") {
      result.visibleOnly = true;
    } else if (argument == "--wad-path" || argument == "--qc") {
      if (i + 1 == arguments.size()) {
        result.error = argument + " wants a value";
        return result;
      }
      forMaps = true;
      const std::string& value = arguments[++i];
      if (argument == "--qc") {
        result.qcFile = value;
      } else {
        result.wadPath.push_back(value);
      }
    } else if (argument.starts_with("--")) {
      result.error = "unknown option " + argument;
      return result;
    } else if (result.command.empty()) {
      result.command = argument;
    } else {
      result.operands.push_back(argument);
    }
  }

  const Command* command = FindCommand(result.command);
  if (command == nullptr) {
    result.error = result.command.empty() ? "no command" : "unknown command " + result.command;
  } else if (result.operands.size() != command->operands) {
    result.error = result.command + " wants " + std::to_string(command->operands) + " file name" +
                   (command->operands == 1 ? "" : "s");
  } else if (forMaps && !command->readsMap) {
    result.error = "--wad-path and --qc are for info and convert";
  } else if (result.visibleOnly && result.command != "convert") {
    result.error = "--visible-only is for convert";
  }
  return result;
}

std::string_view CliUsage() {
  return "usage: ferrowand-cli COMMAND ...\n"
         "  info MAP                        counts of what the map holds\n"
         "  convert IN OUT                  write the map again: a Quake map if OUT ends in .map,\n"
         "                                  else an Extended Map\n"
         "      --visible-only              leave out what is hidden\n"
         "  wad FILE                        one texture a line: name, size, padded size, offset\n"
         "  classes FILE.qc                 one entity class a line\n"
         "for info and convert:\n"
         "  --wad-path DIR                  look for WADs in DIR instead of the usual places, then "
         "around\n"
         "                                  the map; may be given more than once\n"
         "  --qc FILE                       entity classes, whatever file the map names\n"
         "exit status: 0 clean, 1 something was reported, 2 a file could not be opened or "
         "written\n";
}

}  // namespace ferrowand
