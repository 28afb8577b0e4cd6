// The system's own drawing: every figure in the pen and fill that it was asked for.
#include "shell/system/gdi_canvas.h"

#include <gtest/gtest.h>

#include <functional>

#include "base/options.h"
#include "support/cases.h"

namespace ferrowand {
namespace {

TEST(GdiCanvasTest, EveryFigureHasItsOwnPenAndFill) {
  const Options options;
  GdiObjects objects(options);
  BackBuffer buffer;
  const HDC screen = GetDC(nullptr);
  ASSERT_TRUE(buffer.Prepare(screen, {40, 40}));
  ReleaseDC(nullptr, screen);
  GdiCanvas canvas(buffer.Dc(), objects);
  const Pen pen{{200, 0, 0}}, other{{0, 0, 200}};
  const Colour fill{0, 200, 0};
  const std::array square{Pixel{10, 10}, Pixel{30, 10}, Pixel{30, 30}, Pixel{10, 30}};
  const std::array line{PixelLine{{10, 20}, {30, 20}}};
  // A pixel in the pen, and what is in the middle.
  const Cases<const char*, std::function<void()>, Pixel, bool> cases{
      {"lines", [&] { canvas.Lines(pen, line); }, {30, 20}, false},
      {"polyline", [&] { canvas.Polyline(pen, square); }, {10, 30}, false},
      {"polygon", [&] { canvas.Polygon(pen, fill, square); }, {30, 20}, true},
      {"rectangle",
       [&] {
         canvas.Rectangle(pen, fill, {10, 10, 31, 31});
       },
       {30, 30},
       true},
      {"ellipse",
       [&] {
         canvas.Ellipse(pen, fill, {10, 10, 31, 31});
       },
       {20, 10},
       true},
  };
  for (const auto& [what, draw, edge, isFilled] : cases) {
    canvas.FillRect({0, 0, 40, 40}, {0, 0, 0});
    canvas.Rectangle(other, std::nullopt, {0, 0, 5, 5});  // what was used before does not stay
    draw();
    EXPECT_EQ(GetPixel(buffer.Dc(), edge.x, edge.y), RGB(200, 0, 0)) << what;
    if (isFilled) {
      EXPECT_EQ(GetPixel(buffer.Dc(), 20, 25), RGB(0, 200, 0)) << what;
    }
    EXPECT_EQ(GetPixel(buffer.Dc(), 33, 33), RGB(0, 0, 0)) << what;
  }
  canvas.FillRect({0, 0, 40, 40}, {0, 0, 0});
  canvas.Polyline(pen, std::array{Pixel{10, 10}, Pixel{10, 25}});
  EXPECT_EQ(GetPixel(buffer.Dc(), 10, 25), RGB(200, 0, 0)) << "to its end";
  EXPECT_EQ(GetPixel(buffer.Dc(), 13, 25), RGB(0, 0, 0)) << "and no farther";
}

TEST(GdiCanvasTest, WordsOfAnyLanguageAreDrawnOnWhateverHasGrown) {
  const Options options;
  GdiObjects objects(options);
  BackBuffer buffer;
  const HDC screen = GetDC(nullptr);
  for (const PixelSize size : {PixelSize{40, 90}, PixelSize{90, 40}, PixelSize{60, 60}}) {
    ASSERT_TRUE(buffer.Prepare(screen, size));
  }
  ReleaseDC(nullptr, screen);
  GdiCanvas canvas(buffer.Dc(), objects);
  const auto drawn = [&](const std::function<void()>& draw) {
    canvas.FillRect({0, 0, 90, 90}, {255, 255, 255});
    draw();
    std::vector<COLORREF> pixels;
    for (int y = 70; y < 90; ++y) {
      for (int x = 0; x < 90; ++x) pixels.push_back(GetPixel(buffer.Dc(), x, y));
    }
    return pixels;
  };
  const auto blank = drawn([] {});
  for (const auto& [text, wide] : Cases<std::string, std::wstring>{
           {"Дверь", L"Дверь"}, {"d\xFCre", L"d\u00FCre"}, {"door", L"door"}}) {
    const auto expected = drawn([&] {
      SelectObject(buffer.Dc(), objects.Get(FontFace::Label));
      TextOutW(buffer.Dc(), 3, 72, wide.c_str(), static_cast<int>(wide.size()));
    });
    EXPECT_NE(expected, blank);
    const auto shown = drawn([&] { canvas.Text(FontFace::Label, {0, 0, 0}, {3, 72}, text); });
    EXPECT_EQ(shown, expected) << text;
    EXPECT_NE(canvas.MeasureText(FontFace::Caption, text).width, 0);
    SIZE size;
    SelectObject(buffer.Dc(), objects.Get(FontFace::Label));
    GetTextExtentPoint32W(buffer.Dc(), wide.c_str(), static_cast<int>(wide.size()), &size);
    SelectObject(buffer.Dc(), objects.Get(FontFace::Caption));
    EXPECT_EQ(canvas.MeasureText(FontFace::Label, text).width, size.cx) << text;
  }
}

}  // namespace
}  // namespace ferrowand
