#include "runs/machine_line.h"

#include <charconv>
#include <sstream>

#include "base/text_format.h"

namespace polefit {

namespace {

constexpr const char* kMark = "pfit-end:";

}  // namespace

std::optional<MachineLine> ReadMachineLine(std::string_view line) {
  std::istringstream words{std::string(line)};
  std::string word;
  if (!(words >> word) || word != kMark) return std::nullopt;
  MachineLine figures;
  while (words >> word) {
    const std::size_t equals = word.find('=');
    if (equals == std::string::npos) return std::nullopt;
    double figure = 0;
    const char* const last = word.data() + word.size();
    const auto [end, error] = std::from_chars(word.data() + equals + 1, last, figure);
    if (error != std::errc() || end != last) return std::nullopt;
    figures[word.substr(0, equals)] = figure;
  }
  return figures.contains("exit") ? std::optional(figures) : std::nullopt;
}

std::string MachineLineOf(const MachineLine& figures) {
  std::string line = kMark;
  for (const auto& [name, figure] : figures) line += ' ' + name + '=' + ShortestNumber(figure);
  return line;
}

std::optional<double> FigureOf(const MachineLine& figures, std::string_view name) {
  const auto found = figures.find(name);
  return found == figures.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace polefit
