#include "exchange/export.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"
#include "base/text_format.h"
#include "exchange/export_json.h"
#include "exchange/export_math.h"
#include "exchange/export_spice.h"
#include "exchange/export_tables.h"

namespace polefit {

const std::array<ExportFormatName, 9> kExportFormats = {{
    {ExportFormat::scipy, "scipy", "Python module (NumPy, SciPy)", ".py"},
    {ExportFormat::matlab, "matlab", "MATLAB or Octave script", ".m"},
    {ExportFormat::spice, "spice", "SPICE subcircuit for ngspice (s_xfer)", ".cir"},
    {ExportFormat::spiceLaplace, "spice-laplace", "SPICE subcircuit with E ... LAPLACE", ".cir"},
    {ExportFormat::spiceRlc, "spice-rlc", "SPICE subcircuit of R, L, C and sources", ".cir"},
    {ExportFormat::csv, "csv", "Table of poles and zeros", ".csv"},
    {ExportFormat::csvCurves, "csv-curves", "Table of the curves at the points", ".csv"},
    {ExportFormat::touchstone, "touchstone", "Touchstone two-port", ".s2p"},
    {ExportFormat::json, "json", "JSON", ".json"},
}};

namespace {

/// Text of the user's that cannot end a comment or leave its encoding.
std::string Harmless(const std::string& text) {
  std::string harmless = FromWindows1252(ToWindows1252(text));
  std::replace_if(
      harmless.begin(), harmless.end(),
      [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }, '?');
  return harmless;
}

bool NeedsPoints(const ExportRequest& request) {
  return request.format == ExportFormat::csvCurves ||
         (request.format == ExportFormat::touchstone && request.atDataPoints);
}

bool NeedsLeadingConstant(ExportFormat format) {
  return format == ExportFormat::scipy || format == ExportFormat::matlab ||
         format == ExportFormat::json;
}

void CheckRange(const FilterResult& result, ExportFormat format, std::vector<std::string>& faults) {
  const double constant = ConstantInRadians(result);
  if (!NeedsLeadingConstant(format) || std::isnormal(constant)) return;
  faults.push_back(
      "The constant of H(s) in rad/s is " +
      std::string(constant == 0 || std::isfinite(constant) ? "too small" : "too large") +
      " for a number; export as spice, csv or touchstone.");
}

std::string TextOf(const FilterResult& result, const ExportRequest& request) {
  switch (request.format) {
    case ExportFormat::scipy:
      return ScipyModule(result);
    case ExportFormat::matlab:
      return MatlabScript(result);
    case ExportFormat::spice:
      return SpiceSections(result);
    case ExportFormat::spiceLaplace:
      return SpiceLaplace(result);
    case ExportFormat::spiceRlc:
      return SpiceRlc(result);
    case ExportFormat::csv:
      return LocationTable(result);
    case ExportFormat::csvCurves:
      return CurveTable(result);
    case ExportFormat::touchstone:
      return Touchstone(result, request.atDataPoints);
    case ExportFormat::json:
      break;
  }
  return JsonResult(result);
}

}  // namespace

std::optional<ExportFormat> ExportFormatOf(std::string_view word) {
  for (const ExportFormatName& name : kExportFormats) {
    if (name.word == word) return name.format;
  }
  return std::nullopt;
}

Export ExportResult(const ResponseRecord& record, const ExportRequest& request) {
  Export exported;
  FilterResult result = ReadFilterResult(record, exported.faults);
  if (!exported.faults.empty()) return exported;
  if (NeedsPoints(request)) exported.faults = result.pointFaults;
  CheckRange(result, request.format, exported.faults);
  if (!exported.faults.empty()) return exported;
  result.file = Harmless(request.file);
  result.date = Harmless(request.date);
  exported.text = TextOf(result, request);
  return exported;
}

std::string ExportHead(const FilterResult& result, std::string_view prefix) {
  const std::string begin(prefix);
  std::string head = begin + "H(s) found by Polefit: " + std::to_string(PolesOf(result).size()) +
                     " poles, " + std::to_string(ZerosOf(result).size()) + " zeros, gain " +
                     ShortestNumber(result.gain) + " at 0 Hz\n";
  head += begin + "File: " + result.file + "\n";
  head += begin + "Date: " + result.date + "\n";
  head += begin + "Freq Norm: " + ShortestNumber(result.freqNorm) +
          " MHz = " + ShortestNumber(result.AngularUnit()) + " rad/s\n";
  head += begin + "Rms error: " +
          (result.rms ? Format("%.9g of the largest Yout", *result.rms) +
                            (result.isWeighted ? " (weighted)" : "")
                      : std::string("unknown, for the points cannot be used")) +
          "\n";
  return head;
}

}  // namespace polefit
