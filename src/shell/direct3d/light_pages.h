// The light images of all polygons, side by side on textures of one size.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "shell/direct3d/d3d.h"
#include "views/camera/camera_renderer.h"

namespace ferrowand {

inline constexpr int LIGHT_PAGE_SIDE = 512;  // luxels

// Of the upper left luxel; on no page for what has no light.
struct LightPlace {
  int page = -1;
  int x = 0, y = 0;
};

class LightPages {
 public:
  // No side of an image is longer than a page's.
  LightPlace Add(const LightImage& image);
  // The image is to go.
  void Free(const LightImage& image, const LightPlace& place);
  void Clear();

  // Null where the device makes none.
  IDirect3DTexture9* Get(IDirect3DDevice9& device, int page);
  // What was made with the device goes, and is made anew with the next one.
  void DropTextures();

 private:
  struct Page {
    std::vector<std::uint8_t> luxels;
    OwnedD3d<IDirect3DTexture9> texture;
    bool isStale = true;
    int filledTo = 0;  // rows, by shelves
  };
  // A row of places of one height, of which the first ones are taken.
  struct Shelf {
    LightPlace next;
    int height = 0;
  };

  LightPlace FindPlace(int width, int height);
  LightPlace PlaceOnShelf(int width, int height);
  void Upload(Page& page) const;

  std::vector<Page> pages_;
  std::unordered_map<int, Shelf> shelves_;                 // the open one of each height
  std::unordered_map<int, std::vector<LightPlace>> free_;  // by size
  std::unordered_map<std::uint8_t, LightPlace> plain_;     // of images of one luxel
};

}  // namespace ferrowand
