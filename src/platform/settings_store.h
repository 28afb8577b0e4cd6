// The seam to the system's store of settings: a tree of keys, each with subkeys and with string and
// 32-bit values, kept in the order in which the store enumerates them. On Windows it is the
// registry; elsewhere, and in tests, it is in memory. A failed read is an empty result: the caller
// keeps its default.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace ferrowand {

// An open key. Destroying it closes it without a word; Close() tells whether that worked.
class SettingsKey {
 public:
  struct Created;

  virtual ~SettingsKey() = default;

  // Read access. Null when there is no such subkey. Names may hold '\' for deeper keys.
  virtual std::unique_ptr<SettingsKey> Open(const std::string& name) = 0;
  // Opens or makes the subkey, with full access; a null key when the store refuses.
  virtual Created Create(const std::string& name) = 0;
  // With everything below it. True when it is gone, also when it never was.
  virtual bool Delete(const std::string& name) = 0;
  virtual std::optional<std::string> SubkeyName(std::uint32_t index) = 0;

  // The name "" is the key's default value.
  virtual std::optional<std::uint32_t> ReadNumber(const std::string& name) = 0;
  virtual std::optional<std::string> ReadString(const std::string& name) = 0;
  virtual bool WriteNumber(const std::string& name, std::uint32_t value) = 0;
  virtual bool WriteString(const std::string& name, const std::string& value) = 0;

  virtual bool Close() = 0;
};

struct SettingsKey::Created {
  std::unique_ptr<SettingsKey> key;
  bool isNew = false;
};

class SettingsStore {
 public:
  virtual ~SettingsStore() = default;

  // The program's own settings: `Software\ferrowand\0.9` of the machine.
  virtual std::unique_ptr<SettingsKey> OpenSettings() = 0;
  virtual std::unique_ptr<SettingsKey> CreateSettings() = 0;
  // The table of file types: the system's, or the user's own; null when the store refuses both.
  virtual std::unique_ptr<SettingsKey> FileTypes() = 0;
};

// Lives and dies with the process; what the command line program and the tests use.
std::unique_ptr<SettingsStore> MakeMemorySettingsStore();

}  // namespace ferrowand
