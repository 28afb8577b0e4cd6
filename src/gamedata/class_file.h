// Files of entity classes of every kind: QuakeC, DEF and FGD, told apart by their extensions.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "gamedata/class_record.h"
#include "gamedata/class_source.h"

namespace ferrowand {

class ClassLog;
class LoadProgress;
class Reporter;

// For choosing one.
inline constexpr char CLASS_FILE_FILTER[] =
    "QC scripts (*.qc)|*.qc|DEF files (*.def)|*.def|FGD files (*.fgd)|*.fgd|";

struct ClassFile {
  std::vector<ClassRecord> classes;  // in the order of the file
  std::vector<ClassSource> sources;  // the file itself, then what it includes
};

// What has neither ".def" nor ".fgd" at its end is QuakeC. Nothing when it cannot be opened.
std::optional<ClassFile> ReadClassFile(const std::string& path, Reporter& reporter, ClassLog& log,
                                       LoadProgress& progress);

}  // namespace ferrowand
