#include "shell/frame/primitive_popup.h"

#include "base/command_table.h"
#include "shell/frame/tool_pictures.h"
#include "shell/system/display_scale.h"

namespace ferrowand {
namespace {

constexpr int MARGIN = 3, GAP = 6;  // pixels at the usual size of letters

// The primitives' buttons are the toolbar's first: an item's data is the number of its button.
constexpr std::size_t NUMPRIMITIVES = 6;

int TextLeft() {
  return Scaled(MARGIN) + ToolPictureSize() + Scaled(GAP);
}

const ToolbarButton& ButtonOf(ULONG_PTR data) {
  return ToolbarButtons()[static_cast<std::size_t>(data)];
}

}  // namespace

PrimitivePopup::PrimitivePopup(HINSTANCE instance)
    : menu_(CreatePopupMenu()), pictures_(LoadToolPictures(instance, false)) {
  for (std::size_t i = 0; i < NUMPRIMITIVES; ++i) {
    AppendMenuA(menu_.get(), MF_OWNERDRAW, Id(ToolbarButtons()[i].command),
                reinterpret_cast<LPCSTR>(i));
  }
}

PrimitivePopup::~PrimitivePopup() {
  ImageList_Destroy(pictures_);
}

void PrimitivePopup::Measure(MEASUREITEMSTRUCT& item) const {
  const std::string_view text = ButtonOf(item.itemData).tip;
  const HDC dc = GetDC(nullptr);
  const HGDIOBJ before = SelectObject(dc, InterfaceFont());
  SIZE size{};
  GetTextExtentPoint32A(dc, text.data(), static_cast<int>(text.size()), &size);
  SelectObject(dc, before);
  ReleaseDC(nullptr, dc);
  item.itemWidth = static_cast<UINT>(TextLeft() + size.cx + Scaled(GAP));
  item.itemHeight = static_cast<UINT>(ToolPictureSize() + 2 * Scaled(MARGIN));
}

void PrimitivePopup::Draw(const DRAWITEMSTRUCT& item) const {
  const bool isChosen = (item.itemState & ODS_SELECTED) != 0;
  const bool isGrey = (item.itemState & ODS_GRAYED) != 0;
  FillRect(item.hDC, &item.rcItem, GetSysColorBrush(isChosen ? COLOR_HIGHLIGHT : COLOR_MENU));
  ImageList_Draw(pictures_, static_cast<int>(item.itemData), item.hDC,
                 item.rcItem.left + Scaled(MARGIN), item.rcItem.top + Scaled(MARGIN), ILD_NORMAL);
  const int saved = SaveDC(item.hDC);
  SelectObject(item.hDC, InterfaceFont());
  SetBkMode(item.hDC, TRANSPARENT);
  SetTextColor(item.hDC, GetSysColor(isGrey     ? COLOR_GRAYTEXT
                                     : isChosen ? COLOR_HIGHLIGHTTEXT
                                                : COLOR_MENUTEXT));
  const std::string_view text = ButtonOf(item.itemData).tip;
  RECT place = item.rcItem;
  place.left += TextLeft();
  DrawTextA(item.hDC, text.data(), static_cast<int>(text.size()), &place,
            DT_LEFT | DT_VCENTER | DT_SINGLELINE);
  RestoreDC(item.hDC, saved);
}

}  // namespace ferrowand
