// What the shell of the system knows about the program.
#pragma once

#include <string>

namespace ferrowand {

// "Ferrowand" among the user's programs in the Start menu, pointing at the running program.
bool MakeStartMenuShortcut();

// After a change of what kinds of files the program opens.
void TellShellOfFileTypes();

// The path that a command line means: all of it, blanks and all, since it is never split. Quotes
// around it go where no file has them in its name.
std::string PathOfCommandLine(const std::string& commandLine);

}  // namespace ferrowand
