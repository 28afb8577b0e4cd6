// What the windows show of a small map, control by control, held against what they showed when
// somebody looked at them last.
#include "shell/shown_fixture.h"

namespace ferrowand {
namespace {

TEST_F(ShownTest, EveryWindowShowsWhatItShowedWhenItWasLookedAt) {
  Open(std::string(TWO_BRUSHES) + LAMP);
  map->selection.Set({Object(2)});
  for (const Command command :
       {Command::LayersList, Command::EntityTree, Command::TextureBrowser, Command::CheckMap,
        Command::EditWorldspawn, Command::Properties, Command::FindEntity, Command::ReplaceTexture,
        Command::WadManager, Command::FaceEdit, Command::GetInfo, Command::ClassMessages}) {
    Give(command);
    app->Pump();
  }
  dialogs.compile = CompileOptions{.flags = COMPILE_QBSP};  // that is not there
  Give(Command::Compile);
  Activate(WindowOf(Orientation::Top));
  map->selection.Clear();
  app->Pump();
  Tell("nothing selected", teller->All());
  map->selection.Set({Object(0)});
  app->Pump();
  Tell("a brush", teller->Changes());
  Give(Command::FaceEdit);
  map->selection.Set({Object(2)});
  app->Pump();
  Tell("a light", teller->Changes());
  map->selection.Set({Object(0), Object(2)});
  app->Pump();
  Tell("both", teller->Changes());
  ExpectLookedAt(lines, "windows.txt");
}

}  // namespace
}  // namespace ferrowand
