#include "shell/windows/side_dialog.h"

#include "shell/frame/frame.h"
#include "shell/system/controls.h"
#include "shell/system/display_scale.h"
#include "shell/system/wide_text.h"
#include "shell/windows/window_place.h"

namespace ferrowand {
namespace {

constexpr int CORNER_GAP = 16;  // pixels at the usual size of letters

}  // namespace

SideDialog::SideDialog(SideWindows& sides, const Frame& frame, std::string* place, FirstPlace first)
    : SideWindow(sides), frame_(frame), place_(place), first_(first) {}

void SideDialog::Create(int resource) {
  CreateDialogParamW(frame_.Instance(), MAKEINTRESOURCEW(resource), frame_.Handle(), DispatchDialog,
                     reinterpret_cast<LPARAM>(static_cast<SideWindow*>(this)));
}

void SideDialog::ShowTitle(const std::string& title) const {
  SetWindowTextW(Handle(), ToWide(title).c_str());
}

std::string SideDialog::TextOf(int id) const {
  return FromWide(WindowText(GetDlgItem(Handle(), id)));
}

bool SideDialog::IsTicked(int id) const {
  return ferrowand::IsTicked(Handle(), id);
}

void SideDialog::PutInPlace() const {
  RECT own, frame, screen;
  GetWindowRect(Handle(), &own);
  GetWindowRect(frame_.Handle(), &frame);
  GetWindowRect(GetDesktopWindow(), &screen);
  const int gap = Scaled(CORNER_GAP);
  ChildPlace usual{own.left, own.top, own.right - own.left, own.bottom - own.top};
  if (first_ != FirstPlace::AsMade) {
    usual.left =
        first_ == FirstPlace::LowerLeft ? frame.left + gap : frame.right - gap - usual.width;
    usual.top = frame.bottom - gap - usual.height;
  }
  const ChildPlace place = PlaceOfText(*place_, usual, {screen.right, screen.bottom});
  SetWindowPos(Handle(), nullptr, place.left, place.top, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void SideDialog::KeepPlace() const {
  if (place_) *place_ = PlaceText(Handle(), *place_);
}

void SideDialog::Hide() const {
  KeepPlace();
  ShowWindow(Handle(), SW_HIDE);
}

LRESULT SideDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG:
      if (place_) PutInPlace();
      return OnInit() ? TRUE : FALSE;
    case WM_COMMAND:
      OnCommand(LOWORD(wParam), HIWORD(wParam));
      return TRUE;
    case WM_NOTIFY:
      SetWindowLongPtrW(Handle(), DWLP_MSGRESULT, OnNotify(*reinterpret_cast<NMHDR*>(lParam)));
      return TRUE;
    case WM_TIMER:
      OnTimer();
      return TRUE;
    case WM_CLOSE:
      OnClose();
      return TRUE;
    case WM_DESTROY:
      KeepPlace();
      return FALSE;
  }
  return FALSE;
}

}  // namespace ferrowand
