// Facts of the machine and of the process that the core asks for.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace ferrowand {

// Without a separator at the end, except for a root.
std::string CurrentDirectory();
// The folder of the running program, without a separator at the end.
std::string ProgramDirectory();
// Where the program keeps what is the user's own and no map's; it need not be there. Empty where
// the system names no such place.
std::string UserDataDirectory();
// The folder in which the system's own search (the program's folder first, then the current one,
// then the path) finds the file, or nothing.
std::optional<std::string> FindOnSystemPath(const std::string& fileName);

std::uint64_t PhysicalMemoryBytes();
// What this process may have at most: its addresses or the machine's memory, whichever is less.
std::uint64_t ProcessMemoryBytes();

// Names (without directory) of the files in `directory` whose name ends in `extension` (with its
// full stop, any case), in ascending order without regard to case.
std::vector<std::string> ListFiles(const std::string& directory, const std::string& extension);

// The same file or folder by its short name, which has neither blanks nor letters that some program
// might not know; the path as it is where the system keeps no such names.
std::string ShortPath(const std::string& path);

enum class ProcessorKind : std::uint8_t { Intel, Mips, Alpha, PowerPc, Other };
struct Processor {
  ProcessorKind kind = ProcessorKind::Other;
  unsigned level = 0;  // as the system counts them
  unsigned revision = 0;
};
Processor MachineProcessor();

// '\' on Windows, '/' elsewhere.
char PathSeparator();

}  // namespace ferrowand
