#pragma once

#include <string>
#include <vector>

#include "platform/console_host.h"

namespace polefit::testing {

/// Real files, a clock that stands still, and messages kept instead of shown.
class RecordHost : public ConsoleHost {
 public:
  explicit RecordHost(const std::string& userValuesPath) : ConsoleHost(userValuesPath) {}

  Answer MessageBox(const std::string& text, int style, const std::string& title) override {
    messages.push_back(title + "|" + std::to_string(style) + "|" + text);
    return Answer::ok;
  }
  std::string FormatNow(const char* /*pattern*/) override { return now; }

  std::vector<std::string> messages;
  std::string now = "March 03, 2004 @ 9:05 AM";
};

}  // namespace polefit::testing
