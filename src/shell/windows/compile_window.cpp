#include "shell/windows/compile_window.h"

#include <algorithm>
#include <utility>

#include "base/report.h"
#include "base/safe_file.h"
#include "compile/report.h"
#include "document/map.h"
#include "document/picking.h"
#include "operations/game_order.h"
#include "shell/dialogs/dialogs.h"
#include "shell/frame/frame.h"
#include "shell/resources/resource.h"
#include "shell/system/controls.h"
#include "shell/system/display_scale.h"
#include "shell/system/list_columns.h"
#include "shell/system/wide_text.h"
#include "shell/windows/child_windows.h"
#include "views/map_marks.h"

namespace ferrowand {
namespace {

// Pixels at the usual size of letters.
constexpr int LEFT = 10, TOP = 10, WIDTH = 500, HEIGHT = 100, GROWN_HEIGHT = 380;
constexpr int STRIP = 22, STAGES_HEIGHT = 118, SMALLEST_OUTPUT = 60, TIME_GAP = 6, TIME_DROP = 4;

constexpr UINT_PTR STAGE_TIMER = 1, OUTPUT_TIMER = 2, SHOW_TIMER = 3;
// Milliseconds. What is printed is read oftener than it is shown: the tool need not wait then.
constexpr UINT STAGE_PERIOD = 1000, OUTPUT_PERIOD = 50, SHOW_PERIOD = 250;
constexpr UINT CLOSE_ITSELF = WM_APP;

constexpr COLORREF ERROR_COLOUR = RGB(192, 0, 0), WARNING_COLOUR = RGB(160, 88, 0);
constexpr COLORREF HEADING_COLOUR = RGB(0, 64, 128);

std::uint32_t Milliseconds() {
  return GetTickCount();
}

}  // namespace

LRESULT CALLBACK CompileFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return SideWindow::Dispatch(window, message, wParam, lParam);
}

CompileWindow::CompileWindow(SideWindows& sides, const CompileWindowContext& context, Map& map,
                             const CompileSetup& setup, const std::vector<std::string>& notes)
    : SideWindow(sides), context_(context), map_(&map) {
  run_ = std::make_unique<CompileRun>(setup, StartProcess, Milliseconds, *this, context.reporter);
  for (const std::string& note : notes) run_->Output().Say(LineKind::Warning, note);
  const std::wstring title = ToWide("Compiling Overview - " + map.Name());
  // A wide title on a window of a narrow class goes in behind.
  CreateWindowExA(0, COMPILE_CLASS, "", WS_VISIBLE | WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                  Scaled(LEFT), Scaled(TOP), Scaled(WIDTH), Scaled(HEIGHT), context.frame.Handle(),
                  nullptr, context.frame.Instance(), static_cast<SideWindow*>(this));
  if (!Handle()) return;
  SetWindowTextW(Handle(), title.c_str());
  if (run_->NextStage()) StartTimers();
  ShowOutput();
}

CompileWindow::~CompileWindow() = default;

void CompileWindow::OnCreate() {
  AddControl(Handle(), L"BUTTON", L"Cancel", WS_TABSTOP, ID_OVERVIEW_CANCEL);
  AddControl(Handle(), L"BUTTON", L"Save output", WS_TABSTOP, ID_OVERVIEW_SAVE);
  AddControl(Handle(), L"STATIC", L"0:00", SS_LEFT, ID_OVERVIEW_TIME);
  list_ = AddControl(Handle(), L"LISTBOX", L"",
                     WS_TABSTOP | WS_VSCROLL | WS_BORDER | LBS_NOINTEGRALHEIGHT | LBS_NOSEL,
                     ID_OVERVIEW_LIST);
  // It asks for its lines as it shows them: as many as there are cost nothing.
  output_ = AddLineList(Handle(), ID_OVERVIEW_OUTPUT);
  SendMessageW(output_, WM_SETFONT, reinterpret_cast<WPARAM>(FixedFont()), 0);
  Layout();
}

void CompileWindow::Layout() {
  RECT area;
  GetClientRect(Handle(), &area);
  const int width = area.right, strip = Scaled(STRIP), third = width / 3;
  const auto place = [this](int id, int left, int top, int w, int h) {
    PlaceControl(Handle(), id, left, top, w, h);
  };
  place(ID_OVERVIEW_CANCEL, 0, 0, third, strip);
  place(ID_OVERVIEW_SAVE, third, 0, third, strip);
  const int timeLeft = 2 * third + Scaled(TIME_GAP), timeTop = Scaled(TIME_DROP);
  place(ID_OVERVIEW_TIME, timeLeft, timeTop, width - timeLeft, strip - timeTop);

  const int below = area.bottom - strip;
  const int stages = Scaled(STAGES_HEIGHT);
  const bool hasOutput = run_->Output().size() > 0 && below >= stages + Scaled(SMALLEST_OUTPUT);
  place(ID_OVERVIEW_LIST, 0, strip, width, hasOutput ? stages : below);
  place(ID_OVERVIEW_OUTPUT, 0, strip + stages, width, below - stages);
  ShowWindow(output_, hasOutput ? SW_SHOWNA : SW_HIDE);
}

// --- the run

void CompileWindow::StartTimers() {
  if (!SetTimer(Handle(), STAGE_TIMER, STAGE_PERIOD, nullptr)) {
    context_.reporter.Assert("di->timer", "compile.cpp", __LINE__);
  }
  SetTimer(Handle(), OUTPUT_TIMER, OUTPUT_PERIOD, nullptr);
  SetTimer(Handle(), SHOW_TIMER, SHOW_PERIOD, nullptr);
}

void CompileWindow::StopTimers() {
  for (const UINT_PTR timer : {STAGE_TIMER, OUTPUT_TIMER, SHOW_TIMER}) KillTimer(Handle(), timer);
  ShowOutput();
}

void CompileWindow::OnTimer(UINT_PTR timer) {
  if (timer == OUTPUT_TIMER) return run_->TakeOutput();
  if (timer == SHOW_TIMER) return ShowOutput();
  const bool goesOn = run_->Tick();
  if (goesOn) ShowElapsed();
  if (!goesOn) StopTimers();
}

void CompileWindow::ShowElapsed() {
  SetDlgItemTextA(Handle(), ID_OVERVIEW_TIME, run_->Elapsed().c_str());
}

void CompileWindow::OnStageLine(const std::string& line) {
  lines_.push_back(line);
  // The newest in sight.
  SendMessageW(list_, LB_SETTOPINDEX, static_cast<WPARAM>(AddLine(list_, ToWide(line))), 0);
  ShowElapsed();
}

void CompileWindow::OnOutput() {
  hasNewOutput_ = true;
}

void CompileWindow::ShowOutput() {
  if (!std::exchange(hasNewOutput_, false)) return;
  const ToolOutput& output = run_->Output();
  const auto count = static_cast<int>(output.size());
  const int before = ListView_GetItemCount(output_);
  const bool atEnd = ListView_GetTopIndex(output_) + ListView_GetCountPerPage(output_) >= before;
  if (before == 0 && count > 0) MakeRoomForOutput();
  FitColumn(before, count);
  ListView_SetItemCountEx(output_, count, LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL);
  if (output.Dropped() > 0 || count == before) InvalidateRect(output_, nullptr, FALSE);
  if (atEnd && count > 0) ListView_EnsureVisible(output_, count - 1, FALSE);
}

// It opens as low as it is while it has only stages to show.
void CompileWindow::MakeRoomForOutput() {
  RECT place;
  GetWindowRect(Handle(), &place);
  if (place.bottom - place.top <= Scaled(HEIGHT)) {
    SetWindowPos(Handle(), nullptr, 0, 0, place.right - place.left, Scaled(GROWN_HEIGHT),
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  }
  Layout();
}

// As wide as the longest line; `from` on there are lines that were not looked at yet.
void CompileWindow::FitColumn(int from, int to) {
  std::string longest;
  for (int i = std::max(from - 1, 0); i < to; ++i) {
    const std::string text = run_->Output().At(static_cast<std::size_t>(i)).text;
    if (text.size() > std::max(longest_, longest.size())) longest = text;
  }
  if (longest.empty()) return;
  longest_ = longest.size();
  ListView_SetColumnWidth(output_, 0, WidthFor(output_, longest));
}

void CompileWindow::OnLevelMade(bool leaks) {
  if (!map_) return;
  ViewList& views = context_.windows.Views();
  const MapMarks* marks = views.marks.Find(*map_);
  // What an earlier level has left is not so any more.
  if (!leaks && !(marks && !marks->leak.empty())) return;
  const std::string told = LoadLeak(views, *map_, leaks ? run_->Paths().pts : "");
  if (leaks) run_->Output().Say(LineKind::Warning, told);
}

void CompileWindow::OnOver() {
  // Not within the run's own call.
  if (run_->Setup().options.Has(COMPILE_AUTO_CLOSE)) PostMessageA(Handle(), CLOSE_ITSELF, 0, 0);
}

void CompileWindow::OnMapClosing(const Map& map) {
  if (&map == map_) map_ = nullptr;
}

void CompileWindow::OnMapReplaced(const Map& map, Map& by) {
  if (&map == map_) map_ = &by;
}

// --- the user

void CompileWindow::OnButton(int id) {
  if (id == ID_OVERVIEW_CANCEL) {
    run_->Cancel();
    if (!run_->Running()) StopTimers();
  }
  if (id == ID_OVERVIEW_SAVE) SaveOutput();
}

void CompileWindow::SaveOutput() {
  FileChoice choice;
  choice.saving = true;
  choice.title = "Save output";
  choice.filter = "Log files (*.log)|*.log|";
  choice.extension = "log";
  const auto name = context_.dialogs.ChooseFile(choice);
  if (!name) return;
  const std::string text = CompileReport(*run_, lines_, MachineProcessor());
  if (!ReplaceFile(*name, text, {}, nullptr)) {
    context_.reporter.Show("Cannot continue", "Cannot open file (" + *name + ") for write!");
  }
}

LRESULT CompileWindow::OnNotify(LPARAM lParam) {
  auto* header = reinterpret_cast<NMHDR*>(lParam);
  if (header->hwndFrom != output_) return 0;
  switch (header->code) {
    case LVN_GETDISPINFOW:
      GiveLine(*reinterpret_cast<NMLVDISPINFOW*>(lParam));
      return 0;
    case NM_CUSTOMDRAW:
      return DrawLine(*reinterpret_cast<NMLVCUSTOMDRAW*>(lParam), *run_);
    case NM_CLICK:
    case LVN_ITEMACTIVATE:
      GoTo(reinterpret_cast<NMITEMACTIVATE*>(lParam)->iItem);
      return 0;
  }
  return 0;
}

void CompileWindow::GiveLine(NMLVDISPINFOW& info) {
  if (!(info.item.mask & LVIF_TEXT)) return;
  shown_ = ToWide(run_->Output().At(static_cast<std::size_t>(info.item.iItem)).text);
  info.item.pszText = shown_.data();
}

LRESULT CompileWindow::DrawLine(NMLVCUSTOMDRAW& draw, const CompileRun& run) {
  if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
  if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) return CDRF_DODEFAULT;
  switch (run.Output().At(draw.nmcd.dwItemSpec).kind) {
    case LineKind::Error:
      draw.clrText = ERROR_COLOUR;
      break;
    case LineKind::Warning:
      draw.clrText = WARNING_COLOUR;
      break;
    case LineKind::Heading:
      draw.clrText = HEADING_COLOUR;
      break;
    case LineKind::Plain:
      break;
  }
  return CDRF_DODEFAULT;
}

void CompileWindow::GoTo(int line) {
  if (!map_ || line < 0 || static_cast<std::size_t>(line) >= run_->Output().size()) return;
  const NamedPlace place = PlaceIn(run_->Output().At(static_cast<std::size_t>(line)).text);
  if (place.entity || place.brush) GoToObject(place);
  if (place.point) context_.windows.CentreOn(*map_, {*place.point, *place.point});
}

// The map may not be any more what the tools have read: whatever has the number by now.
void CompileWindow::GoToObject(const NamedPlace& place) {
  const bool onlyVisible = run_->Setup().options.Has(COMPILE_ONLY_VISIBLE);
  const std::vector<GameBlock> blocks = GameOrder(*map_, onlyVisible ? WRITE_VISIBLE_ONLY : 0);
  const auto block = static_cast<std::size_t>(place.entity.value_or(0));
  if (block >= blocks.size()) return;
  entity* object = blocks[block].object;
  if (place.brush) {
    const auto brush = static_cast<std::size_t>(*place.brush);
    if (brush >= blocks[block].brushes.size()) return;
    object = blocks[block].brushes[brush];
  }
  if (object == map_) return;
  Select(*map_, object, false);
  context_.windows.CentreOn(*map_, object->GetBounds());
}

LRESULT CompileWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_CREATE:
      OnCreate();
      return 0;
    case WM_SIZE:
      if (wParam != SIZE_MINIMIZED && output_) Layout();
      return 0;
    case WM_COMMAND:
      if (HIWORD(wParam) == BN_CLICKED) OnButton(LOWORD(wParam));
      return 0;
    case WM_TIMER:
      OnTimer(wParam);
      return 0;
    case WM_NOTIFY:
      return OnNotify(lParam);
    case WM_NOTIFYFORMAT:
      return NFR_UNICODE;
    case WM_CTLCOLORSTATIC:
      return OnGrey(wParam);
    case WM_SETFOCUS:
      SetFocus(output_);
      return 0;
    case CLOSE_ITSELF:
      DestroyWindow(Handle());
      return 0;
    case WM_DESTROY:
      StopTimers();
      if (run_->Setup().options.Has(COMPILE_CONSERVE_MEMORY)) context_.rebuildMemory();
      return 0;
  }
  return DefWindowProcA(Handle(), message, wParam, lParam);
}

}  // namespace ferrowand
