#include <algorithm>
#include <iterator>
#include <map>
#include <string_view>
#include <utility>
#include <variant>

#include "platform/settings_store.h"

namespace ferrowand {
namespace {

// As the registry has it: names compare without regard to case, and are enumerated in that order.
struct NameOrder {
  bool operator()(const std::string& a, const std::string& b) const {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; };
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [&](char x, char y) { return lower(x) < lower(y); });
  }
};

// Shared, so that a key that is open outlives its deletion.
struct Node {
  std::map<std::string, std::shared_ptr<Node>, NameOrder> subkeys;
  std::map<std::string, std::variant<std::uint32_t, std::string>, NameOrder> values;
};

class MemoryKey : public SettingsKey {
 public:
  MemoryKey(std::shared_ptr<Node> node, bool writable)
      : node_(std::move(node)), writable_(writable) {}

  std::unique_ptr<SettingsKey> Open(const std::string& name) override {
    std::shared_ptr<Node> node = node_;
    for (std::string_view rest = name; !rest.empty() && node;) {
      const auto found = node->subkeys.find(TakePart(rest));
      node = found == node->subkeys.end() ? nullptr : found->second;
    }
    return node ? std::make_unique<MemoryKey>(node, false) : nullptr;
  }

  Created Create(const std::string& name) override {
    if (!writable_) return {};
    std::shared_ptr<Node> node = node_;
    bool isNew = false;
    for (std::string_view rest = name; !rest.empty();) {
      std::shared_ptr<Node>& next = node->subkeys[TakePart(rest)];
      isNew = !next;
      if (isNew) next = std::make_shared<Node>();
      node = next;
    }
    return {std::make_unique<MemoryKey>(node, true), isNew};
  }

  bool Delete(const std::string& name) override {
    const std::size_t split = name.rfind('\\');
    if (split != std::string::npos) {
      const std::unique_ptr<SettingsKey> parent = Create(name.substr(0, split)).key;
      return parent && parent->Delete(name.substr(split + 1));
    }
    if (writable_) node_->subkeys.erase(name);
    return writable_;
  }

  std::optional<std::string> SubkeyName(std::uint32_t index) override {
    if (index >= node_->subkeys.size()) return std::nullopt;
    return std::next(node_->subkeys.begin(), index)->first;
  }

  std::optional<std::uint32_t> ReadNumber(const std::string& name) override {
    return Read<std::uint32_t>(name);
  }
  std::optional<std::string> ReadString(const std::string& name) override {
    return Read<std::string>(name);
  }
  bool WriteNumber(const std::string& name, std::uint32_t value) override {
    return Write(name, value);
  }
  bool WriteString(const std::string& name, const std::string& value) override {
    return Write(name, value);
  }

  bool Close() override { return true; }

 private:
  static std::string TakePart(std::string_view& rest) {
    const std::size_t end = std::min(rest.find('\\'), rest.size());
    std::string part(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return part;
  }

  template <typename Value>
  std::optional<Value> Read(const std::string& name) const {
    const auto found = node_->values.find(name);
    if (found == node_->values.end()) return std::nullopt;
    const Value* value = std::get_if<Value>(&found->second);
    return value ? std::optional<Value>(*value) : std::nullopt;
  }

  template <typename Value>
  bool Write(const std::string& name, const Value& value) {
    if (writable_) node_->values[name] = value;
    return writable_;
  }

  std::shared_ptr<Node> node_;
  bool writable_;
};

class MemorySettingsStore : public SettingsStore {
 public:
  std::unique_ptr<SettingsKey> OpenSettings() override { return Root().Open(PATH); }
  std::unique_ptr<SettingsKey> CreateSettings() override { return Root().Create(PATH).key; }
  std::unique_ptr<SettingsKey> FileTypes() override {
    return std::make_unique<MemoryKey>(fileTypes_, true);
  }

 private:
  static constexpr const char* PATH = "Software\\ferrowand\\0.9";

  MemoryKey Root() const { return {machine_, true}; }

  std::shared_ptr<Node> machine_ = std::make_shared<Node>();
  std::shared_ptr<Node> fileTypes_ = std::make_shared<Node>();
};

}  // namespace

std::unique_ptr<SettingsStore> MakeMemorySettingsStore() {
  return std::make_unique<MemorySettingsStore>();
}

}  // namespace ferrowand
