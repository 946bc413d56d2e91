#include "exchange/export_math.h"

#include <complex>
#include <functional>
#include <vector>

#include "base/text_format.h"
#include "exchange/export.h"
#include "exchange/sections.h"

namespace polefit {

namespace {

constexpr const char* kPythonResponse = R"(
def response(f_mhz):
    """H, complex, at frequencies in MHz (a number or an array)."""
    s = 2j * np.pi * 1e6 * np.asarray(f_mhz, dtype=float)
    h = np.ones_like(s)
    for b2, b1, b0, a2, a1, a0 in sections:
        h = h * ((b2 * s + b1) * s + b0) / ((a2 * s + a1) * s + a0)
    return h


if __name__ == "__main__":
    print(f"{'f/MHz':>14} {'|H|':>14} {'|H|/dB':>10} {'phase/deg':>10}")
    for f in np.linspace(0, 3 * freq_norm_mhz, 31):
        h = complex(response(f))
        decibels = 20 * np.log10(abs(h)) if abs(h) > 0 else -np.inf
        print(f"{f:14.6g} {abs(h):14.6e} {decibels:10.3f} {np.degrees(np.angle(h)):10.2f}")
)";

// One expression, since a script can hold no function that both programs accept.
constexpr const char* kMatlabResponse = R"(
% H, complex, at frequencies in MHz (a number or an array)
response = @(f_mhz) reshape(prod( ...
    (sections(:,1) * (2i*pi*1e6*f_mhz(:).').^2 + sections(:,2) * (2i*pi*1e6*f_mhz(:).') ...
     + sections(:,3) * (f_mhz(:).'*0 + 1)) ./ ...
    (sections(:,4) * (2i*pi*1e6*f_mhz(:).').^2 + sections(:,5) * (2i*pi*1e6*f_mhz(:).') ...
     + sections(:,6) * (f_mhz(:).'*0 + 1)), 1), size(f_mhz));

% A zpk model where there is such a thing, else its parts
if exist('zpk') >= 2
  system = zpk(zeros, poles, gain);
else
  system = struct('z', {zeros}, 'p', {poles}, 'k', {gain});
end
)";

/// The roots in rad/s, a line each, written by `write`.
std::string RootLines(const std::vector<std::complex<double>>& roots, double unit,
                      const std::function<std::string(double, double)>& write) {
  std::string lines;
  for (const std::complex<double>& root : roots) {
    lines += "    " + write(root.real() * unit, root.imag() * unit) + "\n";
  }
  return lines;
}

/// "re+imj", so that it reads as one number.
std::string ComplexText(double real, double imaginary, const char* unit) {
  const std::string text = ShortestNumber(imaginary);
  return ShortestNumber(real) + (text.starts_with('-') ? "" : "+") + text + unit;
}

std::string PythonRoots(const std::vector<std::complex<double>>& roots, double unit) {
  if (roots.empty()) return "np.array([], dtype=complex)\n";
  return "np.array([\n" +
         RootLines(roots, unit,
                   [](double real, double imaginary) {
                     return ComplexText(real, imaginary, "j") + ",";
                   }) +
         "])\n";
}

std::string MatlabRoots(const std::vector<std::complex<double>>& roots, double unit) {
  if (roots.empty()) return "[];\n";
  return "[\n" +
         RootLines(
             roots, unit,
             [](double real, double imaginary) { return ComplexText(real, imaginary, "i"); }) +
         "];\n";
}

/// b2 b1 b0 a2 a1 a0 of each section, a row each between `begin` and `end`.
std::string SectionRows(const FilterResult& result, const char* begin, const char* end) {
  std::string rows;
  for (const Section& normalised : SectionsOf(result)) {
    const Section section = InRadians(normalised, result.AngularUnit());
    rows += begin;
    const char* separator = "";
    for (const Quadratic& polynomial : {section.numerator, section.denominator}) {
      for (const std::size_t power : {2U, 1U, 0U}) {
        rows += separator + ShortestNumber(polynomial[power]);
        separator = ", ";
      }
    }
    rows += end;
  }
  return rows;
}

}  // namespace

std::string ScipyModule(const FilterResult& result) {
  const double unit = result.AngularUnit();
  return ExportHead(result, "# ") + "# Poles, zeros and sections are in rad/s.\n\n" +
         "import numpy as np\nfrom scipy import signal\n\n" +
         "freq_norm_mhz = " + ShortestNumber(result.freqNorm) + "\n" +
         "zeros = " + PythonRoots(ZerosOf(result), unit) +
         "poles = " + PythonRoots(PolesOf(result), unit) +
         "# H(s) = gain * prod(s - zeros) / prod(s - poles)\n" +
         "gain = " + ShortestNumber(ConstantInRadians(result)) + "\n" +
         "system = signal.ZerosPolesGain(zeros, poles, gain)\n" +
         "# Rows b2, b1, b0, a2, a1, a0: the product of (b2 s^2 + b1 s + b0) / (a2 s^2 + a1 s + a0)"
         "\n# is H(s); low Q first.\n" +
         "sections = np.array([\n" + SectionRows(result, "    [", "],\n") + "])\n\n" +
         kPythonResponse;
}

std::string MatlabScript(const FilterResult& result) {
  const double unit = result.AngularUnit();
  return ExportHead(result, "% ") +
         "% Poles, zeros and sections are in rad/s. The names zeros and system hide functions\n"
         "% of these names until they are cleared.\n\n" +
         "zeros = " + MatlabRoots(ZerosOf(result), unit) +
         "poles = " + MatlabRoots(PolesOf(result), unit) +
         "% H(s) = gain * prod(s - zeros) / prod(s - poles)\n" +
         "gain = " + ShortestNumber(ConstantInRadians(result)) + ";\n" +
         "% Rows b2, b1, b0, a2, a1, a0: the product of (b2 s^2 + b1 s + b0) / (a2 s^2 + a1 s + a0)"
         "\n% is H(s); low Q first.\n" +
         "sections = [\n" + SectionRows(result, "    ", "\n") + "];\n" + kMatlabResponse;
}

}  // namespace polefit
