#include "solver/report/report_text.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"
#include "base/text_format.h"

namespace polefit {

void ReportText::Line(std::string_view text) {
  std::string line(text);
  line.erase(line.find_last_not_of(' ') + 1);
  lines_.push_back(line);
}

void ReportText::Wrapped(const std::string& text, std::size_t indent) {
  std::string_view rest = text;
  std::string begin;
  while (true) {
    const std::size_t room = kColumns - begin.size();
    std::string_view part = FirstCharacters(rest, room);
    if (part.size() < rest.size() && rest[part.size()] != ' ') {
      const std::size_t blank = part.rfind(' ');
      if (blank != std::string_view::npos && blank > 0) part = part.substr(0, blank);
    }
    Line(begin + std::string(part));
    rest.remove_prefix(part.size());
    rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
    if (rest.empty()) return;
    begin = std::string(indent, ' ');
  }
}

void ReportText::Heading(const std::string& title) {
  Line();
  Line(title);
  Line(std::string(kColumns, '-'));
}

FigureFormat::FigureFormat(double largest, int width, int digits, int leastDigits)
    : width_(width), digits_(digits), leastDigits_(leastDigits) {
  const int exponent = DecimalExponent(largest, digits);
  const int whole = std::max(0, exponent) + 1;
  decimals_ = std::clamp(digits - 1 - exponent, 0, std::max(0, width - whole - 1));
  constexpr int kExponent = 5;  // of "1.234e-05", with the point
  const int shown = exponent + 1 + decimals_;
  if (whole > width || shown < std::min(digits, width - kExponent)) decimals_ = -1;
}

std::string FigureFormat::operator()(double value) const {
  if (value == 0) return Format("%.*f", std::max(0, decimals_), 0.0);
  const int shown = DecimalExponent(value, digits_) + 1 + decimals_;
  if (decimals_ < 0 || shown < leastDigits_) return WithExponent(value);
  std::string text = Format("%.*f", decimals_, value);
  if (text.find_first_of("123456789") == std::string::npos) return (*this)(0);
  const std::size_t sign = value < 0 ? 1 : 0;
  return text.size() - sign > static_cast<std::size_t>(width_) ? WithExponent(value) : text;
}

std::string FigureFormat::WithExponent(double value) const {
  const auto most = static_cast<std::size_t>(width_) + (value < 0 ? 1U : 0U);
  int decimals = digits_ - 1;
  std::string text = Format("%.*e", decimals, value);
  while (text.size() > most && decimals > 0) text = Format("%.*e", --decimals, value);
  return text;
}

double LargestSize(const std::vector<double>& values) {
  double largest = 0;
  for (const double value : values) largest = std::max(largest, std::abs(value));
  return largest;
}

void ReportTable::Add(std::string heading, std::string unit, int width,
                      std::vector<std::string> cells) {
  cells.insert(cells.begin(), {std::move(heading), std::move(unit)});
  columns_.push_back({width, std::move(cells)});
}

void ReportTable::Add(std::string heading, std::string unit, int width,
                      const std::vector<double>& values, const FigureFormat& format) {
  std::vector<std::string> cells;
  std::transform(values.begin(), values.end(), std::back_inserter(cells), format);
  Add(std::move(heading), std::move(unit), width, std::move(cells));
}

void ReportTable::Write(ReportText& text) const {
  for (std::size_t i = 0; i < columns_.front().lines.size(); ++i) {
    std::string line;
    for (const Column& column : columns_) {
      if (&column != &columns_.front()) line += ' ';
      line += Format("%*s", column.width, column.lines[i].c_str());
    }
    text.Line(line);
  }
}

}  // namespace polefit
