#include "shell/system/clipboard.h"

#include "shell/app_fixture.h"

namespace ferrowand {
namespace {

TEST_F(AppTest, TheClipboardKeepsEveryByteOfAMapAndSpeaksUnicodeWithOthers) {
  ASSERT_TRUE(Start());
  const HWND frame = parts->frame.Handle();
  SystemClipboard clip;
  const std::string old = "\"message\" \"T\xFCr\"";
  ASSERT_TRUE(clip.SetText(frame, old));
  EXPECT_EQ(clip.Text(frame), old);
  ASSERT_TRUE(OpenClipboard(frame));
  EXPECT_STREQ(static_cast<const wchar_t*>(GlobalLock(GetClipboardData(CF_UNICODETEXT))),
               L"\"message\" \"T\u00FCr\"");
  EmptyClipboard();
  const std::wstring given = L"Дверь";
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, (given.size() + 1) * sizeof(wchar_t));
  lstrcpyW(static_cast<wchar_t*>(GlobalLock(memory)), given.c_str());
  GlobalUnlock(memory);
  SetClipboardData(CF_UNICODETEXT, memory);
  CloseClipboard();
  EXPECT_EQ(clip.Text(frame), "Дверь");
  ASSERT_TRUE(OpenClipboard(frame));
  EXPECT_FALSE(SystemClipboard().SetText(nullptr, "kept")) << "somebody has it open";
  EmptyClipboard();
  CloseClipboard();
  EXPECT_EQ(clip.Text(frame), "");
}

}  // namespace
}  // namespace ferrowand
