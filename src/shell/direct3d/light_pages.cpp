#include "shell/direct3d/light_pages.h"

#include <algorithm>

#include "shell/direct3d/d3d_textures.h"

namespace ferrowand {
namespace {

constexpr int SIZE_STEP = 4;  // luxels: places of few sizes are easily used again

int Stepped(int size) {
  return (size + SIZE_STEP - 1) / SIZE_STEP * SIZE_STEP;
}
int KeyOf(int width, int height) {
  return width * LIGHT_PAGE_SIDE + height;
}
bool IsPlain(const LightImage& image) {
  return image.width == 1 && image.height == 1;
}

}  // namespace

LightPlace LightPages::Add(const LightImage& image) {
  if (image.width == 0) return {};
  if (IsPlain(image)) {
    const auto found = plain_.find(image.luxels.front());
    if (found != plain_.end()) return found->second;
  }
  const LightPlace place = FindPlace(Stepped(image.width), Stepped(image.height));
  Page& page = pages_[static_cast<std::size_t>(place.page)];
  for (int row = 0; row < image.height; ++row) {
    const std::ptrdiff_t from = std::ptrdiff_t{row} * image.width;
    const std::ptrdiff_t to = std::ptrdiff_t{place.y + row} * LIGHT_PAGE_SIDE + place.x;
    std::copy_n(image.luxels.begin() + from, image.width, page.luxels.begin() + to);
  }
  page.isStale = true;
  if (IsPlain(image)) plain_[image.luxels.front()] = place;
  return place;
}

void LightPages::Free(const LightImage& image, const LightPlace& place) {
  if (place.page < 0 || IsPlain(image)) return;
  free_[KeyOf(Stepped(image.width), Stepped(image.height))].push_back(place);
}

void LightPages::Clear() {
  pages_.clear();
  shelves_.clear();
  free_.clear();
  plain_.clear();
}

LightPlace LightPages::FindPlace(int width, int height) {
  const auto found = free_.find(KeyOf(width, height));
  if (found == free_.end() || found->second.empty()) return PlaceOnShelf(width, height);
  const LightPlace place = found->second.back();
  found->second.pop_back();
  return place;
}

LightPlace LightPages::PlaceOnShelf(int width, int height) {
  Shelf& shelf = shelves_[height];
  if (shelf.height == 0 || shelf.next.x + width > LIGHT_PAGE_SIDE) {
    if (pages_.empty() || pages_.back().filledTo + height > LIGHT_PAGE_SIDE) {
      pages_.emplace_back().luxels.resize(std::size_t{LIGHT_PAGE_SIDE} * LIGHT_PAGE_SIDE);
    }
    shelf = {{static_cast<int>(pages_.size()) - 1, 0, pages_.back().filledTo}, height};
    pages_.back().filledTo += height;
  }
  const LightPlace place = shelf.next;
  shelf.next.x += width;
  return place;
}

IDirect3DTexture9* LightPages::Get(IDirect3DDevice9& device, int page) {
  Page& wanted = pages_[static_cast<std::size_t>(page)];
  if (!wanted.texture) {
    wanted.texture = MakeTexture(device, LIGHT_PAGE_SIDE, LIGHT_PAGE_SIDE);
    wanted.isStale = true;
  }
  if (wanted.texture && wanted.isStale) Upload(wanted);
  return wanted.texture.get();
}

void LightPages::DropTextures() {
  for (Page& page : pages_) page.texture.reset();
}

void LightPages::Upload(Page& page) const {
  D3DLOCKED_RECT rows;
  if (FAILED(page.texture->LockRect(0, &rows, nullptr, 0))) return;
  const std::uint8_t* luxel = page.luxels.data();
  for (int y = 0; y < LIGHT_PAGE_SIDE; ++y) {
    auto* row = reinterpret_cast<D3DCOLOR*>(static_cast<std::uint8_t*>(rows.pBits) +
                                            static_cast<std::ptrdiff_t>(y) * rows.Pitch);
    for (int x = 0; x < LIGHT_PAGE_SIDE; ++x, ++luxel)
      row[x] = D3DCOLOR_XRGB(*luxel, *luxel, *luxel);
  }
  page.texture->UnlockRect(0);
  page.isStale = false;
}

}  // namespace ferrowand
