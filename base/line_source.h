#pragma once

#include <string>
#include <string_view>

namespace polefit {

/// A text in Windows-1252 that is taken line by line.
class LineSource {
 public:
  virtual ~LineSource() = default;

  /// The next line as UTF-8 without its end, CR LF or LF; error 62 after the last. The text stays
  /// valid until the next call.
  virtual std::string_view ReadLine() = 0;
};

/// The lines of bytes that are already in memory, which must outlive it.
class ByteLines final : public LineSource {
 public:
  explicit ByteLines(std::string_view bytes) : rest_(bytes) {}

  std::string_view ReadLine() override;

 private:
  std::string_view rest_;
  std::string line_;
};

/// A line without its CR LF or LF.
std::string_view WithoutLineEnd(std::string_view line);

}  // namespace polefit
