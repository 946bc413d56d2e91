#include "exchange/import/merging.h"

#include <algorithm>
#include <cmath>

#include "base/text_format.h"
#include "exchange/read/number_text.h"

namespace polefit {

namespace {

enum PointColumn : std::size_t { kFrequency, kYin, kYout, kWeight };

bool AreEqual(double a, double b) {
  constexpr double kTolerance = 1e-12;
  return std::abs(a - b) <= kTolerance * std::max(std::abs(a), std::abs(b));
}

/// A column over frequency, for looking values up in between.
class Curve {
 public:
  Curve(const std::vector<PassbandCells>& rows, std::size_t column) {
    for (const PassbandCells& row : rows) {
      const double x = CellNumber(row[kFrequency], '.');
      const double y = CellNumber(row.at(column), '.');
      if (std::isnan(x) || std::isnan(y)) continue;
      knots_.push_back({x, y, row.at(column)});
      inDecibels_ = inDecibels_ && y > 0;
    }
    std::stable_sort(knots_.begin(), knots_.end(),
                     [](const Knot& a, const Knot& b) { return a.x < b.x; });
  }

  /// The text at a frequency; "" beyond the ends.
  std::string At(double x) const {
    const auto above = std::find_if(knots_.begin(), knots_.end(), [&](const Knot& knot) {
      return knot.x > x || AreEqual(knot.x, x);
    });
    if (above == knots_.end()) return {};
    if (AreEqual(above->x, x)) return above->text;
    if (above == knots_.begin()) return {};
    const Knot& below = *(above - 1);
    const double part = (x - below.x) / (above->x - below.x);
    if (!inDecibels_) return PlainNumber(below.y + part * (above->y - below.y));
    return PlainNumber(below.y * std::pow(above->y / below.y, part));
  }

 private:
  struct Knot {
    double x;
    double y;
    std::string text;
  };
  std::vector<Knot> knots_;
  bool inDecibels_ = true;
};

/// The three columns beside the frequency of a table or of points.
class Curves {
 public:
  explicit Curves(const std::vector<PassbandCells>& rows)
      : curves_{Curve(rows, kYin), Curve(rows, kYout), Curve(rows, kWeight)} {}
  std::string At(std::size_t column, double x) const { return curves_.at(column - 1).At(x); }

 private:
  std::array<Curve, 3> curves_;
};

bool IsTaken(TakenColumns taken, std::size_t column) {
  if (column == kYin) return taken.yin;
  return column == kYout ? taken.yout : taken.weight;
}

/// The table's rows with the points' values at their frequencies.
void FillTable(const std::vector<PassbandCells>& table, const std::vector<PassbandCells>& points,
               TakenColumns taken, MergedTable& merged) {
  const Curves curves(points);
  for (PassbandCells row : table) {
    const double x = CellNumber(row[kFrequency], '.');
    bool outside = false;
    for (const std::size_t column : {kYin, kYout, kWeight}) {
      if (!IsTaken(taken, column)) continue;
      const std::string value = std::isnan(x) ? std::string() : curves.At(column, x);
      outside = outside || value.empty();
      if (!value.empty()) row.at(column) = value;
    }
    merged.keptRows += outside ? 1 : 0;
    merged.rows.push_back(std::move(row));
  }
}

/// The points with the table's values at their frequencies. A weight is 1 beyond the table's ends.
std::vector<PassbandCells> FillPoints(const std::vector<PassbandCells>& table,
                                      const std::vector<PassbandCells>& points, TakenColumns taken,
                                      MergedTable& merged) {
  const Curves curves(table);
  std::vector<PassbandCells> rows;
  for (PassbandCells row : points) {
    const double x = CellNumber(row[kFrequency], '.');
    bool outside = false;
    for (const std::size_t column : {kYin, kYout, kWeight}) {
      if (IsTaken(taken, column)) continue;
      row.at(column) = curves.At(column, x);
      if (row.at(column).empty() && column == kWeight) row.at(column) = "1";
      outside = outside || row.at(column).empty();
    }
    if (outside) {
      ++merged.droppedPoints;
    } else {
      rows.push_back(std::move(row));
    }
  }
  return rows;
}

bool HasFrequency(const std::vector<PassbandCells>& rows, double x) {
  return std::any_of(rows.begin(), rows.end(), [&](const PassbandCells& row) {
    return AreEqual(CellNumber(row[kFrequency], '.'), x);
  });
}

/// Each new row goes before the first one of a higher frequency; the table's own order stays.
void Insert(std::vector<PassbandCells> fresh, std::vector<PassbandCells>& rows) {
  for (PassbandCells& row : fresh) {
    const double x = CellNumber(row[kFrequency], '.');
    if (HasFrequency(rows, x)) continue;
    const auto place = std::find_if(rows.begin(), rows.end(), [&](const PassbandCells& other) {
      return CellNumber(other[kFrequency], '.') > x;
    });
    rows.insert(place, std::move(row));
  }
}

}  // namespace

std::vector<PassbandCells> CellsOfPoints(const std::vector<PassbandRow>& points) {
  std::vector<PassbandCells> cells;
  cells.reserve(points.size());
  for (const PassbandRow& row : points) {
    cells.push_back({TextOf(row.frequency), TextOf(row.yin), TextOf(row.yout), TextOf(row.weight)});
  }
  return cells;
}

std::vector<DelayCells> CellsOfPoints(const std::vector<DelayRow>& points) {
  std::vector<DelayCells> cells;
  cells.reserve(points.size());
  for (const DelayRow& row : points) cells.push_back({TextOf(row.frequency), TextOf(row.tx)});
  return cells;
}

MergedTable Merge(const std::vector<PassbandCells>& table, const std::vector<PassbandRow>& points,
                  TakenColumns taken, Frequencies frequencies) {
  const std::vector<PassbandCells> cells = CellsOfPoints(points);
  MergedTable merged;
  if (table.empty()) {
    merged.rows = cells;
  } else if (frequencies == Frequencies::table) {
    FillTable(table, cells, taken, merged);
  } else if (frequencies == Frequencies::file) {
    merged.rows = FillPoints(table, cells, taken, merged);
  } else {
    merged.rows = table;
    const std::vector<PassbandCells> fresh = FillPoints(table, cells, taken, merged);
    for (PassbandCells& row : merged.rows) {
      for (const PassbandCells& other : fresh) {
        if (!AreEqual(CellNumber(row[0], '.'), CellNumber(other[0], '.'))) continue;
        for (const std::size_t column : {kYin, kYout, kWeight}) {
          if (IsTaken(taken, column)) row.at(column) = other.at(column);
        }
      }
    }
    Insert(fresh, merged.rows);
  }
  return merged;
}

}  // namespace polefit
