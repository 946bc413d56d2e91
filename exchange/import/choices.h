#pragma once

#include <limits>
#include <string>
#include <vector>

#include "exchange/read/table.h"

namespace polefit {

/// What the points are for.
enum class Role {
  model,     ///< the response to be modelled: Yin 1, Yout the points
  equalise,  ///< what is there, to be equalised: Yin the points
  want       ///< what is wanted: Yout the points
};

/// How the values of a column, or of two, stand for a magnitude.
enum class ValueKind { linear, decibel, powerDecibel, magnitudeAngle, realImaginary };

inline constexpr int kNoColumn = -1;

/// A column of values; columns count from 0.
struct ValueColumn {
  int column = kNoColumn;
  ValueKind kind = ValueKind::linear;
  /// The imaginary part, for that kind.
  int second = kNoColumn;
};

enum class DelaySource { none, column, phase };

/// Which rows become points.
struct RowChoices {
  /// MHz.
  double from = -std::numeric_limits<double>::infinity();
  double to = std::numeric_limits<double>::infinity();
  /// Every n-th row; 1 is all of them.
  int every = 1;
  /// So many points, 0 for all rows.
  int points = 0;
  bool logarithmic = false;
  /// Rows that a local quadratic runs over, odd; 0 for none.
  int smooth = 0;
  /// Largest Yout := 1.
  bool normalise = false;
};

/// Everything that is chosen of how a table becomes points.
struct ImportChoices {
  Role role = Role::model;
  int frequency = kNoColumn;
  FrequencyUnit unit = FrequencyUnit::hertz;
  /// The points themselves: Yin where they are to be equalised, else Yout.
  ValueColumn value = {};
  /// The other one of Yin and Yout, where the file has it too.
  ValueColumn other = {};
  int weight = kNoColumn;
  DelaySource delaySource = DelaySource::none;
  /// The column of delay or phase.
  int delay = kNoColumn;
  /// The imaginary part, where the phase is that of a complex number whose real part is `delay`.
  int delaySecond = kNoColumn;
  DelayUnit delayUnit = DelayUnit::nanoseconds;
  AngleUnit angleUnit = AngleUnit::degrees;
  RowChoices rows = {};
};

}  // namespace polefit
