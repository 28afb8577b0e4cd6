#include "shell/dialogs/form_dialog.h"

#include <algorithm>
#include <cctype>

#include "shell/resources/resource.h"
#include "shell/system/controls.h"
#include "shell/system/handles.h"
#include "shell/system/wide_text.h"

namespace ferrowand {
namespace {

// Dialog units.
constexpr int MARGIN = 9, ROW = 18, HINT_ROW = 16, HEADING_ROW = 11, GAP = 4, LABEL_GAP = 8;
constexpr int VALUE_HEIGHT = 13, LABEL_DROP = 2, LIST_HEIGHT = 120;
constexpr int COLUMN = 42, WIDE_COLUMN = 120, LEAST_WIDTH = 150;
constexpr int BUTTON_WIDTH = 50, BUTTON_HEIGHT = 15, BUTTON_GAP = 6;
constexpr int MAXVALUE = 260;  // characters, with the zero behind them
constexpr std::size_t AXES = 3;

// With a letter to type for its row: the first of a word that no row above has, or else any other.
std::string WithMnemonic(const std::string& label, std::string& taken) {
  std::size_t best = std::string::npos;
  for (std::size_t i = 0; i < label.size(); ++i) {
    const auto letter = static_cast<unsigned char>(label[i]);
    if (!std::isalpha(letter) || letter > 0x7F) continue;
    if (taken.find(static_cast<char>(std::tolower(letter))) != std::string::npos) continue;
    const bool beginsWord = i == 0 || label[i - 1] == ' ';
    if (best == std::string::npos || beginsWord) best = i;
    if (beginsWord) break;
  }
  std::string text;
  for (std::size_t i = 0; i < label.size(); ++i) {
    if (i == best || label[i] == '&') text += '&';
    text += label[i];
  }
  if (best != std::string::npos) {
    taken += static_cast<char>(std::tolower(static_cast<unsigned char>(label[best])));
  }
  return text;
}

class FormDialog {
 public:
  explicit FormDialog(const Form& form) : form_(form) {
    for (const FormRow& row : form.rows) columns_ = std::max(columns_, row.values.size());
  }

  bool Run(HWND owner) {
    return DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(ID_FORM), owner, FormFunc,
                           reinterpret_cast<LPARAM>(this)) == IDOK;
  }

 private:
  static INT_PTR CALLBACK FormFunc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
      auto* created = reinterpret_cast<FormDialog*>(lParam);
      SetObject(dialog, created);
      created->OnInit(dialog);
      return TRUE;  // the first value takes the focus, all of it selected
    }
    const auto* form = ObjectOf<FormDialog>(dialog);
    if (!form || message != WM_COMMAND) return FALSE;
    if (LOWORD(wParam) == IDCANCEL || (LOWORD(wParam) == IDOK && form->Accept())) {
      EndDialog(dialog, LOWORD(wParam));
    }
    return TRUE;
  }

  bool Accept() const {
    FormValues typed;
    for (std::size_t i = 0; i < count_; ++i) {
      const HWND value = GetDlgItem(dialog_, static_cast<int>(ID_FORM_VALUE + i));
      typed.push_back(FromWide(WindowText(value)));
    }
    if (form_.accept(typed)) return true;
    FocusFirst();
    return false;
  }

  void OnInit(HWND dialog) {
    dialog_ = dialog;
    SetWindowTextW(dialog, ToWide(form_.title).c_str());
    columnsLeft_ = LabelWidth() + InPixels(MARGIN + LABEL_GAP, 0).cx;
    int top = MARGIN;
    if (!form_.hint.empty()) {
      AddText(form_.hint, InPixels(MARGIN, 0).cx, top, TextWidth(form_.hint));
      top += HINT_ROW;
    }
    bool hasHeadings = false;
    for (const FormRow& row : form_.rows) {
      if (row.values.size() == AXES && !hasHeadings) {
        hasHeadings = true;
        AddHeadings(top);
        top += HEADING_ROW;
      }
      AddRow(row, top);
      top += ROW;
    }
    PlaceFrame(top + GAP);
  }

  void AddHeadings(int top) {
    for (std::size_t i = 0; i < AXES; ++i) {
      AddText(std::string(1, "XYZ"[i]), ColumnLeft(i) + InPixels(2, 0).cx, top,
              InPixels(COLUMN, 0).cx, SS_NOPREFIX, HEADING_ROW);
    }
  }

  void AddRow(const FormRow& row, int top) {
    AddText(WithMnemonic(row.label, mnemonics_), InPixels(MARGIN, 0).cx, top + LABEL_DROP,
            LabelWidth(), 0);
    if (!row.choices.empty()) return AddList(row.choices, top);
    const bool isWide = columns_ == 1 || row.isText;
    for (std::size_t i = 0; i < row.values.size(); ++i) {
      const HWND text =
          Add(L"EDIT", row.values[i], WS_TABSTOP | ES_AUTOHSCROLL, ColumnLeft(i), top,
              {isWide ? ColumnsWidth() : InPixels(COLUMN, 0).cx, InPixels(0, VALUE_HEIGHT).cy});
      SendMessageW(text, EM_LIMITTEXT, MAXVALUE - 1, 0);
    }
  }

  void AddList(const std::vector<std::string>& choices, int top) {
    const HWND list = Add(L"COMBOBOX", "", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST, columnsLeft_,
                          top, {ColumnsWidth(), InPixels(0, LIST_HEIGHT).cy});
    for (const std::string& choice : choices) AddChoice(list, ToWide(choice));
    SendMessageW(list, CB_SETCURSEL, 0, 0);
  }

  void AddText(const std::string& text, int left, int top, int width, DWORD style = SS_NOPREFIX,
               int height = VALUE_HEIGHT) {
    Add(L"STATIC", text, style, left, top, {width, InPixels(0, height).cy});
  }

  // What takes the tab key gets the next number.
  HWND Add(const wchar_t* windowClass, const std::string& text, DWORD style, int left, int top,
           SIZE size) {
    const bool takesTab = (style & WS_TABSTOP) != 0;
    const std::size_t id = takesTab ? ID_FORM_VALUE + count_++ : 0;
    const HWND control =
        CreateWindowExW(takesTab ? WS_EX_CLIENTEDGE : 0, windowClass, ToWide(text).c_str(),
                        WS_CHILD | WS_VISIBLE | style, left, InPixels(0, top).cy, size.cx, size.cy,
                        dialog_, reinterpret_cast<HMENU>(id), GetModuleHandleW(nullptr), nullptr);
    SendMessageW(control, WM_SETFONT, static_cast<WPARAM>(SendMessageW(dialog_, WM_GETFONT, 0, 0)),
                 0);
    return control;
  }

  // The buttons at the right under the rows, and the dialog around all, in the middle of its owner.
  void PlaceFrame(int top) const {
    const int margin = InPixels(MARGIN, 0).cx, gap = InPixels(BUTTON_GAP, 0).cx;
    const int width =
        std::max({static_cast<int>(InPixels(LEAST_WIDTH, 0).cx),
                  columnsLeft_ + ColumnsWidth() + margin, TextWidth(form_.hint) + 2 * margin});
    const SIZE button = InPixels(BUTTON_WIDTH, BUTTON_HEIGHT);
    const int cancelLeft = width - margin - button.cx;
    PlaceButton(IDOK, cancelLeft - gap - button.cx, top, button);
    PlaceButton(IDCANCEL, cancelLeft, top, button);

    RECT size{0, 0, width, InPixels(0, top + BUTTON_HEIGHT + MARGIN).cy};
    AdjustWindowRectEx(&size, static_cast<DWORD>(GetWindowLongW(dialog_, GWL_STYLE)), FALSE,
                       static_cast<DWORD>(GetWindowLongW(dialog_, GWL_EXSTYLE)));
    const SIZE outer{size.right - size.left, size.bottom - size.top};
    RECT around;
    GetWindowRect(GetParent(dialog_), &around);
    SetWindowPos(dialog_, nullptr, (around.left + around.right - outer.cx) / 2,
                 (around.top + around.bottom - outer.cy) / 2, outer.cx, outer.cy, SWP_NOZORDER);
  }

  // Behind the rows in the order of the tab key.
  void PlaceButton(int id, int left, int top, SIZE size) const {
    SetWindowPos(GetDlgItem(dialog_, id), HWND_BOTTOM, left, InPixels(0, top).cy, size.cx, size.cy,
                 0);
  }

  void FocusFirst() const {
    SetFocus(GetDlgItem(dialog_, ID_FORM_VALUE));
    SendDlgItemMessageW(dialog_, ID_FORM_VALUE, EM_SETSEL, 0, -1);
  }

  SIZE InPixels(int width, int height) const {
    RECT units{0, 0, width, height};
    MapDialogRect(dialog_, &units);
    return {units.right, units.bottom};
  }

  int TextWidth(const std::string& text) const {
    const HDC dc = GetDC(dialog_);
    const HGDIOBJ before =
        SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageW(dialog_, WM_GETFONT, 0, 0)));
    SIZE size{};
    const std::wstring wide = ToWide(text);
    GetTextExtentPoint32W(dc, wide.data(), static_cast<int>(wide.size()), &size);
    SelectObject(dc, before);
    ReleaseDC(dialog_, dc);
    return size.cx;
  }

  int LabelWidth() const {
    int width = 0;
    for (const FormRow& row : form_.rows) width = std::max(width, TextWidth(row.label));
    return width;
  }

  int ColumnLeft(std::size_t column) const {
    return columnsLeft_ + static_cast<int>(column) * InPixels(COLUMN + GAP, 0).cx;
  }

  int ColumnsWidth() const {
    if (columns_ == 1) return InPixels(WIDE_COLUMN, 0).cx;
    return ColumnLeft(columns_ - 1) - columnsLeft_ + InPixels(COLUMN, 0).cx;
  }

  const Form& form_;
  std::size_t columns_ = 1;
  HWND dialog_ = nullptr;
  int columnsLeft_ = 0;  // pixels
  std::size_t count_ = 0;
  std::string mnemonics_;  // that are taken
};

}  // namespace

FormRow AxisRow(const std::string& label, const std::string& value) {
  return {label, {value, value, value}, {}};
}

bool AskForm(HWND owner, const Form& form) {
  return FormDialog(form).Run(owner);
}

}  // namespace ferrowand
