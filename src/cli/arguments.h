// The command line, taken apart.
#pragma once

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
  std::vector<std::string> wadPath;  // folders; none: the usual places
  std::optional<std::string> qcFile;

  // Why the line makes no sense; empty when it does.
  std::string error;
};

CliArguments ParseCliArguments(std::span<const std::string> arguments);
std::string_view CliUsage();

}  // namespace ferrowand
