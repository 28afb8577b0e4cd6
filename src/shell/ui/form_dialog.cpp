#include "shell/ui/form_dialog.h"

#include "shell/ui/handles.h"
#include "shell/ui/resource.h"

namespace ferrowand {
namespace {

// Dialog units.
constexpr int MARGIN = 8, ROW = 17, LABEL_WIDTH = 80, VALUE_LEFT = 92, VALUE_WIDTH = 100;
constexpr int VALUE_HEIGHT = 13, LIST_HEIGHT = 100, LABEL_DROP = 2;
constexpr int BUTTON_WIDTH = 50, BUTTON_HEIGHT = 15, BUTTON_GAP = 6;
constexpr int WIDTH = VALUE_LEFT + VALUE_WIDTH + MARGIN;
constexpr std::size_t MAXVALUE = 260;  // bytes

class FormDialog {
 public:
  explicit FormDialog(const Form& form) : form_(form) {}

  std::optional<std::vector<std::string>> Run(HWND owner) {
    const INT_PTR end = DialogBoxParamA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(ID_FORM), owner,
                                        FormFunc, reinterpret_cast<LPARAM>(this));
    if (end != IDOK) return std::nullopt;
    return values_;
  }

 private:
  static INT_PTR CALLBACK FormFunc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
      auto* created = reinterpret_cast<FormDialog*>(lParam);
      SetObject(dialog, created);
      created->OnInit(dialog);
      return FALSE;  // the focus is set
    }
    auto* form = ObjectOf<FormDialog>(dialog);
    if (!form || message != WM_COMMAND) return FALSE;
    if (LOWORD(wParam) != IDOK && LOWORD(wParam) != IDCANCEL) return FALSE;
    if (LOWORD(wParam) == IDOK) form->TakeValues(dialog);
    EndDialog(dialog, LOWORD(wParam));
    return TRUE;
  }

  static RECT InPixels(HWND dialog, int left, int top, int width, int height) {
    RECT place{left, top, left + width, top + height};
    MapDialogRect(dialog, &place);
    return place;
  }

  static HWND Add(HWND dialog, const char* windowClass, const std::string& text, DWORD style,
                  std::size_t id, const RECT& place) {
    const DWORD edge = style & WS_TABSTOP ? WS_EX_CLIENTEDGE : 0;
    const HWND control =
        CreateWindowExA(edge, windowClass, text.c_str(), WS_CHILD | WS_VISIBLE | style, place.left,
                        place.top, place.right - place.left, place.bottom - place.top, dialog,
                        reinterpret_cast<HMENU>(id), GetModuleHandleA(nullptr), nullptr);
    SendMessageA(control, WM_SETFONT, static_cast<WPARAM>(SendMessageA(dialog, WM_GETFONT, 0, 0)),
                 0);
    return control;
  }

  void OnInit(HWND dialog) const {
    SetWindowTextA(dialog, form_.title.c_str());
    for (std::size_t i = 0; i < form_.fields.size(); ++i) AddRow(dialog, i);
    const int bottom = MARGIN + static_cast<int>(form_.fields.size()) * ROW + BUTTON_GAP;
    PlaceButton(dialog, IDOK, WIDTH - MARGIN - 2 * BUTTON_WIDTH - BUTTON_GAP, bottom);
    PlaceButton(dialog, IDCANCEL, WIDTH - MARGIN - BUTTON_WIDTH, bottom);

    RECT size = InPixels(dialog, 0, 0, WIDTH, bottom + BUTTON_HEIGHT + MARGIN);
    AdjustWindowRectEx(&size, static_cast<DWORD>(GetWindowLongA(dialog, GWL_STYLE)), FALSE,
                       static_cast<DWORD>(GetWindowLongA(dialog, GWL_EXSTYLE)));
    SetWindowPos(dialog, nullptr, 0, 0, size.right - size.left, size.bottom - size.top,
                 SWP_NOMOVE | SWP_NOZORDER);
    SetFocus(GetDlgItem(dialog, ID_FORM_VALUE));
    SendDlgItemMessageA(dialog, ID_FORM_VALUE, EM_SETSEL, 0, -1);
  }

  void AddRow(HWND dialog, std::size_t index) const {
    const FormField& field = form_.fields[index];
    const int top = MARGIN + static_cast<int>(index) * ROW;
    const std::size_t id = ID_FORM_VALUE + index;
    Add(dialog, "STATIC", field.label, SS_LEFT, 0,
        InPixels(dialog, MARGIN, top + LABEL_DROP, LABEL_WIDTH, VALUE_HEIGHT));
    if (field.choices.empty()) {
      const HWND text = Add(dialog, "EDIT", field.value, WS_TABSTOP | ES_AUTOHSCROLL, id,
                            InPixels(dialog, VALUE_LEFT, top, VALUE_WIDTH, VALUE_HEIGHT));
      SendMessageA(text, EM_LIMITTEXT, MAXVALUE - 1, 0);
      return;
    }
    const HWND list = Add(dialog, "COMBOBOX", "", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST, id,
                          InPixels(dialog, VALUE_LEFT, top, VALUE_WIDTH, LIST_HEIGHT));
    for (const std::string& choice : field.choices) {
      SendMessageA(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(choice.c_str()));
    }
    SendMessageA(list, CB_SETCURSEL, 0, 0);
  }

  static void PlaceButton(HWND dialog, int id, int left, int top) {
    const RECT place = InPixels(dialog, left, top, BUTTON_WIDTH, BUTTON_HEIGHT);
    SetWindowPos(GetDlgItem(dialog, id), HWND_BOTTOM, place.left, place.top,
                 place.right - place.left, place.bottom - place.top, 0);
  }

  void TakeValues(HWND dialog) {
    values_.clear();
    for (std::size_t i = 0; i < form_.fields.size(); ++i) {
      char text[MAXVALUE] = "";
      GetDlgItemTextA(dialog, static_cast<int>(ID_FORM_VALUE + i), text, sizeof text);
      values_.emplace_back(text);
    }
  }

  const Form& form_;
  std::vector<std::string> values_;
};

}  // namespace

std::optional<std::vector<std::string>> AskForm(HWND owner, const Form& form) {
  return FormDialog(form).Run(owner);
}

}  // namespace ferrowand
