// The system's header, less the macros that rename things of ours.
#pragma once

#include <windows.h>

#undef ReplaceFile
#undef SearchPath
