// What the program is made of, in the order in which it is made: each part is handed what it works
// with, and finds nothing else.
#pragma once

#include "shell/system/win32.h"

#include "base/options.h"
#include "base/report.h"
#include "document/bound_entities.h"
#include "document/game_data.h"
#include "operations/texture_choice.h"
#include "shell/app/window_classes.h"
#include "shell/commands/accelerators.h"
#include "shell/commands/commands.h"
#include "shell/dialogs/popup_menus.h"
#include "shell/direct3d/direct3d.h"
#include "shell/documents/documents.h"
#include "shell/frame/frame.h"
#include "shell/frame/load_window.h"
#include "shell/frame/tips.h"
#include "shell/system/gdi_canvas.h"
#include "shell/windows/camera_joystick.h"
#include "shell/windows/child_windows.h"
#include "shell/windows/side_windows.h"
#include "shell/windows/wad_editing.h"
#include "shell/windows/window_maker.h"
#include "shell/windows/window_tool_host.h"
#include "views/tools/tool_set.h"

namespace ferrowand {

struct Seams;

struct AppParts {
  AppParts(HINSTANCE instance, const Seams& seams);
  AppParts(const AppParts&) = delete;
  AppParts& operator=(const AppParts&) = delete;

  Options options;
  Reporter reporter;
  LoadWindow progress;
  GameData data;
  BoundEntities boundEntities;
  TextureChoice choice;
  Direct3D direct3d;
  WindowClasses classes;
  GdiObjects objects;
  BackBuffer backBuffer;
  PopupMenus popups;
  // These refer to each other, also to those that stand below: none is called before all are made.
  Commands commands;
  Frame frame;
  ChildWindows windows;
  SideWindows sides;
  WindowToolHost toolHost;
  ToolSet tools;
  CameraJoystick joystick;
  WindowMaker maker;
  Documents documents;
  WadEditing wadEditing;
  Accelerators accelerators;
  Tips tips;

 private:
  void AddCommands(const Seams& seams);
};

}  // namespace ferrowand
