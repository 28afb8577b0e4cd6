// ferrowand-cli: the editor's core at the command line, for scripts and build farms.
#pragma once

#include <iosfwd>
#include <span>
#include <string>

namespace ferrowand {

// Runs one command; `arguments` are those behind the program's name. The result is the exit status:
// 0 clean, 1 when something was reported, 2 when a file could not be opened or written or the
// command line makes no sense.
int RunCli(std::span<const std::string> arguments, std::ostream& out, std::ostream& err);

}  // namespace ferrowand
