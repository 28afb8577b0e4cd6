// What comes into a map as a whole: layers and their list, instances of templates, embedded maps,
// and groups, which go to files too.
#include <algorithm>
#include <cmath>

#include "document/picking.h"
#include "operations/clipboard.h"
#include "operations/layers.h"
#include "operations/new_entity.h"
#include "operations/templates.h"
#include "platform/system.h"
#include "shell/app/app.h"
#include "shell/commands/commands.h"
#include "shell/dialogs/group_popup.h"

namespace ferrowand {
namespace {

constexpr char MAP_FILTER[] =
    "Maps (*.xmp, *.map)|*.xmp;*.map|Extended Maps (*.xmp)|*.xmp|Quake maps (*.map)|*.map|"
    "All files (*.*)|*.*|";

Vec3 ToVec3(const std::vector<double>& numbers) {
  return {static_cast<float>(numbers[0]), static_cast<float>(numbers[1]),
          static_cast<float>(numbers[2])};
}

void AddLayer(App& app, unsigned) {
  Map& map = *app.ActiveMap();
  const auto accept = [&](const FormValues& typed) {
    InsertLayer(map, typed.front());
    return Conclude(app, map, EditResult::Done);
  };
  app.dialogs.Ask(app.frame.Handle(),
                  {"Insert layer", "", {{"Name", {UnusedName(map, "layer")}, {}}}, accept});
}

void ShowLayers(App& app, unsigned) {
  app.ShowLayers(*app.ActiveMap());
}

constexpr char NEW_TEMPLATE[] = "(new, of the selection)";

// Around the middle of the selection: an instance inserted while it is selected stands as deep.
bool AddTemplate(App& app, Map& map, const std::string& name) {
  if (std::ranges::count(TemplateNames(map), name) != 0) {
    app.reporter.Show("Cannot continue", "This map has a template of that name");
    return false;
  }
  const Bounds box = SelectionBounds(map);
  Vec3 pivot;
  for (int axis = 0; axis < 3; ++axis) {
    pivot[axis] = std::round((box.mins[axis] + box.maxs[axis]) / 2);
  }
  return Conclude(app, map, MakeTemplate(map, name, pivot));
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
  const auto accept = [&](const FormValues& typed) {
    if (typed[0] == NEW_TEMPLATE) return AddTemplate(app, map, typed[1]);
    const auto angle = WholeNumberOf(app, typed[2], "The angle", -360, 360);
    if (!angle) return false;
    const auto scale = NumbersOf(app, std::span(typed).subspan(3));
    if (!scale) return false;
    const InstanceSettings settings{
        .templateName = typed[0], .angle = *angle, .scale = ToVec3(*scale)};
    return Conclude(app, map, InsertInstance(map, settings, place));
  };
  app.dialogs.Ask(app.frame.Handle(),
                  {"Insert template instance",
                   "",
                   {{"Template", {}, std::move(choices)},
                    {"Name of a new one", {UnusedName(map, "template")}, {}, true},
                    {"Degrees", {"0"}, {}},
                    AxisRow("Scale", "1")},
                   accept});
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
  const auto accept = [&](const FormValues& typed) {
    const auto size = NumbersOf(app, typed);
    if (!size) return false;
    if (std::ranges::any_of(*size, [](double extent) { return extent <= 0; })) {
      app.reporter.Show("Cannot continue", "Every size must be greater than 0");
      return false;
    }
    const Vec3 half = ToVec3(*size) * 0.5f;
    return Conclude(app, map, InsertEmbed(map, *path, {-half, half}, place));
  };
  app.dialogs.Ask(
      app.frame.Handle(),
      {"Embed", "The map is made to fit a box.", {AxisRow("Size of the box", "128")}, accept});
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
  if (!RequireSelection(app)) return;
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
