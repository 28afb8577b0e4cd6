// Every command of the editor, one row each: its number, where the menu shows it, its texts, when
// it can be given and when it is ticked. Menu, toolbar, popups and routing all ask here.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "base/options.h"

namespace ferrowand {

enum class Command : std::uint16_t {
  FileNew = 24331,
  FileOpen = 24332,
  InsertGroup = 51717,
  FileClose = 51701,
  FileSave = 24333,
  FileSaveAs = 24334,
  SaveGroup = 51752,
  ExportQuake = 51789,
  EditOptions = 51687,
  RecentMap = 51740,  // the first of six
  Exit = 24338,

  Undo = 51697,
  Redo = 51688,
  Insert = 51703,
  Cut = 51689,
  Copy = 51690,
  Paste = 51691,
  Clear = 51716,
  SelectNone = 51692,
  Duplicate = 51758,
  MultiDuplicate = 51759,
  FindEntity = 51685,
  FindTexture = 51753,
  ReplaceTexture = 51754,
  FindNext = 50120,
  FindPrevious = 50121,
  BindToKey = 50131,

  ModeEntity = 105,
  ModeBrush = 106,
  BrushHandles = 51796,
  SelectPartial = 51704,
  SelectFull = 300,
  SelectMultiple = 51773,
  LayPath = 51797,
  SelectNext = 51723,
  FaceEdit = 52686,
  TouchUp = 51722,

  OperateMatrix = 51705,
  ScaleFlip = 51698,
  CsgSubtraction = 51984,
  CsgIntersection = 51788,
  Hollow = 51725,
  SetAsLeading = 51767,
  Group = 202,
  Ungroup = 203,
  ShowHidden = 51714,
  HideSelection = 51751,
  SnapToGrid = 50101,

  InsertTemplate = 51771,
  Embed = 51787,
  InsertLayer = 51696,
  EntityTree = 51682,
  TextureBrowser = 51694,
  LayersList = 51707,
  DensityAnalysis = 51729,
  MemoryAnalysis = 51765,
  WadManager = 51712,
  SetQc = 51713,
  ClassMessages = 50130,
  PurgeFiles = 51710,
  OpenFiles = 51683,
  EditWorldspawn = 51684,
  GetInfo = 51699,
  CheckMap = 51708,
  PakNew = 51720,
  PakTool = 120,
  ShowLeak = 50110,
  NextLeakPoint = 50111,
  PreviousLeakPoint = 50112,
  ShowPortals = 50113,
  LoadLeak = 50114,

  ZoomIn = 51774,
  ZoomOut = 51775,
  ZoomTo = 51776,
  GridToggle = 51763,
  SnapToggle = 51761,
  GridSmaller = 51762,
  GridLarger = 51764,
  ModeNormal = 51882,
  ModeOneMip = 51883,
  ModeHeights = 51884,
  ModeLayerColour = 51731,
  DrawClassnames = 51727,
  DrawLightRadius = 51730,
  DrawTemplates = 51772,
  RenderPointEntities = 51724,
  CentreSelection = 51709,
  CentreAndZoom = 51766,
  ZoomToFit = 51748,
  CameraToStart = 51749,
  PaleOthers = 2350,

  HeadLamp = 51750,
  LightingPreview = 51760,
  QuakeLightingOn = 51726,
  QuakeLightingOff = 51728,
  Compile = 51706,

  TileWindows = 18873,
  CascadeWindows = 18874,
  ArrangeQuarters = 51769,
  ArrangeXYLarge = 51770,
  Arrange3DLarge = 51768,
  RefreshAll = 51734,
  ShowToolbar = 51719,
  NewTopView = 51686,
  NewSideView = 51695,
  NewFrontView = 51693,
  NewD3DCamera = 51711,
  NewGLCamera = 51718,

  Keylist = 51757,
  About = 51700,

  // Not in the main menu.
  ToggleGridAndSnap = 148,
  ApplyTexture = 53686,
  FlipX = 51793,
  CreateCuboid = 200,
  CreateWedge = 201,
  CreateColumn = 190,
  CreatePyramid = 250,
  CreateSphere = 206,
  CreateHemisphere = 207,
  RecentGroup = 10000,  // the first of eight
  PopupRecentMap = 10100,
  OpenTemplate = 50102,
  CloseTemplate = 50103,
  RenameTemplate = 50104,
  DeleteTemplate = 50105,
  EmbedProperties = 50106,
  EmbedEdit = 50107,
  Properties = 50140,
  Connect = 50141,
  FollowLinks = 50142,
  FollowLinksBack = 50143,
  TieToEntity = 50144,
  TieToWorld = 50145,
  DuplicateLinks = 50146,
  GroupFile = 10200,  // the first of as many as the groups directory holds, below LastGroupFile
  LastGroupFile = 18000,

  // Toolbar only.
  ToolCube = 2306,
  ToolWedge = 2307,
  ToolCameraPositioner = 2310,
  ToolCameraDetail = 2311,
  ToolColumn = 2314,
  ToolPrimitive = 2315,
  ToolRecolour3D = 2316,
  ToolUpdate3D = 2317,
  ToolLimitX = 2322,
  ToolLimitY = 2323,
  ToolLimitZ = 2324,
  ToolMapMode = 2326,
  ToolNewWindow = 2332,
  ToolTextureLock = 2333,
  ToolRotationStep = 2334,
};

inline constexpr unsigned Id(Command command) {
  return static_cast<unsigned>(command);
}

// What of the program's state decides on greys and ticks.
struct CommandFacts {
  bool hasMap = false;   // a map's window is active
  bool hasView = false;  // and it is a 2D view
  bool hasSelection = false;
  bool hasTemplates = false;  // the active map
  bool canUndo = false;
  bool canRedo = false;
  bool grid = false;  // of the active map
  bool snap = false;
  bool hasLeak = false;    // a line that tells where the map leaks has been read
  bool showsLeak = false;  // and is drawn
  bool showsPortals = false;
  std::uint8_t mapMode = 0;          // of the active view
  Command mode{};                    // that is in use, or the solid being made; 0 for none
  bool selectsFull = false;          // a rectangle takes only what lies inside
  std::uint8_t limitedAxes = 0;      // bit n: drags leave axis n as it is
  bool hasLamp = false;              // the camera of the active map
  bool previewsLight = false;        // it too
  const Options* options = nullptr;  // never null when asked

  bool HasRecentMap(std::size_t index) const {
    return index < options->previousFiles.size() && !options->previousFiles[index].empty();
  }
};

struct CommandRow {
  using Fact = bool (*)(const CommandFacts&);

  Command command;
  std::string_view menu;  // "File/Export"; "" for an item of the bar itself
  std::string_view text;
  std::string_view accelerator;  // as the menu shows it
  Fact available;
  Fact checked = nullptr;  // null: never ticked
};

// In menu order.
std::span<const CommandRow> MainMenuCommands();
// Those that only accelerators, popups and the toolbar give; without menu.
std::span<const CommandRow> OtherCommands();
// Null for what is no command. Commands that stand for a range are found by any number of it.
const CommandRow* FindCommand(unsigned id);

// The text of a menu item: the name, a tab, the accelerator.
std::string MenuText(const CommandRow& row);
// What the user reads of the command elsewhere: the text alone, or else that of its button.
std::string NameOf(const CommandRow& row);
// The text of a recent map's item.
std::string RecentMapText(const Options& options, std::size_t index);

struct ToolbarButton {
  Command command;
  std::string_view tip;  // may be empty
};

inline constexpr std::size_t NUMTOOLBUTTONS = 35;
// In the order of the toolbar and of the pictures in its bitmap.
const std::array<ToolbarButton, NUMTOOLBUTTONS>& ToolbarButtons();
// What the button of that command shows while the mouse rests on it.
std::string_view ToolTip(unsigned id);

}  // namespace ferrowand
