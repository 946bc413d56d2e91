#pragma once

#include <cstddef>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace polefit {

/// Why a text is no expression.
struct ExpressionError : std::runtime_error {
  ExpressionError(std::size_t at, const std::string& text) : std::runtime_error(text), place(at) {}

  /// The character that it is about, from 1; one behind the last where something is missing.
  std::size_t place;
};

/// A formula with numbers, variables, pi, + - * / ^, < <= > >= == !=, parentheses and the functions
/// sqrt exp ln log10 sin cos tan abs min max if dB lin sinc. Upper and lower case are the same.
///
/// Loosest first: one comparison (1 or 0), + and -, * and /, a sign, ^ (from right to left, so
/// that -2^2 is -4 and 2^3^2 is 2^9). Angles are in radians; dB(v) = 20 log10 |v|,
/// lin(d) = 10^(d/20), sinc(v) = sin(pi v)/(pi v), if(c, a, b) is a where c is not 0.
class Expression {
 public:
  static constexpr std::size_t kLongest = 1000;  ///< characters
  static constexpr int kDeepest = 100;           ///< parentheses, signs and powers in one another

  /// Throws ExpressionError. `variables` are names in lower case; the values come in their order.
  Expression(std::string_view text, std::span<const std::string_view> variables);

  /// The value; not finite where there is none, as in 1/0. `values` is as long as the variables.
  double At(std::span<const double> values) const;

  /// Whether it depends on a variable.
  bool Uses(std::size_t variable) const;

 private:
  friend class ExpressionParser;

  /// A step of the calculation, which works on a stack.
  enum class Operation { number, variable, negate, binary, unary, conditional };
  struct Step {
    Operation operation;
    double number = 0;
    std::size_t variable = 0;
    double (*unary)(double) = nullptr;
    double (*binary)(double, double) = nullptr;
  };
  std::vector<Step> steps_;
};

}  // namespace polefit
