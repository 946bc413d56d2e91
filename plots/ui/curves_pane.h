#pragma once

#include <QWidget>
#include <array>
#include <optional>

#include "plots/diagram.h"
#include "plots/pane_state.h"

class QBoxLayout;
class QButtonGroup;
class QLabel;
class QToolButton;

namespace polefit {

class DiagramView;

/// The three diagrams with their two choices and the line that says what the curves belong to.
class CurvesPane final : public QWidget {
  Q_OBJECT

 public:
  explicit CurvesPane(QWidget* parent = nullptr);

  /// Shows curves, the typed ones first; they must live until others are shown.
  /// `words` say what they belong to; a preview can be taken.
  void Show(const ShownCurves& shown, const QString& words, bool isPreview);

  const DiagramChoices& Choices() const { return choices_; }
  DiagramKind Lower() const { return lowerKind_; }
  /// The user's own choice keeps the pane from choosing by itself.
  void ChooseLower(DiagramKind kind, bool byUser);
  void ChooseLinear(bool isLinear);
  /// Which diagram there is where there is room for one of them only.
  void PreferLower(bool isPreferred);
  bool PrefersLower() const { return prefersLower_; }
  void SetLogFrequency(bool isLogarithmic);
  void SetPlainMagnitude(bool shows);
  bool HasChosenLower() const { return hasChosenLower_; }

  DiagramView& UpperView() { return *upper_; }
  DiagramView& ErrorView() { return *errors_; }
  DiagramView& LowerView() { return *lower_; }
  /// The uppermost one that is seen.
  DiagramView& FirstSeen();
  const ShownCurves& Curves() const { return shown_; }
  void FitView();
  /// Rings a typed location and reads it out, where poles are shown.
  void MarkLocation(std::optional<std::size_t> location);
  /// What is marked in the diagram that has the focus, or else all in one sentence; then the same
  /// for little room.
  QStringList ReadOut() const;

 Q_SIGNALS:
  void readOut(const QStringList& texts);
  /// A click chose a row of the passband or delay points, from 0, or a location.
  void pointChosen(bool isDelay, std::size_t row);
  void locationChosen(std::size_t location);
  void locationDragged(std::size_t location, double real, double imaginary, bool isEnd);
  void dragAbandoned();
  void takeWanted();
  void choicesChanged();
  void drawn();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void BuildChoices(QBoxLayout* top, QBoxLayout* middle);
  void OrderTabs();
  void Connect(DiagramView* view);
  void Redraw();
  void ApplyRoom();
  void ShowFor(PaneRoom room);
  void ToggleWhole(DiagramView* view);
  void ToggleCurve(const QString& legendText);
  void HideNext();
  QStringList ReadOutOf(const DiagramView& view, std::optional<std::size_t> stop) const;
  void TellReadOut(DiagramView* view, std::optional<std::size_t> stop);
  void TellChoice(DiagramView* view, std::size_t stop);

  ShownCurves shown_;
  DiagramChoices choices_;
  DiagramKind lowerKind_ = DiagramKind::poles;
  bool hasChosenLower_ = false;
  bool prefersLower_ = false;
  DiagramView* upper_;
  DiagramView* errors_;
  DiagramView* lower_;
  DiagramView* whole_ = nullptr;
  QLabel* state_;
  QToolButton* take_;
  QWidget* lowerChoices_;
  QButtonGroup* upperGroup_;
  QButtonGroup* lowerGroup_;
};

}  // namespace polefit
