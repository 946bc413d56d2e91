#pragma once

#include <map>
#include <string>

namespace polefit {

/// What the program keeps for the user from one time to the next (places of windows and the like),
/// bytes under names, in a text file of lines "name=bytes". What cannot be read is empty, and what
/// cannot be kept is dropped: nothing depends on it.
class UserSettings {
 public:
  /// `path` is the file; neither it nor its folder need exist.
  explicit UserSettings(std::string path) : path_(std::move(path)) {}

  std::string Get(const std::string& name) const;
  void Keep(const std::string& name, const std::string& bytes) const;

 private:
  std::map<std::string, std::string> Load() const;

  std::string path_;
};

}  // namespace polefit
