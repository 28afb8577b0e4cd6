// The groups of commands, each with what it works with. All of that outlives the group.
#pragma once

#include <memory>
#include <string>

#include "shell/commands/command_group.h"

namespace ferrowand {

class BoundEntities;
class CameraJoystick;
class ChildWindows;
class Clipboard;
class Commands;
class Dialogs;
class Direct3D;
class Documents;
class Frame;
class Joysticks;
class LoadProgress;
class Map;
class PopupMenus;
class Reporter;
class SideWindows;
class TextureChoice;
class ToolSet;
class WindowMaker;
struct GameData;

// The File menu and Help.
struct FileContext {
  Documents& documents;
  ChildWindows& windows;
  Frame& frame;
  Dialogs& dialogs;
  Reporter& reporter;
  const Options& options;
};
std::unique_ptr<CommandGroup> MakeFileCommands(const FileContext& context);

struct OptionsContext {
  GameData& data;
  Options& options;
  BoundEntities& boundEntities;
  Joysticks& joysticks;
  CameraJoystick& joystick;
  Documents& documents;
  ChildWindows& windows;
  Frame& frame;
  Dialogs& dialogs;
  const std::string& directory;  // the current one, at the start
};
std::unique_ptr<CommandGroup> MakeOptionsCommands(const OptionsContext& context);

// The Edit menu.
struct EditContext {
  ChildWindows& windows;
  const ToolSet& tools;
  Frame& frame;
  Dialogs& dialogs;
  Clipboard& clipboard;
  Reporter& reporter;
  Options& options;
};
std::unique_ptr<CommandGroup> MakeEditCommands(const EditContext& context);

// The Modes menu, what bears on drags, and the tools that make primitives.
struct ModeContext {
  ToolSet& tools;
  ChildWindows& windows;
  Frame& frame;
  Commands& commands;
  Dialogs& dialogs;
  Reporter& reporter;
  Options& options;
};
std::unique_ptr<CommandGroup> MakeModeCommands(const ModeContext& context);

// The Operate menu, and the flip that only keys give.
struct OperateContext {
  ChildWindows& windows;
  ToolSet& tools;
  Dialogs& dialogs;
  Reporter& reporter;
  const TextureChoice& choice;
  const Options& options;
};
std::unique_ptr<CommandGroup> MakeOperateCommands(const OperateContext& context);

// What comes into a map as a whole: layers and their list, instances of templates, embedded maps,
// and groups, which go to files too.
struct InsertContext {
  ChildWindows& windows;
  WindowMaker& maker;
  Commands& commands;
  Dialogs& dialogs;
  Reporter& reporter;
  Options& options;
};
std::unique_ptr<CommandGroup> MakeInsertCommands(const InsertContext& context);

// The file of classes that a map uses, and keys that insert entities.
struct ClassContext {
  Documents& documents;
  ChildWindows& windows;
  SideWindows& sides;
  const Frame& frame;
  Dialogs& dialogs;
  BoundEntities& boundEntities;
  Reporter& reporter;
};
std::unique_ptr<CommandGroup> MakeClassCommands(const ClassContext& context);

// What entities are: their properties, their links, which brushes are theirs.
struct EntityContext {
  ChildWindows& windows;
  SideWindows& sides;
  ToolSet& tools;
  Frame& frame;
  Dialogs& dialogs;
  Commands& commands;
  Reporter& reporter;
  Options& options;
};
std::unique_ptr<CommandGroup> MakeEntityCommands(const EntityContext& context);

// What the popups of instances, of opened templates and of embedded maps give.
struct TemplateContext {
  Documents& documents;
  ChildWindows& windows;
  Dialogs& dialogs;
  Reporter& reporter;
};
std::unique_ptr<CommandGroup> MakeTemplateCommands(const TemplateContext& context);

// The View menu.
struct ViewContext {
  Documents& documents;
  ChildWindows& windows;
  Commands& commands;
  const PopupMenus& popups;
  Reporter& reporter;
  Options& options;
};
std::unique_ptr<CommandGroup> MakeViewCommands(const ViewContext& context);

// The Window menu.
struct WindowContext {
  ChildWindows& windows;
  WindowMaker& maker;
  Frame& frame;
  Commands& commands;
  const PopupMenus& popups;
  Options& options;
};
std::unique_ptr<CommandGroup> MakeWindowCommands(const WindowContext& context);

// What opens and moves a map's camera, and what it shows; the Lighting menu.
struct CameraContext {
  ChildWindows& windows;
  WindowMaker& maker;
  ToolSet& tools;
  Direct3D& direct3d;
  LoadProgress& progress;
  Reporter& reporter;
  const Options& options;
};
std::unique_ptr<CommandGroup> MakeCameraCommands(const CameraContext& context);

// Compile!, what it leaves to look at, and what is asked of a map before.
struct CompileContext {
  GameData& data;
  Documents& documents;
  ChildWindows& windows;
  SideWindows& sides;
  WindowMaker& maker;
  const Frame& frame;
  Dialogs& dialogs;
  Clipboard& clipboard;
  Reporter& reporter;
  Options& options;
  std::string dataFolder;  // the user's own
};
std::unique_ptr<CommandGroup> MakeCompileCommands(const CompileContext& context);

// What finds objects: the entity tree, and Find Entity.
struct FindContext {
  ChildWindows& windows;
  SideWindows& sides;
  WindowMaker& maker;
  Options& options;
};
std::unique_ptr<CommandGroup> MakeFindCommands(const FindContext& context);

// The texture browser, what puts textures on faces, and the WADs that textures come from.
struct TextureContext {
  ChildWindows& windows;
  SideWindows& sides;
  WindowMaker& maker;
  Commands& commands;
  TextureChoice& choice;
  Documents& documents;
  GameData& data;
  const Frame& frame;
  Dialogs& dialogs;
  Reporter& reporter;
  Options& options;
};
std::unique_ptr<CommandGroup> MakeTextureCommands(const TextureContext& context);

// Face edit, which has a window of its own.
struct FaceContext {
  ChildWindows& windows;
  SideWindows& sides;
  ToolSet& tools;
  Options& options;
};
std::unique_ptr<CommandGroup> MakeFaceCommands(const FaceContext& context);

// For those that are never grey for want of one: whether something is selected; says the text
// otherwise.
bool RequireSelection(const Map& map, Reporter& reporter, const char* title, const char* text);

}  // namespace ferrowand
