// Face edit.
#include "document/map.h"
#include "operations/face_editing.h"
#include "shell/commands/command_groups.h"
#include "shell/windows/child_windows.h"
#include "shell/windows/face_window.h"
#include "views/tools/tool_set.h"

namespace ferrowand {
namespace {

void ToggleFaceEdit(const FaceContext& in, unsigned) {
  in.tools.ToggleFaceEdit();
  if (!in.tools.IsFaceEdit()) return;
  PickSelectedFaces(*in.windows.ActiveMap());
  ShowFaceWindow(in.sides, {in.windows, in.tools, in.options}, false);
}

constexpr CommandHandler<FaceContext> HANDLERS[] = {
    {Command::FaceEdit, ToggleFaceEdit},
};

}  // namespace

std::unique_ptr<CommandGroup> MakeFaceCommands(const FaceContext& context) {
  return std::make_unique<HandlerGroup<FaceContext>>(context, HANDLERS);
}

}  // namespace ferrowand
