#pragma once

#include <optional>

#include "plots/diagram.h"
#include "plots/ui/custom_plot.h"
#include "plots/ui/legend_place.h"

namespace polefit {

/// Draws one diagram and tells what the user does to it. Mouse: wheel or pinch zooms at the
/// pointer, a drag draws a zoom box, Shift or the middle button pans. Keys, while it has the focus:
/// Left and Right step from point to point, by ten with Shift; + and - zoom, Home shows all, Ctrl
/// and arrows pan, Return asks for the whole pane.
class DiagramView final : public QCustomPlot {
  Q_OBJECT

 public:
  explicit DiagramView(QWidget* parent = nullptr);

  /// Shows a diagram. The zoom stays while the axes of the new one are as before.
  void Show(const Diagram& diagram);
  const Diagram& Shown() const { return diagram_; }

  /// Rings a stop, or none.
  void Mark(std::optional<std::size_t> stop);
  std::optional<std::size_t> Marked() const { return marked_; }
  std::optional<std::size_t> StopNear(const QPointF& position) const;
  QPointF PositionOf(std::size_t stop) const;
  /// What the axes say at a place.
  QPointF ValuesAt(const QPointF& position) const;

  /// Shows the whole axes again.
  void FitView();
  /// Takes the frequency range of another diagram over.
  void SetFrequencies(double from, double to);
  /// Tells a screen reader of what is read out: a stop, or all.
  void SetReadOut(const QString& text);
  void SetLegend(bool shows) { showsLegend_ = shows; }
  void SetCompact(bool compact) { isCompact_ = compact; }
  /// Leaves what belongs into a picture, until the palette changes again: no focus frame, no ring,
  /// and nothing outside of the axes, where some formats do not clip.
  void PrepareForPicture();

 Q_SIGNALS:
  /// The stop under the pointer or reached by keys has another one; none when there is no value.
  void stopReached(std::optional<std::size_t> stop);
  void stopChosen(std::size_t stop);
  void frequenciesChanged(double from, double to);
  void wholePaneWanted();
  void normalPaneWanted();
  void curveClicked(const QString& name);
  /// A location is being dragged to a place, in the units of the axes; `isEnd` when it was let go.
  void stopDragged(std::size_t stop, double x, double y, bool isEnd);
  void dragAbandoned();

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void leaveEvent(QEvent* event) override;
  bool event(QEvent* event) override;

 private:
  enum class Drag { none, zoom, pan, stop };

  void ApplyStyle();
  void ShowMark();
  void ShowFocus(bool hasFocus);
  void Rebuild();
  void AddSeries(const Series& series, bool isLastLine);
  void AddStraight(double at, bool isVertical);
  void AddFrame(const Frame& frame);
  void AddEllipse(const Ellipse& ellipse);
  void AddNote();
  QString NoteText() const;
  Obstacles DrawnObstacles() const;
  QRectF PlaceNote();
  void PlaceLegend();
  QSizeF ShapeLegend(bool hasFigures, int columns);
  bool LiftLegend(const QRectF& room, bool hasFigures, double most);
  void PlaceAxes();
  void PlaceEqualAxes();
  void FitFigures();
  void Zoom(double factor, const QPointF& at);
  bool Pinch(QEvent& event);
  bool AsksForMenuByKey(const QEvent& event);
  void Pan(double right, double up);
  void ShowNewView();
  QRectF DrawnBox(const QPointF& at) const;
  void EndZoomBox(const QPointF& at);
  void Step(int count);
  void GiveUp();
  bool MovesStop(const QKeyEvent& event);
  bool HasFrequencies() const;
  QPointF Dragged(const QPointF& position, bool isFine) const;

  Diagram diagram_;
  std::optional<std::size_t> marked_;
  std::optional<std::size_t> pressed_;
  Drag drag_ = Drag::none;
  QPointF pressedAt_;
  QPointF lastAt_;
  QRubberBand* zoomBox_;
  /// By the user, the one axis or the other; with equal scales both.
  bool isZoomedAcross_ = false;
  bool isZoomedUp_ = false;
  bool showsLegend_ = false;
  bool isCompact_ = false;
};

}  // namespace polefit
