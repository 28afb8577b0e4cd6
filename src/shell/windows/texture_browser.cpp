#include "shell/windows/texture_browser.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "base/path_text.h"
#include "base/report.h"
#include "document/map.h"
#include "shell/resources/resource.h"
#include "shell/system/controls.h"
#include "shell/system/display_scale.h"
#include "shell/system/text_box.h"
#include "shell/system/wide_text.h"
#include "shell/windows/child_windows.h"

namespace ferrowand {
namespace {

// Pixels at the usual size of letters.
constexpr int WIDTH = 520, HEIGHT = 440;
constexpr int MARGIN = 6, GAP = 4, ROW_HEIGHT = 22, TEXT_HEIGHT = 14, TEXT_DROP = 4;
constexpr int LIST_HEIGHT = 200, ZOOM_WIDTH = 62, COUNT_WIDTH = 120, LABEL_GAP = 6;

constexpr UINT REFRESH = WM_APP + 1;  // posted to itself
constexpr UINT_PTR FIND_TIMER = 1;
constexpr UINT FIND_DELAY = 10;  // milliseconds; what is typed goes first

// In the order of WallShows and of WallOrder.
constexpr const wchar_t* SHOWN[] = {L"All", L"Recent", L"Used", L"Favourites", L"Cached"};
constexpr const wchar_t* ORDERS[] = {L"By name", L"By size", L"By use", L"By WAD"};
constexpr std::array<std::uint16_t, 6> ZOOMS{50, 75, 100, 150, 200, 400};
constexpr const wchar_t* ZOOM_TEXTS[] = {L"50 %", L"75 %", L"100 %", L"150 %", L"200 %", L"400 %"};

std::size_t ZoomStepOf(std::uint16_t zoom) {
  const auto step = std::ranges::lower_bound(ZOOMS, zoom);
  return std::min(static_cast<std::size_t>(step - ZOOMS.begin()), ZOOMS.size() - 1);
}

bool MovesWall(WPARAM key) {
  return key == VK_UP || key == VK_DOWN || key == VK_PRIOR || key == VK_NEXT;
}

std::string SizeInWords(const Texture& texture) {
  return Format("%u x %u", unsigned{texture.width}, unsigned{texture.height});
}

}  // namespace

LRESULT CALLBACK TextureBrowserFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return ChildWindow::Dispatch(window, message, wParam, lParam);
}

TextureBrowser::TextureBrowser(ChildWindows& windows, const TextureBrowserContext& context,
                               Map& map)
    : MapPanel(windows, map, {TEXTURE_BROWSER_CLASS, "Textures", WIDTH, HEIGHT},
               &context.options.texturesPlace),
      context_(context),
      chosen_(context.choice.For(map)) {
  Open();
  context_.choice.AddObserver(*this);
}

TextureBrowser::~TextureBrowser() {
  context_.choice.RemoveObserver(*this);
}

// --- its controls

void TextureBrowser::AddChoices(int id, std::span<const wchar_t* const> texts) const {
  for (const wchar_t* text : texts) AddChoice(GetDlgItem(Handle(), id), text);
}

// In the order of Tab. The letters are none of the menu bar's.
void TextureBrowser::OnCreate() {
  constexpr DWORD LIST = WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST;
  AddControl(Handle(), L"STATIC", L"F&ind:", SS_LEFTNOWORDWRAP, ID_TEXTURES_FIND_LABEL);
  AddControl(Handle(), L"EDIT", L"", WS_TABSTOP | ES_AUTOHSCROLL, ID_TEXTURES_FIND,
             WS_EX_CLIENTEDGE);
  AddControl(Handle(), L"STATIC", L"&Show:", SS_LEFTNOWORDWRAP, ID_TEXTURES_SHOWS_LABEL);
  AddControl(Handle(), L"COMBOBOX", L"", LIST, ID_TEXTURES_SHOWS);
  AddControl(Handle(), L"STATIC", L"So&rt:", SS_LEFTNOWORDWRAP, ID_TEXTURES_ORDER_LABEL);
  AddControl(Handle(), L"COMBOBOX", L"", LIST, ID_TEXTURES_ORDER);
  AddControl(Handle(), L"STATIC", L"&Zoom:", SS_LEFTNOWORDWRAP, ID_TEXTURES_ZOOM_LABEL);
  AddControl(Handle(), L"COMBOBOX", L"", LIST, ID_TEXTURES_ZOOM);
  AddChoices(ID_TEXTURES_SHOWS, SHOWN);
  AddChoices(ID_TEXTURES_ORDER, ORDERS);
  AddChoices(ID_TEXTURES_ZOOM, ZOOM_TEXTS);
  list_ =
      std::make_unique<TextureList>(Handle(), ID_TEXTURES_LIST, wall_, map_.Data().palette, *this);
  AddControl(Handle(), L"STATIC", L"", SS_LEFTNOWORDWRAP | SS_NOPREFIX | SS_ENDELLIPSIS,
             ID_TEXTURES_STATE);
  AddControl(Handle(), L"STATIC", L"", SS_RIGHT | SS_NOPREFIX | SS_ENDELLIPSIS, ID_TEXTURES_COUNT);
  ShowControls();
  Layout();
  Refresh();
  list_->SetChosen(wall_.Find(chosen_), true);
  ShowName();
}

void TextureBrowser::ShowControls() const {
  const auto choose = [this](int id, std::size_t item) {
    SendDlgItemMessageW(Handle(), id, CB_SETCURSEL, item, 0);
  };
  choose(ID_TEXTURES_SHOWS, context_.options.texturesShown);
  choose(ID_TEXTURES_ORDER, context_.options.texturesOrder);
  choose(ID_TEXTURES_ZOOM, ZoomStepOf(context_.options.texturesZoom));
}

int TextureBrowser::LabelWidth(int id) const {
  const std::wstring text = WindowText(GetDlgItem(Handle(), id));
  const HDC dc = GetDC(Handle());
  const HGDIOBJ before = SelectObject(dc, InterfaceFont());
  RECT needed{};
  DrawTextW(dc, text.c_str(), -1, &needed, DT_CALCRECT | DT_SINGLELINE);
  SelectObject(dc, before);
  ReleaseDC(Handle(), dc);
  return static_cast<int>(needed.right) + Scaled(LABEL_GAP);
}

void TextureBrowser::Layout() const {
  RECT area;
  GetClientRect(Handle(), &area);
  const int margin = Scaled(MARGIN), gap = Scaled(GAP), row = Scaled(ROW_HEIGHT);
  const int drop = Scaled(TEXT_DROP), width = static_cast<int>(area.right) - 2 * margin;
  int top = margin;
  const int find = LabelWidth(ID_TEXTURES_FIND_LABEL);
  PlaceControl(Handle(), ID_TEXTURES_FIND_LABEL, margin, top + drop, find, row - drop);
  PlaceControl(Handle(), ID_TEXTURES_FIND, margin + find, top, width - find, row);
  top += row + gap;

  constexpr std::array<std::array<int, 2>, 3> PAIRS{{{ID_TEXTURES_SHOWS_LABEL, ID_TEXTURES_SHOWS},
                                                     {ID_TEXTURES_ORDER_LABEL, ID_TEXTURES_ORDER},
                                                     {ID_TEXTURES_ZOOM_LABEL, ID_TEXTURES_ZOOM}}};
  int labels = 0;
  for (const auto& pair : PAIRS) labels += LabelWidth(pair[0]);
  const int zoom = Scaled(ZOOM_WIDTH);
  const int list = (width - labels - zoom - 2 * gap) / 2;
  int left = margin;
  for (const auto& [label, combo] : PAIRS) {
    const int across = combo == ID_TEXTURES_ZOOM ? zoom : list;
    PlaceControl(Handle(), label, left, top + drop, LabelWidth(label), row - drop);
    left += LabelWidth(label);
    PlaceControl(Handle(), combo, left, top, across, Scaled(LIST_HEIGHT));
    left += across + gap;
  }
  RECT combo;
  GetWindowRect(GetDlgItem(Handle(), ID_TEXTURES_SHOWS), &combo);
  top += static_cast<int>(combo.bottom - combo.top) + gap;
  const int text = Scaled(TEXT_HEIGHT), bottom = static_cast<int>(area.bottom) - margin - text;
  const int count = Scaled(COUNT_WIDTH);
  PlaceControl(Handle(), ID_TEXTURES_LIST, margin, top, width, bottom - gap - top);
  PlaceControl(Handle(), ID_TEXTURES_STATE, margin, bottom, width - count - gap, text);
  PlaceControl(Handle(), ID_TEXTURES_COUNT, margin + width - count, bottom, count, text);
}

// --- what it shows

std::string TextureBrowser::FindText() const {
  return FromWide(WindowText(GetDlgItem(Handle(), ID_TEXTURES_FIND)));
}

WallQuery TextureBrowser::Query(const std::string& text) const {
  const Options& options = context_.options;
  return {.shows = static_cast<WallShows>(options.texturesShown),
          .order = static_cast<WallOrder>(options.texturesOrder),
          .text = text,
          .recent = recent_,
          .favourites = favourites_};
}

TextureList::Look TextureBrowser::Look() const {
  return {.zoom = context_.options.texturesZoom,
          .hasNames = context_.options.noTextureCaptions == 0};
}

void TextureBrowser::Fill() {
  KillTimer(Handle(), FIND_TIMER);
  if (std::exchange(isStale_, false)) uses_ = TextureUses(map_);
  recent_ = context_.choice.Recent();
  favourites_ = context_.choice.Favourites();
  TextureWall wall = WallOf(map_, uses_, Query(FindText()));
  if (wall != wall_) {
    wall_ = std::move(wall);
    list_->SetChosen(TextureList::NONE, false);
    list_->Refresh(Look());
  }
  list_->SetChosen(wall_.Find(chosen_), false);
  ShowState();
}

void TextureBrowser::Refresh() {
  refreshes_ = false;
  Fill();
  list_->Refresh(Look());
  ShowName();
}

void TextureBrowser::RefreshSoon() {
  if (!list_ || std::exchange(refreshes_, true)) return;
  PostMessageA(Handle(), REFRESH, 0, 0);
}

std::string TextureBrowser::Describe(std::size_t index) const {
  const WallItem& item = wall_.items[index];
  TextureUse use;
  for (const std::string& frame : item.frames) {
    use.faces += uses_.Of(frame).faces;
    use.brushes += uses_.Of(frame).brushes;
  }
  std::string text = ShownTextureName(item.name);
  if (item.frames.size() > 1) {
    text += Format(", %u frames", static_cast<unsigned>(item.frames.size()));
  }
  text += item.texture ? ", " + SizeInWords(*item.texture) : ", in no WAD";
  text += ", " + InWords(use);
  if (item.texture) {
    const PathParts file = SplitPath(item.texture->wad->FileName());
    text += ", " + file.base + file.extension;
  }
  return text;
}

void TextureBrowser::ShowState() const {
  const std::size_t item = wall_.Find(chosen_);
  std::string text;
  if (item < wall_.items.size()) {
    text = Describe(item);
  } else if (!chosen_.empty()) {
    text = chosen_ + ", " + InWords(uses_.Of(chosen_)) + ", not shown here";
  }
  SetDlgItemTextW(Handle(), ID_TEXTURES_STATE, ToWide(text).c_str());
  const auto shown = static_cast<unsigned>(wall_.items.size());
  const auto all = static_cast<unsigned>(wall_.numTextures);
  const std::string count =
      shown == all ? Format("%u textures", all) : Format("%u of %u textures", shown, all);
  SetDlgItemTextA(Handle(), ID_TEXTURES_COUNT, count.c_str());
}

void TextureBrowser::OnChange(const MapChange& change) {
  const bool others =
      change.everything || !change.came.empty() || !change.went.empty() || !change.before.empty();
  if (!others) return;
  isStale_ = true;
  // Where WADs are others by now, nothing of the old ones may be drawn any more.
  if (change.everything && list_) return Refresh();
  RefreshSoon();
}

void TextureBrowser::OnTextureChosen() {
  if (!EqualNoCase(chosen_, context_.choice.Current())) chosen_ = context_.choice.Current();
  RefreshSoon();
}

void TextureBrowser::OptionsChanged() {
  ChildWindow::OptionsChanged();
  RefreshSoon();
}

void TextureBrowser::ShowInBrowser(std::string_view name) {
  chosen_ = name;
  context_.choice.Choose(name);
  const bool isFiltered = context_.options.texturesShown != 0 || !FindText().empty();
  Fill();
  if (isFiltered && wall_.Find(name) >= wall_.items.size()) {
    context_.options.texturesShown = static_cast<std::uint8_t>(WallShows::Full);
    SetDlgItemTextW(Handle(), ID_TEXTURES_FIND, L"");
    ShowControls();
    Fill();
  }
  list_->SetChosen(wall_.Find(name), true);
  SetFocus(list_->Handle());
}

void TextureBrowser::Zoom(int steps) {
  const auto last = static_cast<int>(ZOOMS.size()) - 1;
  const int step = static_cast<int>(ZoomStepOf(context_.options.texturesZoom)) + steps;
  context_.options.texturesZoom = ZOOMS[static_cast<std::size_t>(std::clamp(step, 0, last))];
  ShowControls();
  list_->Refresh(Look());
}

// --- messages

bool TextureBrowser::TakesMessage(MSG& message) {
  if (message.message == WM_KEYDOWN && IsChild(Handle(), message.hwnd)) {
    if (message.wParam == VK_ESCAPE && list_->IsDragging()) {
      list_->EndDrag();
      return true;
    }
    if (IsTextBox(message.hwnd) && MovesWall(message.wParam)) {
      SendMessageA(list_->Handle(), WM_KEYDOWN, message.wParam, message.lParam);
      return true;
    }
  }
  return MapPanel::TakesMessage(message);
}

// Keys that write go to what is found; what moves about the wall stays there.
bool TextureBrowser::IsOwnKey(WPARAM key, bool withControl) const {
  if ((key >= VK_PRIOR && key <= VK_DOWN) || key == VK_TAB) return true;
  if (withControl) return false;
  const bool writes = (key >= 'A' && key <= 'Z') || (key >= '0' && key <= '9') ||
                      (key >= VK_NUMPAD0 && key <= VK_DIVIDE) ||
                      (key >= VK_OEM_1 && key <= VK_OEM_102);
  return writes || key == VK_SPACE || key == VK_BACK || key == VK_RETURN || key == VK_ESCAPE;
}

void TextureBrowser::OnCommand(int id, int notification) {
  const auto chosen = [this, id] {
    return std::max<LRESULT>(SendDlgItemMessageW(Handle(), id, CB_GETCURSEL, 0, 0), 0);
  };
  switch (id) {
    case ID_TEXTURES_FIND:
      if (notification == EN_CHANGE) SetTimer(Handle(), FIND_TIMER, FIND_DELAY, nullptr);
      return;
    case ID_TEXTURES_SHOWS:
      if (notification != CBN_SELCHANGE) return;
      context_.options.texturesShown = static_cast<std::uint8_t>(chosen());
      return Fill();
    case ID_TEXTURES_ORDER:
      if (notification != CBN_SELCHANGE) return;
      context_.options.texturesOrder = static_cast<std::uint8_t>(chosen());
      return Fill();
    case ID_TEXTURES_ZOOM:
      if (notification != CBN_SELCHANGE) return;
      context_.options.texturesZoom = ZOOMS[static_cast<std::size_t>(chosen())];
      return list_->Refresh(Look());
    case IDOK:
      return Enter();
    case IDCANCEL:
      return Escape();
  }
}

LRESULT TextureBrowser::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != REFRESH) return MapPanel::OnMessage(message, wParam, lParam);
  Refresh();
  return 0;
}

}  // namespace ferrowand
