#include "plots/ui/curves_pane.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QLabel>
#include <QResizeEvent>
#include <QStyleOptionToolButton>
#include <QToolButton>
#include <algorithm>

#include "plots/ui/diagram_view.h"
#include "widgets/controls.h"

namespace polefit {

namespace {

constexpr std::array kLowerKinds = {DiagramKind::poles, DiagramKind::delay, DiagramKind::phase,
                                    DiagramKind::step};

/// One of several; the chosen one is told by more than a shade of grey.
class ChoiceButton final : public QToolButton {
 protected:
  void initStyleOption(QStyleOptionToolButton* option) const override {
    QToolButton::initStyleOption(option);
    if (!isChecked()) return;
    option->palette.setColor(QPalette::Button, palette().color(QPalette::Highlight));
    option->palette.setColor(QPalette::ButtonText, palette().color(QPalette::HighlightedText));
  }
};

QToolButton* MakeChoice(const QString& text, const QString& tip, const char* name,
                        QButtonGroup* group, int id) {
  auto* button = new ChoiceButton;
  button->setObjectName(name);
  button->setText(text);
  button->setToolTip(tip);
  button->setCheckable(true);
  button->setFocusPolicy(Qt::TabFocus);
  group->addButton(button, id);
  return button;
}

}  // namespace

CurvesPane::CurvesPane(QWidget* parent)
    : QWidget(parent),
      upper_(new DiagramView),
      errors_(new DiagramView),
      lower_(new DiagramView),
      state_(new QLabel),
      take_(new QToolButton),
      lowerChoices_(new QWidget),
      upperGroup_(new QButtonGroup(this)),
      lowerGroup_(new QButtonGroup(this)) {
  setObjectName("CurvesPane");
  upper_->setObjectName("DiagramUpper");
  errors_->setObjectName("DiagramError");
  lower_->setObjectName("DiagramLower");
  state_->setObjectName("CurvesState");
  state_->setTextFormat(Qt::PlainText);
  // A long state takes a second line before it makes the pane wide.
  state_->setWordWrap(true);
  QSizePolicy policy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  policy.setHeightForWidth(true);
  state_->setSizePolicy(policy);
  take_->setObjectName("cmdTakePreview");
  take_->setText(tr("Take"));
  take_->setToolTip(tr("Puts the preview's values into the boxes"));
  take_->setFocusPolicy(Qt::TabFocus);
  take_->hide();
  connect(take_, &QToolButton::clicked, this, &CurvesPane::takeWanted);
  upper_->SetLegend(true);
  lower_->SetLegend(false);
  errors_->SetCompact(true);
  auto* top = new QHBoxLayout;
  auto* middle = new QHBoxLayout(lowerChoices_);
  middle->setContentsMargins(0, 0, 0, 0);
  BuildChoices(top, middle);
  auto* all = new QVBoxLayout(this);
  const int gap = fontMetrics().height() / 3;
  all->setContentsMargins(gap, gap, gap, gap);
  all->setSpacing(gap);
  all->addLayout(top);
  all->addWidget(upper_, 10);
  all->addWidget(errors_, 4);
  all->addWidget(lowerChoices_);
  all->addWidget(lower_, 10);
  OrderTabs();
  for (DiagramView* view : {upper_, errors_, lower_}) {
    view->setMinimumHeight(fontMetrics().height() * 3);
    Connect(view);
  }
  // Its figures need a line above or below the errors.
  errors_->setMinimumHeight(fontMetrics().height() * 6);
}

void CurvesPane::BuildChoices(QBoxLayout* top, QBoxLayout* middle) {
  const int gap = fontMetrics().height() / 2;
  top->addWidget(state_, 1);
  top->addWidget(take_);
  top->addSpacing(gap);
  top->setSpacing(0);
  middle->setSpacing(0);
  top->addWidget(
      MakeChoice(tr("dB"), tr("Magnitudes and their errors in dB"), "optDecibels", upperGroup_, 0));
  top->addWidget(MakeChoice(tr("Linear"),
                            tr("Magnitudes as they are; errors in parts of the largest Yout"),
                            "optLinear", upperGroup_, 1));
  upperGroup_->button(0)->setChecked(true);
  const QString names[] = {tr("Poles"), tr("Delay"), tr("Phase"), tr("Step")};
  const QString tips[] = {tr("Poles and zeros in the upper half-plane, divided by Freq Norm"),
                          tr("Group delay against frequency"), tr("Phase of H, in degrees"),
                          tr("What H makes of a step, against time")};
  const char* const objects[] = {"optPoles", "optDelay", "optPhase", "optStep"};
  middle->addStretch(1);
  for (int i = 0; i < 4; ++i) {
    middle->addWidget(MakeChoice(names[i], tips[i], objects[i], lowerGroup_, i));
  }
  lowerGroup_->button(0)->setChecked(true);
  connect(upperGroup_, &QButtonGroup::idClicked, this, [this](int id) {
    if (whole_ == lower_) whole_ = nullptr;
    ChooseLinear(id == 1);
    PreferLower(false);
  });
  connect(lowerGroup_, &QButtonGroup::idClicked, this, [this](int id) {
    if (whole_ != lower_) whole_ = nullptr;
    ChooseLower(kLowerKinds[static_cast<std::size_t>(id)], true);
    PreferLower(true);
  });
}

/// From diagram to diagram, and then to the choices.
void CurvesPane::OrderTabs() {
  QList<QWidget*> order = {upper_, errors_, lower_, take_};
  for (const QButtonGroup* group : {upperGroup_, lowerGroup_}) {
    for (QAbstractButton* button : group->buttons()) order << button;
  }
  for (qsizetype i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);
}

void CurvesPane::Connect(DiagramView* view) {
  connect(view, &DiagramView::stopReached, this,
          [this, view](std::optional<std::size_t> stop) { TellReadOut(view, stop); });
  connect(view, &DiagramView::stopChosen, this,
          [this, view](std::size_t stop) { TellChoice(view, stop); });
  connect(view, &DiagramView::frequenciesChanged, this, [this, view](double from, double to) {
    for (DiagramView* other : {upper_, errors_, lower_}) {
      if (other != view) other->SetFrequencies(from, to);
    }
  });
  connect(view, &DiagramView::wholePaneWanted, this, [this, view] { ToggleWhole(view); });
  connect(view, &DiagramView::normalPaneWanted, this, [this] {
    if (whole_ != nullptr) ToggleWhole(whole_);
  });
  connect(view, &DiagramView::curveClicked, this, &CurvesPane::ToggleCurve);
  connect(view, &DiagramView::stopDragged, this,
          [this, view](std::size_t stop, double x, double y, bool isEnd) {
            const Stop& at = view->Shown().stops[stop];
            if (at.curve != 0) return;
            const double real = at.isMirror ? -x : x;
            const std::size_t location = at.index;
            view->Mark(stop);
            Q_EMIT locationDragged(location, real, y, isEnd);
          });
  connect(view, &DiagramView::dragAbandoned, this, &CurvesPane::dragAbandoned);
}

void CurvesPane::Show(const ShownCurves& shown, const QString& words, bool isPreview) {
  shown_ = shown;
  state_->setText(words);
  state_->setToolTip(words);
  take_->setVisible(isPreview);
  Redraw();
  setAccessibleName(tr("Curves, %1: %2").arg(words, ToQString(upper_->Shown().sentence)));
}

void CurvesPane::Redraw() {
  upper_->Show(MakeDiagram(DiagramKind::magnitude, shown_, choices_));
  if (errors_->isVisibleTo(this)) {
    errors_->Show(MakeDiagram(DiagramKind::error, shown_, choices_));
  }
  if (lower_->isVisibleTo(this)) lower_->Show(MakeDiagram(lowerKind_, shown_, choices_));
  // One that comes in later joins the others where they are.
  const QCPRange frequencies = upper_->xAxis->range();
  for (DiagramView* view : {errors_, lower_}) {
    if (view->isVisibleTo(this)) view->SetFrequencies(frequencies.lower, frequencies.upper);
  }
  Q_EMIT drawn();
  for (DiagramView* view : {upper_, errors_, lower_}) {
    if (view->hasFocus()) TellReadOut(view, view->Marked());
  }
}

void CurvesPane::ChooseLower(DiagramKind kind, bool byUser) {
  if (!byUser && hasChosenLower_) return;
  const bool isFirstChoice = byUser && !std::exchange(hasChosenLower_, true);
  const auto found = std::find(kLowerKinds.begin(), kLowerKinds.end(), kind);
  if (found == kLowerKinds.end()) return;
  lowerGroup_->button(static_cast<int>(found - kLowerKinds.begin()))->setChecked(true);
  if (lowerKind_ != kind) {
    lowerKind_ = kind;
    lower_->SetLegend(kind == DiagramKind::delay);
    Redraw();
  } else if (!isFirstChoice) {
    return;
  }
  if (byUser) Q_EMIT choicesChanged();
}

void CurvesPane::PreferLower(bool isPreferred) {
  const bool isOther = std::exchange(prefersLower_, isPreferred) != isPreferred;
  ApplyRoom();
  if (isOther) Q_EMIT choicesChanged();
}

void CurvesPane::ChooseLinear(bool isLinear) {
  upperGroup_->button(isLinear ? 1 : 0)->setChecked(true);
  if (choices_.isLinear == isLinear) return;
  choices_.isLinear = isLinear;
  Redraw();
  Q_EMIT choicesChanged();
}

void CurvesPane::SetLogFrequency(bool isLogarithmic) {
  choices_.isLogFrequency = isLogarithmic;
  Redraw();
  Q_EMIT choicesChanged();
}

void CurvesPane::SetPlainMagnitude(bool shows) {
  choices_.showsPlainMagnitude = shows;
  Redraw();
  Q_EMIT choicesChanged();
}

void CurvesPane::FitView() {
  for (DiagramView* view : {upper_, errors_, lower_}) view->FitView();
}

void CurvesPane::MarkLocation(std::optional<std::size_t> location) {
  if (lower_->Shown().kind != DiagramKind::poles) return;
  const std::vector<Stop>& stops = lower_->Shown().stops;
  const bool isMirror = lower_->Marked() && stops[*lower_->Marked()].isMirror;
  const auto at = std::ranges::find_if(stops, [location, isMirror](const Stop& stop) {
    return stop.curve == 0 && stop.index == location && stop.isMirror == isMirror;
  });
  lower_->Mark(at == stops.end() ? std::nullopt : std::optional<std::size_t>(at - stops.begin()));
  TellReadOut(lower_, lower_->Marked());
}

DiagramView& CurvesPane::FirstSeen() {
  for (DiagramView* view : {upper_, errors_, lower_}) {
    if (view->isVisibleTo(this)) return *view;
  }
  return *upper_;
}

QStringList CurvesPane::ReadOut() const {
  for (const DiagramView* view : {upper_, errors_, lower_}) {
    if (view->hasFocus()) return ReadOutOf(*view, view->Marked());
  }
  return ReadOutOf(*upper_, std::nullopt);
}

QStringList CurvesPane::ReadOutOf(const DiagramView& view, std::optional<std::size_t> stop) const {
  const Diagram& diagram = view.Shown();
  std::vector<std::string> texts = {diagram.sentence, diagram.brief};
  if (stop) texts = StopTexts(diagram, *stop, shown_, choices_);
  QStringList shown;
  for (const std::string& text : texts) {
    if (!text.empty()) shown << ToQString(text);
  }
  return shown;
}

void CurvesPane::ToggleWhole(DiagramView* view) {
  whole_ = whole_ == view ? nullptr : view;
  ApplyRoom();
  view->setFocus();
}

/// The text in the legend begins with the curve's name.
void CurvesPane::ToggleCurve(const QString& legendText) {
  if (legendText.isEmpty()) return HideNext();
  for (const FitCurves* const curves : shown_) {
    const QString name = ToQString(curves->name);
    const bool isNamed = legendText == name || legendText.startsWith(name + ',');
    if (curves->isPointsAlone || !isNamed) continue;
    auto& hidden = choices_.hidden;
    if (std::erase(hidden, curves->name) == 0) hidden.push_back(curves->name);
    return Redraw();
  }
}

/// By a key: the last curve, then in turn each before it in its place, at last none.
void CurvesPane::HideNext() {
  std::vector<std::string>& hidden = choices_.hidden;
  const auto isHidden = [&hidden](const FitCurves* curves) {
    return std::find(hidden.begin(), hidden.end(), curves->name) != hidden.end();
  };
  const auto present = std::find_if(shown_.begin(), shown_.end(), isHidden);
  hidden.clear();
  if (present != shown_.begin()) {
    const FitCurves* const next = *std::prev(present);
    if (!next->isPointsAlone) hidden.push_back(next->name);
  }
  Redraw();
}

void CurvesPane::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  ApplyRoom();
}

void CurvesPane::ApplyRoom() {
  // Showing and hiding lays the pane out, which may give it another height.
  constexpr int kMostTries = 3;
  for (int i = 0; i < kMostTries; ++i) {
    const PaneRoom room = RoomOf(height());
    ShowFor(room);
    if (RoomOf(height()) == room) break;
  }
  Redraw();
}

void CurvesPane::ShowFor(PaneRoom room) {
  const bool isLower = room == PaneRoom::all || (room == PaneRoom::upperOrLower && prefersLower_);
  const bool isUpper = room != PaneRoom::upperOrLower || !prefersLower_;
  const auto show = [this](DiagramView* view, bool fits) {
    view->setVisible(whole_ == nullptr ? fits : whole_ == view);
  };
  show(upper_, isUpper);
  show(errors_, isUpper && room != PaneRoom::upperAlone);
  show(lower_, isLower);
  lowerChoices_->setVisible(room != PaneRoom::upperAlone);
}

void CurvesPane::TellReadOut(DiagramView* view, std::optional<std::size_t> stop) {
  const QStringList texts = ReadOutOf(*view, stop);
  view->SetReadOut(texts.value(0));
  const bool isLookedAt = stop || view->underMouse() || view->hasFocus();
  Q_EMIT readOut(isLookedAt ? texts : ReadOut());
}

void CurvesPane::TellChoice(DiagramView* view, std::size_t stop) {
  const std::size_t index = view->Shown().stops[stop].index;
  switch (view->Shown().stopKind) {
    case StopKind::passbandRow:
      return pointChosen(false, index);
    case StopKind::delayRow:
      return pointChosen(true, index);
    case StopKind::location:
      if (view->Shown().stops[stop].curve == 0) Q_EMIT locationChosen(index);
      return;
    case StopKind::sample:
      return;
  }
}

}  // namespace polefit
