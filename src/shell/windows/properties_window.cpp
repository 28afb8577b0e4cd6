#include "shell/windows/properties_window.h"

#include <algorithm>

#include "base/path_text.h"
#include "base/report.h"
#include "document/action.h"
#include "document/classes/class_set.h"
#include "document/map.h"
#include "document/picking.h"
#include "operations/class_change.h"
#include "operations/groups.h"
#include "shell/dialogs/refusal.h"
#include "shell/frame/frame.h"
#include "shell/resources/resource.h"
#include "shell/system/controls.h"
#include "shell/system/display_scale.h"
#include "shell/system/wide_text.h"
#include "shell/windows/child_windows.h"
#include "shell/windows/window_place.h"

namespace ferrowand {
namespace {

// Pixels at the usual size of letters.
constexpr int WIDTH = 400, HEIGHT = 600, LEAST_WIDTH = 330, LEAST_HEIGHT = 300;
constexpr int INSET = 20;  // from the frame's edge, when it stands there for the first time

constexpr UINT CLASS_CHOSEN = WM_APP;

constexpr const char* NAME_KEY = "XMPentityname";

// At first at the right of the frame, as far as there is room.
ChildPlace PlaceFor(const Options& options, HWND frame) {
  RECT around, screen;
  GetWindowRect(frame, &around);
  GetWindowRect(GetDesktopWindow(), &screen);
  IntersectRect(&around, &around, &screen);
  const int width = std::min(Scaled(WIDTH), static_cast<int>(around.right - around.left));
  const int height = std::min(Scaled(HEIGHT), static_cast<int>(around.bottom - around.top));
  const int right = static_cast<int>(around.right) - Scaled(INSET);
  const ChildPlace usual{std::max(right - width, static_cast<int>(around.left)),
                         (static_cast<int>(around.top + around.bottom) - height) / 2, width,
                         height};
  return PlaceOfText(options.propertiesPlace, usual,
                     {static_cast<int>(screen.right), static_cast<int>(screen.bottom)});
}

bool IsTypedIn(int id) {
  return id == ID_PROPERTIES_CLASS || id == ID_PROPERTIES_NAME || id == ID_ANGLE_TEXT;
}

}  // namespace

PropertiesWindow::PropertiesWindow(SideWindows& sides, const PropertiesContext& context, Map& map,
                                   PropertiesOf of)
    : SideWindow(sides), context_(context), of_(of) {
  const ChildPlace place = PlaceFor(context.options, context.frame.Handle());
  CreateWindowExA(0, PROPERTIES_CLASS, "Properties",
                  WS_VISIBLE | WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_CLIPCHILDREN,
                  place.left, place.top, place.width, place.height, context.frame.Handle(), nullptr,
                  context.frame.Instance(), static_cast<SideWindow*>(this));
  if (!Handle()) return;
  Follow(&map);
  Refresh();
  SetFocus(grid_->Handle());
}

PropertiesWindow::~PropertiesWindow() {
  if (map_) map_->RemoveObserver(*this);
}

// In the order of the tab key.
void PropertiesWindow::OnCreate() {
  isFilling_ = true;
  AddControl(Handle(), L"STATIC", L"&Class:", 0, ID_PROPERTIES_CLASS_LABEL);
  AddControl(Handle(), L"COMBOBOX", L"", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWN | CBS_AUTOHSCROLL,
             ID_PROPERTIES_CLASS);
  AddControl(Handle(), L"STATIC", L"", SS_OWNERDRAW, ID_PROPERTIES_COLOUR);
  AddControl(Handle(), L"STATIC", L"&Name:", 0, ID_PROPERTIES_NAME_LABEL);
  AddControl(Handle(), L"EDIT", L"", WS_TABSTOP | ES_AUTOHSCROLL, ID_PROPERTIES_NAME,
             WS_EX_CLIENTEDGE);
  AddControl(Handle(), L"BUTTON", L"&Pinned", WS_TABSTOP | BS_AUTOCHECKBOX, ID_PROPERTIES_PIN);
  AddControl(Handle(), L"STATIC", L"", SS_NOPREFIX | SS_ENDELLIPSIS, ID_PROPERTIES_WHAT);
  AddControl(Handle(), L"BUTTON", L"&Editor's keys", WS_TABSTOP | BS_AUTOCHECKBOX,
             ID_PROPERTIES_EDITOR_KEYS);
  KeyGridHost& host = *this;
  grid_ = std::make_unique<KeyGrid>(Handle(), ID_PROPERTIES_KEYS, host);
  AddControl(Handle(), L"BUTTON", L"&Add key", WS_TABSTOP, ID_PROPERTIES_ADD);
  AddControl(Handle(), L"BUTTON", L"&Remove key", WS_TABSTOP, ID_PROPERTIES_REMOVE);
  AddControl(Handle(), L"BUTTON", L"C&hoose...", WS_TABSTOP, ID_PROPERTIES_CHOOSE);
  angle_ = std::make_unique<AnglePanel>(Handle(),
                                        [this](const std::string& angle) { ChooseAngle(angle); });
  AddControl(Handle(), L"STATIC", L"Lin&ks:", 0, ID_PROPERTIES_LINKS_LABEL);
  AddControl(Handle(), L"LISTBOX", L"", WS_TABSTOP | WS_VSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT,
             ID_PROPERTIES_LINKS, WS_EX_CLIENTEDGE);
  AddControl(Handle(), L"BUTTON", L"&Go there", WS_TABSTOP, ID_PROPERTIES_JUMP);
  AddControl(Handle(), L"EDIT", L"",
             WS_TABSTOP | WS_VSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL,
             ID_PROPERTIES_HELP, WS_EX_CLIENTEDGE);
  if (of_ == PropertiesOf::World) {
    ShowWindow(Control(ID_PROPERTIES_PIN), SW_HIDE);
    EnableWindow(Control(ID_PROPERTIES_CLASS), FALSE);
  }
  isFilling_ = false;
}

bool PropertiesWindow::IsPinned() const {
  return of_ == PropertiesOf::World || IsTicked(Handle(), ID_PROPERTIES_PIN);
}

void PropertiesWindow::SetText(int id, const std::wstring& text) const {
  if (TextOf(id) != text) SetDlgItemTextW(Handle(), id, text.c_str());
}

std::wstring PropertiesWindow::TextOf(int id) const {
  return WindowText(Control(id));
}

// --- what it follows

void PropertiesWindow::Follow(Map* map) {
  if (map_) map_->RemoveObserver(*this);
  map_ = map;
  if (map_) map_->AddObserver(*this);
  objects_.clear();
  typedFor_.clear();
  isStale_ = true;
  FillClasses();
}

void PropertiesWindow::OnMapClosing(const Map& map) {
  if (&map != map_) return;
  grid_->Drop();
  Follow(nullptr);
  if (IsPinned()) DestroyWindow(Handle());
}

void PropertiesWindow::OnMapReplaced(const Map& map, Map& by) {
  if (&map != map_) return;
  grid_->Drop();
  Follow(&by);
  if (of_ == PropertiesOf::Selection) CheckDlgButton(Handle(), ID_PROPERTIES_PIN, BST_UNCHECKED);
}

void PropertiesWindow::OnChange(const MapChange& change) {
  isStale_ = true;
  const auto isGone = [this](const entity* e) { return e->OwningMap() != map_; };
  if (!change.went.empty()) {
    std::erase_if(objects_, isGone);
    std::erase_if(typedFor_, isGone);
    links_.clear();
    linksFrom_ = 0;
  }
  helped_ = nullptr;
  if (change.everything) FillClasses();
}

void PropertiesWindow::OnIdle() {
  if (!IsPinned() && context_.windows.ActiveMap() != map_) {
    FinishTyping();
    Follow(context_.windows.ActiveMap());
  }
  if (isStale_) Refresh();
}

bool PropertiesWindow::LeavesToProgram(const MSG& message) const {
  return IsProgramKey(message);
}

// --- what is typed

void PropertiesWindow::OnTypingBegun(int id) {
  typing_ = id;
  typedFor_ = objects_;
}

void PropertiesWindow::FinishTyping() {
  if (!grid_->Commit()) grid_->Drop();
  if (!CommitTyping()) DropTyping();
}

bool PropertiesWindow::CommitTyping() {
  switch (typing_) {
    case ID_PROPERTIES_CLASS:
      return CommitClass();
    case ID_PROPERTIES_NAME:
      return CommitName();
    case ID_ANGLE_TEXT:
      angle_->Commit();
      return true;
    default:
      return true;
  }
}

void PropertiesWindow::DropTyping() {
  isFilling_ = true;
  SetText(ID_PROPERTIES_CLASS, shownClass_);
  SetText(ID_PROPERTIES_NAME, shownName_);
  angle_->Drop();
  isFilling_ = false;
  helped_ = nullptr;
  ShowHelp();
}

void PropertiesWindow::OnEnter() {
  if (typing_ == 0) {
    if (GetFocus() == Control(ID_PROPERTIES_LINKS)) Jump();
    return;
  }
  if (CommitTyping() && typing_ != 0) SendDlgItemMessageW(Handle(), typing_, EM_SETSEL, 0, -1);
}

void PropertiesWindow::OnEscape() {
  const bool isHalfTyped = (typing_ == ID_PROPERTIES_CLASS && TextOf(typing_) != shownClass_) ||
                           (typing_ == ID_PROPERTIES_NAME && TextOf(typing_) != shownName_) ||
                           (typing_ == ID_ANGLE_TEXT && angle_->IsTyped());
  if (isHalfTyped) return DropTyping();
  SendMessageW(Handle(), WM_CLOSE, 0, 0);
}

bool PropertiesWindow::Do(const std::string& name, const std::function<EditResult()>& change) {
  const ActionScope action(map_->Data(), name);
  return Conclude(*map_, change());
}

bool PropertiesWindow::CommitName() {
  const std::wstring typed = TextOf(ID_PROPERTIES_NAME);
  if (!map_ || typedFor_.empty() || typed == shownName_) return true;
  const std::string name = FromWide(typed);
  if (!Do("Name", [&] {
        return name.empty() ? RemoveKeyOf(*map_, typedFor_, NAME_KEY)
                            : SetKeyOf(*map_, typedFor_, NAME_KEY, name);
      })) {
    return false;
  }
  shownName_ = typed;
  return true;
}

void PropertiesWindow::ChooseAngle(const std::string& angle) {
  if (!map_ || objects_.empty()) return;
  const std::vector<entity*>& objects = typing_ == ID_ANGLE_TEXT ? typedFor_ : objects_;
  Do("Angle", [&] {
    return angle.empty() ? RemoveKeyOf(*map_, objects, "angle")
                         : SetKeyOf(*map_, objects, "angle", angle);
  });
}

void PropertiesWindow::ToggleFlag(int bit) {
  const auto flag = std::ranges::find(flags_, bit, &SpawnFlag::bit);
  if (flag == flags_.end() || !map_) return;
  const bool on = flag->state != FlagState::On;
  Do((on ? "Set " : "Clear ") + flag->name, [&] { return SetSpawnFlag(*map_, objects_, bit, on); });
}

// --- the class

// The first that fits what is typed: to the letter, by its beginning, by the beginning of a word.
const EntityClass* PropertiesWindow::ClassAsTyped(const std::wstring& typed) const {
  const std::string text = FromWide(typed);
  if (text.empty() || !map_) return nullptr;
  const EntityClass *begins = nullptr, *hasWord = nullptr;
  for (const auto& known : map_->classSet->Classes()) {
    if (known->IsNative() || IsWorldspawn(known->classname)) continue;
    const std::string& name = known->classname;
    if (name == text) return known.get();
    if (!begins && name.size() >= text.size() && EqualNoCase(name.substr(0, text.size()), text)) {
      begins = known.get();
    }
    for (std::size_t bar = name.find('_'); bar != name.npos; bar = name.find('_', bar + 1)) {
      if (!hasWord && EqualNoCase(name.substr(bar + 1, text.size()), text)) hasWord = known.get();
    }
  }
  return begins ? begins : hasWord;
}

// The rest of the name comes by itself, selected, so that the next letter takes its place.
void PropertiesWindow::CompleteClass() {
  const std::wstring typed = TextOf(ID_PROPERTIES_CLASS);
  const bool hasGrown = typed.size() > typedLength_;
  typedLength_ = typed.size();
  helped_ = ClassAsTyped(typed);
  if (helped_ && hasGrown) {
    const std::wstring name = ToWide(helped_->classname);
    if (EqualNoCase(FromWide(name.substr(0, typed.size())), FromWide(typed))) {
      SetDlgItemTextW(Handle(), ID_PROPERTIES_CLASS, name.c_str());
      SendDlgItemMessageW(Handle(), ID_PROPERTIES_CLASS, CB_SETEDITSEL, 0,
                          MAKELPARAM(typed.size(), name.size()));
    }
  }
  ShowHelp();
}

// Brushes of the world become those of a new entity.
bool PropertiesWindow::CommitClass() {
  const std::wstring typed = TextOf(ID_PROPERTIES_CLASS);
  if (!map_ || typedFor_.empty() || typed.empty() || typed == shownClass_) return true;
  const EntityClass* const known = ClassAsTyped(typed);
  const std::string name = known ? known->classname : FromWide(typed);
  const bool ties = HasPlainBrush();
  if (ties && EntitiesOf(map_->selection.Objects()) != typedFor_) return false;
  const bool isDone = Do("Make " + name, [&] {
    if (!ties) return ChangeClass(*map_, typedFor_, name);
    return known ? GroupSelectionAs(*map_, *known) : EditResult::EditorsOwn;
  });
  if (isDone) shownClass_ = TextOf(ID_PROPERTIES_CLASS);
  helped_ = nullptr;
  isStale_ = true;
  return isDone;
}

// --- links

void PropertiesWindow::Jump() {
  const auto index = static_cast<std::size_t>(
      SendDlgItemMessageW(Handle(), ID_PROPERTIES_LINKS, LB_GETCURSEL, 0, 0));
  if (!map_ || index >= links_.size()) return;
  const Link& link = links_[index];
  entity* const end = index < linksFrom_ ? link.to : link.from;
  if (!end) return;
  Select(*map_, end, false);
  context_.windows.CentreOn(*map_, end->GetBounds());
}

// --- messages

void PropertiesWindow::OnButton(int id) {
  const int bit = id - ID_PROPERTIES_FLAG;
  if (bit >= 0 && bit < SPAWNFLAG_BITS) return ToggleFlag(bit);
  if (angle_->OnCommand(id)) return;
  switch (id) {
    case ID_PROPERTIES_ADD:
      return grid_->EditNewKey();
    case ID_PROPERTIES_REMOVE:
      if (const KeyRow* row = grid_->Chosen()) {
        const KeyRow removed = *row;
        RemoveKey(removed);
      }
      return;
    case ID_PROPERTIES_CHOOSE:
      return Choose();
    case ID_PROPERTIES_JUMP:
      return Jump();
    case ID_PROPERTIES_EDITOR_KEYS:
    case ID_PROPERTIES_PIN:
      isStale_ = true;
      return;
    default:
      return;
  }
}

void PropertiesWindow::OnCommand(int id, int notice) {
  if (isFilling_) return;
  if (id == IDOK) return OnEnter();
  if (id == IDCANCEL) return OnEscape();
  const bool isClass = id == ID_PROPERTIES_CLASS;
  if (isClass && notice == CBN_DROPDOWN) isListOpen_ = true;
  if (isClass && notice == CBN_CLOSEUP) isListOpen_ = false;
  if (isClass && notice == CBN_EDITUPDATE) return CompleteClass();
  if (isClass && notice == CBN_SELENDOK && isListOpen_) {
    PostMessageW(Handle(), CLASS_CHOSEN, 0, 0);
    return;
  }
  if (IsTypedIn(id) && notice == (isClass ? CBN_SETFOCUS : EN_SETFOCUS)) return OnTypingBegun(id);
  if (IsTypedIn(id) && notice == (isClass ? CBN_KILLFOCUS : EN_KILLFOCUS)) {
    if (!CommitTyping()) DropTyping();
    typing_ = 0;
    return;
  }
  if (id == ID_PROPERTIES_LINKS && notice == LBN_DBLCLK) return Jump();
  if (notice == BN_CLICKED && !isClass) OnButton(id);
}

LRESULT PropertiesWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_CREATE:
      OnCreate();
      return 0;
    case WM_SIZE:
      if (wParam != SIZE_MINIMIZED && grid_) Layout();
      return 0;
    case WM_GETMINMAXINFO:
      reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {Scaled(LEAST_WIDTH),
                                                               Scaled(LEAST_HEIGHT)};
      return 0;
    case WM_COMMAND:
      if (grid_ && angle_) OnCommand(LOWORD(wParam), HIWORD(wParam));
      return 0;
    case CLASS_CHOSEN:
      if (!CommitClass()) DropTyping();
      return 0;
    case WM_NOTIFY:
      return grid_ ? grid_->OnNotify(*reinterpret_cast<NMHDR*>(lParam), lParam) : 0;
    case WM_NOTIFYFORMAT:
      return NFR_UNICODE;
    case WM_DRAWITEM:
      if (wParam == ID_ANGLE_DIAL) {
        angle_->Draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
      } else {
        DrawColour(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
      }
      return TRUE;
    case WM_CTLCOLORSTATIC:
      return OnGrey(wParam);
    case WM_SETFOCUS:
      if (grid_) SetFocus(grid_->Handle());
      return 0;
    case WM_CLOSE:
      FinishTyping();
      DestroyWindow(Handle());
      return 0;
    case WM_DESTROY:
      context_.options.propertiesPlace = PlaceText(Handle(), context_.options.propertiesPlace);
      return 0;
    default:
      break;
  }
  return DefWindowProcA(Handle(), message, wParam, lParam);
}

}  // namespace ferrowand
