#include "base/command_table.h"

#include <algorithm>

namespace ferrowand {
namespace {

bool Always(const CommandFacts&) {
  return true;
}
bool HasMap(const CommandFacts& facts) {
  return facts.hasMap;
}
bool HasView(const CommandFacts& facts) {
  return facts.hasView;
}
bool HasSelection(const CommandFacts& facts) {
  return facts.hasSelection;
}
bool HasWhatInstancesShow(const CommandFacts& facts) {
  return facts.hasTemplates || facts.hasSelection;
}
bool CanUndo(const CommandFacts& facts) {
  return facts.canUndo;
}
bool CanRedo(const CommandFacts& facts) {
  return facts.canRedo;
}
bool HasLeak(const CommandFacts& facts) {
  return facts.hasLeak;
}
bool LeakShown(const CommandFacts& facts) {
  return facts.showsLeak;
}
bool PortalsShown(const CommandFacts& facts) {
  return facts.showsPortals;
}
template <std::size_t index>
bool Recent(const CommandFacts& facts) {
  return facts.HasRecentMap(index);
}

bool GridOn(const CommandFacts& facts) {
  return facts.hasMap && facts.grid;
}
bool SnapOn(const CommandFacts& facts) {
  return facts.hasMap && facts.snap;
}
template <std::uint8_t mode>
bool InMode(const CommandFacts& facts) {
  return facts.hasView && facts.mapMode == mode;
}
template <Command mode>
bool InUse(const CommandFacts& facts) {
  return facts.hasMap && facts.mode == mode;
}
bool TakesPartial(const CommandFacts& facts) {
  return facts.hasMap && !facts.selectsFull;
}
bool TakesFull(const CommandFacts& facts) {
  return facts.hasMap && facts.selectsFull;
}
template <int axis>
bool Limited(const CommandFacts& facts) {
  return (facts.limitedAxes >> axis & 1) != 0;
}
bool Classnames(const CommandFacts& facts) {
  return facts.options->entityNames != 0;
}
bool HeadLamp(const CommandFacts& facts) {
  return facts.hasLamp;
}
bool LightingPreview(const CommandFacts& facts) {
  return facts.previewsLight;
}
bool LightRadius(const CommandFacts& facts) {
  return facts.options->drawLightRadius != 0;
}
bool Templates(const CommandFacts& facts) {
  return facts.options->drawTemplates != 0;
}
bool PointEntities(const CommandFacts& facts) {
  return facts.options->renderPointEntities != 0;
}
bool Pale(const CommandFacts& facts) {
  return facts.options->paleOthers != 0;
}
bool LocksTextures(const CommandFacts& facts) {
  return facts.options->textureLock != 0;
}
bool ToolbarShown(const CommandFacts& facts) {
  return facts.options->showToolbar != 0;
}

constexpr Command Nth(Command first, unsigned index) {
  return static_cast<Command>(Id(first) + index);
}

constexpr CommandRow MAINMENU[] = {
    {Command::FileNew, "File", "&New", "", Always},
    {Command::FileOpen, "File", "&Open...", "Ctrl+O", Always},
    {Command::InsertGroup, "File", "&Insert Group", "Ctrl+I", Always},
    {Command::FileClose, "File", "&Close", "", HasMap},
    {Command::FileSave, "File", "&Save", "Ctrl+S", HasMap},
    {Command::FileSaveAs, "File", "Save &as...", "Ctrl+Shift+S", HasMap},
    {Command::SaveGroup, "File", "Save &Group", "", HasSelection},
    {Command::ExportQuake, "File/Export", "&Quake", "", HasMap},
    {Command::EditOptions, "File", "O&ptions...", "", Always},
    {Nth(Command::RecentMap, 0), "File", "- NO FILE -", "", Recent<0>},
    {Nth(Command::RecentMap, 1), "File", "- NO FILE -", "", Recent<1>},
    {Nth(Command::RecentMap, 2), "File", "- NO FILE -", "", Recent<2>},
    {Nth(Command::RecentMap, 3), "File", "- NO FILE -", "", Recent<3>},
    {Nth(Command::RecentMap, 4), "File", "- NO FILE -", "", Recent<4>},
    {Nth(Command::RecentMap, 5), "File", "- NO FILE -", "", Recent<5>},
    {Command::Exit, "File", "E&xit", "Alt+F4", Always},
    {Command::Undo, "Edit", "&Undo", "Ctrl+Z", CanUndo},
    {Command::Redo, "Edit", "&Redo", "Ctrl+Shift+Z", CanRedo},
    {Command::Insert, "Edit", "&Insert", "ins", HasMap},
    {Command::Cut, "Edit", "Cu&t", "Ctrl+X", HasSelection},
    {Command::Copy, "Edit", "&Copy", "Ctrl+C", HasSelection},
    {Command::Paste, "Edit", "&Paste", "Ctrl+V", HasMap},
    {Command::Clear, "Edit", "C&lear", "Del", HasSelection},
    {Command::SelectNone, "Edit", "&Select None", "C", HasSelection},
    {Command::Duplicate, "Edit", "&Duplicate", "Ctrl+D", HasSelection},
    {Command::MultiDuplicate, "Edit", "&Multi Dupe", "Shift+Ctrl+D", HasSelection},
    {Command::FindEntity, "Edit", "&Find Entity...", "Ctrl+Shift+F", HasMap},
    {Command::FindTexture, "Edit", "Find &Texture...", "", HasMap},
    {Command::ReplaceTexture, "Edit", "R&eplace Texture...", "", HasMap},
    {Command::FindNext, "Edit", "Find &next", "F3", HasMap},
    {Command::FindPrevious, "Edit", "Find p&revious", "Shift+F3", HasMap},
    {Command::DuplicateLinks, "Edit", "Duplicate with new lin&ks", "Ctrl+Shift+K", HasSelection},
    {Command::Connect, "Edit", "C&onnect", "Ctrl+Shift+C", HasSelection},
    {Command::FollowLinks, "Edit", "Follo&w links", "F9", HasSelection},
    {Command::FollowLinksBack, "Edit", "Follow links &back", "Shift+F9", HasSelection},
    {Command::Properties, "Edit", "Properties...", "Alt+Enter", HasMap},
    {Command::BindToKey, "Edit", "Bind to &a key...", "", HasSelection},
    {Command::ModeEntity, "Modes", "&Entity", "Ctrl+E", HasMap, InUse<Command::ModeEntity>},
    {Command::ModeBrush, "Modes", "&Brush", "Ctrl+B", HasMap, InUse<Command::ModeBrush>},
    {Command::BrushHandles, "Modes", "Brush &Handles", "Ctrl+M", HasMap,
     InUse<Command::BrushHandles>},
    {Command::SelectPartial, "Modes", "Select &partial", "", HasMap, TakesPartial},
    {Command::SelectFull, "Modes", "&Select full", "", HasMap, TakesFull},
    {Command::SelectMultiple, "Modes", "Select Multiple Entities", "", HasMap,
     InUse<Command::SelectMultiple>},
    {Command::LayPath, "Modes", "&Lay path", "", HasMap, InUse<Command::LayPath>},
    {Command::SelectNext, "Modes", "&Next", "TAB", HasMap},
    {Command::FaceEdit, "Modes", "&Face edit", "Ctrl+F", HasMap, InUse<Command::FaceEdit>},
    {Command::TouchUp, "Modes", "&Touch up", "Ctrl+U", HasMap, InUse<Command::TouchUp>},
    {Command::OperateMatrix, "Operate", "&Matrix...", "", HasSelection},
    {Command::ScaleFlip, "Operate", "S&cale/Flip...", "", HasMap},
    {Command::CsgSubtraction, "Operate", "CSG &Subtraction", "S", HasMap},
    {Command::CsgIntersection, "Operate", "CSG &Intersection", "", HasMap},
    {Command::Hollow, "Operate", "H&ollow", "", HasMap},
    {Command::SetAsLeading, "Operate", "Set as &Leading", "", HasMap},
    {Command::Group, "Operate", "&Group", "", HasSelection},
    {Command::Ungroup, "Operate", "&Ungroup", "", HasSelection},
    {Command::ShowHidden, "Operate", "&Show temp. hidden", "", HasMap},
    {Command::HideSelection, "Operate", "&Hide selection", "J", HasSelection},
    {Command::SnapToGrid, "Operate", "Snap to g&rid...", "", HasSelection},
    {Command::TieToEntity, "Operate", "Tie to &entity...", "Ctrl+Shift+E", HasSelection},
    {Command::TieToWorld, "Operate", "Tie to &world", "Ctrl+Shift+W", HasSelection},
    {Command::InsertTemplate, "Tools", "&Insert Template instance", "", HasWhatInstancesShow},
    {Command::Embed, "Tools", "E&mbed...", "", HasMap},
    {Command::InsertLayer, "Tools", "Insert l&ayer", "", HasMap},
    {Command::EntityTree, "Tools", "&Entity tree...", "Ctrl+R", HasMap},
    {Command::TextureBrowser, "Tools", "&Texture browser...", "Ctrl+T", HasMap},
    {Command::LayersList, "Tools", "&Layers list...", "", HasMap},
    {Command::DensityAnalysis, "Tools", "&Density analysis...", "", HasMap},
    {Command::MemoryAnalysis, "Tools", "&Memory analysis...", "", HasMap},
    {Command::WadManager, "Tools", "Wa&d Manager...", "", HasMap},
    {Command::SetQc, "Tools", "Set &QC...", "", HasMap},
    {Command::PurgeFiles, "Tools", "P&urge redundant files", "", HasMap},
    {Command::OpenFiles, "Tools", "&Open files...", "", HasMap},
    {Command::EditWorldspawn, "Tools", "Edit &worldspawn...", "", HasMap},
    {Command::GetInfo, "Tools", "&Get info...", "", HasMap},
    {Command::CheckMap, "Tools", "&Check Map...", "", HasMap},
    {Command::PakNew, "Tools/Pak", "&New...", "", HasMap},
    {Command::PakTool, "Tools/Pak", "&Tool...", "", HasMap},
    {Command::ShowLeak, "Tools/Leak line", "&Show", "", HasMap, LeakShown},
    {Command::NextLeakPoint, "Tools/Leak line", "&Next point", "F8", HasLeak},
    {Command::PreviousLeakPoint, "Tools/Leak line", "&Previous point", "Shift+F8", HasLeak},
    {Command::ShowPortals, "Tools/Leak line", "P&ortals", "", HasMap, PortalsShown},
    {Command::LoadLeak, "Tools/Leak line", "&Load...", "", HasMap},
    {Command::ClassMessages, "Tools", "Class &file messages...", "", HasMap},
    {Command::ZoomIn, "View/Zoom", "&In", "+", HasView},
    {Command::ZoomOut, "View/Zoom", "&Out", "-", HasView},
    {Command::ZoomTo, "View/Zoom", "&To", "(hold d)", Always},
    {Command::GridToggle, "View/Grid", "&Grid toggle", "G", HasView, GridOn},
    {Command::SnapToggle, "View/Grid", "&Snap toggle", "G", HasView, SnapOn},
    {Command::GridSmaller, "View/Grid", "&Smaller", "[", HasView},
    {Command::GridLarger, "View/Grid", "&Larger", "]", HasView},
    {Command::ModeNormal, "View/2D map mode", "&Normal", "N", HasView, InMode<0>},
    {Command::ModeOneMip, "View/2D map mode", "1x1&MipMap", "", HasView, InMode<1>},
    {Command::ModeHeights, "View/2D map mode", "&Heights", "H", HasView, InMode<2>},
    {Command::ModeLayerColour, "View/2D map mode", "&Layer colour", "", HasView, InMode<3>},
    {Command::DrawClassnames, "View", "&Draw entity classnames", "", Always, Classnames},
    {Command::DrawLightRadius, "View", "Draw light r&adius", "", Always, LightRadius},
    {Command::DrawTemplates, "View", "Draw &templates", "", Always, Templates},
    {Command::RenderPointEntities, "View", "Render point &entities", "", Always, PointEntities},
    {Command::CentreSelection, "View", "Center around &selection", "Ctrl+N", HasSelection},
    {Command::CentreAndZoom, "View", "Ce&nter and zoom", "Q", HasSelection},
    {Command::ZoomToFit, "View", "Zoom to &fit", "", HasMap},
    {Command::CameraToStart, "View", "3D &camera to start", "", HasMap},
    {Command::PaleOthers, "View", "&Pale all but the selection", "", Always, Pale},
    {Command::HeadLamp, "Lighting", "D3D head &lamp", "", HasMap, HeadLamp},
    {Command::LightingPreview, "Lighting", "D3D lighting &preview", "", HasMap, LightingPreview},
    {Command::QuakeLightingOn, "Lighting", "&Quake lighting on", "", HasMap},
    {Command::QuakeLightingOff, "Lighting", "Quake lighting &off", "", HasMap},
    {Command::Compile, "", "&Compile!", "", HasMap},
    {Command::TileWindows, "Window", "Tile", "", Always},
    {Command::CascadeWindows, "Window", "&Cascade", "", Always},
    {Command::ArrangeQuarters, "Window/Arrange", "&Quarters", "Ctrl+Q", Always},
    {Command::ArrangeXYLarge, "Window/Arrange", "&XY large", "", Always},
    {Command::Arrange3DLarge, "Window/Arrange", "&3D Large", "", Always},
    {Command::RefreshAll, "Window", "&Refresh All", "R", HasMap},
    {Command::ShowToolbar, "Window", "Show Tool&bar", "", Always, ToolbarShown},
    {Command::NewTopView, "Window", "New &XY(Top) View", "Ctrl+2", HasMap},
    {Command::NewSideView, "Window", "New &YZ(Side) View", "Ctrl+Y", HasMap},
    {Command::NewFrontView, "Window", "New X&Z(Front) View", "Ctrl+Z", HasMap},
    {Command::NewD3DCamera, "Window", "New D&3D Camera", "Ctrl+3", HasMap},
    {Command::NewGLCamera, "Window", "New &GL Camera", "Ctrl+G", HasMap},
    {Command::Keylist, "Help", "&Keylist", "?", Always},
    {Command::About, "Help", "&About", "", Always},
};

constexpr CommandRow OTHERS[] = {
    {Command::ToggleGridAndSnap, "", "", "", HasView},
    {Command::ApplyTexture, "", "", "", HasMap},
    {Command::FlipX, "", "Flip along X", "", HasSelection},
    {Command::CreateCuboid, "", "", "", HasMap, InUse<Command::CreateCuboid>},
    {Command::CreateWedge, "", "", "", HasMap, InUse<Command::CreateWedge>},
    {Command::CreateColumn, "", "", "", HasMap, InUse<Command::CreateColumn>},
    {Command::CreatePyramid, "", "", "", HasMap, InUse<Command::CreatePyramid>},
    {Command::CreateSphere, "", "", "", HasMap, InUse<Command::CreateSphere>},
    {Command::CreateHemisphere, "", "", "", HasMap, InUse<Command::CreateHemisphere>},
    {Command::RecentGroup, "", "", "", HasMap},
    {Command::PopupRecentMap, "", "", "", Always},
    {Command::OpenTemplate, "", "Open template", "", HasMap},
    {Command::CloseTemplate, "", "Close template", "", HasMap},
    {Command::RenameTemplate, "", "Rename template", "", HasMap},
    {Command::DeleteTemplate, "", "Delete template", "", HasMap},
    {Command::EmbedProperties, "", "Embed properties", "", HasMap},
    {Command::EmbedEdit, "", "Edit embed", "", HasMap},
    {Command::GroupFile, "", "", "", HasMap},
    {Command::ToolCube, "", "", "", HasMap, InUse<Command::CreateCuboid>},
    {Command::ToolWedge, "", "", "", HasMap, InUse<Command::CreateWedge>},
    {Command::ToolCameraPositioner, "", "", "", HasMap, InUse<Command::ToolCameraPositioner>},
    {Command::ToolCameraDetail, "", "", "", HasMap},
    {Command::ToolColumn, "", "", "", HasMap, InUse<Command::CreateColumn>},
    {Command::ToolPrimitive, "", "", "", HasMap},
    {Command::ToolRecolour3D, "", "", "", HasMap},
    {Command::ToolUpdate3D, "", "", "", HasMap},
    {Command::ToolLimitX, "", "", "", Always, Limited<0>},
    {Command::ToolLimitY, "", "", "", Always, Limited<1>},
    {Command::ToolLimitZ, "", "", "", Always, Limited<2>},
    {Command::ToolMapMode, "", "", "", HasView},
    {Command::ToolNewWindow, "", "", "", HasMap},
    {Command::ToolTextureLock, "", "", "", Always, LocksTextures},
    {Command::ToolRotationStep, "", "", "", Always},
};

// The first number of the range that `id` lies in; itself when in none.
unsigned RangeStart(unsigned id) {
  struct Range {
    Command first;
    unsigned count;
  };
  constexpr Range RANGES[] = {
      {Command::RecentGroup, Options::NUMRECENTGROUPS},
      {Command::PopupRecentMap, Options::NUMRECENTMAPS},
      {Command::GroupFile, Id(Command::LastGroupFile) - Id(Command::GroupFile)},
  };
  for (const Range& range : RANGES) {
    if (id >= Id(range.first) && id < Id(range.first) + range.count) return Id(range.first);
  }
  return id;
}

}  // namespace

std::span<const CommandRow> MainMenuCommands() {
  return MAINMENU;
}

std::span<const CommandRow> OtherCommands() {
  return OTHERS;
}

const CommandRow* FindCommand(unsigned id) {
  const Command wanted = static_cast<Command>(RangeStart(id));
  for (const std::span<const CommandRow> rows : {MainMenuCommands(), OtherCommands()}) {
    const auto row = std::ranges::find(rows, wanted, &CommandRow::command);
    if (row != rows.end()) return &*row;
  }
  return nullptr;
}

std::string MenuText(const CommandRow& row) {
  std::string text(row.text);
  if (!row.accelerator.empty()) text.append("\t").append(row.accelerator);
  return text;
}

std::string NameOf(const CommandRow& row) {
  std::string name(row.text);
  if (name.empty()) name = ToolTip(Id(row.command));
  name.resize(std::min({name.size(), name.find(" ("), name.find("...")}));
  std::erase(name, '&');
  return name;
}

std::string RecentMapText(const Options& options, std::size_t index) {
  const std::string& path = options.previousFiles[index];
  if (path.empty()) return "- NO FILE -";
  std::string text;
  for (const char c : path) text.append(c == '&' ? 2 : 1, c);  // no mnemonic
  return text;
}

const std::array<ToolbarButton, NUMTOOLBUTTONS>& ToolbarButtons() {
  static constexpr std::array<ToolbarButton, NUMTOOLBUTTONS> BUTTONS{{
      {Command::CreateCuboid, "Create cuboid (Alt+1)"},
      {Command::CreateWedge, "Create wedge (Alt+2)"},
      {Command::CreateColumn, "Create column (Alt+3)"},
      {Command::CreatePyramid, "Create Pyramid (Alt+4)"},
      {Command::CreateSphere, "Create Sphere (Alt+5)"},
      {Command::CreateHemisphere, "Create Hemisphere (Alt+6)"},
      {Command::ToolCube, "Create Cube (Ctrl+1)"},
      {Command::ToolWedge, "Create Wedge (Ctrl+2)"},
      {Command::Group, "&Group"},
      {Command::Ungroup, "Separate Group"},
      {Command::ToolCameraPositioner, "3D Camera Positioner"},
      {Command::ToolCameraDetail, "3D Camera detail"},
      {Command::CsgSubtraction, "CSG Subtraction (S)"},
      {Command::FaceEdit, "Face edit mode (Ctrl+F)"},
      {Command::ToolColumn, "Create Column (Ctrl+3)"},
      {Command::ToolPrimitive, "Primitive..."},
      {Command::ToolRecolour3D, "Recolour 3D (debugging tool)"},
      {Command::ToolUpdate3D, "Update 3D (debugging tool)"},
      {Command::FileOpen, "Open map (Ctrl+O)"},
      {Command::FileSave, "Save map (Ctrl+S)"},
      {Command::ApplyTexture, "Apply Current Texture (Ctrl+A)"},
      {Command::SelectFull, "Fully inside selector"},
      {Command::ToolLimitX, "Limit X axis movement"},
      {Command::ToolLimitY, "Limit Y axis movement"},
      {Command::ToolLimitZ, "Limit Z axis movement"},
      {Command::InsertGroup, "Insert group"},
      {Command::ToolMapMode, "2D Map Mode"},
      {Command::ScaleFlip, "Scale/Flip"},
      {Command::MultiDuplicate, "Multi-duplicate (Shift+Ctrl+D)"},
      {Command::CheckMap, "Check map"},
      {Command::HideSelection, "Hide selection (J)"},
      {Command::TouchUp, "Touch up mode (Ctrl+U)"},
      {Command::ToolNewWindow, "New window"},
      {Command::ToolTextureLock, "Texture lock"},
      {Command::ToolRotationStep, "Rotation step"},
  }};
  return BUTTONS;
}

std::string_view ToolTip(unsigned id) {
  for (const ToolbarButton& button : ToolbarButtons()) {
    if (Id(button.command) == id && !button.tip.empty()) return button.tip;
  }
  return "Undefined Tool Tip! Take pity on the beta-author.";
}

}  // namespace ferrowand
