#include "exchange/export_tables.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <initializer_list>
#include <vector>

#include "base/text_format.h"
#include "exchange/export.h"

namespace polefit {

namespace {

constexpr int kTouchstoneSteps = 400;
constexpr double kTouchstoneSpan = 3;  ///< in parts of Freq Norm

std::string Figures(std::initializer_list<double> values, char separator) {
  std::string text;
  for (const double value : values) {
    if (!text.empty()) text += separator;
    text += ShortestNumber(value);
  }
  return text;
}

std::string LocationRow(const FilterResult& result, const ResultLocation& location,
                        double imaginary) {
  const double unit = result.AngularUnit();
  const double norm = result.freqNorm;
  const std::optional<double> quality = PairQuality(location);
  return std::string(KindName(location)) + "," +
         Figures({location.real, imaginary, location.real * unit, imaginary * unit,
                  location.real * norm, imaginary * norm},
                 ',') +
         "," + (quality ? ShortestNumber(*quality) : "") + "\n";
}

std::vector<double> Frequencies(const FilterResult& result, bool atDataPoints) {
  std::vector<double> frequencies;
  if (atDataPoints) {
    for (const ResultRow& row : result.rows) frequencies.push_back(row.frequency);
    std::sort(frequencies.begin(), frequencies.end());
    frequencies.erase(std::unique(frequencies.begin(), frequencies.end()), frequencies.end());
    return frequencies;
  }
  for (int i = 0; i <= kTouchstoneSteps; ++i) {
    frequencies.push_back(kTouchstoneSpan * result.freqNorm * i / kTouchstoneSteps);
  }
  return frequencies;
}

}  // namespace

std::string LocationTable(const FilterResult& result) {
  std::string table =
      ExportHead(result, "# ") + "kind,real,imag,real_rad_s,imag_rad_s,real_MHz,imag_MHz,Q\n";
  for (const bool arePoles : {true, false}) {
    for (const ResultLocation& location : result.locations) {
      if (location.isPole != arePoles) continue;
      table += LocationRow(result, location, location.imaginary);
      if (location.isPair) table += LocationRow(result, location, -location.imaginary);
    }
  }
  return table;
}

std::string CurveTable(const FilterResult& result) {
  std::string table = ExportHead(result, "# ") + "# delay_ns is the group delay of H alone.\n" +
                      "frequency_MHz,Yin,wanted,obtained,error,error_dB,delay_ns\n";
  for (const ResultRow& row : result.rows) {
    table += Figures({row.frequency, row.yin, row.wanted, row.obtained, row.obtained - row.wanted},
                     ',') +
             "," + (std::isnan(row.decibels) ? "" : ShortestNumber(row.decibels)) + "," +
             ShortestNumber(row.delay) + "\n";
  }
  return table;
}

std::string Touchstone(const FilterResult& result, bool atDataPoints) {
  std::string text = ExportHead(result, "! ") +
                     "! S21 = S12 = H, S11 = S22 = 0\n"
                     "! MHz, then real and imaginary parts of S11 S21 S12 S22\n"
                     "# MHz S RI R 50\n";
  for (const double frequency : Frequencies(result, atDataPoints)) {
    const std::complex<double> h = ResponseAt(result, frequency / result.freqNorm);
    text += Figures({frequency, 0, 0, h.real(), h.imag(), h.real(), h.imag(), 0, 0}, ' ') + "\n";
  }
  return text;
}

}  // namespace polefit
