// The File menu and Help.
#include "base/report.h"
#include "shell/commands/command_groups.h"
#include "shell/dialogs/dialogs.h"
#include "shell/documents/documents.h"
#include "shell/frame/frame.h"
#include "shell/windows/child_windows.h"
#include "shell/windows/key_list_window.h"

namespace ferrowand {
namespace {

void New(const FileContext& in, unsigned) {
  in.documents.New();
}

void Open(const FileContext& in, unsigned) {
  FileChoice choice;
  choice.title = "Open map";
  choice.filter = MAP_FILTER;
  if (const auto path = in.dialogs.ChooseFile(choice)) in.documents.Open(*path);
}

void OpenRecent(const FileContext& in, unsigned id) {
  const unsigned first =
      id >= Id(Command::RecentMap) ? Id(Command::RecentMap) : Id(Command::PopupRecentMap);
  // By value: opening the map reorders the list.
  const std::string path = in.options.previousFiles[id - first];
  if (!path.empty()) in.documents.Open(path);
}

void Close(const FileContext& in, unsigned) {
  const Answer answer = in.reporter.Show("Close Map?", "Are you sure you want to close this map?",
                                         Buttons::YesNo, Icon::Question);
  if (answer == Answer::Yes) in.documents.Close(*in.windows.ActiveMap());
}

void Save(const FileContext& in, unsigned) {
  in.documents.Save(*in.windows.ActiveMap());
}
void SaveAs(const FileContext& in, unsigned) {
  in.documents.SaveAs(*in.windows.ActiveMap());
}
void Export(const FileContext& in, unsigned) {
  in.documents.ExportQuakeMap(*in.windows.ActiveMap());
}
void Exit(const FileContext& in, unsigned) {
  SendMessageA(in.frame.Handle(), WM_CLOSE, 0, 0);
}

void Keylist(const FileContext& in, unsigned) {
  in.windows.Add(std::make_unique<KeyListWindow>(in.windows));
}
void About(const FileContext& in, unsigned) {
  in.dialogs.ShowAbout();
}

template <unsigned index>
constexpr CommandHandler<FileContext> Recent() {
  return {static_cast<Command>(Id(Command::RecentMap) + index), OpenRecent};
}

constexpr CommandHandler<FileContext> HANDLERS[] = {
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

std::unique_ptr<CommandGroup> MakeFileCommands(const FileContext& context) {
  return std::make_unique<HandlerGroup<FileContext>>(context, HANDLERS);
}

}  // namespace ferrowand
