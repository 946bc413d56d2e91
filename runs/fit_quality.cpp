#include "runs/fit_quality.h"

#include "base/text_format.h"

namespace polefit {

namespace {

constexpr double kPoorDecibels = 3;
constexpr double kPoorPart = 0.1;

/// Two significant digits, without zeros at the end: "0.06".
std::string Short(double value) {
  std::string text = Rounded(value, 2);
  if (text.find('.') == std::string::npos) return text;
  text.erase(text.find_last_not_of('0') + 1);
  if (text.ends_with('.')) text.pop_back();
  return text;
}

std::string Decibels(double size, double megahertz) {
  return Short(size) + " dB at " + ShortestNumber(megahertz) + " MHz";
}

double Largest(const MachineLine& figures) {
  return FigureOf(figures, "worst").value_or(0);
}

/// The worst row of those that count, or the largest error where that is what makes a fit poor.
std::string WorstText(const MachineLine& figures, bool isLarge) {
  std::string text;
  if (const auto size = FigureOf(figures, "worstdb")) {
    text += ", worst " + Decibels(*size, FigureOf(figures, "worstdbat").value_or(0));
  }
  if (isLarge) {
    text += ", error " + PerCent(Largest(figures)) + " of the largest Yout at " +
            ShortestNumber(FigureOf(figures, "worstat").value_or(0)) + " MHz";
  }
  return text;
}

std::string BoundText(const MachineLine& figures) {
  const auto bounds = FigureOf(figures, "bounds");
  if (!bounds) return {};
  if (*bounds == 0) return "; nothing on a bound";
  return "; " + Short(*bounds) + " on a bound or held";
}

/// The largest error in dB of all rows, where that is large and stands in none that counts.
std::string SkirtText(const MachineLine& figures) {
  const double size = FigureOf(figures, "maxdb").value_or(0);
  if (size <= kPoorDecibels || size <= FigureOf(figures, "worstdb").value_or(0)) return {};
  const std::string power = ShortestNumber(FigureOf(figures, "ipower").value_or(0));
  const bool isSkirt = FigureOf(figures, "ipower").value_or(0) < 1;
  return (isSkirt ? "; skirt: " : "; row without weight: ") +
         Decibels(size, FigureOf(figures, "dbat").value_or(0)) +
         (isSkirt ? ", Ipower " + power + " does not count it" : "");
}

}  // namespace

std::string PerCent(double part) {
  constexpr double kLeastShown = 1e-8;
  return part < kLeastShown ? "below 0.000001 %" : Short(100 * part) + " %";
}

std::optional<FitQuality> QualityOf(const MachineLine& figures) {
  const auto rms = FigureOf(figures, "rms");
  const auto power = FigureOf(figures, "ipower");
  if (!rms || !power) return std::nullopt;
  const bool isLarge = *power < 1 && Largest(figures) > kPoorPart;
  const bool isFar = FigureOf(figures, "worstdb").value_or(0) > kPoorDecibels;
  const auto ripple = FigureOf(figures, "ripple");
  const std::string brief = "rms " + PerCent(*rms) + WorstText(figures, isLarge);
  return FitQuality{isLarge || isFar,
                    brief + (ripple ? ", delay ripple " + Short(*ripple) + " ns" : "") +
                        BoundText(figures) + SkirtText(figures),
                    brief};
}

}  // namespace polefit
