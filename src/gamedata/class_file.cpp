#include "gamedata/class_file.h"

#include <utility>

#include "base/path_text.h"
#include "base/progress.h"
#include "base/safe_file.h"
#include "base/text_reader.h"
#include "gamedata/class_parser.h"
#include "gamedata/def_parser.h"
#include "gamedata/fgd_parser.h"

namespace ferrowand {
namespace {

constexpr std::size_t MAXDEFFILE = std::size_t{32} << 20;  // bytes that are read
constexpr const char* COUNTED = "Entity classes: %u";

std::optional<ClassFile> ReadQc(const std::string& path, Reporter& reporter, ClassLog& log,
                                LoadProgress& progress) {
  ClassFile file{{}, {{path, file::Stamp(path)}}};
  TextReader reader(reporter);
  reader.Open(path);
  if (!reader.IsOpen()) return std::nullopt;
  ClassParser parser(reader, log);
  while (auto record = parser.Next()) {
    file.classes.push_back(std::move(*record));
    progress.Step(COUNTED, static_cast<unsigned>(file.classes.size()), reader.Offset(),
                  reader.FileLength());
  }
  return file;
}

// The same of definitions that have bases.
ClassFile Finished(std::vector<ClassDefinition> definitions, std::vector<ClassSource> sources,
                   ClassLog& log, LoadProgress& progress) {
  ClassFile file{WithBases(std::move(definitions), log), std::move(sources)};
  progress.Step(COUNTED, static_cast<unsigned>(file.classes.size()), 1, 1);
  return file;
}

}  // namespace

std::optional<ClassFile> ReadClassFile(const std::string& path, Reporter& reporter, ClassLog& log,
                                       LoadProgress& progress) {
  const PathParts parts = SplitPath(path);
  if (EqualNoCase(parts.extension, ".fgd")) {
    std::vector<ClassDefinition> definitions;
    std::vector<ClassSource> sources;
    if (!ReadFgd(path, definitions, sources, log)) return std::nullopt;
    return Finished(std::move(definitions), std::move(sources), log, progress);
  }
  if (EqualNoCase(parts.extension, ".def")) {
    ClassSource source{path, file::Stamp(path)};
    const auto text = FileBytes(path, MAXDEFFILE);
    if (!text) return std::nullopt;
    return Finished(DefParser(*text, parts.base + parts.extension, log).Read(), {source}, log,
                    progress);
  }
  return ReadQc(path, reporter, log, progress);
}

}  // namespace ferrowand
