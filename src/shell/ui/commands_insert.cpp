// What comes into a map as a whole: layers and their list, instances of templates, embedded maps,
// and groups, which go to files too.
#include <algorithm>
#include <cmath>

#include "document/edit/clipboard.h"
#include "document/edit/layers.h"
#include "document/edit/new_entity.h"
#include "document/edit/selection.h"
#include "document/edit/templates.h"
#include "platform/system.h"
#include "shell/services/number_text.h"
#include "shell/ui/app.h"
#include "shell/ui/commands.h"
#include "shell/ui/group_popup.h"

namespace ferrowand {
namespace {

constexpr char MAP_FILTER[] =
    "Maps (*.xmp, *.map)|*.xmp;*.map|Extended Maps (*.xmp)|*.xmp|Quake maps (*.map)|*.map|"
    "All files (*.*)|*.*|";

void AddLayer(App& app, unsigned) {
  Map& map = *app.ActiveMap();
  const auto answer = app.dialogs.Ask(app.frame.Handle(),
                                      {"Insert layer", {{"Name", UnusedName(map, "layer"), {}}}});
  if (!answer) return;
  InsertLayer(map, answer->front());
  Conclude(app, map, EditResult::Done);
}

void ShowLayers(App& app, unsigned) {
  app.ShowLayers(*app.ActiveMap());
}

constexpr char NEW_TEMPLATE[] = "(new, of the selection)";

// Around the middle of the selection: an instance inserted while it is selected stands as deep.
void AddTemplate(App& app, Map& map, const std::string& name) {
  if (std::ranges::count(TemplateNames(map), name) != 0) {
    app.reporter.Show("Cannot continue", "This map has a template of that name");
    return;
  }
  const Bounds box = SelectionBounds(map);
  Vec3 pivot;
  for (int axis = 0; axis < 3; ++axis) {
    pivot[axis] = std::round((box.mins[axis] + box.maxs[axis]) / 2);
  }
  Conclude(app, map, MakeTemplate(map, name, pivot));
}

void AddInstance(App& app, unsigned) {
  Map& map = *app.ActiveMap();
  std::vector<std::string> choices = TemplateNames(map);
  if (!map.selection.empty()) choices.emplace_back(NEW_TEMPLATE);
  if (choices.empty()) {
    app.reporter.Show("Cannot continue",
                      "This map has no templates. Select something to make one of it.");
    return;
  }
  const Vec3 place = PlaceForNew(app, map);
  const auto answer =
      app.dialogs.Ask(app.frame.Handle(), {"Insert template instance",
                                           {{"Template", "", std::move(choices)},
                                            {"Name of a new one", UnusedName(map, "template"), {}},
                                            {"Angle (degrees)", "0", {}},
                                            {"Scale along X", "1", {}},
                                            {"Scale along Y", "1", {}},
                                            {"Scale along Z", "1", {}}}});
  if (!answer) return;
  if (answer->front() == NEW_TEMPLATE) return AddTemplate(app, map, (*answer)[1]);
  InstanceSettings settings{.templateName = answer->front(), .angle = ParseInt((*answer)[2])};
  for (std::size_t i = 0; i < 3; ++i) {
    settings.scale[static_cast<int>(i)] = static_cast<float>(ParseFloat((*answer)[3 + i]));
  }
  Conclude(app, map, InsertInstance(map, settings, place));
}

// Of the size that its map is to fit.
void AddEmbed(App& app, unsigned) {
  Map& map = *app.ActiveMap();
  const Vec3 place = PlaceForNew(app, map);
  FileChoice choice;
  choice.title = "Embed";
  choice.filter = MAP_FILTER;
  const auto path = app.dialogs.ChooseFile(app.frame.Handle(), choice);
  if (!path) return;
  const auto answer = app.dialogs.Ask(
      app.frame.Handle(),
      {"Embed",
       {{"Size along X", "128", {}}, {"Size along Y", "128", {}}, {"Size along Z", "128", {}}}});
  if (!answer) return;
  Bounds box{{0, 0, 0}, {0, 0, 0}};
  for (std::size_t i = 0; i < 3; ++i) {
    const float half = static_cast<float>(std::abs(ParseFloat((*answer)[i])) / 2);
    box.mins[static_cast<int>(i)] = -half;
    box.maxs[static_cast<int>(i)] = half;
  }
  Conclude(app, map, InsertEmbed(map, *path, box, place));
}

void AddGroupFile(App& app, Map& map, const std::string& path) {
  const EditResult result = InsertGroup(map, path);
  if (result == EditResult::Done) app.options.AddRecentGroup(path);
  Conclude(app, map, result);
}

void ChooseGroupFile(App& app, Map& map) {
  FileChoice choice;
  choice.title = "Insert group";
  choice.filter = MAP_FILTER;
  if (const auto path = app.dialogs.ChooseFile(app.frame.Handle(), choice)) {
    AddGroupFile(app, map, *path);
  }
}

// The popup's own "Another..." has the number of the command that opens it.
void ShowGroups(App& app, unsigned) {
  const OwnedMenu menu = MakeGroupPopup(app.options);
  POINT at;
  GetCursorPos(&at);
  const unsigned chosen = app.dialogs.TrackPopup(app.frame.Handle(), menu.get(), at);
  Map* map = app.ActiveMap();
  if (chosen == Id(Command::InsertGroup)) {
    if (map) ChooseGroupFile(app, *map);
  } else {
    app.Execute(chosen);
  }
}

void AddRecentGroup(App& app, unsigned id) {
  // By value: it becomes the first of the list.
  const std::string path = app.options.previousGroups[id - Id(Command::RecentGroup)];
  if (!path.empty()) AddGroupFile(app, *app.ActiveMap(), path);
}

void AddListedGroup(App& app, unsigned id) {
  const std::vector<std::string> files = GroupFiles(app.options);
  const std::size_t index = id - Id(Command::GroupFile);
  if (index >= files.size()) return;
  AddGroupFile(app, *app.ActiveMap(), app.options.groupsDirectory + PathSeparator() + files[index]);
}

void SaveSelection(App& app, unsigned) {
  Map& map = *app.ActiveMap();
  if (map.selection.empty()) return Conclude(app, map, EditResult::NothingSelected);
  FileChoice choice;
  choice.saving = true;
  choice.title = "Save group";
  choice.filter = "Extended Map (*.xmp)|*.xmp|";
  choice.extension = "xmp";
  const auto path = app.dialogs.ChooseFile(app.frame.Handle(), choice);
  if (!path) return;
  const EditResult result = SaveGroup(map, *path);
  if (result == EditResult::Done) app.options.AddRecentGroup(*path);
  if (result != EditResult::CannotWrite) Conclude(app, map, result);
}

constexpr CommandHandler HANDLERS[] = {
    {Command::InsertTemplate, AddInstance}, {Command::Embed, AddEmbed},
    {Command::InsertLayer, AddLayer},       {Command::InsertGroup, ShowGroups},
    {Command::RecentGroup, AddRecentGroup}, {Command::GroupFile, AddListedGroup},
    {Command::SaveGroup, SaveSelection},    {Command::LayersList, ShowLayers},
};

}  // namespace

std::span<const CommandHandler> InsertCommands() {
  return HANDLERS;
}

}  // namespace ferrowand
