#include "gamedata/wad_library.h"

#include <algorithm>
#include <utility>

#include "base/path_text.h"
#include "base/progress.h"
#include "base/report.h"

namespace ferrowand {
bool IsSameFileName(std::string_view a, std::string_view b) {
  const PathParts left = SplitPath(a), right = SplitPath(b);
  return EqualNoCase(left.base, right.base) && EqualNoCase(left.extension, right.extension);
}

bool IsMissing(const WadList::Item& item) {
  return !IsSameFileName(item.name, item.wad->FileName());
}

WadLibrary::WadLibrary(const SearchPath& path, const Palette& palette, Reporter& reporter,
                       LoadProgress& progress)
    : path_(path),
      palette_(palette),
      reporter_(reporter),
      progress_(progress),
      builtIn_(std::make_unique<WadFile>(limits_, palette, reporter)),
      default_(builtIn_.get()) {}

void WadLibrary::SetLimits(const WadLimits& limits) {
  limits_ = limits;
  for (const auto& wad : loaded_) wad->SetLimits(limits);
}

void WadLibrary::ForgetColours() {
  builtIn_->ForgetColours();
  for (const auto& wad : loaded_) wad->ForgetColours();
}

std::vector<WadFile*> WadLibrary::ReadChanged() {
  std::vector<WadFile*> read;
  for (const auto& wad : loaded_) {
    if (wad->IsStale() && wad->ReadAgain()) read.push_back(wad.get());
  }
  return read;
}

std::vector<std::string> WadLibrary::CloseOthers(const std::unordered_set<const WadFile*>& used) {
  std::vector<std::string> closed;
  std::erase_if(loaded_, [&](const std::unique_ptr<WadFile>& wad) {
    const bool isKept = wad.get() == default_ || used.contains(wad.get());
    if (!isKept) closed.push_back(wad->FileName());
    return !isKept;
  });
  return closed;
}

void WadLibrary::LoadDefault(const std::string& name) {
  defaultName_ = name;
  WadFile* wad = FindOrOpen(name);
  default_ = wad ? wad : builtIn_.get();
  if (wad) return;
  reporter_.Show("Error", Format("Could not load default wadfile %s! Set the default in Options.",
                                 name.c_str()));
}

WadFile& WadLibrary::Get(const std::string& name, bool quiet, const std::string& folder) {
  if (WadFile* wad = FindOrOpen(name, folder)) return *wad;
  if (!quiet) {
    reporter_.Show("Error", Format("Could not load wadfile \"%s\", using default", name.c_str()));
  }
  return *default_;
}

WadFile* WadLibrary::FindOrOpen(const std::string& name, const std::string& folder) {
  for (const auto& wad : loaded_) {
    if (IsSameFileName(wad->FileName(), name)) return wad.get();
  }
  const ProgressScope scope(progress_, name);
  auto wad = std::make_unique<WadFile>(limits_, palette_, reporter_);
  const auto open = [&](const std::string& path) { return wad->Open(path); };
  const PathParts parts = SplitPath(name);
  const auto openIn = [&](const std::string& found) {
    return open(InFolder(found, parts.base + parts.extension));
  };
  if (!path_.Offer(name, open) && !std::ranges::any_of(PlacesAround(folder, name), open) &&
      !std::ranges::any_of(folders_, openIn)) {
    return nullptr;
  }
  const auto count = static_cast<unsigned>(wad->Textures().size());
  progress_.Step("Textures: %u", count, count, count);
  return loaded_.emplace_back(std::move(wad)).get();
}

void WadList::RemoveDuplicates() {
  for (auto item = items_.begin(); item != items_.end();) {
    // WADs that are missing all stand on the default one: their names tell them apart.
    const bool comesAgain = std::any_of(item + 1, items_.end(), [&](const Item& later) {
      return later.wad == item->wad && IsSameFileName(later.name, item->name);
    });
    item = comesAgain ? items_.erase(item) : item + 1;
  }
}

Texture* WadList::FindTexture(std::string_view name) const {
  for (const Item& item : items_) {
    Texture* texture = item.wad->FindTexture(name);
    if (texture != item.wad->BadTexture()) return texture;
  }
  return items_.empty() ? nullptr : items_.back().wad->BadTexture();
}

std::vector<std::string> WadList::ItemNames() const {
  std::vector<std::string> names;
  for (const Item& item : items_) names.push_back(item.name);
  return names;
}

std::string WadList::Names() const {
  std::string names;
  for (const Item& item : items_) {
    if (!names.empty()) names += ';';
    names += item.name;
  }
  return names;
}

}  // namespace ferrowand
