// Earlier versions of a file, beside it: e1m1.map.1.bak is the newest, e1m1.map.2.bak the one
// before it, and so on.
#pragma once

#include <string>

namespace ferrowand {

std::string BackupName(const std::string& name, unsigned number);

// Before the file gets another text: it becomes number 1, what has that number the next one, and
// what would get a number beyond `count` is dropped. The file itself stays in place all the time.
// False when it could not be kept; what was there before is there still then.
bool KeepBackup(const std::string& name, unsigned count);

}  // namespace ferrowand
