#pragma once

#include <QWidget>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

namespace polefit {

/// The controls of the main form under the names by which the routines know them.
class NamedControls {
 public:
  /// Takes every named widget inside `root`. Throws std::logic_error unless each box of the
  /// catalogue is there: a misspelt name ends the start, in every build.
  void Collect(const QWidget& root);

  /// Throws std::logic_error where there is none of this name and kind.
  template <typename Widget>
  Widget* Find(std::string_view name) const {
    const auto found = controls_.find(name);
    auto* widget = found == controls_.end() ? nullptr : qobject_cast<Widget*>(found->second);
    if (widget == nullptr) {
      throw std::logic_error("frmMain has no such control: " + std::string(name));
    }
    return widget;
  }

 private:
  std::map<std::string, QWidget*, std::less<>> controls_;
};

}  // namespace polefit
