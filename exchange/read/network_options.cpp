#include "exchange/read/network_options.h"

#include <charconv>
#include <cmath>

#include "base/text.h"
#include "base/text_format.h"
#include "exchange/read/decoding.h"
#include "exchange/read/number_text.h"

namespace polefit {

namespace {

/// More ports than any file has; a larger number is not believed.
constexpr int kMostPorts = 60;

bool TakeFormat(std::string_view word, NetworkOptions& options) {
  if (word == "db") {
    options.format = PairFormat::decibel;
  } else if (word == "ma") {
    options.format = PairFormat::magnitude;
  } else if (word == "ri") {
    options.format = PairFormat::realImaginary;
  } else {
    return false;
  }
  return true;
}

bool TakeOption(std::string_view word, NetworkOptions& options) {
  if (const auto unit = FrequencyUnitOf(word)) {
    options.unit = *unit;
    return true;
  }
  if (word.size() == 1 && std::string_view("syzhg").find(word.front()) != std::string_view::npos) {
    options.parameter = UpperCase(word).front();
    return true;
  }
  return TakeFormat(word, options);
}

}  // namespace

int TakeOptionLine(std::string_view line, NetworkOptions& options) {
  int understood = 0;
  bool isReference = false;
  const std::string lower = LowerCase(line);
  for (const std::string_view word : WordsOf(lower)) {
    if (isReference && !std::isnan(CellNumber(word, '.'))) {
      options.reference = word;
    } else if (word.starts_with('r') && word != "ri") {
      isReference = true;
      if (word.size() > 1) options.reference = word.substr(1);
      ++understood;
    } else if (TakeOption(word, options)) {
      ++understood;
    }
  }
  return understood;
}

void TakeKeyword(std::string_view keyword, std::string_view value, NetworkOptions& options) {
  const std::string word = LowerCase(TrimWhite(value));
  if (keyword == "version") {
    options.isVersion2 = !word.starts_with('1');
  } else if (keyword == "number of ports") {
    int ports = 0;
    std::from_chars(word.data(), word.data() + word.size(), ports);
    if (ports > 0 && ports <= kMostPorts) options.ports = ports;
  } else if (keyword == "two-port data order" || keyword == "two-port order") {
    options.order21 = !word.starts_with("12");
  } else if (keyword == "matrix format") {
    options.matrix = word.starts_with('l')   ? MatrixFormat::lower
                     : word.starts_with('u') ? MatrixFormat::upper
                                             : MatrixFormat::full;
  } else if (keyword == "mixed-mode order") {
    for (const std::string_view mode : WordsOf(value)) options.modes.emplace_back(mode);
  }
}

std::vector<std::pair<int, int>> PairOrder(const NetworkOptions& options) {
  std::vector<std::pair<int, int>> order;
  for (int row = 1; row <= options.ports; ++row) {
    const int first = options.matrix == MatrixFormat::upper ? row : 1;
    const int last = options.matrix == MatrixFormat::lower ? row : options.ports;
    for (int column = first; column <= last; ++column) order.emplace_back(row, column);
  }
  const bool isTwoPort = options.ports == 2 && options.matrix == MatrixFormat::full;
  if (isTwoPort && options.order21) std::swap(order[1], order[2]);
  return order;
}

std::string ParameterName(const NetworkOptions& options, int row, int column) {
  const auto mode = [&](int port) { return options.modes[static_cast<std::size_t>(port) - 1]; };
  if (options.modes.size() == static_cast<std::size_t>(options.ports)) {
    return options.parameter + mode(row) + mode(column);
  }
  const char* const comma = options.ports > 9 ? "," : "";
  return options.parameter + std::to_string(row) + comma + std::to_string(column);
}

}  // namespace polefit
