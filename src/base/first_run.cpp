#include <functional>

#include "base/options.h"
#include "base/report.h"
#include "platform/settings_store.h"

namespace ferrowand {
namespace {

bool WriteDefault(SettingsKey& parent, const std::string& name, const std::string& value) {
  const std::unique_ptr<SettingsKey> key = parent.Create(name).key;
  return key && key->WriteString("", value);
}

// An association that an earlier installation left is reported as a failure and kept: both meant.
void AssociateFiles(SettingsKey* types, Reporter& reporter, const std::string& directory) {
  const auto create = [types](const char* name) {
    return types ? types->Create(name) : SettingsKey::Created();
  };
  const SettingsKey::Created extension = create(".xmp");
  if (!extension.key || !extension.isNew || !extension.key->WriteString("", "Ferrowand.Document")) {
    reporter.Show("Error",
                  "Cannot create file association information! This means .xmp files will not load "
                  "up Ferrowand when you double click them.");
  }
  const SettingsKey::Created document = create("Ferrowand.Document");
  const std::string program = directory + "\\ferrowand.exe";
  if (!document.key || !document.isNew || !document.key->WriteString("", "Extended Map") ||
      !WriteDefault(*document.key, "DefaultIcon", program + ",1") ||
      !WriteDefault(*document.key, "shell\\open\\command", program + " %1")) {
    reporter.Show("Error",
                  "Cannot complete creation of file association information! This means .xmp files "
                  "will not load up Ferrowand when you double click them.");
  }
}

}  // namespace

void RunFirstTimeSetup(SettingsStore& store, Reporter& reporter,
                       const std::string& currentDirectory,
                       const std::function<void()>& makeShortcut) {
  reporter.Show("Ferrowand",
                "Either this is the first time you have run Ferrowand or the installation seems to "
                "have been corrupted, in which case it might be worthwhile reinstalling. Either "
                "way, you will need to set your Quake directory in File/Options");
  if (reporter.Show("Ferrowand", "Create shortcut to Ferrowand in Start menu?", Buttons::YesNo) ==
      Answer::Yes)
    makeShortcut();
  AssociateFiles(store.FileTypes().get(), reporter, currentDirectory);
}

}  // namespace ferrowand
