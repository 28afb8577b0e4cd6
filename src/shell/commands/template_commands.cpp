// What the popups of instances, of opened templates and of embedded maps give.
#include "base/report.h"
#include "document/classes/special_classes.h"
#include "document/map.h"
#include "operations/template_editing.h"
#include "operations/templates.h"
#include "platform/file.h"
#include "platform/system.h"
#include "shell/commands/command_groups.h"
#include "shell/dialogs/dialogs.h"
#include "shell/dialogs/refusal.h"
#include "shell/dialogs/typed_numbers.h"
#include "shell/documents/documents.h"
#include "shell/system/wide_text.h"
#include "shell/windows/child_windows.h"

namespace ferrowand {
namespace {

std::string NameOf(const entity& templateClass) {
  const char* name = templateClass.GetKey("XMPentityname");
  return name ? name : "";
}

std::string Instances(std::size_t count) {
  return std::to_string(count) + (count == 1 ? " instance" : " instances");
}

void Open(const TemplateContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  entity* instance = SelectedInstance(map);
  if (!instance || !Conclude(map, OpenTemplate(map, *instance))) return;
  const std::string name = NameOf(*TemplateInUse(map));
  map.ShowStatus("Template " + name + " is opened: what you make joins it until you close it");
}

void Close(const TemplateContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  entity* templateClass = TemplateInUse(map);
  if (!templateClass || !Conclude(map, CloseTemplate(map, *templateClass))) return;
  map.ShowStatus("Template " + NameOf(*templateClass) +
                 " is closed: " + Instances(InstancesOf(map, *templateClass).size()) + " show it");
}

void Rename(const TemplateContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  entity* templateClass = TemplateInUse(map);
  if (!templateClass) return;
  const auto accept = [&](const FormValues& typed) {
    if (typed.front() == AsUtf8(NameOf(*templateClass))) return true;
    if (!Conclude(map, RenameTemplate(map, *templateClass, typed.front()))) return false;
    map.ShowStatus("Template " + NameOf(*templateClass) + " is called so in " +
                   Instances(InstancesOf(map, *templateClass).size()));
    return true;
  };
  in.dialogs.Ask({"Rename template",
                  "All its instances follow.",
                  {{"Name", {NameOf(*templateClass)}, {}}},
                  accept});
}

void Delete(const TemplateContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  entity* templateClass = TemplateInUse(map);
  if (!templateClass) return;
  const std::string text = "Deleted template " + NameOf(*templateClass) + " and " +
                           Instances(InstancesOf(map, *templateClass).size());
  if (Conclude(map, DeleteTemplate(map, *templateClass))) map.ShowStatus(text);
}

FormRow RowOf(const char* label, const Vec3& values) {
  FormRow row{label, {}, {}};
  for (int axis = 0; axis < 3; ++axis) row.values.push_back(Format("%.9g", double{values[axis]}));
  return row;
}

Vec3 ToVec3(std::span<const double> numbers) {
  return {static_cast<float>(numbers[0]), static_cast<float>(numbers[1]),
          static_cast<float>(numbers[2])};
}

void EditEmbedKeys(const TemplateContext& in, unsigned) {
  Map& map = *in.windows.ActiveMap();
  entity* embed = SelectedEmbed(map);
  if (!embed) return;
  const char* file = embed->GetKey("XMPfilename");
  const Bounds box = EmbedBox(*embed);
  const std::vector<FormRow> rows{{"File", {file ? file : ""}, {}, true},
                                  RowOf("Box from", box.mins),
                                  RowOf("Box to", box.maxs)};
  FormValues offered;
  for (const FormRow& row : rows) {
    offered.insert(offered.end(), row.values.begin(), row.values.end());
  }
  const auto accept = [&](const FormValues& typed) {
    if (typed == offered) return true;  // which may be told less exactly than it is
    const auto numbers = NumbersOf(in.reporter, std::span(typed).subspan(1));
    if (!numbers) return false;
    const Bounds box{ToVec3(std::span(*numbers).first(3)), ToVec3(std::span(*numbers).last(3))};
    for (int axis = 0; axis < 3; ++axis) {
      if (box.mins[axis] < box.maxs[axis]) continue;
      in.reporter.Show("Cannot continue", "On every axis the box must end beyond its beginning");
      return false;
    }
    return Conclude(map, ChangeEmbed(*embed, typed.front(), box));
  };
  in.dialogs.Ask({"Embedded map", "The map is made to fit a box about its origin.", rows, accept});
}

// As it is named, or beside the map that embeds it.
void OpenEmbedded(const TemplateContext& in, unsigned) {
  const Map& map = *in.windows.ActiveMap();
  const entity* embed = SelectedEmbed(map);
  const char* file = embed ? embed->GetKey("XMPfilename") : nullptr;
  if (!file || !*file) {
    in.reporter.Show("Cannot continue", "The embedded map names no file");
    return;
  }
  const std::string beside = map.Folder() + PathSeparator() + file;
  const bool isBeside =
      file::Find(file) != FindResult::Found && file::Find(beside) == FindResult::Found;
  in.documents.Open(isBeside ? beside : file);
}

constexpr CommandHandler<TemplateContext> HANDLERS[] = {
    {Command::OpenTemplate, Open},      {Command::CloseTemplate, Close},
    {Command::RenameTemplate, Rename},  {Command::DeleteTemplate, Delete},
    {Command::EmbedEdit, OpenEmbedded}, {Command::EmbedProperties, EditEmbedKeys},
};

}  // namespace

std::unique_ptr<CommandGroup> MakeTemplateCommands(const TemplateContext& context) {
  return std::make_unique<HandlerGroup<TemplateContext>>(context, HANDLERS);
}

}  // namespace ferrowand
