// What the window of properties shows, and where.
#include <algorithm>
#include <cctype>
#include <utility>

#include "base/path_text.h"
#include "base/report.h"
#include "document/action.h"
#include "document/classes/class_set.h"
#include "document/map.h"
#include "shell/frame/frame.h"
#include "shell/resources/resource.h"
#include "shell/system/controls.h"
#include "shell/system/display_scale.h"
#include "shell/system/wide_text.h"
#include "shell/windows/properties_window.h"

namespace ferrowand {
namespace {

// Pixels at the usual size of letters.
constexpr int MARGIN = 7, GAP = 5, ROW = 23, LABEL_WIDTH = 42, LABEL_DROP = 4, COLOUR = 23;
constexpr int LIST_DROP = 260, PIN_WIDTH = 66, CHECK_WIDTH = 90, LINE = 17, BUTTON_WIDTH = 86;
constexpr int FLAG_WIDTH = 120, FLAG_HEIGHT = 18;
constexpr int LEAST_KEYS = 90, LEAST_HELP = 44, USUAL_HELP = 96, LEAST_LINKS = 60;
constexpr int WIDE = 560, BESIDE = 250;  // from that width on, what stands beside the keys

constexpr std::size_t LINKS_SHOWN = 500;
constexpr std::size_t FULL_LINE = 60;  // letters

// "light  how bright it is": a line of its own, however long the one before it is.
bool IsListed(const std::string& text, std::size_t line) {
  const std::size_t end = text.find_first_of(" \t\r\n", line);
  return end != text.npos && (text[end] == '\t' || text.compare(end, 2, "  ") == 0);
}

// Paragraphs of comments are broken where their author's line was full: the window breaks them as
// wide as it is.
std::string WithOwnLineEnds(const std::string& text) {
  std::string out;
  std::size_t length = 0;  // of the line
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '\r') continue;
    if (c != '\n') {
      out += c;
      ++length;
      continue;
    }
    const std::size_t next = text.find_first_not_of('\r', i + 1);
    const bool goesOn = next != text.npos &&
                        std::isalpha(static_cast<unsigned char>(text[next])) != 0 &&
                        !IsListed(text, next);
    out += length >= FULL_LINE && goesOn ? " " : "\r\n";
    length = 0;
  }
  return out;
}

std::string NameFor(const entity& e) {
  const char* name = e.GetKey("XMPentityname");
  const char* classname = e.GetKey("classname");
  const std::string known = classname ? classname : e.getClass()->classname;
  return name && *name ? known + " " + name : known;
}

std::string LinkText(const Link& link, bool from) {
  const std::string other = from ? (link.to ? NameFor(*link.to) : "") : NameFor(*link.from);
  const std::string text = from ? link.key + " " + link.name : "from " + link.key;
  if (other.empty()) return text + ": none is called so";
  if (link.isInOtherCase) return text + ": " + other + ", in other letters: not found by the game";
  return text + ": " + other;
}

}  // namespace

void PropertiesWindow::Refresh() {
  isStale_ = false;
  const auto current = [this] {
    if (!map_) return std::vector<entity*>();
    if (of_ == PropertiesOf::World) return std::vector<entity*>{map_};
    return IsPinned() ? objects_ : EntitiesOf(map_->selection.Objects());
  };
  if (current() != objects_) {
    FinishTyping();
    objects_ = current();
    typedFor_ = objects_;
  }
  isFilling_ = true;
  ShowTitle();
  ShowClass();
  ShowName();
  SetText(ID_PROPERTIES_WHAT, ToWide(WhatItIs()));
  ShowFlags();
  ShowAngle();
  ShowLinks();
  ShowKeys();
  ShowHelp();
  Layout();
  isFilling_ = false;
}

void PropertiesWindow::ShowTitle() const {
  std::string title = "Properties";
  if (of_ == PropertiesOf::World) title = "Worldspawn: " + map_->Name();
  if (of_ != PropertiesOf::World && objects_.size() == 1)
    title += ": " + NameFor(*objects_.front());
  if (objects_.size() > 1) title += ": " + std::to_string(objects_.size()) + " objects";
  const std::wstring text = ToWide(title);
  if (text != WindowText(Handle())) SetWindowTextW(Handle(), text.c_str());
}

const EntityClass* PropertiesWindow::SharedClass() const {
  if (objects_.empty()) return nullptr;
  const EntityClass* const first = objects_.front()->getClass();
  const bool isShared =
      std::ranges::all_of(objects_, [&](const entity* e) { return e->getClass() == first; });
  return isShared ? first : nullptr;
}

bool PropertiesWindow::HasPlainBrush() const {
  return std::ranges::any_of(
      objects_, [](const entity* e) { return e->getClass()->Kind() == EntityKind::Brush; });
}

// Those that a user can make.
void PropertiesWindow::FillClasses() {
  isFilling_ = true;
  const std::wstring text = TextOf(ID_PROPERTIES_CLASS);
  const HWND list = Control(ID_PROPERTIES_CLASS);
  SendMessageW(list, WM_SETREDRAW, FALSE, 0);
  SendMessageW(list, CB_RESETCONTENT, 0, 0);
  if (map_) {
    for (const auto& known : map_->classSet->Classes()) {
      if (known->IsNative() || IsWorldspawn(known->classname)) continue;
      AddChoice(list, ToWide(known->classname));
    }
  }
  SendMessageW(list, WM_SETREDRAW, TRUE, 0);
  SetText(ID_PROPERTIES_CLASS, text);
  isFilling_ = false;
}

void PropertiesWindow::ShowClass() {
  const auto classnameOf = [](const entity& e) {
    const char* name = e.GetKey("classname");
    return std::string(name ? name : "");
  };
  std::string name = objects_.empty() ? "" : classnameOf(*objects_.front());
  for (const entity* e : objects_) {
    if (classnameOf(*e) != name) name.clear();
  }
  const bool isHalfTyped =
      typing_ == ID_PROPERTIES_CLASS && TextOf(ID_PROPERTIES_CLASS) != shownClass_;
  shownClass_ = ToWide(name);
  if (!isHalfTyped) SetText(ID_PROPERTIES_CLASS, shownClass_);
  typedLength_ = shownClass_.size();
  if (of_ != PropertiesOf::World) {
    EnableWindow(Control(ID_PROPERTIES_CLASS), !objects_.empty());
  }
  InvalidateRect(Control(ID_PROPERTIES_COLOUR), nullptr, TRUE);
}

void PropertiesWindow::DrawColour(const DRAWITEMSTRUCT& draw) const {
  const EntityClass* const shared = SharedClass();
  RECT area = draw.rcItem;
  FillRect(draw.hDC, &area, static_cast<HBRUSH>(GetStockObject(LTGRAY_BRUSH)));
  if (!shared) return;
  const Colour colour = shared->ClassColour();
  const OwnedBrush brush(CreateSolidBrush(RGB(colour.red, colour.green, colour.blue)));
  InflateRect(&area, -2, -2);
  FillRect(draw.hDC, &area, brush.get());
  FrameRect(draw.hDC, &area, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
}

void PropertiesWindow::ShowName() {
  const auto nameOf = [](const entity& e) {
    const char* name = e.GetKey("XMPentityname");
    return std::string(name ? name : "");
  };
  std::string name = objects_.empty() ? "" : nameOf(*objects_.front());
  const bool differs =
      std::ranges::any_of(objects_, [&](const entity* e) { return nameOf(*e) != name; });
  const bool isHalfTyped =
      typing_ == ID_PROPERTIES_NAME && TextOf(ID_PROPERTIES_NAME) != shownName_;
  shownName_ = differs ? L"(differs)" : ToWide(name);
  if (!isHalfTyped) SetText(ID_PROPERTIES_NAME, shownName_);
  EnableWindow(Control(ID_PROPERTIES_NAME), !objects_.empty());
}

std::string PropertiesWindow::WhatItIs() const {
  if (objects_.empty()) return "Nothing is selected";
  if (of_ == PropertiesOf::World) return "The world of " + map_->Name();
  if (objects_.size() > 1) {
    return InWords(std::vector<const entity*>(objects_.begin(), objects_.end()));
  }
  const entity& e = *objects_.front();
  const std::size_t count = e.getEntityList().size();
  if (e.brush.HasText() && e.getClass()->Kind() == EntityKind::Brush) {
    return "A brush of the world with " + std::to_string(e.brush.getNumFaces()) + " faces";
  }
  if (count > 0) {
    std::vector<const entity*> members;
    for (const EntityPtr& child : e.getEntityList()) members.push_back(child.get());
    const bool isGroup = e.getClass()->Kind() == EntityKind::Brush;
    return (isGroup ? "A group of " : "Made of ") + InWords(members);
  }
  if (e.getClass()->Kind() == EntityKind::Unknown) return "Of a class that no file describes";
  if (!e.HasOrigin()) return "It stands nowhere";
  const Vec3& at = e.Origin();
  return Format("A point at %g %g %g", double{at.x}, double{at.y}, double{at.z});
}

void PropertiesWindow::ShowKeys() {
  rows_.Show(objects_, IsTicked(Handle(), ID_PROPERTIES_EDITOR_KEYS));
  if (grid_->IsEditing()) return;
  std::vector<KeyRow> rows = rows_.Rows();
  if (of_ == PropertiesOf::World) ShowWads(rows);
  grid_->Show(rows, !objects_.empty());
  ShowKeyButtons();
}

void PropertiesWindow::ShowKeyButtons() const {
  const KeyRow* const row = grid_->Chosen();
  const bool isRemovable = row && row->isSet && !IsLocked(*row);
  const KeyType type = row && row->definition ? row->definition->type : KeyType::Text;
  const bool isChosen =
      type == KeyType::Colour || type == KeyType::File || (row && IsWadList(*row));
  EnableWindow(Control(ID_PROPERTIES_ADD), !objects_.empty());
  EnableWindow(Control(ID_PROPERTIES_REMOVE), isRemovable);
  ShowWindow(Control(ID_PROPERTIES_CHOOSE), isChosen ? SW_SHOWNA : SW_HIDE);
}

// The map's own list, which is what a save writes.
void PropertiesWindow::ShowWads(std::vector<KeyRow>& rows) const {
  auto row = std::ranges::find_if(rows, [](const KeyRow& r) { return EqualNoCase(r.name, "wad"); });
  if (row == rows.end())
    row = rows.insert(row, KeyRow{.name = "wad", .value = "", .definition = {}});
  row->value = map_->wads.Names();
  row->isSet = row->isEverywhere = true;
  KeyDefinition wads;
  wads.name = "wad";
  wads.help = "textures are looked for in this order:";
  for (const WadList::Item& item : map_->wads.Items()) wads.help += "\n " + item.name;
  row->definition = std::move(wads);
}

// A box is made when its bit is named for the first time. In the order of the tab key they stand
// between the keys and the angle.
void PropertiesWindow::ShowFlags() {
  flags_ = NamedSpawnFlags(objects_);
  HWND before = Control(ID_PROPERTIES_CHOOSE);
  for (int bit = 0; bit < SPAWNFLAG_BITS; ++bit) {
    const int id = ID_PROPERTIES_FLAG + bit;
    const auto flag = std::ranges::find(flags_, bit, &SpawnFlag::bit);
    HWND box = Control(id);
    if (flag == flags_.end()) {
      if (box) ShowWindow(box, SW_HIDE);
    } else {
      if (!box) {
        box = AddControl(Handle(), L"BUTTON", L"", WS_TABSTOP | BS_3STATE, id);
        SetWindowPos(box, before, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
      }
      SetText(id, ToWide(flag->name));
      CheckDlgButton(Handle(), id,
                     flag->state == FlagState::On      ? BST_CHECKED
                     : flag->state == FlagState::Mixed ? BST_INDETERMINATE
                                                       : BST_UNCHECKED);
    }
    if (box) before = box;
  }
}

bool PropertiesWindow::HasAngle() const {
  return of_ == PropertiesOf::Selection && !objects_.empty() && !HasPlainBrush();
}

void PropertiesWindow::ShowAngle() {
  std::optional<std::string> angle;
  const auto angleOf = [](const entity& e) {
    const char* value = e.GetKey("angle");
    return std::string(value ? value : "");
  };
  if (!objects_.empty()) angle = angleOf(*objects_.front());
  for (const entity* e : objects_) {
    if (angle && angleOf(*e) != *angle) angle.reset();
  }
  if (!angle_->IsTyped()) angle_->Show(angle);
}

void PropertiesWindow::ShowLinks() {
  links_ = map_ ? LinksFrom(*map_, objects_) : std::vector<Link>();
  links_.resize(std::min(links_.size(), LINKS_SHOWN), {});
  linksFrom_ = links_.size();
  std::vector<Link> to = map_ ? LinksTo(*map_, objects_) : std::vector<Link>();
  to.resize(std::min(to.size(), LINKS_SHOWN), {});
  links_.insert(links_.end(), to.begin(), to.end());
  const HWND list = Control(ID_PROPERTIES_LINKS);
  const LRESULT chosen = SendMessageW(list, LB_GETCURSEL, 0, 0);
  SendMessageW(list, WM_SETREDRAW, FALSE, 0);
  SendMessageW(list, LB_RESETCONTENT, 0, 0);
  for (std::size_t i = 0; i < links_.size(); ++i) {
    AddLine(list, ToWide(LinkText(links_[i], i < linksFrom_)));
  }
  SendMessageW(list, WM_SETREDRAW, TRUE, 0);
  InvalidateRect(list, nullptr, TRUE);
  if (chosen >= 0) SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(chosen), 0);
  EnableWindow(Control(ID_PROPERTIES_JUMP), !links_.empty());
}

std::string PropertiesWindow::HelpText() const {
  if (helped_) return helped_->classname + ": " + helped_->description;
  if (objects_.empty()) return "";
  std::string text;
  const KeyRow* const row = grid_->Chosen();
  if (row && row->definition) {
    const KeyDefinition& key = *row->definition;
    text = key.name + ": " + (key.caption.empty() ? "" : key.caption + ". ") + key.help;
    const bool isTold = key.help.find("(" + key.defaultValue + ")") != key.help.npos;
    if (!key.defaultValue.empty() && !isTold) {
      text += " (" + key.defaultValue + " unless it is set)";
    }
    text += "\n\n";
  }
  const EntityClass* const shared = SharedClass();
  if (shared && shared->Kind() != EntityKind::Brush) return text + shared->description;
  if (!HasPlainBrush()) return text + "Objects of several classes";
  text += "Textures:";
  for (const std::string& name : TexturesOf(objects_)) text += "\n " + name;
  return text;
}

void PropertiesWindow::ShowHelp() const {
  SetText(ID_PROPERTIES_HELP, ToWide(WithOwnLineEnds(HelpText())));
}

// --- where

void PropertiesWindow::Layout() const {
  RECT area;
  GetClientRect(Handle(), &area);
  const int margin = Scaled(MARGIN);
  InflateRect(&area, -margin, -margin);
  const int width = area.right - area.left;
  LayOutHead(area.left, area.top, width);
  area.top += 2 * Scaled(ROW) + Scaled(LINE) + 2 * Scaled(GAP);
  RECT keys = area, rest = area;
  if (width >= Scaled(WIDE)) {
    rest.left = area.right - Scaled(BESIDE);
    keys.right = rest.left - margin;
  } else {
    const int buttons = Scaled(ROW) + 2 * Scaled(GAP);
    const int below =
        FlagsHeight(width) + (HasAngle() ? AnglePanel::Size().cy : Scaled(LEAST_LINKS));
    const int spare = area.bottom - area.top - buttons - below - Scaled(LEAST_KEYS);
    const int help = spare < Scaled(LEAST_HELP) ? 0 : std::min(spare / 2, Scaled(USUAL_HELP));
    keys.bottom = std::max(area.bottom - below - help - (help > 0 ? Scaled(GAP) : 0),
                           area.top + buttons + Scaled(LEAST_KEYS) / 2);
    rest.top = keys.bottom;
  }
  LayOutKeys(keys);
  LayOutBeside(rest);
  // A control that is moved takes along what the screen showed of it, which others have drawn over.
  RedrawWindow(Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void PropertiesWindow::LayOutHead(int left, int top, int width) const {
  const int gap = Scaled(GAP), row = Scaled(ROW), label = Scaled(LABEL_WIDTH);
  const int drop = Scaled(LABEL_DROP), colour = Scaled(COLOUR), pin = Scaled(PIN_WIDTH);
  const auto place = [&](int id, int x, int y, int w, int h) {
    MoveWindow(Control(id), left + x, top + y, std::max(w, 0), h, TRUE);
  };
  place(ID_PROPERTIES_CLASS_LABEL, 0, drop, label, row - drop);
  place(ID_PROPERTIES_CLASS, label, 0, width - label - colour - gap, Scaled(LIST_DROP));
  place(ID_PROPERTIES_COLOUR, width - colour, 0, colour, colour);
  const int second = row + gap;
  const int pinned = of_ == PropertiesOf::World ? 0 : pin + gap;
  place(ID_PROPERTIES_NAME_LABEL, 0, second + drop, label, row - drop);
  place(ID_PROPERTIES_NAME, label, second, width - label - pinned, row);
  place(ID_PROPERTIES_PIN, width - pin, second, pin, row);
  const int third = second + row + gap, check = Scaled(CHECK_WIDTH);
  place(ID_PROPERTIES_WHAT, 0, third, width - check - gap, Scaled(LINE));
  place(ID_PROPERTIES_EDITOR_KEYS, width - check, third, check, Scaled(LINE));
}

void PropertiesWindow::LayOutKeys(const RECT& area) const {
  const int gap = Scaled(GAP), row = Scaled(ROW), button = Scaled(BUTTON_WIDTH);
  const int bottom = area.bottom - row - gap;
  grid_->Place(area.left, area.top, area.right - area.left, bottom - area.top - gap);
  const auto place = [&](int id, int left, int width) {
    MoveWindow(Control(id), left, bottom, std::max(width, 0), row, TRUE);
  };
  place(ID_PROPERTIES_ADD, area.left, button);
  place(ID_PROPERTIES_REMOVE, area.left + button + gap, button);
  place(ID_PROPERTIES_CHOOSE, area.left + 2 * (button + gap), button);
}

PropertiesWindow::FlagTable PropertiesWindow::FlagsIn(int width) const {
  const int count = static_cast<int>(flags_.size());
  const int columns = std::max(width / Scaled(FLAG_WIDTH), 1);
  return {(count + columns - 1) / columns, width / columns};
}

int PropertiesWindow::FlagsHeight(int width) const {
  return flags_.empty() ? 0 : FlagsIn(width).rows * Scaled(FLAG_HEIGHT) + Scaled(GAP);
}

void PropertiesWindow::LayOutFlags(int left, int top, int width) const {
  const auto [rows, each] = FlagsIn(width);
  const int count = static_cast<int>(flags_.size());
  for (int i = 0; i < count; ++i) {
    const int id = ID_PROPERTIES_FLAG + flags_[static_cast<std::size_t>(i)].bit;
    MoveWindow(Control(id), left + i / rows * each, top + i % rows * Scaled(FLAG_HEIGHT), each,
               Scaled(FLAG_HEIGHT), TRUE);
  }
}

// Flags, then the angle with the links beside it, then help: as far as there is room.
void PropertiesWindow::LayOutBeside(RECT area) const {
  const int gap = Scaled(GAP), row = Scaled(ROW);
  const int width = area.right - area.left;
  const auto left = [&area] { return static_cast<int>(area.bottom - area.top); };
  const auto show = [this](int id, bool on) { ShowWindow(Control(id), on ? SW_SHOWNA : SW_HIDE); };
  const bool hasFlags = FlagsHeight(width) <= left();
  for (const SpawnFlag& flag : flags_) show(ID_PROPERTIES_FLAG + flag.bit, hasFlags);
  LayOutFlags(area.left, area.top, width);
  if (hasFlags) area.top += FlagsHeight(width);

  const SIZE angle = AnglePanel::Size();
  const bool hasAngle = HasAngle() && left() >= angle.cy;
  angle_->SetVisible(hasAngle);
  angle_->Place(area.left, area.top);
  RECT links = area;
  links.bottom = area.top + Scaled(LEAST_LINKS);
  if (hasAngle) {
    const bool isNarrow = width < angle.cx + Scaled(BESIDE) / 2;
    if (isNarrow) {
      OffsetRect(&links, 0, angle.cy + gap);
    } else {
      links.left += angle.cx + 2 * gap;
      links.bottom = area.top + angle.cy;
    }
  }
  const bool hasLinks = of_ == PropertiesOf::Selection && links.bottom <= area.bottom;
  for (const int id : {ID_PROPERTIES_LINKS_LABEL, ID_PROPERTIES_LINKS, ID_PROPERTIES_JUMP}) {
    show(id, hasLinks);
  }
  const auto place = [this](int id, const RECT& at) {
    MoveWindow(Control(id), at.left, at.top, std::max<int>(at.right - at.left, 0),
               std::max<int>(at.bottom - at.top, 0), TRUE);
  };
  const int jump = links.right - Scaled(BUTTON_WIDTH);
  place(ID_PROPERTIES_LINKS_LABEL, {links.left, links.top + gap, jump, links.top + row});
  place(ID_PROPERTIES_JUMP, {jump, links.top, links.right, links.top + row});
  place(ID_PROPERTIES_LINKS, {links.left, links.top + row + 2, links.right, links.bottom});
  if (hasAngle) area.top += angle.cy + gap;
  if (hasLinks) area.top = links.bottom + gap;
  const bool hasHelp = left() >= Scaled(LEAST_HELP);
  show(ID_PROPERTIES_HELP, hasHelp);
  place(ID_PROPERTIES_HELP, area);
}

}  // namespace ferrowand
