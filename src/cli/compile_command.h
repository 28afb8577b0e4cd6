// A compile at the command line: the editor's own pipeline, its lines printed as they come.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "cli/arguments.h"
#include "compile/compile_run.h"

namespace ferrowand {

class Reporter;

// What the command line chooses; nothing, after saying so, for a profile that nobody has kept.
std::optional<CompileOptions> ChosenOptions(const CliArguments& arguments, std::ostream& err);

// Runs it to its end and saves the report, if one is wanted. 0: all was done; 1: a stage failed or
// the map leaks; 2: the report could not be written.
int RunCompile(const CompileSetup& setup, const std::string& reportFile, Reporter& reporter,
               std::ostream& out, std::ostream& err);

}  // namespace ferrowand
