// The report of a run, to be saved.
#pragma once

#include <span>
#include <string>

#include "platform/system.h"

namespace ferrowand {

class CompileRun;

// `lines` are those of the overview's list. What the tools have printed stands behind them.
std::string CompileReport(const CompileRun& run, std::span<const std::string> lines,
                          const Processor& processor);

// "Intel based system, Pentium Pro/686"
std::string ProcessorInWords(const Processor& processor);

}  // namespace ferrowand
