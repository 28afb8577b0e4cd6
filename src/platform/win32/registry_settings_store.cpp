#include "platform/win32/registry_settings_store.h"

#include <windows.h>

namespace ferrowand {
namespace {

constexpr const char* SETTINGSPATH = "Software\\ferrowand\\0.9";
constexpr DWORD NAMELENGTH = 512;

class RegistryKey final : public SettingsKey {
 public:
  explicit RegistryKey(HKEY key) : key_(key) {}
  ~RegistryKey() override { Close(); }
  RegistryKey(const RegistryKey&) = delete;
  RegistryKey& operator=(const RegistryKey&) = delete;

  static std::unique_ptr<SettingsKey> Open(HKEY parent, const std::string& name, REGSAM access) {
    HKEY key = nullptr;
    if (RegOpenKeyExA(parent, name.c_str(), 0, access, &key) != ERROR_SUCCESS) return nullptr;
    return std::make_unique<RegistryKey>(key);
  }

  static Created Create(HKEY parent, const std::string& name) {
    HKEY key = nullptr;
    DWORD disposition = 0;
    if (RegCreateKeyExA(parent, name.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS,
                        nullptr, &key, &disposition) != ERROR_SUCCESS)
      return {};
    return {std::make_unique<RegistryKey>(key), disposition == REG_CREATED_NEW_KEY};
  }

  std::unique_ptr<SettingsKey> Open(const std::string& name) override {
    return Open(key_, name, KEY_READ);
  }
  Created Create(const std::string& name) override { return Create(key_, name); }

  bool Delete(const std::string& name) override {
    const LSTATUS status = RegDeleteTreeA(key_, name.c_str());
    return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND;
  }

  std::optional<std::string> SubkeyName(std::uint32_t index) override {
    char name[NAMELENGTH];
    DWORD length = NAMELENGTH;
    if (RegEnumKeyExA(key_, index, name, &length, nullptr, nullptr, nullptr, nullptr) !=
        ERROR_SUCCESS)
      return std::nullopt;
    return std::string(name, length);
  }

  std::optional<std::uint32_t> ReadNumber(const std::string& name) override {
    DWORD value = 0, type = 0, size = sizeof value;
    if (RegQueryValueExA(key_, name.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(&value),
                         &size) != ERROR_SUCCESS ||
        type != REG_DWORD || size != sizeof value)
      return std::nullopt;
    return value;
  }

  std::optional<std::string> ReadString(const std::string& name) override {
    DWORD type = 0, size = 0;
    if (RegQueryValueExA(key_, name.c_str(), nullptr, &type, nullptr, &size) != ERROR_SUCCESS ||
        (type != REG_SZ && type != REG_EXPAND_SZ))
      return std::nullopt;
    std::string value(size, '\0');
    if (RegQueryValueExA(key_, name.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(value.data()),
                         &size) != ERROR_SUCCESS)
      return std::nullopt;
    return value.c_str();  // another program may have stored it with or without its zero byte
  }

  bool WriteNumber(const std::string& name, std::uint32_t value) override {
    return Write(name, REG_DWORD, &value, sizeof value);
  }
  bool WriteString(const std::string& name, const std::string& value) override {
    return Write(name, REG_SZ, value.c_str(), value.size() + 1);
  }

  bool Close() override {
    const HKEY key = key_;
    key_ = nullptr;
    return !key || RegCloseKey(key) == ERROR_SUCCESS;
  }

 private:
  bool Write(const std::string& name, DWORD type, const void* value, std::size_t size) {
    return RegSetValueExA(key_, name.c_str(), 0, type, static_cast<const BYTE*>(value),
                          static_cast<DWORD>(size)) == ERROR_SUCCESS;
  }

  HKEY key_;
};

class RegistrySettingsStore : public SettingsStore {
 public:
  // First from where a save would put them, so that a user who may only read the machine's
  // settings finds his own again.
  std::unique_ptr<SettingsKey> OpenSettings() override {
    if (auto key = RegistryKey::Open(HKEY_LOCAL_MACHINE, SETTINGSPATH, KEY_ALL_ACCESS)) return key;
    if (auto key = RegistryKey::Open(HKEY_CURRENT_USER, SETTINGSPATH, KEY_READ)) return key;
    return RegistryKey::Open(HKEY_LOCAL_MACHINE, SETTINGSPATH, KEY_READ);
  }

  std::unique_ptr<SettingsKey> CreateSettings() override {
    if (auto created = RegistryKey::Create(HKEY_LOCAL_MACHINE, SETTINGSPATH); created.key)
      return std::move(created.key);
    return RegistryKey::Create(HKEY_CURRENT_USER, SETTINGSPATH).key;
  }

  std::unique_ptr<SettingsKey> FileTypes() override {
    // Of all users; who may not write there has types of his own.
    if (auto key = RegistryKey::Open(HKEY_CLASSES_ROOT, "", KEY_ALL_ACCESS)) return key;
    return RegistryKey::Create(HKEY_CURRENT_USER, "Software\\Classes").key;
  }
};

}  // namespace

std::unique_ptr<SettingsStore> MakeRegistrySettingsStore() {
  return std::make_unique<RegistrySettingsStore>();
}

}  // namespace ferrowand
