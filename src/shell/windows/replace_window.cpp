#include "shell/windows/replace_window.h"

#include <algorithm>
#include <utility>

#include "base/command_table.h"
#include "base/options.h"
#include "base/report.h"
#include "base/text_pattern.h"
#include "document/action.h"
#include "document/map.h"
#include "document/picking.h"
#include "operations/entity_search.h"
#include "operations/texture_use.h"
#include "shell/dialogs/refusal.h"
#include "shell/frame/command_target.h"
#include "shell/resources/resource.h"
#include "shell/system/wide_text.h"
#include "shell/windows/child_windows.h"
#include "shell/windows/texture_drawing.h"
#include "shell/windows/window_maker.h"

namespace ferrowand {
namespace {

constexpr UINT_PTR COUNT_TIMER = 1;
constexpr UINT COUNT_DELAY = 10;  // milliseconds; what is typed goes first

// In the order of TextureScope.
constexpr const wchar_t* SCOPES[] = {L"Whole map", L"Current layer", L"Selection"};
constexpr unsigned SCOPE_BITS = 3, KEEP_LOOK = 4, ONLY_MISSING = 8, AS_FACES = 16;

TextureUse UseOf(const FoundFaces& found) {
  TextureUse use;
  use.faces = static_cast<unsigned>(found.size());
  use.brushes = static_cast<unsigned>(found.Brushes().size());
  return use;
}

}  // namespace

ReplaceWindow::ReplaceWindow(SideWindows& sides, const ReplaceContext& context)
    : MapDialog(sides, context.windows, &context.options.replacePlace, FirstPlace::LowerRight),
      context_(context) {
  Create(ID_REPLACE);
  context_.choice.AddObserver(*this);
}

ReplaceWindow::~ReplaceWindow() {
  context_.choice.RemoveObserver(*this);
}

bool ReplaceWindow::OnInit() {
  for (const wchar_t* scope : SCOPES) {
    SendDlgItemMessageW(Handle(), ID_REPLACE_SCOPE, CB_ADDSTRING, 0,
                        reinterpret_cast<LPARAM>(scope));
  }
  const unsigned flags = context_.options.replaceFlags;
  const unsigned scope = std::min(flags & SCOPE_BITS, 2u);
  SendDlgItemMessageW(Handle(), ID_REPLACE_SCOPE, CB_SETCURSEL, scope, 0);
  CheckDlgButton(Handle(), ID_REPLACE_KEEP_LOOK, (flags & KEEP_LOOK) ? BST_CHECKED : BST_UNCHECKED);
  CheckDlgButton(Handle(), ID_REPLACE_ONLY_MISSING,
                 (flags & ONLY_MISSING) ? BST_CHECKED : BST_UNCHECKED);
  CheckDlgButton(Handle(), ID_REPLACE_FACES, (flags & AS_FACES) ? BST_CHECKED : BST_UNCHECKED);
  return false;
}

void ReplaceWindow::Show(bool replaces, const std::string& name) {
  FollowActiveMap();
  SetWindowTextW(Handle(), replaces ? L"Replace texture" : L"Find texture");
  SetText(ID_REPLACE_FIND, name.empty() ? std::string(NO_TEXTURE_NAME) : name);
  followed_ = context_.choice.For(*map_);
  SetText(ID_REPLACE_WITH, followed_);
  done_.clear();
  Count();
  ShowWindow(Handle(), SW_SHOW);
  SetActiveWindow(Handle());
  const HWND first = GetDlgItem(Handle(), replaces ? ID_REPLACE_WITH : ID_REPLACE_FIND);
  SendMessageW(first, CB_SETEDITSEL, 0, MAKELPARAM(0, -1));
  SetFocus(first);
}

// --- the map

void ReplaceWindow::OnOtherMap() {
  done_.clear();
  found_ = {};
  isStale_ = true;
  if (Handle() && IsWindowVisible(Handle())) Count();
}

void ReplaceWindow::OnChange(const MapChange& change) {
  const bool others = change.everything || !change.came.empty() || !change.went.empty() ||
                      !change.moved.empty() || !change.before.empty();
  if (!others && !change.selection && !change.faces && !change.target) return;
  // What has gone is not to be looked at.
  found_ = {};
  isStale_ = true;
  if (others && !isReplacing_) done_.clear();
  if (IsWindowVisible(Handle())) CountSoon();
}

// The box follows the browser until something else is typed.
void ReplaceWindow::OnTextureChosen() {
  if (!map_ || !Handle() || TextOf(ID_REPLACE_WITH) != followed_) return;
  followed_ = context_.choice.For(*map_);
  SetText(ID_REPLACE_WITH, followed_);
  ShowState();
}

// --- what is asked

void ReplaceWindow::SetText(int id, const std::string& text) const {
  SetDlgItemTextW(Handle(), id, ToWide(text).c_str());
  // A list box selects what it is given.
  if (id != ID_REPLACE_STATE)
    SendDlgItemMessageW(Handle(), id, CB_SETEDITSEL, 0, MAKELPARAM(-1, 0));
}

TextureQuery ReplaceWindow::Query() const {
  return {.name = TextOf(ID_REPLACE_FIND), .onlyMissing = IsTicked(ID_REPLACE_ONLY_MISSING)};
}

TextureScope ReplaceWindow::Scope() const {
  const LRESULT item = SendDlgItemMessageW(Handle(), ID_REPLACE_SCOPE, CB_GETCURSEL, 0, 0);
  return static_cast<TextureScope>(std::clamp<LRESULT>(item, 0, 2));
}

FoundAs ReplaceWindow::SelectsAs() const {
  if (!IsTicked(ID_REPLACE_FACES)) return FoundAs::Brushes;
  if (!context_.commands.IsChecked(Id(Command::FaceEdit))) {
    context_.commands.Execute(Id(Command::FaceEdit));
  }
  const bool isOn = context_.commands.IsChecked(Id(Command::FaceEdit));
  return isOn ? FoundAs::Faces : FoundAs::Brushes;
}

void ReplaceWindow::KeepFlags() const {
  const unsigned flags = static_cast<unsigned>(Scope()) |
                         (IsTicked(ID_REPLACE_KEEP_LOOK) ? KEEP_LOOK : 0) |
                         (IsTicked(ID_REPLACE_ONLY_MISSING) ? ONLY_MISSING : 0) |
                         (IsTicked(ID_REPLACE_FACES) ? AS_FACES : 0);
  context_.options.replaceFlags = static_cast<std::uint8_t>(flags);
}

// When the list drops down: to find, what faces have; to replace, what the WADs have.
void ReplaceWindow::FillNames(int id) const {
  if (!map_) return;
  const std::string typed = TextOf(id);
  SendDlgItemMessageW(Handle(), id, CB_RESETCONTENT, 0, 0);
  const WallShows shows = id == ID_REPLACE_FIND ? WallShows::Used : WallShows::Full;
  const TextureWall wall = WallOf(*map_, TextureUses(*map_), {.shows = shows});
  for (const WallItem& item : wall.items) {
    if (id == ID_REPLACE_WITH && !item.texture) continue;
    const std::string name = item.name.empty() ? std::string(NO_TEXTURE_NAME) : item.name;
    SendDlgItemMessageW(Handle(), id, CB_ADDSTRING, 0,
                        reinterpret_cast<LPARAM>(ToWide(name).c_str()));
  }
  SetText(id, typed);
}

// --- what is found

void ReplaceWindow::CountSoon() const {
  SetTimer(Handle(), COUNT_TIMER, COUNT_DELAY, nullptr);
}

void ReplaceWindow::Count() {
  KillTimer(Handle(), COUNT_TIMER);
  isStale_ = false;
  found_ = map_ ? FindFaces(*map_, Query(), Scope()) : FoundFaces{};
  ShowState();
}

std::string ReplaceWindow::CountText() const {
  std::string text = found_.empty() ? "Nothing found" : InWords(UseOf(found_));
  if (!found_.beyond.empty()) {
    text += Format(", %u beyond the world", static_cast<unsigned>(found_.beyond.size()));
  }
  return text + UnreachedInWords(found_.unreached);
}

void ReplaceWindow::ShowState() {
  SetText(ID_REPLACE_STATE, done_.empty() ? CountText() : done_ + " Left: " + CountText());
  for (const int id : {ID_REPLACE_NEXT, ID_REPLACE_PREVIOUS, ID_REPLACE_SELECT, ID_REPLACE_DO}) {
    EnableWindow(GetDlgItem(Handle(), id), !found_.empty());
  }
  for (const int id : {ID_REPLACE_FIND_PICTURE, ID_REPLACE_WITH_PICTURE}) {
    InvalidateRect(GetDlgItem(Handle(), id), nullptr, FALSE);
  }
}

// Of what is found the first, of the replacement the texture itself; nothing of a pattern.
void ReplaceWindow::DrawPicture(const DRAWITEMSTRUCT& draw) const {
  FillRect(draw.hDC, &draw.rcItem, GetSysColorBrush(COLOR_BTNFACE));
  if (!map_) return;
  const bool isFind = draw.CtlID == ID_REPLACE_FIND_PICTURE;
  std::string name = TextOf(isFind ? ID_REPLACE_FIND : ID_REPLACE_WITH);
  if (isFind && !found_.faces.empty()) {
    const PickedFace& first = found_.faces.front();
    name = std::as_const(first.brush->brush).face(first.face).WrittenName();
  } else if (name.find_first_of("*?") != name.npos || name.empty()) {
    return;
  }
  Texture* texture = map_->wads.FindTexture(name);
  const bool isKnown = texture && texture != texture->wad->BadTexture();
  RECT place = draw.rcItem;
  if (isKnown) {
    // As large as the picture has room, in the shape of the texture.
    const LONG side = std::min(place.right, place.bottom);
    const int longest = std::max(texture->width, texture->height);
    place.right = std::max<LONG>(side * texture->width / longest, 1);
    place.bottom = std::max<LONG>(side * texture->height / longest, 1);
  }
  DrawTexture(draw.hDC, place, isKnown ? texture : nullptr, map_->Data().palette);
}

// From the brush that is selected, if it is one of them.
void ReplaceWindow::GoTo(bool forward) {
  if (isStale_) Count();
  const std::vector<entity*> brushes = found_.Brushes();
  if (brushes.empty()) return;
  const std::size_t count = brushes.size();
  const auto selected =
      map_->selection.empty() ? brushes.end() : std::ranges::find(brushes, map_->selection.front());
  const auto at = static_cast<std::size_t>(selected - brushes.begin());
  const std::size_t next =
      at == count ? (forward ? 0 : count - 1) : (at + (forward ? 1 : count - 1)) % count;
  // The search goes on among what it began with.
  const FoundFaces found = found_;
  Select(*map_, brushes[next], false);
  found_ = found;
  isStale_ = false;
  KillTimer(Handle(), COUNT_TIMER);
  windows_.CentreOn(*map_, brushes[next]->GetBounds());
  map_->ShowStatus(
      Format("%u of %u: ", static_cast<unsigned>(next + 1), static_cast<unsigned>(count)) +
      InWords(*brushes[next]));
}

void ReplaceWindow::SelectAll() {
  if (isStale_) Count();
  if (found_.empty()) return;
  const FoundFaces found = found_;
  SelectFound(*map_, found, SelectsAs());
  map_->ShowStatus("Selected: " + InWords(UseOf(found)));
}

void ReplaceWindow::Replace() {
  if (isStale_) Count();
  if (!map_ || found_.empty()) return;
  const TextureReplacement by{.name = TextOf(ID_REPLACE_WITH),
                              .keepsLook = IsTicked(ID_REPLACE_KEEP_LOOK)};
  ReplaceCount count;
  isReplacing_ = true;
  EditResult result;
  {
    const ActionScope action(map_->Data(), "Replace Texture");
    const FoundFaces found = found_;
    result = ReplaceTextures(*map_, found, Query(), by, SelectsAs(), count);
  }
  isReplacing_ = false;
  if (!Conclude(*map_, result)) return;
  done_ = count.faces == 0
              ? "These have it already."
              : Format("%u faces of %u brushes changed.", static_cast<unsigned>(count.faces),
                       static_cast<unsigned>(count.brushes));
  if (!count.missing.empty()) {
    done_ += " No WAD of the map has " + count.missing.front();
    if (count.missing.size() > 1) {
      done_ += Format(" and %u more", static_cast<unsigned>(count.missing.size() - 1));
    }
    done_ += ".";
  }
  const bool isPattern = by.name.find_first_of("*?") != by.name.npos;
  if (count.faces > 0 && !isPattern) context_.choice.NoteUse(by.name);
  Count();
}

void ReplaceWindow::ShowInBrowser() const {
  if (!map_) return;
  std::string name = TextOf(ID_REPLACE_WITH);
  if (name.empty()) name = TextOf(ID_REPLACE_FIND);
  context_.maker.ShowInBrowser(*map_, name);
}

// --- messages

void ReplaceWindow::OnCommand(int id, int notification) {
  if (id == ID_REPLACE_FIND || id == ID_REPLACE_WITH) {
    if (notification == CBN_DROPDOWN) FillNames(id);
    if (notification != CBN_EDITCHANGE && notification != CBN_SELCHANGE) return;
    done_.clear();
    isStale_ = true;
    return CountSoon();
  }
  if (id == ID_REPLACE_SCOPE) {
    if (notification != CBN_SELCHANGE) return;
    KeepFlags();
    return Count();
  }
  if (notification != BN_CLICKED) return;
  switch (id) {
    case IDOK:
    case ID_REPLACE_NEXT:
      return GoTo(true);
    case ID_REPLACE_PREVIOUS:
      return GoTo(false);
    case ID_REPLACE_SELECT:
      return SelectAll();
    case ID_REPLACE_DO:
      return Replace();
    case ID_REPLACE_BROWSER:
      return ShowInBrowser();
    case IDCANCEL:
      return Hide();
    default:
      KeepFlags();
      Count();
  }
}

LRESULT ReplaceWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != WM_DRAWITEM) return MapDialog::OnMessage(message, wParam, lParam);
  DrawPicture(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
  return TRUE;
}

}  // namespace ferrowand
