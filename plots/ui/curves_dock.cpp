#include "plots/ui/curves_dock.h"

#include <QAbstractItemModel>
#include <QCheckBox>
#include <QEvent>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <algorithm>
#include <sstream>

#include "form/transfer.h"
#include "form/ui/main_window.h"
#include "grids/ui/grid_widget.h"
#include "plots/move_location.h"
#include "plots/start_values.h"
#include "plots/ui/curves_pane.h"
#include "plots/ui/diagram_view.h"
#include "record/question_catalogue.h"
#include "solver/problem/answers.h"
#include "widgets/controls.h"
#include "widgets/status_line.h"

namespace polefit {

namespace {

constexpr int kAfterLastKey = 150;  // ms
constexpr int kLeastWidth = 340;
constexpr int kFirstShare = 44;  // per cent of the window
/// A narrower window has no room for the pane beside the tabs.
constexpr int kNarrow = 900;

constexpr const char* kChoices = "curves";

/// What is remembered of the pane, as one line of numbers.
struct KeptChoices {
  int linear = 0;
  int logFrequency = 0;
  int plainMagnitude = 0;
  int lower = -1;  ///< the lower diagram, or -1 while the user has chosen none
  int shown = 1;
  int width = 0;
};

KeptChoices Kept(Host& host) {
  KeptChoices kept;
  std::istringstream(host.UserSetting(kChoices)) >> kept.linear >> kept.logFrequency >>
      kept.plainMagnitude >> kept.lower >> kept.shown >> kept.width;
  return kept;
}

void Keep(Host& host, const KeptChoices& kept) {
  std::ostringstream line;
  line << kept.linear << ' ' << kept.logFrequency << ' ' << kept.plainMagnitude << ' ' << kept.lower
       << ' ' << kept.shown << ' ' << kept.width;
  if (line.str() != host.UserSetting(kChoices)) host.KeepUserSetting(kChoices, line.str());
}

constexpr int kLocationSlots[] = {slot::kSigmaPoles, slot::kPoleReal, slot::kPoleImag,
                                  slot::kSigmaZero,  slot::kYzero,    slot::kZreal,
                                  slot::kZimag,      slot::kGain};

template <std::size_t Columns>
bool HasSameRows(const PointLists<Columns>& one, const PointLists<Columns>& other, int rows,
                 int columns) {
  for (int row = 1; row <= rows; ++row) {
    for (int column = 1; column <= columns; ++column) {
      if (one.At(row, column) != other.At(row, column)) return false;
    }
  }
  return true;
}

/// Whether two records state one problem, whatever their locations and gain.
bool StateSameProblem(const ResponseRecord& one, const ResponseRecord& other) {
  for (int slot = 1; slot < slot::kFreqPointCount; ++slot) {
    const bool isFound = std::find(std::begin(kLocationSlots), std::end(kLocationSlots), slot) !=
                         std::end(kLocationSlots);
    if (!isFound && one.Slot(slot) != other.Slot(slot)) return false;
  }
  return one.nFreqPoints == other.nFreqPoints && one.nDelayPoints == other.nDelayPoints &&
         HasSameRows(one.passband, other.passband, one.nFreqPoints, 4) &&
         HasSameRows(one.delay, other.delay, one.nDelayPoints, 2);
}

}  // namespace

CurvesDock::CurvesDock(MainWindow& form, const Program& program)
    : QDockWidget(tr("Curves"), &form), form_(form), program_(program), pane_(new CurvesPane) {
  setObjectName("dockCurves");
  setWidget(pane_);
  setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
  pane_->setMinimumWidth(kLeastWidth);
  form.addDockWidget(Qt::RightDockWidgetArea, this);
  timer_.setSingleShot(true);
  timer_.setInterval(kAfterLastKey);
  connect(&timer_, &QTimer::timeout, this, &CurvesDock::Update);
  WatchForm();
  WatchPane();
  RestoreChoices();
  form.installEventFilter(this);
}

CurvesDock::~CurvesDock() {
  worker_.reset();
}

void CurvesDock::WatchForm() {
  const auto changed = [this] {
    if (worker_) worker_->Cancel();
    if (isVisible()) timer_.start();
  };
  for (QLineEdit* box : form_.findChildren<QLineEdit*>()) {
    connect(box, &QLineEdit::textChanged, this, changed);
  }
  for (QCheckBox* box : form_.findChildren<QCheckBox*>()) {
    connect(box, &QCheckBox::toggled, this, changed);
  }
  for (GridWidget* grid : form_.findChildren<GridWidget*>()) {
    connect(grid->model(), &QAbstractItemModel::dataChanged, this, changed);
    connect(grid->model(), &QAbstractItemModel::modelReset, this, changed);
    connect(grid->model(), &QAbstractItemModel::rowsInserted, this, changed);
    connect(grid->model(), &QAbstractItemModel::rowsRemoved, this, changed);
    connect(grid->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &CurvesDock::MarkCurrentCell);
  }
}

void CurvesDock::WatchPane() {
  connect(pane_, &CurvesPane::readOut, &form_.Status(), &StatusLine::ShowReadOut);
  connect(pane_, &CurvesPane::pointChosen, this, &CurvesDock::SelectPoint);
  connect(pane_, &CurvesPane::locationChosen, this, &CurvesDock::SelectLocation);
  connect(pane_, &CurvesPane::locationDragged, this, &CurvesDock::MoveTo);
  connect(pane_, &CurvesPane::dragAbandoned, this, &CurvesDock::GiveDragBack);
  connect(pane_, &CurvesPane::choicesChanged, this, &CurvesDock::SaveChoices);
  connect(this, &QDockWidget::visibilityChanged, this, &CurvesDock::SaveChoices);
}

void CurvesDock::RestoreChoices() {
  const KeptChoices kept = Kept(program_.host);
  pane_->ChooseLinear(kept.linear != 0);
  pane_->SetLogFrequency(kept.logFrequency != 0);
  pane_->SetPlainMagnitude(kept.plainMagnitude != 0);
  if (kept.lower >= 0) pane_->ChooseLower(static_cast<DiagramKind>(kept.lower), true);
  setVisible(kept.shown != 0);
}

void CurvesDock::SaveChoices() const {
  // The window's own hiding is no choice.
  if (!form_.isVisible()) return;
  KeptChoices kept = Kept(program_.host);
  kept.linear = static_cast<int>(pane_->Choices().isLinear);
  kept.logFrequency = static_cast<int>(pane_->Choices().isLogFrequency);
  kept.plainMagnitude = static_cast<int>(pane_->Choices().showsPlainMagnitude);
  if (pane_->HasChosenLower()) kept.lower = static_cast<int>(pane_->Lower());
  if (!wasNarrow_) {
    kept.shown = static_cast<int>(isVisible());
    kept.width = width();
  }
  Keep(program_.host, kept);
}

void CurvesDock::showEvent(QShowEvent* event) {
  QDockWidget::showEvent(event);
  if (std::exchange(isFirstShow_, false)) {
    const int kept = Kept(program_.host).width;
    const int width = kept > 0 ? kept : form_.width() * kFirstShare / 100;
    form_.resizeDocks({this}, {std::max(kLeastWidth, width)}, Qt::Horizontal);
  }
  timer_.start(0);
  timer_.setInterval(kAfterLastKey);
}

/// A window that is too narrow has the pane beside it, when it is called for.
void CurvesDock::ApplyWidth() {
  const bool isNarrow = form_.width() < kNarrow;
  if (isNarrow == wasNarrow_) return;
  wasNarrow_ = isNarrow;
  if (isNarrow) {
    hide();
    setFloating(true);
  } else {
    setFloating(false);
    setVisible(Kept(program_.host).shown != 0);
  }
}

bool CurvesDock::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &form_ && event->type() == QEvent::Resize) ApplyWidth();
  return QDockWidget::eventFilter(watched, event);
}

void CurvesDock::ShowOrLeave() {
  const QWidget* focus = window()->focusWidget();
  if (isVisible() && focus != nullptr && pane_->isAncestorOf(focus)) {
    form_.activateWindow();
    form_.centralWidget()->setFocus();
    return;
  }
  show();
  raise();
  activateWindow();
  DiagramView& view = pane_->UpperView().isVisible() ? pane_->UpperView() : pane_->LowerView();
  view.setFocus(Qt::ShortcutFocusReason);
}

void CurvesDock::Update() {
  timer_.stop();
  if (!isVisible()) return;
  ResponseRecord record;
  try {
    record = RecordOf(program_);
  } catch (const RunTimeError&) {
    // More points than a file holds: no curve, as with other faults.
    isTypedGood_ = false;
    return ShowAll();
  }
  ReadTyped(record);
  ShowAll();
  if (wantsPreview_ && isTypedGood_ && worker_) worker_->Request(record);
}

void CurvesDock::ReadTyped(const ResponseRecord& record) {
  std::vector<Finding> findings;
  std::optional<FitCurves> curves =
      CurvesOf(record, CurveRole::typed, tr("typed").toStdString(), findings);
  isTypedGood_ = curves.has_value();
  if (preview_ && !(record == shownRecord_)) preview_.reset();
  shownRecord_ = record;
  if (curves) typed_ = std::move(curves);
  pane_->ChooseLower(
      IsYes(record.Slot(slot::kEqualDelay)) ? DiagramKind::delay : DiagramKind::poles, false);
}

/// Whether the result belongs to the problem on the form, or to one that it was a moment ago.
bool CurvesDock::FitsResult(bool& isChanged) const {
  if (!result_) return false;
  isChanged = !StateSameProblem(resultRecord_, shownRecord_);
  return !isChanged || resultRecord_.nFreqPoints == shownRecord_.nFreqPoints;
}

void CurvesDock::ShowAll() {
  ShownCurves shown;
  state_ = PaneState::nothing;
  if (typed_) {
    typed_->isPale = !isTypedGood_;
    shown.push_back(&*typed_);
    state_ = !isTypedGood_            ? PaneState::lastGood
             : typed_->h->HasPoints() ? PaneState::typed
                                      : PaneState::noPoints;
  }
  bool isChanged = false;
  if (isTypedGood_ && preview_) {
    shown.push_back(&*preview_);
    state_ = PaneState::preview;
  } else if (isTypedGood_ && typed_->h->HasPoints() && FitsResult(isChanged)) {
    result_->isPale = isChanged;
    shown.push_back(&*result_);
    state_ = isChanged ? PaneState::resultChanged : PaneState::result;
  }
  pane_->Show(shown, state_, resultTime_);
  MarkCurrentCell();
  form_.Status().ShowReadOut(ToQString(pane_->UpperView().Shown().sentence));
}

void CurvesDock::ShowResult(const ResponseRecord& record, const QString& time) {
  std::vector<Finding> findings;
  resultRecord_ = record;
  resultTime_ = time;
  result_ =
      CurvesOf(record, CurveRole::result, (tr("result") + ' ' + time).toStdString(), findings);
  timer_.start(0);
}

void CurvesDock::SetPreview(bool isWanted) {
  wantsPreview_ = isWanted;
  if (!isWanted) {
    worker_.reset();
    preview_.reset();
    return ShowAll();
  }
  worker_ = std::make_unique<PreviewWorker>([this](Preview preview) {
    // From the worker's thread into this one.
    auto shared = std::make_shared<Preview>(std::move(preview));
    QMetaObject::invokeMethod(
        this, [this, shared] { TakePreviewed(std::move(*shared)); }, Qt::QueuedConnection);
  });
  Update();
}

/// It may come when the answers have changed again: then it is not shown.
void CurvesDock::TakePreviewed(Preview preview) {
  if (!wantsPreview_ || timer_.isActive() || !isTypedGood_) return;
  if (!StateSameProblem(preview.record, shownRecord_)) return;
  preview_ = std::move(preview.curves);
  previewRecord_ = std::move(preview.record);
  ShowAll();
  Q_EMIT previewShown();
}

void CurvesDock::TakePreview() {
  if (!preview_) return;
  const ResponseRecord found = previewRecord_;
  for (const int slot : kLocationSlots) {
    if (found.Slot(slot) != shownRecord_.Slot(slot)) SetAnswer(slot, found.Slot(slot));
  }
  Update();
}

void CurvesDock::SuggestStart() {
  std::optional<ResponseRecord> suggested;
  ResponseRecord record;
  try {
    record = RecordOf(program_);
    suggested = WithSuggestedStart(record);
  } catch (const RunTimeError&) {
    // More points than a file holds; the check tells.
  }
  if (!suggested) {
    constexpr int kShownFor = 8000;  // ms
    return form_.Status().showMessage(
        tr("No starting value is missing, or other answers have a fault. Empty the lists that "
           "you want suggested."),
        kShownFor);
  }
  for (const int slot : kLocationSlots) {
    if (suggested->Slot(slot) != record.Slot(slot)) SetAnswer(slot, suggested->Slot(slot));
  }
  Update();
}

void CurvesDock::SetAnswer(int slot, const std::string& text) {
  form_.SetText(kQuestions.at(static_cast<std::size_t>(slot - 1)).boxes[0].name, text);
}

QLineEdit* CurvesDock::BoxOf(int slot) const {
  const auto name = kQuestions.at(static_cast<std::size_t>(slot - 1)).boxes[0].name;
  return form_.findChild<QLineEdit*>(ToQString(name));
}

void CurvesDock::SelectPoint(bool isDelay, std::size_t row) {
  form_.SelectTab(isDelay ? Tab::delayData : Tab::passbandData);
  (isDelay ? form_.DelayData() : form_.PassData()).SetCurrentRow(static_cast<int>(row) + 1);
}

/// The focus goes to the location's number in its list.
void CurvesDock::SelectLocation(std::size_t location) {
  if (!typed_ || location >= typed_->locations.size()) return;
  const int slot = SlotsOf(typed_->locations[location].kind).front();
  QLineEdit* box = BoxOf(slot);
  if (box == nullptr) return;
  form_.SetFocus(box->objectName().toStdString());
  const QString text = box->text();
  qsizetype at = 0;
  for (std::size_t word = 0; at < text.size(); ++word) {
    while (at < text.size() && text[at] == ' ') ++at;
    const qsizetype begin = at;
    while (at < text.size() && text[at] != ' ') ++at;
    if (word == typed_->words[location]) {
      box->setSelection(static_cast<int>(begin), static_cast<int>(at - begin));
      return;
    }
  }
}

void CurvesDock::MoveTo(std::size_t location, double real, double imaginary, bool isEnd) {
  if (!typed_ || !isTypedGood_ || location >= typed_->locations.size()) return;
  if (!beforeDrag_) beforeDrag_ = shownRecord_;
  for (const ChangedAnswer& answer :
       MoveLocation(shownRecord_, *typed_, location, real, imaginary)) {
    SetAnswer(answer.slot, answer.text);
  }
  if (isEnd) beforeDrag_.reset();
  Update();
}

void CurvesDock::GiveDragBack() {
  if (!beforeDrag_) return;
  const ResponseRecord before = *std::exchange(beforeDrag_, std::nullopt);
  for (const int slot : kLocationSlots) {
    if (before.Slot(slot) != shownRecord_.Slot(slot)) SetAnswer(slot, before.Slot(slot));
  }
  Update();
}

/// The current cell of the passband table is ringed in the diagram.
void CurvesDock::MarkCurrentCell() {
  DiagramView& view = pane_->UpperView();
  if (view.hasFocus() || !isVisible()) return;
  const auto row = static_cast<std::size_t>(std::max(form_.PassData().CurrentRow() - 1, 0));
  const std::vector<Stop>& stops = view.Shown().stops;
  for (std::size_t i = 0; i < stops.size(); ++i) {
    if (stops[i].index == row) return view.Mark(i);
  }
  view.Mark(std::nullopt);
}

}  // namespace polefit
