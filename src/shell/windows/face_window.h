// The window of face edit: what the picked faces of the active map have in common, how their
// textures lie, a small picture of them, and what can be done to that. It stands beside the others
// while the mode is on.
#pragma once

#include "shell/system/win32.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "document/live_step.h"
#include "operations/face_editing.h"
#include "shell/windows/map_dialog.h"

namespace ferrowand {

class FacePicture;
class ToolSet;
struct Options;

// What the window works with. All outlive it.
struct FaceWindowContext {
  ChildWindows& windows;
  const ToolSet& tools;
  Options& options;
};

class FaceWindow : public MapDialog {
 public:
  // Handle() is null when the system gave no window.
  FaceWindow(SideWindows& sides, const FaceWindowContext& context);
  ~FaceWindow() override;

  // For the active map; with the keys going there, or not.
  void Show(bool activate);

  // --- as a window beside the frame
  void OnIdle() override;
  void FinishTyping() override;

  // --- from the map
  void OnChange(const MapChange& change) override;

 private:
  using Clock = std::chrono::steady_clock;
  struct Repeats {
    Map* map;
    UndoStore::StateId state;  // that it left
    std::vector<PickedFace> faces;
    int button;
    int count;
  };

  // --- as a dialog
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  bool OnInit() override;
  void OnCommand(int id, int notice) override;
  LRESULT OnNotify(NMHDR& header) override;
  void OnClose() override;
  void OnOtherMap() override;

  static LRESULT CALLBACK FieldFunc(HWND edit, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                    DWORD_PTR window);
  std::vector<PickedFace> Faces() const;

  void Refresh();
  void ShowState() const;
  void ShowFields(const FaceFacts& facts);
  void EnableAll(bool on) const;

  void OnButton(int id);
  void OnTyped(int field);
  bool Accept();
  void OnEscape();
  // So many steps, of the grid or, finely, of the least.
  void Step(int field, int steps, bool finely);
  double StepOf(PlacementField field, bool finely) const;
  int NotchesOf(int turned);

  void Fit(int button);
  void AlignToEdge();
  // What counts the presses of the button, if nothing else has been done since the last one; it
  // begins anew with `first` else.
  int* Again(int button, int first);
  void Drag(const TexturePoint& more);
  void Hold(int corner);

  // One step of undo, known by that name.
  void Do(const std::string& name, const std::function<void(EditStep&)>& change);
  // The same that goes on as long as the user is at it.
  void DoLive(const std::string& name, const std::function<void(EditStep&)>& change);
  void EndLive(bool isCancelled);

  const FaceWindowContext context_;
  std::unique_ptr<FacePicture> picture_;
  bool isStale_ = true;
  bool isFilling_ = false;

  std::optional<LiveStep> live_;
  int typing_ = -1;  // the field
  bool isRefused_ = false;
  int stepping_ = -1, steps_ = 0;  // the field, and how far
  bool finely_ = false;
  int wheelRest_ = 0;  // of turns smaller than a notch
  Clock::time_point steppedAt_;
  std::optional<Repeats> again_;
  std::optional<TexturePlacement> copied_;
};

// Comes to the front, and into being where there is none.
void ShowFaceWindow(SideWindows& sides, const FaceWindowContext& context, bool activate);

}  // namespace ferrowand
