// What waits for the user inside a modal window of the system: file choosers, popup menus, small
// boxes. A seam, so that tests can answer.
#pragma once

#include "shell/system/win32.h"

#include <array>
#include <optional>
#include <string>

#include "platform/colour.h"
#include "shell/dialogs/compile_dialog.h"
#include "shell/dialogs/form_dialog.h"

namespace ferrowand {

struct OptionsToEdit;

struct FileChoice {
  bool saving = false;  // asks before an existing file is chosen
  std::string title;
  std::string filter;        // "Name|*.a;*.b|Other name|*.c|"
  unsigned filterIndex = 1;  // the one shown at first, counted from 1
  std::string name;          // shown at first
  std::string extension;     // for a name without one, unless the filter has its own
  HWND owner = nullptr;      // the frame, unless a dialog asks
};

// For choosing a map to read.
inline constexpr char MAP_FILTER[] =
    "Maps (*.xmp, *.map)|*.xmp;*.map|Extended Maps (*.xmp)|*.xmp|Quake maps (*.map)|*.map|"
    "All files (*.*)|*.*|";

class Dialogs {
 public:
  virtual ~Dialogs() = default;

  // The frame, once it is there: the owner of what names no other one.
  void SetOwner(HWND owner) { owner_ = owner; }

  // The whole path, or nothing when the user thinks better of it.
  virtual std::optional<std::string> ChooseFile(const FileChoice& choice) = 0;
  virtual std::optional<std::string> ChooseFolder(HWND owner, const std::string& title) = 0;
  // The colour, shown at first as it is, or nothing when the user thinks better of it.
  virtual std::optional<Colour> ChooseColour(Colour colour) = 0;
  // The command chosen, 0 for none. The owner receives no command message.
  virtual unsigned TrackPopup(HWND owner, HMENU menu, POINT screen) = 0;
  unsigned TrackAtCursor(HWND owner, HMENU menu);
  unsigned TrackAtCursor(HMENU menu) { return TrackAtCursor(owner_, menu); }
  virtual void ShowAbout() = 0;
  // False when the user thinks better of it; else the form has accepted what was typed.
  virtual bool Ask(const Form& form) = 0;
  // False when the user thinks better of it.
  virtual bool AskOptions(const OptionsToEdit& edit) = 0;
  // Nothing when the user thought better of it.
  virtual std::optional<CompileOptions> AskCompile(const CompileQuestion& question) = 0;

 protected:
  HWND owner_ = nullptr;
};

class SystemDialogs : public Dialogs {
 public:
  std::optional<std::string> ChooseFile(const FileChoice& choice) override;
  std::optional<std::string> ChooseFolder(HWND owner, const std::string& title) override;
  std::optional<Colour> ChooseColour(Colour colour) override;
  unsigned TrackPopup(HWND owner, HMENU menu, POINT screen) override;
  void ShowAbout() override;
  bool Ask(const Form& form) override;
  bool AskOptions(const OptionsToEdit& edit) override;
  std::optional<CompileOptions> AskCompile(const CompileQuestion& question) override;

 private:
  std::array<COLORREF, 16> ownColours_{};  // that the user has mixed
};

}  // namespace ferrowand
