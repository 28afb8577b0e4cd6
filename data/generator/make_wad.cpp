// Draws the textures that ship: make_wad FOLDER-OF-QUAKE.PAL OUTPUT.WAD. The same bytes each time.
#include <cstdio>
#include <string>

#include "base/path_text.h"
#include "base/report.h"
#include "gamedata/palette.h"
#include "gamedata/wad_file.h"
#include "platform/file.h"
#include "textures.h"

namespace ferrowand::generator {
namespace {

class ConsoleSink : public MessageSink {
 public:
  Answer Show(const Message& message) override {
    std::fprintf(stderr, "%s: %s\n", message.title.c_str(), message.text.c_str());
    failed = true;
    return Answer::No;
  }
  void Beep() override {}
  void FatalExit(const std::string&) override { failed = true; }
  void Exit(int) override { failed = true; }

  bool failed = false;
};

bool CreateEmptyWad(const std::string& name) {
  static constexpr unsigned char EMPTY[12] = {'W', 'A', 'D', '2', 0, 0, 0, 0, 12, 0, 0, 0};
  const FileHandle handle = file::Create(name);
  if (handle == INVALID_FILE) return false;
  const bool written = file::Write(handle, EMPTY, sizeof EMPTY);
  file::Close(handle);
  return written;
}

std::unique_ptr<Texture> ToTexture(const Image& image) {
  auto texture = std::make_unique<Texture>();
  texture->width = static_cast<std::uint16_t>(image.width);
  texture->height = static_cast<std::uint16_t>(image.height);
  texture->paddedWidth = PaddedSize(texture->width);
  texture->paddedHeight = PaddedSize(texture->height);
  texture->pixels = image.pixels;
  image.name.copy(texture->entry.name.data(), texture->entry.name.size() - 1);
  return texture;
}

bool MakeWad(const char* paletteFolder, const std::string& output) {
  ConsoleSink sink;
  Reporter reporter(sink);
  SearchPath path;
  path.Add(paletteFolder);
  Palette palette;
  palette.Load(path, {}, reporter);
  if (sink.failed || !CreateEmptyWad(output)) return false;

  WadFile wad({}, palette, reporter);
  if (!wad.Open(output)) return false;
  for (const auto draw : {MakeMasonry, MakeMetal, MakeWood, MakeTech, MakeLiquids, MakeSpecials}) {
    for (const Image& image : draw(palette)) {
      if (!wad.AddTexture(ToTexture(image))) return false;
    }
  }
  return !sink.failed;
}

}  // namespace
}  // namespace ferrowand::generator

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "make_wad FOLDER-OF-QUAKE.PAL OUTPUT.WAD\n");
    return 2;
  }
  if (ferrowand::generator::MakeWad(argv[1], argv[2])) return 0;
  std::fprintf(stderr, "%s could not be made\n", argv[2]);
  return 1;
}
