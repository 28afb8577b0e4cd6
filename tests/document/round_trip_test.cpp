// Every map that is at hand is read, written, and read again in both formats: nothing may be lost.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <set>

#include "document/document_fixture.h"

namespace ferrowand {
namespace {

// What a map says, whatever its layers and the order of its keys: every object, and once more, with
// the corners of its faces, each object whose corners all stand on whole units. The others' corners
// move when their planes are written in whole units.
struct Contents {
  std::multiset<std::string> objects;
  std::multiset<std::string> exact;
};

bool IsWhole(const Vec3& p) {
  return p.x == std::round(p.x) && p.y == std::round(p.y) && p.z == std::round(p.z);
}

std::string Joined(const std::multiset<std::string>& parts) {
  std::string all;
  for (const std::string& part : parts) all += part + "\n";
  return all;
}

Contents ContentsOf(const Map& map, bool game) {
  Contents contents;
  ForEachEntity(map, [&](const entity& e) {
    std::multiset<std::string> keys, textures, faces;
    bool isWhole = true;
    for (int i = 0; i < e.numkeys(); ++i) {
      if (!game || !IsEditorKey(e.KeyName(i))) keys.insert(e.KeyName(i) + "=" + e.KeyValue(i));
    }
    for (const Face& face : e.brush.Faces()) {
      std::multiset<std::string> corners;
      for (const WindingPoint& p : face.w->Points()) {
        corners.insert(Format("%.0f %.0f %.0f", p.x, p.y, p.z));
        isWhole = isWhole && IsWhole(p.Position());
      }
      std::string texture(face.Name());
      std::ranges::transform(texture, texture.begin(),
                             [](unsigned char c) { return std::tolower(c); });
      texture += Format(" %.0f %.0f %.0f %f %f", face.xoff, face.yoff, face.rotation, face.xscale,
                        face.yscale);
      textures.insert(texture);
      faces.insert(texture + "\n" + Joined(corners));
    }
    contents.objects.insert(Joined(keys) + Joined(textures));
    if (isWhole) contents.exact.insert(Joined(keys) + Joined(faces));
  });
  return contents;
}

class RoundTripTest : public DocumentTest {
 protected:
  // Gives what the file says, and leaves the map as read from it.
  std::unique_ptr<Map> SaveAndRead(Map& map, const std::string& name) {
    EXPECT_TRUE(map.Save(temp.Path(name), 0, {}));
    return LoadMap(data, temp.Path(name));
  }
  static void ExpectKept(const Map& before, const Map& after, bool game) {
    const Contents expected = ContentsOf(before, game), found = ContentsOf(after, game);
    EXPECT_EQ(found.objects, expected.objects);
    EXPECT_TRUE(std::ranges::includes(found.exact, expected.exact));
  }
  void Check(const std::string& name) {
    SCOPED_TRACE(name);
    const auto first = LoadMap(data, name);
    ASSERT_NE(first, nullptr);
    const auto extended = SaveAndRead(*first, "1.xmp");
    ExpectKept(*first, *extended, false);
    EXPECT_TRUE(extended->Save(temp.Path("2.xmp"), 0, {}));
    const Contents contents = ContentsOf(*first, false);
    if (contents.exact.size() == contents.objects.size()) {
      EXPECT_EQ(temp.Read("1.xmp"), temp.Read("2.xmp"));
    }
    // What a Quake map says does not change by another passage through it.
    const auto game = SaveAndRead(*first, "1.map");
    ExpectKept(*game, *SaveAndRead(*game, "2.map"), true);
    if (name.ends_with(".map")) ExpectKept(*first, *game, true);
  }
};

TEST_F(RoundTripTest, NothingIsLost) {
  const char* corpus = std::getenv("FERROWAND_CORPUS");
  std::size_t count = 0;
  for (const char* folder : {FERROWAND_TEST_DATA, FERROWAND_DATA "/maps", corpus}) {
    if (!folder) continue;
    for (const auto& file : std::filesystem::directory_iterator(folder)) {
      const auto extension = file.path().extension();
      if (extension != ".map" && extension != ".xmp") continue;
      Check(file.path().string());
      ++count;
    }
  }
  EXPECT_GE(count, 6u);
}

}  // namespace
}  // namespace ferrowand
