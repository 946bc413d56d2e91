#include "base/expression.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <numbers>

#include "base/number.h"
#include "base/text.h"

namespace polefit {

namespace {

using Unary = double (*)(double);
using Binary = double (*)(double, double);

double Decibels(double value) {
  return 20 * std::log10(std::abs(value));
}

double FromDecibels(double decibels) {
  return std::pow(10, decibels / 20);
}

double Sinc(double value) {
  const double angle = std::numbers::pi * value;
  return angle == 0 ? 1 : std::sin(angle) / angle;
}

struct NamedUnary {
  std::string_view name;
  Unary function;
};

constexpr std::array<NamedUnary, 11> kUnaries = {{
    {"sqrt", [](double v) { return std::sqrt(v); }},
    {"exp", [](double v) { return std::exp(v); }},
    {"ln", [](double v) { return std::log(v); }},
    {"log10", [](double v) { return std::log10(v); }},
    {"sin", [](double v) { return std::sin(v); }},
    {"cos", [](double v) { return std::cos(v); }},
    {"tan", [](double v) { return std::tan(v); }},
    {"abs", [](double v) { return std::abs(v); }},
    {"db", Decibels},
    {"lin", FromDecibels},
    {"sinc", Sinc},
}};

struct NamedBinary {
  std::string_view name;
  Binary function;
};

/// Longer signs before those that they begin with.
constexpr std::array<NamedBinary, 6> kComparisons = {{
    {"<=", [](double a, double b) { return a <= b ? 1.0 : 0.0; }},
    {">=", [](double a, double b) { return a >= b ? 1.0 : 0.0; }},
    {"==", [](double a, double b) { return a == b ? 1.0 : 0.0; }},
    {"!=", [](double a, double b) { return a != b ? 1.0 : 0.0; }},
    {"<", [](double a, double b) { return a < b ? 1.0 : 0.0; }},
    {">", [](double a, double b) { return a > b ? 1.0 : 0.0; }},
}};

constexpr std::array<NamedBinary, 2> kSums = {{
    {"+", [](double a, double b) { return a + b; }},
    {"-", [](double a, double b) { return a - b; }},
}};

constexpr std::array<NamedBinary, 2> kProducts = {{
    {"*", [](double a, double b) { return a * b; }},
    {"/", [](double a, double b) { return a / b; }},
}};

constexpr std::array<NamedBinary, 2> kExtremes = {{
    {"min", [](double a, double b) { return b < a ? b : a; }},
    {"max", [](double a, double b) { return b > a ? b : a; }},
}};

template <std::size_t Count>
const NamedBinary* Find(const std::array<NamedBinary, Count>& table, std::string_view name) {
  const auto at = std::find_if(table.begin(), table.end(),
                               [name](const NamedBinary& entry) { return entry.name == name; });
  return at == table.end() ? nullptr : &*at;
}

bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

}  // namespace

/// Recursive descent; a method a level of the grammar. Appends the steps in the order of their
/// calculation.
class ExpressionParser {
 public:
  ExpressionParser(std::string_view text, std::span<const std::string_view> variables,
                   Expression& expression)
      : text_(text), variables_(variables), steps_(expression.steps_) {}

  void Parse() {
    if (CharacterCount(text_) > Expression::kLongest) {
      throw ExpressionError(Expression::kLongest + 1, "the expression is too long");
    }
    Comparison();
    SkipBlanks();
    if (at_ < text_.size()) Fail(Unexpected());
  }

 private:
  using Operation = Expression::Operation;

  /// Counts how deep the parser stands, so that no text can exhaust the stack.
  class Level {
   public:
    explicit Level(ExpressionParser& parser) : parser_(parser) {
      if (++parser_.depth_ > Expression::kDeepest) {
        parser_.Fail("the expression is nested too deeply");
      }
    }
    ~Level() { --parser_.depth_; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

   private:
    ExpressionParser& parser_;
  };

  [[noreturn]] void Fail(const std::string& text) const { FailAt(at_, text); }

  /// Places count characters, not bytes.
  [[noreturn]] void FailAt(std::size_t at, const std::string& text) const {
    throw ExpressionError(CharacterCount(text_.substr(0, at)) + 1, text);
  }

  std::string Unexpected() const {
    if (at_ >= text_.size()) return "something is missing at the end";
    if (text_[at_] == ',') return "a comma is not expected here; numbers take a point";
    const std::string_view rest = text_.substr(at_);
    return "'" + std::string(FirstCharacters(rest, 1)) + "' is not expected here";
  }

  void SkipBlanks() {
    while (at_ < text_.size() && (text_[at_] == ' ' || text_[at_] == '\t')) ++at_;
  }

  bool Take(std::string_view sign) {
    SkipBlanks();
    if (!text_.substr(at_).starts_with(sign)) return false;
    at_ += sign.size();
    return true;
  }

  void Expect(std::string_view sign) {
    if (!Take(sign)) Fail(Unexpected() + "; '" + std::string(sign) + "' is");
  }

  template <std::size_t Count>
  const NamedBinary* TakeOneOf(const std::array<NamedBinary, Count>& table) {
    for (const NamedBinary& entry : table) {
      if (Take(entry.name)) return &entry;
    }
    return nullptr;
  }

  void Append(Binary function) {
    steps_.push_back({.operation = Operation::binary, .binary = function});
  }

  void Comparison() {
    Sum();
    const NamedBinary* const comparison = TakeOneOf(kComparisons);
    if (comparison == nullptr) return;
    Sum();
    Append(comparison->function);
    const std::size_t before = at_;
    if (TakeOneOf(kComparisons) != nullptr) {
      FailAt(before, "only one comparison at a time; put parentheses around one of them");
    }
  }

  void Sum() {
    Term();
    while (const NamedBinary* const sum = TakeOneOf(kSums)) {
      Term();
      Append(sum->function);
    }
  }

  void Term() {
    Signed();
    while (const NamedBinary* const product = TakeOneOf(kProducts)) {
      Signed();
      Append(product->function);
    }
  }

  void Signed() {
    const Level level(*this);
    if (Take("+")) return Signed();
    if (!Take("-")) return Power();
    Signed();
    steps_.push_back({.operation = Operation::negate});
  }

  /// A sign binds an exponent tighter: 2^-1.
  void Power() {
    Primary();
    if (!Take("^")) return;
    Signed();
    Append([](double a, double b) { return std::pow(a, b); });
  }

  void Primary() {
    SkipBlanks();
    if (Take("(")) {
      Comparison();
      Expect(")");
    } else if (at_ < text_.size() && (IsDigit(text_[at_]) || text_[at_] == '.')) {
      Number();
    } else if (at_ < text_.size() && IsLetter(text_[at_])) {
      Name();
    } else {
      Fail(Unexpected());
    }
  }

  void Number() {
    const char* const begin = text_.data() + at_;
    double number = 0;
    const auto [end, error] = std::from_chars(begin, text_.data() + text_.size(), number);
    if (error != std::errc()) Fail("this is not a number that can be used");
    at_ += static_cast<std::size_t>(end - begin);
    steps_.push_back({.operation = Operation::number, .number = number});
  }

  void Name() {
    const std::size_t begin = at_;
    while (at_ < text_.size() && (IsLetter(text_[at_]) || IsDigit(text_[at_]))) ++at_;
    const std::string name = LowerCase(text_.substr(begin, at_ - begin));
    if (Take("(")) return Call(name, begin);
    if (name == "pi") {
      steps_.push_back({.operation = Operation::number, .number = std::numbers::pi});
      return;
    }
    const auto variable = std::find(variables_.begin(), variables_.end(), name);
    if (variable == variables_.end()) {
      FailAt(begin, "'" + name + "' is not known; the variables are " + VariableNames());
    }
    steps_.push_back({.operation = Operation::variable,
                      .variable = static_cast<std::size_t>(variable - variables_.begin())});
  }

  std::string VariableNames() const {
    std::string names;
    for (const std::string_view name : variables_)
      names += (names.empty() ? "" : " ") + std::string(name);
    return names;
  }

  void Call(const std::string& name, std::size_t begin) {
    if (const NamedBinary* const extreme = Find(kExtremes, name)) {
      Comparison();
      while (Take(",")) {
        Comparison();
        Append(extreme->function);
      }
      return Expect(")");
    }
    if (name == "if") return Conditional();
    const auto function =
        std::find_if(kUnaries.begin(), kUnaries.end(),
                     [&name](const NamedUnary& entry) { return entry.name == name; });
    if (function == kUnaries.end()) FailAt(begin, "there is no function '" + name + "'");
    Comparison();
    Expect(")");
    steps_.push_back({.operation = Operation::unary, .unary = function->function});
  }

  /// Both branches are calculated; the one not taken may well be infinite.
  void Conditional() {
    Comparison();
    Expect(",");
    Comparison();
    Expect(",");
    Comparison();
    Expect(")");
    steps_.push_back({.operation = Operation::conditional});
  }

  std::string_view text_;
  std::span<const std::string_view> variables_;
  std::vector<Expression::Step>& steps_;
  std::size_t at_ = 0;
  int depth_ = 0;
};

Expression::Expression(std::string_view text, std::span<const std::string_view> variables) {
  ExpressionParser(text, variables, *this).Parse();
}

double Expression::At(std::span<const double> values) const {
  // Each step but a number or a variable takes at least what it leaves.
  std::array<double, kLongest> stack;  // NOLINT(*-member-init): filled as it grows
  std::size_t top = 0;
  for (const Step& step : steps_) {
    switch (step.operation) {
      case Operation::number:
        stack[top++] = step.number;
        break;
      case Operation::variable:
        stack[top++] = values[step.variable];
        break;
      case Operation::negate:
        stack[top - 1] = -stack[top - 1];
        break;
      case Operation::unary:
        stack[top - 1] = step.unary(stack[top - 1]);
        break;
      case Operation::binary:
        --top;
        stack[top - 1] = step.binary(stack[top - 1], stack[top]);
        break;
      case Operation::conditional:
        top -= 2;
        stack[top - 1] = stack[top - 1] != 0 ? stack[top] : stack[top + 1];
        break;
    }
  }
  return stack[0];
}

bool Expression::Uses(std::size_t variable) const {
  return std::any_of(steps_.begin(), steps_.end(), [variable](const Step& step) {
    return step.operation == Operation::variable && step.variable == variable;
  });
}

}  // namespace polefit
