#include "plots/ui/curves_dock.h"

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <algorithm>
#include <utility>

#include "form/ui/main_window.h"
#include "plots/ui/curves_pane.h"
#include "plots/ui/diagram_view.h"
#include "widgets/window_size.h"

namespace polefit {

namespace {

constexpr int kLeastWidth = 340;
constexpr int kFirstShare = 44;  // per cent of the window

constexpr const char* kOwnWindow = "curves.window";

/// What the tabs need beside the pane, larger where the font is.
int LeastTabs(const MainWindow& form) {
  constexpr int kLeastTabs = 560;
  constexpr int kHeights = 35;  // of the font
  return std::max(kLeastTabs, kHeights * form.fontMetrics().height());
}

/// What had the focus, or what it stands in: a cell's editor is closed when it is left.
QWidget& FocusTaker(QWidget* former, QWidget& tabs) {
  for (QWidget* taker = former; taker != nullptr && taker != &tabs; taker = taker->parentWidget()) {
    const bool isSeen = taker->isVisible() && taker->isEnabled();
    if (isSeen && taker->focusPolicy() != Qt::NoFocus) return *taker;
  }
  return tabs;
}

}  // namespace

CurvesDock::CurvesDock(MainWindow& form, Program& program)
    : QDockWidget(tr("Curves"), &form),
      form_(form),
      program_(program),
      pane_(new CurvesPane),
      live_(new LiveCurves(form, program, *pane_)) {
  setObjectName("dockCurves");
  setWidget(pane_);
  setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
  // The findings below take their height from the tabs, not from the pane.
  form.setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
  form.setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
  pane_->setMinimumWidth(kLeastWidth);
  connect(pane_, &CurvesPane::choicesChanged, this, &CurvesDock::SaveChoices);
  connect(this, &QDockWidget::visibilityChanged, this, &CurvesDock::SaveChoices);
  connect(this, &QDockWidget::visibilityChanged, live_, [this] { live_->SetSeen(isVisible()); });
  connect(this, &QDockWidget::topLevelChanged, this, &CurvesDock::ApplyWidth);
  connect(&form, &MainWindow::unloaded, this, &CurvesDock::SaveChoices);
  const QPointer<QWidget> tabs = form.centralWidget();
  connect(qApp, &QApplication::focusChanged, this, [this, tabs](QWidget*, QWidget* now) {
    if (now != nullptr && tabs && tabs->isAncestorOf(now)) former_ = now;
  });
  RestoreChoices();
  form.installEventFilter(this);
}

void CurvesDock::RestoreChoices() {
  const KeptChoices kept = ReadChoices(program_.host);
  pane_->ChooseLinear(kept.isLinear);
  pane_->SetLogFrequency(kept.isLogFrequency);
  pane_->SetPlainMagnitude(kept.showsPlainMagnitude);
  pane_->PreferLower(kept.prefersLower);
  if (kept.lower >= 0) pane_->ChooseLower(static_cast<DiagramKind>(kept.lower), true);
  form_.addDockWidget(kept.isLeft ? Qt::LeftDockWidgetArea : Qt::RightDockWidgetArea, this);
  setVisible(kept.isShown && !kept.isFloating);
}

void CurvesDock::SaveChoices() const {
  // The window's own hiding is no choice.
  if (!form_.isVisible()) return;
  KeptChoices kept = ReadChoices(program_.host);
  kept.isLinear = pane_->Choices().isLinear;
  kept.isLogFrequency = pane_->Choices().isLogFrequency;
  kept.showsPlainMagnitude = pane_->Choices().showsPlainMagnitude;
  kept.prefersLower = pane_->PrefersLower();
  if (pane_->HasChosenLower()) kept.lower = static_cast<int>(pane_->Lower());
  if (isFloating()) program_.host.KeepUserSetting(kOwnWindow, saveGeometry().toStdString());
  if (!wasNarrow_) {
    kept.isShown = isVisible();
    kept.isFloating = isFloating();
    if (wantedWidth_ > 0) kept.width = wantedWidth_;
    kept.isLeft = form_.dockWidgetArea(const_cast<CurvesDock*>(this)) == Qt::LeftDockWidgetArea;
  }
  KeepChoices(program_.host, kept);
}

void CurvesDock::showEvent(QShowEvent* event) {
  QDockWidget::showEvent(event);
  if (wasNarrow_ || wantedWidth_ > 0) return;
  // Once the window has its size.
  QTimer::singleShot(0, this, [this] {
    if (wasNarrow_ || wantedWidth_ > 0) return;
    const int kept = ReadChoices(program_.host).width;
    const int width = kept > 0 ? kept : form_.width() * kFirstShare / 100;
    wantedWidth_ = std::max(kLeastWidth, width);
    TakeWantedWidth();
  });
}

/// As far as there is room.
void CurvesDock::TakeWantedWidth() {
  if (isFloating() || wantedWidth_ == 0) return;
  form_.resizeDocks({this}, {std::min(wantedWidth_, pane_->maximumWidth())}, Qt::Horizontal);
}

/// With a button down it is the edge beside the tabs that is drawn.
void CurvesDock::resizeEvent(QResizeEvent* event) {
  QDockWidget::resizeEvent(event);
  const bool isDrawn = QApplication::mouseButtons() & Qt::LeftButton;
  if (isDrawn && !isFloating() && wantedWidth_ > 0) wantedWidth_ = width();
}

bool CurvesDock::IsNarrow() const {
  return form_.width() < kLeastWidth + LeastTabs(form_);
}

/// Beside the tabs the pane leaves them their least width. A window that is too narrow for both has
/// the pane as another window, when it is called for.
void CurvesDock::ApplyWidth() {
  if (IsNarrow() != wasNarrow_) {
    SaveChoices();
    wasNarrow_ = !wasNarrow_;
    if (wasNarrow_ && !isFloating()) {
      hide();
      Float();
    } else if (!wasNarrow_) {
      ShowAsKept();
    }
  }
  const int room = std::max(kLeastWidth, form_.width() - LeastTabs(form_));
  pane_->setMaximumWidth(isFloating() ? QWIDGETSIZE_MAX : room);
  // Once the window has its size.
  QTimer::singleShot(0, this, &CurvesDock::TakeWantedWidth);
}

void CurvesDock::Float() {
  setFloating(true);
  if (restoreGeometry(QByteArray::fromStdString(program_.host.UserSetting(kOwnWindow)))) return;
  // At first over the form's right side, large enough for all that the diagrams say.
  const int line = form_.fontMetrics().height();
  ResizeOnScreen(*this, {28 * line, 42 * line});
  const QRect screen = this->screen()->availableGeometry();
  move(std::min(form_.geometry().right(), screen.right()) - width(),
       std::clamp(form_.y(), screen.top(), std::max(screen.top(), screen.bottom() - height())));
}

void CurvesDock::ShowAsKept() {
  const KeptChoices kept = ReadChoices(program_.host);
  if (!kept.isFloating) {
    setFloating(false);
  } else if (!isFloating()) {
    Float();
  }
  setVisible(kept.isShown);
}

/// A pane that floats comes and goes with the form.
void CurvesDock::FollowForm(const QEvent& event) {
  if (event.type() == QEvent::Resize) ApplyWidth();
  if (event.spontaneous()) return;  // it was only minimised
  if (event.type() == QEvent::Hide && isFloating()) hide();
  if (event.type() != QEvent::Show || IsNarrow() || !ReadChoices(program_.host).isFloating) return;
  // Over the form, which has to be on the screen first.
  QTimer::singleShot(0, this, [this] {
    if (form_.isVisible()) ShowAsKept();
  });
}

bool CurvesDock::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &form_) FollowForm(*event);
  return QDockWidget::eventFilter(watched, event);
}

void CurvesDock::ShowOrLeave() {
  const QWidget* focus = QApplication::focusWidget();
  if (isVisible() && focus != nullptr && pane_->isAncestorOf(focus)) {
    form_.activateWindow();
    // As from another window: nothing in a box is selected anew.
    return FocusTaker(former_, *form_.centralWidget()).setFocus(Qt::ActiveWindowFocusReason);
  }
  show();
  raise();
  activateWindow();
  pane_->FirstSeen().setFocus(Qt::ShortcutFocusReason);
}

}  // namespace polefit
