#include "exchange/ui/points_view.h"

#include <QFont>
#include <algorithm>
#include <cmath>
#include <utility>

#include "base/text.h"
#include "exchange/read/decoding.h"
#include "exchange/ui/points_diagram.h"
#include "widgets/controls.h"

namespace polefit {

namespace {

constexpr double kLowestDecibel = -120;
constexpr int kPassbandColumns = 4;
constexpr int kDelayColumns = 2;
/// So many skipped lines are shown, and so much of each; the line below the table counts them all.
constexpr std::size_t kMostMarked = 200;
constexpr std::size_t kLongestMark = 100;

}  // namespace

void PointsModel::Show(const ImportPreview& preview, const ImportPlan& plan) {
  beginResetModel();
  hasPassband_ = !plan.isOnlyDelay;
  rows_ = preview.rows;
  delays_ = CellsOfPoints(preview.points.delays);
  Arrange(preview, plan);
  endResetModel();
}

void PointsModel::Arrange(const ImportPreview& preview, const ImportPlan& plan) {
  entries_.clear();
  const std::vector<std::string_view> lines = LinesOf(plan.source.text);
  const std::vector<int>& skipped = preview.points.skippedLines;
  const std::size_t marked = lines.empty() ? 0 : std::min(skipped.size(), kMostMarked);
  std::size_t next = 0;
  const auto mark = [&] {
    const auto line = static_cast<std::size_t>(skipped[next++]);
    const std::string_view text =
        FirstCharacters(lines[std::min(line, lines.size()) - 1], kLongestMark);
    entries_.push_back({0, tr("line %1 skipped: %2").arg(line).arg(ToQString(text).simplified())});
  };
  const Points& points = preview.points;
  const auto lineOf = [&](std::size_t row) {
    if (plan.isOnlyDelay) return points.delays[row].line;
    // Rows that were merged into the table have no line of their own.
    const bool hasLine = rows_.size() == points.passband.size() && row < rows_.size();
    return hasLine ? points.passband[row].line : 0;
  };
  for (std::size_t row = 0; row < std::max(rows_.size(), delays_.size()); ++row) {
    while (next < marked && skipped[next] < lineOf(row)) mark();
    entries_.push_back({row});
  }
  while (next < marked) mark();
}

std::vector<int> PointsModel::SkippedRows() const {
  std::vector<int> skipped;
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    if (!entries_[i].skipped.isEmpty()) skipped.push_back(static_cast<int>(i));
  }
  return skipped;
}

int PointsModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(entries_.size());
}

int PointsModel::columnCount(const QModelIndex& parent) const {
  if (parent.isValid()) return 0;
  return (hasPassband_ ? kPassbandColumns : 0) + (delays_.empty() ? 0 : kDelayColumns);
}

QVariant PointsModel::CellOf(std::size_t row, std::size_t column) const {
  if (hasPassband_ && column < kPassbandColumns) {
    return row < rows_.size() ? ToQString(rows_[row].at(column)) : QVariant();
  }
  if (hasPassband_) column -= kPassbandColumns;
  return row < delays_.size() ? ToQString(delays_[row].at(column)) : QVariant();
}

QVariant PointsModel::data(const QModelIndex& index, int role) const {
  const Entry& entry = entries_[static_cast<std::size_t>(index.row())];
  const bool isSkipped = !entry.skipped.isEmpty();
  if (role == Qt::TextAlignmentRole) {
    return static_cast<int>((isSkipped ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
  }
  if (role == Qt::FontRole && isSkipped) {
    QFont font;
    font.setItalic(true);
    return font;
  }
  if (role != Qt::DisplayRole) return {};
  if (isSkipped) return index.column() == 0 ? entry.skipped : QVariant();
  return CellOf(entry.row, static_cast<std::size_t>(index.column()));
}

QVariant PointsModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Vertical) {
    const Entry& entry = entries_[static_cast<std::size_t>(section)];
    return entry.skipped.isEmpty() ? QString::number(entry.row + 1) : QString();
  }
  const QString titles[] = {tr("MHz"),    tr("Yin"),        tr("Yout"),
                            tr("Weight"), tr("Delay: MHz"), tr("TX, ns")};
  return titles[section + (hasPassband_ ? 0 : kPassbandColumns)];
}

void ShowPoints(const ImportPreview& preview, const ImportPlan& plan, PointsDiagram& diagram) {
  std::vector<QPointF> points;
  if (plan.isOnlyDelay) {
    for (const DelayRow& row : preview.points.delays) {
      points.emplace_back(row.frequency.value, row.tx.value);
    }
    return diagram.Show(std::move(points), QObject::tr("ns"));
  }
  for (const PassbandRow& row : preview.points.passband) {
    const bool isYin = plan.choices.role == Role::equalise;
    const double value = std::abs(isYin ? row.yin.value : row.yout.value);
    points.emplace_back(row.frequency.value, std::max(kLowestDecibel, Decibel(value)));
  }
  diagram.Show(std::move(points), QObject::tr("dB"));
}

}  // namespace polefit
