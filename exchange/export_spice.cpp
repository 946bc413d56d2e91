#include "exchange/export_spice.h"

#include <cmath>
#include <functional>
#include <vector>

#include "base/text_format.h"
#include "exchange/export.h"
#include "exchange/sections.h"

namespace polefit {

namespace {

/// Where a section stands in the chain.
struct Stage {
  std::string number;  ///< from 1
  std::string from;    ///< its input node
  std::string to;      ///< its output node
};

std::string SectionComment(const FilterResult& result, const Section& section,
                           const std::string& number) {
  return "* section " + number +
         ": f0 = " + Format("%.9g MHz", section.Frequency() * result.freqNorm) +
         (section.IsSecondOrder() ? Format(", Q = %.9g", section.Quality())
                                  : std::string(", first order")) +
         Format(", gain %.9g at 0 Hz\n", section.numerator[0]);
}

/// The subcircuit around the sections, each written by `write`. `first` is the first section's
/// input node.
std::string Subcircuit(const FilterResult& result, const std::string& usedBy,
                       const std::string& setUp, const std::string& first,
                       const std::function<std::string(const Section&, const Stage&)>& write) {
  std::string text = ExportHead(result, "* ") + "* For " + usedBy +
                     "\n* Use: X1 in out ref polefit\n.subckt polefit in out ref\n" + setUp;
  const std::vector<Section> sections = SectionsOf(result);
  std::string from = first;
  for (std::size_t i = 0; i < sections.size(); ++i) {
    const std::string number = std::to_string(i + 1);
    const Stage stage = {number, from, i + 1 == sections.size() ? "out" : "n" + number};
    text += SectionComment(result, sections[i], number) + write(sections[i], stage);
    from = stage.to;
  }
  return text + ".ends polefit\n";
}

/// "c2 c1 c0", or "c1 c0" for the first order.
std::string Coefficients(const Quadratic& polynomial, bool isSecondOrder) {
  std::string text;
  for (std::size_t power = isSecondOrder ? 3 : 2; power-- > 0;) {
    text += ShortestNumber(polynomial[power]) + (power > 0 ? " " : "");
  }
  return text;
}

std::string TransferElement(const Section& section, const Stage& stage, double unit) {
  // Normalised coefficients keep the model's integrators in a range that its steps can follow.
  const bool isSecondOrder = section.IsSecondOrder();
  return "A" + stage.number + " %vd(" + stage.from + " ref) %vd(" + stage.to + " ref) section" +
         stage.number + "\n.model section" + stage.number + " s_xfer(num_coeff=[" +
         Coefficients(section.numerator, isSecondOrder) + "]\n+ den_coeff=[" +
         Coefficients(section.denominator, isSecondOrder) + "]\n+ int_ic=[" +
         (isSecondOrder ? "0 0" : "0") + "] denormalized_freq=" + ShortestNumber(unit) + ")\n";
}

/// Products instead of powers, which not all simulators write alike.
std::string Polynomial(const Quadratic& polynomial) {
  return "(" + ShortestNumber(polynomial[2]) + "*s*s + " + ShortestNumber(polynomial[1]) + "*s + " +
         ShortestNumber(polynomial[0]) + ")";
}

std::string LaplaceElement(const Section& section, const Stage& stage, double unit) {
  const Section scaled = InRadians(section, unit);
  return "E" + stage.number + " " + stage.to + " ref LAPLACE {V(" + stage.from + ",ref)} = {" +
         Polynomial(scaled.numerator) + "/" + Polynomial(scaled.denominator) + "}\n";
}

/// Controlled sources in a row from the node ref up to an output node; those of gain 0 are left
/// out.
class SourceChain {
 public:
  explicit SourceChain(const Stage& stage) : stage_(stage) {}

  void Add(const char* name, const std::string& plus, const std::string& minus, double gain) {
    if (gain != 0) sources_.push_back({name, plus, minus, ShortestNumber(gain)});
  }

  std::string Text() const {
    std::string text;
    std::string below = "ref";
    for (std::size_t i = 0; i < sources_.size(); ++i) {
      const Source& source = sources_[i];
      const bool isLast = i + 1 == sources_.size();
      const std::string above =
          isLast ? stage_.to : "e" + stage_.number + "_" + std::to_string(i + 1);
      text += std::string("E") + source.name + stage_.number + " " + above + " " + below + " " +
              source.plus + " " + source.minus + " " + source.gain + "\n";
      below = above;
    }
    return text;
  }

 private:
  struct Source {
    const char* name;
    std::string plus;
    std::string minus;
    std::string gain;
  };
  const Stage& stage_;
  std::vector<Source> sources_;
};

std::string Scaled(const char* element, const Stage& stage, const std::string& from,
                   const std::string& to, const std::string& value) {
  return element + stage.number + " " + from + " " + to + " {" + value + "}\n";
}

/// C = sqrt(d2) / (unit z0) or, first order, d1 / (unit z0); R and L follow from the denominator
/// 1 + s R C + s^2 L C.
std::string NetworkElements(const Section& section, const Stage& stage, double unit) {
  const auto [n0, n1, n2] = section.numerator;
  const auto [d0, d1, d2] = section.denominator;
  const double time = section.IsSecondOrder() ? std::sqrt(d2) : d1;
  const std::string behindR = (section.IsSecondOrder() ? "b" : "c") + stage.number;
  const std::string atC = "c" + stage.number;
  std::string text = Scaled("R", stage, stage.from, behindR, ShortestNumber(d1 / time) + "*z0");
  SourceChain output(stage);
  output.Add("c", atC, "ref", n0);
  output.Add("r", stage.from, behindR, n1 / d1);
  if (section.IsSecondOrder()) {
    text += Scaled("L", stage, behindR, atC, ShortestNumber(time / unit) + "*z0");
    output.Add("l", behindR, atC, n2 / d2);
  }
  text += Scaled("C", stage, atC, "ref", ShortestNumber(time / unit) + "/z0");
  return text + output.Text();
}

}  // namespace

std::string SpiceSections(const FilterResult& result) {
  const double unit = result.AngularUnit();
  return Subcircuit(result, "ngspice (XSPICE code models)",
                    "* The coefficients are for s / denormalized_freq, which is in rad/s.\n", "in",
                    [unit](const Section& section, const Stage& stage) {
                      return TransferElement(section, stage, unit);
                    });
}

std::string SpiceLaplace(const FilterResult& result) {
  const double unit = result.AngularUnit();
  return Subcircuit(result, "simulators with E ... LAPLACE (not ngspice)", "* s is in rad/s.\n",
                    "in", [unit](const Section& section, const Stage& stage) {
                      return LaplaceElement(section, stage, unit);
                    });
}

std::string SpiceRlc(const FilterResult& result) {
  const double unit = result.AngularUnit();
  return Subcircuit(result, "every SPICE; z0 is the impedance level in ohms",
                    ".param z0=1k\nEin n0 ref in ref 1\n", "n0",
                    [unit](const Section& section, const Stage& stage) {
                      return NetworkElements(section, stage, unit);
                    });
}

}  // namespace polefit
