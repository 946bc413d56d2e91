#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/host.h"

namespace polefit {

/// The registry of this platform: a per-user text file of keys and values in the notation of
/// registry scripts. Names disregard case. It is read when it is first asked for. A store with
/// something in it that is not understood, or that cannot be read, is never written over.
class UserValues {
 public:
  /// `path` is the store's file; it need not exist.
  explicit UserValues(std::string path);

  std::optional<RegistryKey> Open(std::uint32_t root, const std::string& subKey,
                                  std::uint32_t access);
  std::optional<CreatedKey> Create(std::uint32_t root, const std::string& subKey);
  std::optional<RegistryValue> Query(RegistryKey key, const std::string& name);
  bool Set(RegistryKey key, const std::string& name, const RegistryValue& value);
  void Close(RegistryKey key);

 private:
  struct NamedValue {
    std::string name;
    RegistryValue value;
  };
  struct Key {
    std::string path;
    std::map<std::string, NamedValue> values;
  };
  struct OpenKey {
    std::string foldedPath;
    std::uint32_t access = 0;
  };

  void Load();
  bool LoadLine(std::string_view line, Key*& current);
  Key& EnterKey(const std::string& path);
  std::string Text() const;
  bool Save() const;
  RegistryKey Remember(const std::string& foldedPath, std::uint32_t access);

  std::string path_;
  bool loaded_ = false;
  bool mayWrite_ = true;
  std::map<std::string, Key> keys_;
  std::map<RegistryKey, OpenKey> open_;
  RegistryKey lastKey_ = 0;
};

/// The store's file in the desktop's configuration folder.
std::string UserValuesPath();

}  // namespace polefit
