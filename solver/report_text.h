#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace polefit {

/// The report's lines, none wider than 79 columns. UTF-8.
class ReportText {
 public:
  static constexpr std::size_t kColumns = 79;

  /// Adds a line, cut at 79 columns.
  void Line(std::string_view text = "");
  /// Adds a text broken at blanks into lines; those after the first begin with `indent` blanks.
  void Wrapped(const std::string& text, std::size_t indent);
  /// Adds an empty line and a heading that stands out.
  void Heading(const std::string& title);

  const std::vector<std::string>& Lines() const { return lines_; }

 private:
  std::vector<std::string> lines_;
};

/// A text padded with blanks to `width` columns.
std::string Padded(std::string_view text, std::size_t width);

}  // namespace polefit
