#include "shell/documents/rescue_form.h"

#include <ctime>

#include "base/path_text.h"
#include "document/map.h"
#include "platform/file.h"
#include "shell/dialogs/dialogs.h"

namespace ferrowand {
namespace {

constexpr char OPEN[] = "Open", LATER[] = "Leave for later", DELETE_IT[] = "Delete";

// "maps\e1m1.map": where two have the same name the folder tells them apart.
std::string ShortName(const std::string& path) {
  if (path == UNNAMED) return "A new map";
  const PathParts parts = SplitPath(path);
  const std::size_t last = parts.directory.find_last_not_of("\\/");
  const std::size_t before = parts.directory.find_last_of("\\/:", last);
  const std::size_t begin =
      last == std::string::npos || before == std::string::npos ? 0 : before + 1;
  return path.substr(begin);
}

// Of this place, as "22 Nov 2026, 14:03".
std::string TimeText(std::int64_t nanoseconds) {
  const auto time = static_cast<std::time_t>(nanoseconds / 1'000'000'000);
  const std::tm* local = std::localtime(&time);
  char text[40] = "";
  if (local) std::strftime(text, sizeof text, "%d %b %Y, %H:%M", local);
  return text;
}

FormRow RowOf(const Rescue& rescue) {
  const std::optional<FileStamp> stamp = file::Stamp(rescue.text);
  std::string label = ShortName(rescue.original);
  if (stamp) label += "   " + TimeText(stamp->time);
  return {label, {}, {OPEN, LATER, DELETE_IT}};
}

RescueChoice ChoiceOf(const std::string& typed) {
  return typed == OPEN        ? RescueChoice::Open
         : typed == DELETE_IT ? RescueChoice::Delete
                              : RescueChoice::Later;
}

}  // namespace

std::vector<RescueChoice> AskWhatToRescue(Dialogs& dialogs, const std::vector<Rescue>& rescues) {
  std::vector<RescueChoice> choices(rescues.size(), RescueChoice::Later);
  std::vector<FormRow> rows;
  rows.reserve(rescues.size());
  for (const Rescue& rescue : rescues) rows.push_back(RowOf(rescue));
  dialogs.Ask({"Unsaved work",
               "Ferrowand was ended before this work was saved. It was kept at these times:",
               std::move(rows), [&](const FormValues& typed) {
                 for (std::size_t i = 0; i < choices.size(); ++i) choices[i] = ChoiceOf(typed[i]);
                 return true;
               }});
  return choices;
}

}  // namespace ferrowand
