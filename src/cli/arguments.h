// The command line, taken apart.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ferrowand {

struct CliArguments {
  std::string command;
  std::vector<std::string> operands;
  bool visibleOnly = false;
  bool strict = false;
  std::vector<std::string> wadPath;  // folders; none: the usual places
  std::optional<std::string> qcFile;

  // Of a compile.
  std::string tools;    // the folder they lie in
  std::string quake;    // the game's own folder; empty: nothing goes there
  std::string report;   // the file that gets it; empty: none
  std::string profile;  // empty: none
  std::optional<std::uint16_t> flags;

  // Why the line makes no sense; empty when it does.
  std::string error;
};

CliArguments ParseCliArguments(std::span<const std::string> arguments);
std::string_view CliUsage();

}  // namespace ferrowand
