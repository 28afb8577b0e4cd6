#include "shell/windows/key_grid.h"

#include <algorithm>
#include <utility>

#include "base/path_text.h"
#include "document/entity.h"
#include "gamedata/game_letters.h"
#include "shell/system/controls.h"
#include "shell/system/display_scale.h"
#include "shell/system/list_columns.h"
#include "shell/system/wide_text.h"

namespace ferrowand {
namespace {

// Pixels at the usual size of letters.
constexpr int LIST_HEIGHT = 180, SCROLL_BAR = 20, NAME_PERCENT = 38;
constexpr std::size_t LONGEST_TEXT = 4096;  // letters that can be typed
constexpr UINT COMMIT_CHOICE = WM_APP;
constexpr const wchar_t* NEW_KEY = L"<new key>";

bool IsFilesName(const std::string& name) {
  return IsEditorKey(name) || EqualNoCase(name, "wad");
}

std::wstring ChoiceText(const KeyChoice& choice) {
  const std::wstring value = ShownValue("", choice.value);
  return choice.caption.empty() ? value : ToWide(choice.value + "  " + choice.caption);
}

}  // namespace

std::wstring ShownValue(const std::string& name, const std::string& value) {
  if (IsFilesName(name)) return ToWide(value);
  const std::u16string letters = GameLetters(value);
  return {letters.begin(), letters.end()};
}

std::optional<std::string> TypedValue(const std::string& name, const std::wstring& text) {
  if (IsFilesName(name)) return FromWide(text);
  return GameBytes(std::u16string(text.begin(), text.end()));
}

KeyGrid::KeyGrid(HWND parent, int id, KeyGridHost& host)
    : list_(CreateWindowExW(WS_EX_CLIENTEDGE, WC_LISTVIEWW, L"Keys",
                            WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_CLIPCHILDREN | LVS_REPORT |
                                LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS |
                                LVS_NOSORTHEADER,
                            0, 0, 0, 0, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                            GetModuleHandleW(nullptr), nullptr)),
      host_(host) {
  SendMessageW(list_, WM_SETFONT, reinterpret_cast<WPARAM>(InterfaceFont()), 0);
  ListView_SetExtendedListViewStyle(list_,
                                    LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_GRIDLINES);
  for (const auto& [index, title] : {std::pair{NAME, L"Key"}, {VALUE, L"Value"}}) {
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_SUBITEM;
    column.pszText = const_cast<wchar_t*>(title);
    column.iSubItem = index;
    SendMessageW(list_, LVM_INSERTCOLUMNW, static_cast<WPARAM>(index),
                 reinterpret_cast<LPARAM>(&column));
  }
  SetWindowSubclass(list_, ListFunc, 0, reinterpret_cast<DWORD_PTR>(this));
}

void KeyGrid::Place(int left, int top, int width, int height) const {
  MoveWindow(list_, left, top, std::max(width, 0), std::max(height, 0), TRUE);
  const int inside = width - Scaled(SCROLL_BAR), name = inside * NAME_PERCENT / 100;
  ListView_SetColumnWidth(list_, NAME, name);
  ListView_SetColumnWidth(list_, VALUE, inside - name);
}

void KeyGrid::Show(const std::vector<KeyRow>& rows, bool takesNew) {
  const KeyRow* const chosen = Chosen();
  const std::string name = chosen ? chosen->name : "";
  rows_ = rows;
  takesNew_ = takesNew;
  ListView_SetItemCountEx(list_, static_cast<int>(rows_.size()) + (takesNew ? 1 : 0),
                          LVSICF_NOSCROLL);
  InvalidateRect(list_, nullptr, FALSE);
  if (!name.empty()) Choose(name);
}

int KeyGrid::ChosenIndex() const {
  return ListView_GetNextItem(list_, -1, LVNI_SELECTED);
}

const KeyRow* KeyGrid::Chosen() const {
  const int index = ChosenIndex();
  const bool isRow = index >= 0 && static_cast<std::size_t>(index) < rows_.size();
  return isRow ? &rows_[static_cast<std::size_t>(index)] : nullptr;
}

void KeyGrid::Choose(const std::string& name) const {
  const auto row = std::ranges::find(rows_, name, &KeyRow::name);
  if (row == rows_.end()) return;
  const auto index = static_cast<int>(row - rows_.begin());
  if (index != ChosenIndex()) ChooseRow(list_, index);
}

// --- what is shown

std::wstring KeyGrid::TextOf(std::size_t index, int column) const {
  if (index >= rows_.size()) return column == NAME ? std::wstring(NEW_KEY) : std::wstring();
  const KeyRow& row = rows_[index];
  if (column == NAME) return ShownValue("", row.name);
  if (row.differs) return L"(differs)";
  if (row.definition) {
    const auto& choices = row.definition->choices;
    const auto choice = std::ranges::find(choices, row.value, &KeyChoice::value);
    if (choice != choices.end()) return ChoiceText(*choice);
  }
  return ShownValue(row.name, row.value);
}

void KeyGrid::GiveText(NMLVDISPINFOW& info) {
  if ((info.item.mask & LVIF_TEXT) == 0 || info.item.iItem < 0) return;
  shown_ = TextOf(static_cast<std::size_t>(info.item.iItem), info.item.iSubItem);
  info.item.pszText = shown_.data();
}

// Pale: what only some objects have, or none.
LRESULT KeyGrid::Draw(NMLVCUSTOMDRAW& draw) const {
  if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
  if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) return CDRF_DODEFAULT;
  const auto index = static_cast<std::size_t>(draw.nmcd.dwItemSpec);
  if (index >= rows_.size() || !rows_[index].isEverywhere) {
    draw.clrText = GetSysColor(COLOR_GRAYTEXT);
  }
  return CDRF_DODEFAULT;
}

LRESULT KeyGrid::OnNotify(const NMHDR& header, LPARAM lParam) {
  if (header.hwndFrom != list_) return 0;
  switch (header.code) {
    case LVN_GETDISPINFOW:
      GiveText(*reinterpret_cast<NMLVDISPINFOW*>(lParam));
      return 0;
    case NM_CUSTOMDRAW:
      return Draw(*reinterpret_cast<NMLVCUSTOMDRAW*>(lParam));
    case LVN_ITEMCHANGED:
      host_.OnRowChosen();
      return 0;
    case NM_CLICK:
    case NM_DBLCLK: {
      const auto& click = *reinterpret_cast<NMITEMACTIVATE*>(lParam);
      const bool onName = click.iSubItem == NAME;
      if (click.iItem >= 0 && (!onName || header.code == NM_DBLCLK)) {
        Edit(click.iItem, onName ? NAME : VALUE);
      }
      return 0;
    }
    default:
      return 0;
  }
}

// --- editing

void KeyGrid::Edit(int index, Column column) {
  if (index < 0 || !Commit()) return;
  const auto at = static_cast<std::size_t>(index);
  if (at > rows_.size() || (at == rows_.size() && !takesNew_)) return;
  isNew_ = at == rows_.size();
  if (isNew_) return EditRow({}, index, NAME);
  if (column == VALUE && host_.IsLocked(rows_[at])) return;
  if (column == NAME && !rows_[at].isSet) column = VALUE;
  const KeyRow row = rows_[at];
  EditRow(row, index, column);
}

void KeyGrid::EditNewKey() {
  const auto index = static_cast<int>(rows_.size());
  ListView_SetItemState(list_, index, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
  Edit(index, NAME);
}

void KeyGrid::EditRow(const KeyRow& row, int index, Column column) {
  ListView_EnsureVisible(list_, index, FALSE);
  edited_ = row;
  column_ = column;
  RECT cell;
  if (column == VALUE) {
    ListView_GetSubItemRect(list_, index, VALUE, LVIR_BOUNDS, &cell);
  } else {
    ListView_GetSubItemRect(list_, index, VALUE, LVIR_BOUNDS, &cell);
    cell.right = cell.left;
    cell.left = 0;
  }
  initial_.clear();
  if (column == NAME) initial_ = ShownValue("", row.name);
  if (column == VALUE && !row.differs) initial_ = ShownValue(row.name, row.value);
  choices_ = column == VALUE ? host_.ChoicesOf(row) : std::vector<KeyChoice>();
  host_.OnEditBegun();
  if (choices_.empty()) {
    OpenBox(cell);
  } else {
    OpenList(cell, choices_);
  }
  SendMessageW(editor_, WM_SETFONT, reinterpret_cast<WPARAM>(InterfaceFont()), 0);
  SendMessageW(text_, EM_LIMITTEXT, LONGEST_TEXT, 0);
  SetWindowSubclass(text_, EditorFunc, 0, reinterpret_cast<DWORD_PTR>(this));
  SendMessageW(text_, EM_SETMODIFY, FALSE, 0);
  SetFocus(editor_);
  SendMessageW(text_, EM_SETSEL, 0, -1);
}

void KeyGrid::OpenBox(const RECT& cell) {
  editor_ = text_ = CreateWindowExW(0, L"EDIT", initial_.c_str(),
                                    WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL, cell.left,
                                    cell.top, cell.right - cell.left, cell.bottom - cell.top, list_,
                                    nullptr, GetModuleHandleW(nullptr), nullptr);
}

void KeyGrid::OpenList(const RECT& cell, const std::vector<KeyChoice>& choices) {
  editor_ = CreateWindowExW(0, L"COMBOBOX", L"",
                            WS_CHILD | WS_VISIBLE | WS_VSCROLL | CBS_DROPDOWN | CBS_AUTOHSCROLL,
                            cell.left, cell.top - 1, cell.right - cell.left, Scaled(LIST_HEIGHT),
                            list_, nullptr, GetModuleHandleW(nullptr), nullptr);
  for (const KeyChoice& choice : choices) {
    const std::wstring text = ChoiceText(choice);
    AddChoice(editor_, text);
    if (choice.value == edited_.value && !edited_.differs) initial_ = text;
  }
  SetWindowTextW(editor_, initial_.c_str());
  text_ = FindWindowExW(editor_, nullptr, L"EDIT", nullptr);
}

void KeyGrid::Close() {
  const HWND editor = std::exchange(editor_, nullptr);
  if (!editor) return;
  const HWND focus = GetFocus();
  const bool hadFocus = focus == editor || IsChild(editor, focus);
  DestroyWindow(editor);
  if (hadFocus) SetFocus(list_);
}

bool KeyGrid::Commit() {
  if (!editor_ || isCommitting_) return true;
  const std::wstring typed = WindowText(editor_);
  const bool isChanged = typed != initial_ || SendMessageW(text_, EM_GETMODIFY, 0, 0) != FALSE;
  isCommitting_ = true;
  const bool isDone = !isChanged || Take(typed);
  isCommitting_ = false;
  if (!isDone) return false;
  Close();
  if (isNew_ && isChanged) {
    isNew_ = false;
    const auto row = std::ranges::find(rows_, edited_.name, &KeyRow::name);
    const KeyRow known = row == rows_.end() ? edited_ : *row;
    EditRow(known, static_cast<int>(row - rows_.begin()), VALUE);
  }
  return true;
}

bool KeyGrid::Take(const std::wstring& typed) {
  const auto choice =
      std::ranges::find_if(choices_, [&](const KeyChoice& c) { return ChoiceText(c) == typed; });
  if (choice != choices_.end()) return TakeValue(choice->value);
  const std::string name = column_ == NAME ? "" : edited_.name;
  const std::optional<std::string> bytes = TypedValue(name, typed);
  if (!bytes) {
    host_.Refuse("The game has no such letter");
    return false;
  }
  return column_ == NAME ? TakeName(*bytes) : TakeValue(*bytes);
}

bool KeyGrid::TakeName(const std::string& name) {
  if (!isNew_) return host_.RenameKey(edited_, name);
  if (!host_.CheckNewName(name)) return false;
  edited_.name = name;
  return true;
}

bool KeyGrid::TakeValue(const std::string& value) {
  return host_.ChangeValue(edited_, value);
}

// --- keys

LRESULT CALLBACK KeyGrid::ListFunc(HWND list, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                   DWORD_PTR data) {
  auto& grid = *reinterpret_cast<KeyGrid*>(data);
  switch (message) {
    case WM_GETDLGCODE: {
      const auto* key = reinterpret_cast<const MSG*>(lParam);
      const bool isEnter = key && key->message == WM_KEYDOWN && key->wParam == VK_RETURN;
      return DLGC_WANTARROWS | DLGC_WANTCHARS | (isEnter ? DLGC_WANTMESSAGE : 0);
    }
    case WM_KEYDOWN:
      if (grid.OnListKey(wParam)) return 0;
      break;
    case WM_CHAR:
      if (wParam <= VK_SPACE) return 0;
      grid.EditValue();
      if (grid.editor_) SendMessageW(grid.text_, WM_CHAR, wParam, lParam);
      return 0;
    case WM_VSCROLL:
    case WM_HSCROLL:
    case WM_MOUSEWHEEL:
      if (lParam == 0 || message == WM_MOUSEWHEEL) grid.Commit();
      break;
    case WM_COMMAND:
      // Not within the list's own call.
      if (HIWORD(wParam) == CBN_SELENDOK) PostMessageW(list, COMMIT_CHOICE, 0, 0);
      break;
    case COMMIT_CHOICE:
      grid.Commit();
      return 0;
    case WM_NCDESTROY:
      RemoveWindowSubclass(list, ListFunc, 0);
      break;
    default:
      break;
  }
  return DefSubclassProc(list, message, wParam, lParam);
}

bool KeyGrid::OnListKey(WPARAM key) {
  switch (key) {
    case VK_F2:
      Edit(ChosenIndex(), GetKeyState(VK_SHIFT) < 0 ? NAME : VALUE);
      return true;
    case VK_RETURN:
      EditValue();
      return true;
    case VK_INSERT:
      EditNewKey();
      return true;
    case VK_DELETE:
      if (const KeyRow* row = Chosen(); row && row->isSet && !host_.IsLocked(*row)) {
        const KeyRow removed = *row;
        host_.RemoveKey(removed);
      }
      return true;
    default:
      return false;
  }
}

LRESULT CALLBACK KeyGrid::EditorFunc(HWND editor, UINT message, WPARAM wParam, LPARAM lParam,
                                     UINT_PTR, DWORD_PTR data) {
  auto& grid = *reinterpret_cast<KeyGrid*>(data);
  switch (message) {
    case WM_GETDLGCODE:
      return DLGC_WANTALLKEYS | DefSubclassProc(editor, message, wParam, lParam);
    case WM_KEYDOWN:
      if (grid.OnEditorKey(wParam)) return 0;
      break;
    case WM_CHAR:
      if (wParam == VK_RETURN || wParam == VK_ESCAPE || wParam == VK_TAB) return 0;
      if (wParam == L'"') {
        MessageBeep(MB_OK);
        grid.host_.Tell(Reason(EditResult::HoldsQuote));
        return 0;
      }
      break;
    case WM_KILLFOCUS:
      grid.OnEditorLeft(reinterpret_cast<HWND>(wParam));
      if (!IsWindow(editor)) return 0;
      break;
    case WM_NCDESTROY:
      RemoveWindowSubclass(editor, EditorFunc, 0);
      break;
    default:
      break;
  }
  return DefSubclassProc(editor, message, wParam, lParam);
}

// In a message a new line is two letters.
bool KeyGrid::OnEditorKey(WPARAM key) {
  const bool isList = editor_ != text_;
  switch (key) {
    case VK_RETURN:
      if (column_ == VALUE && EqualNoCase(edited_.name, "message") &&
          GetKeyState(VK_CONTROL) >= 0) {
        SendMessageW(text_, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"\\n"));
      } else {
        Commit();
      }
      return true;
    case VK_ESCAPE:
      Close();
      return true;
    case VK_TAB:
      LeaveBy(key);
      return true;
    case VK_UP:
    case VK_DOWN:
      if (isList) return false;
      LeaveBy(key);
      return true;
    default:
      return false;
  }
}

void KeyGrid::LeaveBy(WPARAM key) {
  if (!Commit() || editor_) return;
  if (key != VK_TAB) {
    SendMessageW(list_, WM_KEYDOWN, key, 0);
    return;
  }
  const bool back = GetKeyState(VK_SHIFT) < 0;
  const HWND next = GetNextDlgTabItem(GetParent(list_), list_, back ? TRUE : FALSE);
  if (next) SetFocus(next);
}

// Within a list to choose from the focus goes about.
void KeyGrid::OnEditorLeft(HWND to) {
  if (!editor_ || isCommitting_ || to == editor_ || IsChild(editor_, to)) return;
  if (!Commit()) Close();
}

}  // namespace ferrowand
