// The File menu and Help.
#include "shell/app/app.h"
#include "shell/commands/commands.h"

namespace ferrowand {
namespace {

void New(App& app, unsigned) {
  app.NewMap();
}

void Open(App& app, unsigned) {
  FileChoice choice;
  choice.title = "Open map";
  choice.filter =
      "Maps (*.xmp, *.map)|*.xmp;*.map|Extended Maps (*.xmp)|*.xmp|Quake maps (*.map)|*.map|"
      "All files (*.*)|*.*|";
  if (const auto path = app.dialogs.ChooseFile(app.frame.Handle(), choice)) app.OpenMap(*path);
}

void OpenRecent(App& app, unsigned id) {
  const unsigned first =
      id >= Id(Command::RecentMap) ? Id(Command::RecentMap) : Id(Command::PopupRecentMap);
  // By value: opening the map reorders the list.
  const std::string path = app.options.previousFiles[id - first];
  if (!path.empty()) app.OpenMap(path);
}

void Close(App& app, unsigned) {
  const Answer answer = app.reporter.Show("Close Map?", "Are you sure you want to close this map?",
                                          Buttons::YesNo, Icon::Question);
  if (answer == Answer::Yes) app.CloseMap(*app.ActiveMap());
}

void Save(App& app, unsigned) {
  app.SaveMap(*app.ActiveMap());
}
void SaveAs(App& app, unsigned) {
  app.SaveMapAs(*app.ActiveMap());
}
void Export(App& app, unsigned) {
  app.ExportQuakeMap(*app.ActiveMap());
}
void Exit(App& app, unsigned) {
  SendMessageA(app.frame.Handle(), WM_CLOSE, 0, 0);
}

void Keylist(App& app, unsigned) {
  app.ShowKeyList();
}
void About(App& app, unsigned) {
  app.dialogs.ShowAbout(app.frame.Handle());
}

template <unsigned index>
constexpr CommandHandler Recent() {
  return {static_cast<Command>(Id(Command::RecentMap) + index), OpenRecent};
}

constexpr CommandHandler HANDLERS[] = {
    {Command::FileNew, New},
    {Command::FileOpen, Open},
    {Command::FileClose, Close},
    {Command::FileSave, Save},
    {Command::FileSaveAs, SaveAs},
    {Command::ExportQuake, Export},
    Recent<0>(),
    Recent<1>(),
    Recent<2>(),
    Recent<3>(),
    Recent<4>(),
    Recent<5>(),
    {Command::PopupRecentMap, OpenRecent},
    {Command::Exit, Exit},
    {Command::Keylist, Keylist},
    {Command::About, About},
};

}  // namespace

std::span<const CommandHandler> FileCommands() {
  return HANDLERS;
}

}  // namespace ferrowand
