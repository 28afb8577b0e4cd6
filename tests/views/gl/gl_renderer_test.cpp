#include "views/gl/gl_renderer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <random>

#include "document/picking.h"
#include "gamedata/palette.h"
#include "gamedata/wad_builder.h"
#include "support/cases.h"
#include "support/fake_camera_host.h"
#include "support/memory_gl.h"
#include "support/small_map.h"
#include "support/temp_dir.h"
#include "views/camera/camera_shapes.h"
#include "views/camera/shape_picking.h"
#include "views/map_marks.h"

// The library keeps some things for itself.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
  return "leak:libOSMesa";
}
#include "views/map_marks.h"

namespace ferrowand {
namespace {

constexpr PixelSize AREA{200, 150};

bool IsAlike(Colour a, Colour b) {
  return std::abs(a.red - b.red) <= 1 && std::abs(a.green - b.green) <= 1 &&
         std::abs(a.blue - b.blue) <= 1;
}
bool IsBlack(Colour c) {
  return c == Colour{};
}

// A wall of 128 x 128 units, 100 units east of the eye, with a texture of two colours above two
// others that fills it.
class GlRendererTest : public testing::Test {
 protected:
  GlRendererTest() {
    std::string pixels;
    for (int y = 0; y < 128; ++y) {
      pixels += std::string(64, static_cast<char>(y < 64 ? 50 : 150));
      pixels += std::string(64, static_cast<char>(y < 64 ? 100 : 200));
    }
    small.data.searchPath.Add(dir.Path());
    dir.Write("four.wad", WadBytes({{"four", 128, 128, pixels}}));
    WadFile& wad = small.data.wads.Get("four.wad");
    small.map.wads.Add("four.wad", wad);
    wall = &small.AddCuboid({100, -64, -64}, {116, 64, 64});
    for (int i = 0; i < wall->brush.getNumFaces(); ++i) {
      Face& face = wall->brush.face(i);
      face.SetName("four");
      face.texture = wad.FindTexture("four");
      face.xoff = face.yoff = 64;
    }
    camera = std::make_unique<Camera>(small.map, host, options,
                                      std::make_unique<GlRenderer>(gl, small.data.palette));
  }

  void Draw(RenderMode mode) {
    camera->SetMode(mode);
    camera->Paint();
    gl.TakePicture();
  }
  // In the middles of the wall's quarters: the upper left, the upper right, the lower ones.
  std::vector<Colour> Quarters() const {
    return {gl.At(78, 53), gl.At(121, 53), gl.At(78, 97), gl.At(121, 97)};
  }
  static Colour Grey(int value) {
    const auto part = static_cast<std::uint8_t>(value);
    return {part, part, part};
  }

  TempDir dir;
  SmallMap small;
  Options options;
  FakeCameraHost host{AREA};
  MemoryGl gl{AREA};
  entity* wall = nullptr;
  std::unique_ptr<Camera> camera;
};

TEST_F(GlRendererTest, EachModeShowsAFaceInItsOwnWay) {
  // The game's west walls lie as in a mirror: the texture's left is on the right.
  const std::vector<Colour> texture{Grey(100), Grey(50), Grey(200), Grey(150)};
  for (const RenderMode mode : {RenderMode::Textured, RenderMode::Uncorrected}) {
    Draw(mode);
    const std::vector<Colour> seen = Quarters();
    EXPECT_TRUE(std::ranges::equal(seen, texture, IsAlike)) << static_cast<int>(mode);
  }
  for (const RenderMode mode : {RenderMode::Solid, RenderMode::OneMip}) {
    Draw(mode);
    for (const Colour quarter : Quarters()) EXPECT_EQ(quarter, Quarters().front());
    EXPECT_FALSE(IsBlack(Quarters().front()));
  }
  // Of the texture's 125 in the middle a west wall shows less than half.
  EXPECT_TRUE(IsAlike(Quarters().front(), Grey(Quarters().front().red)));
  for (const RenderMode mode : {RenderMode::Wireframe, RenderMode::TexturedWireframe}) {
    Draw(mode);
    for (const Colour quarter : Quarters()) EXPECT_TRUE(IsBlack(quarter));
    int lit = 0;
    for (int x = 0; x < AREA.width; ++x) lit += IsBlack(gl.At(x, 75)) ? 0 : 1;
    EXPECT_EQ(lit, 2) << static_cast<int>(mode);
  }
}

TEST_F(GlRendererTest, ASolidFaceKeepsTheHueOfItsBrush) {
  Brush coloured(Colour{250, 120, 20});
  for (const Face& face : wall->brush.Faces()) coloured.AddFace(CopyFace(face));
  wall->brush = std::move(coloured);
  wall->brush.Rebuild(small.reporter);
  Draw(RenderMode::Solid);
  const Colour seen = Quarters().front();
  EXPECT_GT(seen.red, seen.green + 50);
  EXPECT_GT(seen.green, seen.blue + 50);
}

TEST_F(GlRendererTest, WhatIsSelectedStandsOutInEveryMode) {
  for (int mode = 0; mode < 6; ++mode) {
    small.map.selection.Clear();
    Draw(static_cast<RenderMode>(mode));
    int before = 0, after = 0;
    const auto isViolet = [this](int x) {
      const Colour c = gl.At(x, 75);
      return c.blue > c.green + 25;
    };
    for (int x = 0; x < AREA.width; ++x) before += isViolet(x) ? 1 : 0;
    small.map.selection.Set({wall});
    Draw(static_cast<RenderMode>(mode));
    for (int x = 0; x < AREA.width; ++x) after += isViolet(x) ? 1 : 0;
    EXPECT_GE(after, mode == 0 || mode == 4 ? 2 : 80) << mode;
    EXPECT_GT(after, before) << mode;
  }
}

TEST_F(GlRendererTest, MarksAndTheBoxThatIsDrawnAreSeenThroughWalls) {
  const auto count = [this](Colour colour) {
    Draw(RenderMode::Textured);
    int found = 0;
    for (int x = 0; x < AREA.width; ++x) {
      for (int y = 0; y < AREA.height; ++y) found += gl.At(x, y) == colour ? 1 : 0;
    }
    return found;
  };
  EXPECT_EQ(count(LEAK_COLOUR), 0);
  MapMarks marks{.leak = {{300, -80, 0}, {300, 80, 0}, {300, 80, 60}}, .showsLeak = true};
  marks.portals = {{{200, -30, -30}, {200, 30, -30}, {200, 30, 30}, {200, -30, 30}}};
  camera->ShowMarks(marks);
  EXPECT_GT(count(LEAK_COLOUR), 30) << "behind the wall";
  EXPECT_EQ(count(PORTAL_COLOUR), 0);
  marks.showsPortals = true;
  camera->ShowMarks(marks);
  EXPECT_GT(count(PORTAL_COLOUR), 30);
  camera->Update();
  EXPECT_GT(count(PORTAL_COLOUR), 30) << "when all is made anew";
  camera->ShowDraft(Bounds{{200, -20, -20}, {240, 20, 20}});
  EXPECT_GT(count(PREVIEW_EDGES), 30);
  camera->ShowDraft({});
  camera->ShowMarks({});
  EXPECT_EQ(count(PREVIEW_EDGES) + count(LEAK_COLOUR) + count(PORTAL_COLOUR), 0);
}

TEST_F(GlRendererTest, AnAnimatedTextureShowsItsFirstFrame) {
  dir.Write("frames.wad", WadBytes({{"+1x", 8, 8, "a"},
                                    {"+0x", 8, 8, "b"},
                                    {"+bx", 8, 8, "c"},
                                    {"+ax", 8, 8, "d"},
                                    {"+3y", 8, 8, "e"}}));
  WadFile& wad = small.data.wads.Get("frames.wad");
  const Cases<const char*, const char*> cases{
      {"+1x", "+0x"}, {"+0x", "+0x"}, {"+bx", "+ax"}, {"+3y", "+3y"}};
  for (const auto& [name, shown] : cases) {
    wall->brush.face(0).texture = wad.FindTexture(name);
    EXPECT_EQ(ShapeOf(*wall, {}).polygons[0].texture, wad.FindTexture(shown)) << name;
  }
}

TEST_F(GlRendererTest, ATextureThatTheDriverDoesNotTakeIsReduced) {
  // Of no power of two, as images from memory are, and larger than any driver takes.
  WadFile& wad = *small.map.wads.Items().front().wad;
  Texture& texture = *wad.FindTexture("four");
  for (const auto& [width, height] : Cases<int, int>{{100, 60}, {32768, 4}}) {
    const std::string pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height),
                             static_cast<char>(77));
    wad.SetImage(texture, "four",
                 {reinterpret_cast<const std::uint8_t*>(pixels.data()), pixels.size()},
                 static_cast<std::uint16_t>(width), static_cast<std::uint16_t>(height));
    small.map.AnnounceEverything();
    Draw(RenderMode::Textured);
    EXPECT_TRUE(IsAlike(gl.At(100, 75), Grey(77))) << width;
  }
}

TEST_F(GlRendererTest, NoMoreTexturesAreHeldInMemoryThanTheCacheMay) {
  std::vector<LumpPlan> plans;
  for (const char* name : {"0", "1", "2", "3", "4", "5"}) plans.push_back({name, 16, 16, name});
  dir.Write("six.wad", WadBytes(plans));
  small.data.wads.SetLimits({2, 65536});
  WadFile& wad = small.data.wads.Get("six.wad");
  for (int i = 0; i < wall->brush.getNumFaces(); ++i) {
    wall->brush.face(i).texture = wad.Textures()[static_cast<std::size_t>(i)].get();
  }
  for (const RenderMode mode : {RenderMode::Textured, RenderMode::OneMip}) {
    Draw(mode);
    int held = 0;
    for (const auto& texture : wad.Textures()) held += texture->pixels.empty() ? 0 : 1;
    EXPECT_EQ(held, 2);
  }
}

TEST_F(GlRendererTest, AnotherGammaIsSeenAtOnce) {
  Draw(RenderMode::Textured);
  dir.Write(
      "quake.pal", std::string(17, ' ') + [] {
        std::string numbers;
        for (int i = 0; i < 256; ++i) numbers += "10 20 30 ";
        return numbers;
      }());
  small.data.palette.Load(small.data.searchPath, {}, small.reporter);
  small.data.wads.ForgetColours();
  small.map.AnnounceEverything();
  Draw(RenderMode::Textured);
  EXPECT_TRUE(IsAlike(gl.At(78, 53), {10, 20, 30}));
}

TEST_F(GlRendererTest, TwoHundredCamerasLeaveNothingBehind) {
  const auto countThings = [] {
    int count = 0;
    for (GLuint id = 1; id < 3000; ++id)
      count += (glIsList(id) ? 1 : 0) + (glIsTexture(id) ? 1 : 0);
    return count;
  };
  small.map.selection.Set({wall});
  Draw(RenderMode::Textured);
  const int ofOne = countThings();
  EXPECT_GT(ofOne, 2);
  for (int round = 0; round < 200; ++round) {
    camera = std::make_unique<Camera>(small.map, host, options,
                                      std::make_unique<GlRenderer>(gl, small.data.palette));
    Draw(RenderMode::Textured);
    camera->PickAll({100, 75});
  }
  EXPECT_EQ(countThings(), ofOne);
  camera->Release();
  EXPECT_EQ(countThings(), 0);
  camera->Paint();
  gl.TakePicture();
  EXPECT_TRUE(IsBlack(gl.At(78, 53)));
  camera->Restore();
  small.map.selection.Clear();
  Draw(RenderMode::Textured);
  EXPECT_TRUE(IsAlike(gl.At(78, 53), Grey(100)));
  camera.reset();
  EXPECT_EQ(countThings(), 0);
}

TEST_F(GlRendererTest, APickOfMoreThanTheBufferHoldsFindsTheNearest) {
  // Behind each other, the nearest last in the map.
  entity* nearest = nullptr;
  for (int i = 2000; i > 0; --i) {
    const auto x = static_cast<float>(200 + i);
    nearest = &small.AddCuboid({x, -64, -64}, {x + 0.5f, 64, 64});
  }
  small.map.AnnounceEverything();
  EXPECT_EQ(camera->Pick({100, 75}).object, wall);
  const std::vector<entity*> all = camera->PickAll({100, 75});
  ASSERT_EQ(all.size(), 2001u);
  EXPECT_EQ(all[1], nearest);
  EXPECT_EQ(camera->Pick({2, 2}).object, nullptr);
}

// --- picks against rays

// Where the ray meets a face from in front; infinity where it does not.
double DistanceTo(const Face& face, const DVec3& from, const DVec3& direction) {
  constexpr double NOWHERE = std::numeric_limits<double>::infinity();
  const double speed = Dot(face.plane.normal, direction);
  if (speed >= 0) return NOWHERE;
  const double distance = -face.plane.DistanceTo(from) / speed;
  if (distance <= 0) return NOWHERE;
  const DVec3 point = from + direction * distance;
  const auto points = std::as_const(*face.w).Points();
  for (std::size_t i = 0; i < points.size(); ++i) {
    const DVec3 a(points[i].Position()), b(points[(i + 1) % points.size()].Position());
    if (Dot(Cross(b - a, point - a), face.plane.normal) > 0) return NOWHERE;  // clockwise
  }
  return distance;
}

bool MayMeet(const Bounds& box, const DVec3& from, const DVec3& direction) {
  const DVec3 middle = (DVec3(box.mins) + DVec3(box.maxs)) * 0.5;
  return Length(Cross(middle - from, direction)) <= Length(DVec3(box.maxs) - middle) + 1;
}

const entity* NearestOnRay(const std::vector<const entity*>& brushes, const DVec3& from,
                           const DVec3& direction) {
  const entity* nearest = nullptr;
  double least = std::numeric_limits<double>::infinity();
  for (const entity* e : brushes) {
    if (!MayMeet(e->brush.Box(), from, direction)) continue;
    for (const Face& face : e->brush.Faces()) {
      const double distance = DistanceTo(face, from, direction);
      if (distance >= least) continue;
      least = distance;
      nearest = e;
    }
  }
  return nearest;
}

void CollectBrushes(const entity& e, std::vector<const entity*>& brushes) {
  if (!e.IsVisible() || !e.IsEnabled()) return;
  if (e.brush.getNumFaces() > 0) brushes.push_back(&e);
  for (const EntityPtr& child : e.getEntityList()) CollectBrushes(*child, brushes);
}

// At many pixels around which all rays meet the same brush the pick finds that one. How many.
int ComparePicks(Map& map, const CameraPose& pose) {
  const Options options;
  FakeCameraHost host(AREA);
  MemoryGl gl(AREA);
  Camera camera(map, host, options, std::make_unique<GlRenderer>(gl, map.Data().palette));
  camera.SetPose(pose);
  const CameraPicture picture{.pose = pose, .size = AREA, .backClip = 5000};
  std::vector<const entity*> brushes;
  for (const EntityPtr& child : map.getEntityList()) CollectBrushes(*child, brushes);
  int compared = 0;
  for (int y = 5; y < AREA.height; y += 7) {
    for (int x = 5; x < AREA.width; x += 7) {
      const entity* met = NearestOnRay(brushes, pose.eye, DirectionThrough(picture, {x, y}));
      bool isInside = true;
      for (const auto& [dx, dy] : {std::pair{-4, -4}, {4, -4}, {-4, 4}, {4, 4}, {0, 4}, {4, 0}}) {
        const DVec3 beside = DirectionThrough(picture, {x + dx, y + dy});
        isInside = isInside && NearestOnRay(brushes, pose.eye, beside) == met;
      }
      if (!isInside) continue;
      ++compared;
      EXPECT_EQ(camera.Pick({x, y}).object, met) << x << ' ' << y;
    }
  }
  return compared;
}

TEST(CameraPick, AgreesWithARayInARoomOfBoxes) {
  SmallMap small;
  std::mt19937 random(7);
  const auto number = [&random](int low, int high) {
    return static_cast<float>(low + static_cast<int>(random() % static_cast<unsigned>(high - low)));
  };
  for (int axis = 0; axis < 3; ++axis) {
    for (const float side : {-1.0f, 1.0f}) {
      Vec3 mins(-520, -520, -520), maxs(520, 520, 520);
      mins[axis] = side < 0 ? -520 : 504;
      maxs[axis] = side < 0 ? -504 : 520;
      small.AddCuboid(mins, maxs);
    }
  }
  for (int i = 0; i < 60; ++i) {
    const Vec3 mins(number(-500, 400), number(-500, 400), number(-500, 400));
    small.AddCuboid(mins, mins + Vec3(number(8, 90), number(8, 90), number(8, 90)));
  }
  int compared = 0;
  for (int yaw = 0; yaw < 360; yaw += 72) {
    CameraPose pose;
    pose.eye = {3, -7, 450};
    pose.Face(yaw, 20);
    compared += ComparePicks(small.map, pose);
  }
  EXPECT_GT(compared, 1500);
}

// Slanted shapes, some of which reach behind the eye.
TEST(CameraPick, IsThatOfWhoeverLooksAtThePoints) {
  std::mt19937 random(11);
  const auto number = [&random] { return static_cast<float>(random() % 400) - 200; };
  std::vector<Shape> shapes(40);
  MemoryGl gl(AREA);
  GlRenderer renderer(gl, Palette());
  std::vector<ShapeName> names;
  for (Shape& shape : shapes) {
    for (std::uint32_t at = 0; at < 12; at += 3) {
      for (int corner = 0; corner < 3; ++corner) {
        shape.points.push_back({Vec3(number(), number(), number())});
      }
      shape.polygons.push_back({nullptr, {}, at, at + 3});
    }
    names.push_back(static_cast<ShapeName>(names.size()));
    renderer.SetShape(names.back(), shape);
  }
  CameraPicture picture{.pose = {}, .size = AREA, .backClip = 150, .seen = names};
  int same = 0, hits = 0, all = 0;
  for (int i = 0; i < 1500; ++i) {
    picture.mode = static_cast<RenderMode>(i % 6);
    picture.pose.Face(i, i % 120 - 60);
    const Pixel at{static_cast<int>(random() % 200), static_cast<int>(random() % 150)};
    const std::vector<ShapeName> found = PickShapes(picture, at, shapes);
    same += found == renderer.Pick(picture, at) ? 1 : 0;
    hits += found.empty() ? 0 : 1;
    ++all;
  }
  EXPECT_GT(hits, all / 2);
  EXPECT_GT(same, all * 98 / 100) << "but for what lies at the very edge of the place";
}

TEST(CameraPick, AgreesWithARayInARealMap) {
  const char* corpus = std::getenv("FERROWAND_CORPUS");
  if (!corpus) GTEST_SKIP() << "FERROWAND_CORPUS names no folder of maps";
  SmallMap small;
  small.data.searchPath.Add("");
  small.data.shown.pointEntities = false;
  const auto map = LoadMap(small.data, (std::filesystem::path(corpus) / "e1m1.map").string());
  ASSERT_TRUE(map);
  int compared = 0;
  for (const auto& [x, y, z, yaw] : Cases<double, double, double, int>{
           {480, -352, 110, 90}, {480, -100, 110, 30}, {200, 600, 100, 0}}) {
    CameraPose pose;
    pose.eye = {x, y, z};
    pose.Face(yaw, 10);
    compared += ComparePicks(*map, pose);
  }
  EXPECT_GT(compared, 700);
}

}  // namespace
}  // namespace ferrowand
