// Every map that is at hand is read, written, and read again in both formats: nothing may be lost.
#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <set>

#include "document/document_fixture.h"

namespace ferrowand {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> MapFiles(const fs::path& folder) {
  std::vector<std::string> names;
  if (!fs::is_directory(folder)) return names;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    const fs::path extension = entry.path().extension();
    if (extension == ".map" || extension == ".xmp") names.push_back(entry.path().string());
  }
  return names;
}

// What a map says, whatever its layers and the order of its keys: every object, and once more, with
// the corners of its faces, each object whose corners all stand on whole units. The others' corners
// move when their planes are written in whole units.
struct Contents {
  std::multiset<std::string> objects;
  std::multiset<std::string> exact;
};

bool IsWhole(const entity& e) {
  for (const Face& face : e.brush.Faces()) {
    for (const WindingPoint& p : face.w->Points()) {
      const auto whole = [](float v) { return v == std::round(v); };
      if (!whole(p.x) || !whole(p.y) || !whole(p.z)) return false;
    }
  }
  return true;
}

bool IsWholeTree(const entity& tree) {
  bool whole = true;
  ForEachEntity(tree, [&](const entity& e) { whole = whole && IsWhole(e); });
  return whole;
}

std::string Joined(const std::multiset<std::string>& parts) {
  std::string all;
  for (const std::string& part : parts) all += part + "\n";
  return all;
}

std::string Texture(const Face& face) {
  std::string name(face.Name());
  for (char& c : name) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return name + Format(" %.0f %.0f %.0f %f %f", face.xoff, face.yoff, face.rotation, face.xscale,
                       face.yscale);
}

std::string Corners(const Face& face) {
  std::multiset<std::string> corners;
  for (const WindingPoint& p : face.w->Points()) {
    corners.insert(Format("%.0f %.0f %.0f", p.x, p.y, p.z));
  }
  return Joined(corners);
}

Contents ContentsOf(const Map& map, bool game) {
  Contents contents;
  ForEachEntity(map, [&](const entity& e) {
    std::multiset<std::string> keys, textures, faces;
    for (int i = 0; i < e.numkeys(); ++i) {
      if (!game || !IsEditorKey(e.KeyName(i))) keys.insert(e.KeyName(i) + "=" + e.KeyValue(i));
    }
    for (const Face& face : e.brush.Faces()) {
      textures.insert(Texture(face));
      faces.insert(Texture(face) + "\n" + Corners(face));
    }
    contents.objects.insert(Joined(keys) + Joined(textures));
    if (IsWhole(e)) contents.exact.insert(Joined(keys) + Joined(faces));
  });
  return contents;
}

void ExpectKept(const Map& before, const Map& after, bool game) {
  const Contents expected = ContentsOf(before, game);
  const Contents found = ContentsOf(after, game);
  EXPECT_EQ(found.objects, expected.objects);
  std::vector<std::string> lost;
  std::ranges::set_difference(expected.exact, found.exact, std::back_inserter(lost));
  EXPECT_EQ(lost, std::vector<std::string>());
}

class RoundTripTest : public DocumentTest {
 protected:
  // Gives what the file says, and leaves the map as read from it.
  std::unique_ptr<Map> SaveAndRead(Map& map, const std::string& name) {
    EXPECT_TRUE(map.Save(temp.Path(name), 0, {}));
    return LoadMap(data, temp.Path(name));
  }

  void Check(const std::string& name) {
    SCOPED_TRACE(name);
    const auto first = LoadMap(data, name);
    ASSERT_NE(first, nullptr);
    const auto extended = SaveAndRead(*first, "1.xmp");
    ExpectKept(*first, *extended, false);
    EXPECT_TRUE(extended->Save(temp.Path("2.xmp"), 0, {}));
    if (IsWholeTree(*first)) {
      EXPECT_EQ(temp.Read("1.xmp"), temp.Read("2.xmp"));
    }

    // What a Quake map says does not change by another passage through it.
    const auto game = SaveAndRead(*first, "1.map");
    const auto again = SaveAndRead(*game, "2.map");
    ExpectKept(*game, *again, true);
    if (name.ends_with(".map")) ExpectKept(*first, *game, true);
  }
};

TEST_F(RoundTripTest, NothingIsLost) {
  std::vector<fs::path> folders{FERROWAND_TEST_DATA, fs::path(FERROWAND_DATA) / "maps"};
  if (const char* corpus = std::getenv("FERROWAND_CORPUS")) folders.push_back(corpus);
  std::size_t count = 0;
  for (const fs::path& folder : folders) {
    for (const std::string& name : MapFiles(folder)) {
      Check(name);
      ++count;
    }
  }
  EXPECT_GT(count, 0u);
}

}  // namespace
}  // namespace ferrowand
