// Where the texts over the curves stand: legend and note.

#include <cmath>
#include <utility>

#include "plots/ui/curve_style.h"
#include "plots/ui/diagram_view.h"
#include "widgets/controls.h"

namespace polefit {

namespace {

constexpr int kLegendGap = 8;

}  // namespace

/// The note in lines that fit; that of the worst error is one line.
QString DiagramView::NoteText() const {
  constexpr int kGap = 16;
  QString text = ToQString(diagram_.note);
  if (diagram_.kind == DiagramKind::error) return text;
  const QFontMetrics metrics(font());
  QStringList lines{QString()};
  for (const QString& word : text.split(' ')) {
    const QString longer = lines.last().isEmpty() ? word : lines.last() + ' ' + word;
    const bool isWide = metrics.horizontalAdvance(longer) > axisRect()->width() - kGap;
    if (isWide && !lines.last().isEmpty()) {
      lines << word;
    } else {
      lines.last() = longer;
    }
  }
  return lines.join('\n');
}

void DiagramView::AddNote() {
  if (diagram_.note.empty()) return;
  auto* text = new QCPItemText(this);
  text->setObjectName("note");
  text->setText(NoteText());
  text->setFont(font());
  const bool isWorst = diagram_.kind == DiagramKind::error;
  text->setColor(isWorst ? ColorOf(SeriesRole::worst, palette()) : palette().color(QPalette::Text));
  text->position->setType(QCPItemPosition::ptAxisRectRatio);
  QColor ground = palette().color(QPalette::Base);
  ground.setAlpha(210);
  text->setBrush(ground);
  text->setPadding(QMargins(3, 0, 3, 0));
  // Where there are curves it finds its place beside them.
  text->setPositionAlignment(Qt::AlignCenter);
  text->position->setCoords(.5, .5);
}

Obstacles DiagramView::DrawnObstacles() const {
  Obstacles obstacles;
  for (const Series& series : diagram_.series) {
    std::vector<QPointF> points;
    points.reserve(series.x.size());
    for (std::size_t i = 0; i < series.x.size(); ++i) {
      // A break in a line: what is on either side of it is not joined.
      if (std::isnan(series.y[i])) {
        if (series.IsLine() && !points.empty())
          obstacles.lines.push_back(std::exchange(points, {}));
        continue;
      }
      points.emplace_back(xAxis->coordToPixel(series.x[i]), yAxis->coordToPixel(series.y[i]));
    }
    if (series.IsLine()) {
      obstacles.lines.push_back(std::move(points));
    } else {
      obstacles.marks.insert(obstacles.marks.end(), points.begin(), points.end());
    }
  }
  return obstacles;
}

/// Puts the note where it covers nothing, and returns that place: of the worst error's figures,
/// where there is no room for all of them, the first ones.
QRectF DiagramView::PlaceNote() {
  QCPItemText* note = nullptr;
  for (int i = 0; i < itemCount() && note == nullptr; ++i) {
    note = qobject_cast<QCPItemText*>(item(i));
  }
  if (note == nullptr || !diagram_.hasFigures) return {};
  constexpr int kGap = 2;
  const QRectF axes = axisRect()->rect();
  const QRectF room = axes.adjusted(kGap, 0, -kGap, 0);
  const Obstacles obstacles = DrawnObstacles();
  const bool isWorst = diagram_.kind == DiagramKind::error;
  // Above the curves there may have to be room for the legend.
  const Qt::Edge edge = showsLegend_ ? Qt::BottomEdge : Qt::TopEdge;
  QSizeF size;
  std::optional<QPointF> place;
  for (QString text = NoteText();; text = text.section(',', 0, -2)) {
    size = QFontMetrics(note->font()).size(0, text).grownBy(note->padding());
    if (size.width() <= room.width() || !isWorst) {
      note->setText(text);
      place = FreeNotePlace(room, size, obstacles, edge);
    }
    if (place || !isWorst || !text.contains(',')) break;
  }
  const double usualTop = edge == Qt::TopEdge ? room.top() : room.bottom() - size.height();
  const QPointF usual(room.center().x() - size.width() / 2, usualTop);
  const QPointF corner = place.value_or(usual);
  const QPointF way = corner - axes.topLeft();
  note->setPositionAlignment(Qt::AlignLeft | Qt::AlignTop);
  note->position->setCoords(way.x() / axes.width(), way.y() / axes.height());
  return {corner, size};
}

/// Writes the legend with the figures behind the names or without them, and returns its size.
QSizeF DiagramView::ShapeLegend(bool hasFigures, int columns) {
  for (int i = 0; i < graphCount(); ++i) {
    const QString name = ToQString(diagram_.series[static_cast<std::size_t>(i)].name);
    graph(i)->setName(hasFigures ? name : name.section(',', 0, 0));
  }
  // The narrowest pane has room for two columns of names.
  constexpr int kIcon = 32;
  constexpr int kSmallIcon = 24;
  legend->setIconSize(hasFigures ? kIcon : kSmallIcon, legend->iconSize().height());
  legend->setWrap(columns);
  legend->setFillOrder(QCPLegend::foColumnsFirst, true);
  return legend->minimumOuterSizeHint();
}

/// Lets the axis go on above the curves until the legend has room there, as low as it can be,
/// where that takes no more than a share of the height.
bool DiagramView::LiftLegend(const QRectF& room, bool hasFigures, double most) {
  QSizeF size = ShapeLegend(hasFigures, 2);
  if (size.width() > room.width()) size = ShapeLegend(hasFigures, 1);
  const double share = (size.height() + 2 * kLegendGap) / std::max(1.0, room.height());
  if (size.width() > room.width() || share > most) return false;
  if (!isZoomedUp_ && !diagram_.y.isLogarithmic) {
    yAxis->setRange(diagram_.y.from,
                    diagram_.y.to + share / (1 - share) * (diagram_.y.to - diagram_.y.from));
  }
  axisRect()->insetLayout()->setInsetAlignment(0, Qt::AlignRight | Qt::AlignTop);
  return true;
}

/// Where it covers nothing, with figures if there is room for them. A diagram that is too low for
/// any legend has none.
void DiagramView::PlaceLegend() {
  const QRectF note = PlaceNote();
  legend->setVisible(showsLegend_ && !isCompact_ && legend->itemCount() > 0);
  if (!legend->visible()) return;
  const QRectF room =
      QRectF(axisRect()->rect()).adjusted(kLegendGap, kLegendGap, -kLegendGap, -kLegendGap);
  Obstacles obstacles = DrawnObstacles();
  if (!note.isEmpty()) obstacles.texts.push_back(note);
  auto* inset = axisRect()->insetLayout();
  inset->setMargins({kLegendGap, kLegendGap, kLegendGap, kLegendGap});
  const auto isFree = [&](bool hasFigures, int columns) {
    const QSizeF size = ShapeLegend(hasFigures, columns);
    const auto place = size.width() > room.width()
                           ? std::nullopt
                           : FreeLegendPlace(room, size, obstacles, inset->insetAlignment(0));
    if (place) inset->setInsetAlignment(0, *place);
    return place.has_value();
  };
  constexpr double kLittle = .35;
  constexpr double kHalf = .5;
  constexpr double kMost = .62;
  const bool stands = isFree(true, 1) || isFree(true, 2) || LiftLegend(room, true, kLittle) ||
                      isFree(false, 1) || isFree(false, 2) || LiftLegend(room, true, kHalf) ||
                      LiftLegend(room, false, kMost);
  legend->setVisible(stands);
}

}  // namespace polefit
