// The user's settings in the registry.
#pragma once

#include <memory>

#include "platform/settings_store.h"

namespace ferrowand {

// Below HKEY_LOCAL_MACHINE; for a user who may not write there, below HKEY_CURRENT_USER.
std::unique_ptr<SettingsStore> MakeRegistrySettingsStore();

}  // namespace ferrowand
