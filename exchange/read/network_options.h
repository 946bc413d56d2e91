#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "exchange/read/units.h"

namespace polefit {

/// How a parameter's two numbers are to be understood: dB and degrees, magnitude and degrees, real
/// and imaginary part.
enum class PairFormat { decibel, magnitude, realImaginary };

enum class MatrixFormat { full, lower, upper };

/// What the option line and the keywords of a network file say. The values are those of a file
/// that says nothing.
struct NetworkOptions {
  FrequencyUnit unit = FrequencyUnit::gigahertz;
  /// S, Y, Z, H or G.
  char parameter = 'S';
  PairFormat format = PairFormat::magnitude;
  std::string reference = "50";
  bool isVersion2 = false;
  /// 0 where nothing says it.
  int ports = 0;
  /// Parameter 21 stands before 12: always with two ports in version 1.
  bool order21 = true;
  MatrixFormat matrix = MatrixFormat::full;
  /// The ports' names in mixed mode ("D2,3"), else empty.
  std::vector<std::string> modes;
};

/// Takes the words of an option line, without their "#", in any order and case. The result is how
/// many words were understood.
int TakeOptionLine(std::string_view line, NetworkOptions& options);

/// Takes a "[Keyword] value" line that sets an option; others change nothing.
void TakeKeyword(std::string_view keyword, std::string_view value, NetworkOptions& options);

/// The port numbers of the pairs of one frequency, in the file's order.
std::vector<std::pair<int, int>> PairOrder(const NetworkOptions& options);

/// "S21", "S10,2", "SD1,2C1,2": the name of a parameter.
std::string ParameterName(const NetworkOptions& options, int row, int column);

}  // namespace polefit
