#include "compile/plain_copy.h"

#include <algorithm>
#include <utility>

#include "base/path_text.h"
#include "base/report.h"
#include "base/safe_file.h"
#include "document/map.h"
#include "platform/system.h"

namespace ferrowand {
namespace {

// What tools of this kind read and write beside a map.
constexpr const char* MADE[] = {".bsp", ".prt", ".pts", ".lit", ".vis"};

bool Copy(const std::string& from, const std::string& to) {
  const std::optional<std::string> bytes = FileBytes(from);
  return bytes && file::MakeFolder(SplitPath(to).directory) && ReplaceFile(to, *bytes, {}, nullptr);
}

// As it is at the one place, so at the other.
bool Mirror(const std::string& from, const std::string& to) {
  if (file::Find(from) == FindResult::Found) return Copy(from, to);
  return file::Find(to) == FindResult::NotFound || file::Delete(to);
}

// From the folder that the tools count from, and nowhere else.
bool IsBelow(const std::string& name) {
  const bool isWhole =
      name.empty() || name.front() == '/' || name.front() == '\\' || name.find(':') != name.npos;
  return !isWhole && name.find("..") == name.npos;
}

std::string Beside(const CompilePaths& paths, const char* extension) {
  return SplitPath(paths.map).directory + paths.base + extension;
}

}  // namespace

std::string PlainFolderFor(const std::string& toolsMapPath) {
  if (PathSeparator() != '\\' || IsAscii(CompilePaths(toolsMapPath).argument)) return "";
  const std::string user = UserDataDirectory();
  if (user.empty() || !file::MakeFolder(user)) return "";
  const std::string folder =
      InFolder(InFolder(ShortPath(user), "compile"), AsciiName(toolsMapPath));
  return IsAscii(folder) ? folder : "";
}

std::vector<ToolsWad> WadsForTools(const Map& map) {
  std::vector<ToolsWad> wads;
  for (const WadList::Item& item : map.wads.Items()) {
    wads.push_back({item.name, item.wad->FileName()});
  }
  return wads;
}

PlainCopy::PlainCopy(const CompilePaths& own, const std::string& folder, std::vector<ToolsWad> wads)
    : own_(own),
      plain_(InFolder(InFolder(InFolder(InFolder(folder, "quake"), "id1"), "maps"),
                      own.base + ".map")),
      quake_(InFolder(folder, "quake")),
      maps_(SplitPath(plain_.map).directory),
      wads_(std::move(wads)) {
  for (const char* extension : MADE) {
    made_.push_back({Beside(own_, extension), Beside(plain_, extension), {}});
  }
}

// Some tools count from the folder named quake, others from that of the map.
bool PlainCopy::SendWads() const {
  bool areSent = true;
  for (const ToolsWad& wad : wads_) {
    if (!IsBelow(wad.name) || file::Find(wad.file) != FindResult::Found) continue;
    areSent &=
        Copy(wad.file, InFolder(quake_, wad.name)) && Copy(wad.file, InFolder(maps_, wad.name));
  }
  return areSent;
}

bool PlainCopy::Send() {
  bool areSent = Copy(own_.map, plain_.map) && SendWads();
  for (Made& made : made_) {
    areSent &= Mirror(made.own, made.plain);
    made.sent = file::Stamp(made.plain);
  }
  return areSent;
}

std::vector<std::string> PlainCopy::Fetch() const {
  std::vector<std::string> troubles;
  for (const Made& made : made_) {
    if (file::Stamp(made.plain) == made.sent || Mirror(made.plain, made.own)) continue;
    troubles.push_back(made.plain + " could not be copied to " + made.own + ".");
  }
  return troubles;
}

}  // namespace ferrowand
