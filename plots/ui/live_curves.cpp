#include "plots/ui/live_curves.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QCheckBox>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <algorithm>
#include <utility>

#include "form/transfer.h"
#include "form/ui/main_window.h"
#include "grids/ui/grid_widget.h"
#include "plots/change_structure.h"
#include "plots/start_values.h"
#include "plots/ui/curves_pane.h"
#include "plots/ui/diagram_view.h"
#include "widgets/controls.h"
#include "widgets/status_line.h"

namespace polefit {

namespace {

constexpr int kAfterLastKey = 150;  // ms
constexpr const char* kSuggestNotice = "start values";

}  // namespace

LiveCurves::LiveCurves(MainWindow& form, Program& program, CurvesPane& pane)
    : QObject(&pane), form_(form), program_(program), pane_(pane), boxes_(form) {
  timer_.setSingleShot(true);
  timer_.setInterval(kAfterLastKey);
  connect(&timer_, &QTimer::timeout, this, &LiveCurves::Update);
  WatchForm();
  WatchPane();
}

LiveCurves::~LiveCurves() {
  worker_.reset();
}

void LiveCurves::WatchForm() {
  const auto changed = [this] {
    if (worker_) worker_->Cancel();
    if (isSeen_) timer_.start(kAfterLastKey);
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
            &LiveCurves::MarkCurrentCells);
  }
}

void LiveCurves::WatchPane() {
  connect(&pane_, &CurvesPane::drawn, this, &LiveCurves::MarkCurrentCells);
  connect(qApp, &QApplication::focusChanged, this, [this](const QWidget* left, const QWidget* now) {
    if (now != nullptr && qobject_cast<const DiagramView*>(left) != nullptr) MarkCurrentCells();
  });
  connect(&pane_, &CurvesPane::readOut, &form_.Status(), &StatusLine::ShowReadOut);
  connect(&pane_, &CurvesPane::pointChosen, this, &LiveCurves::SelectPoint);
  connect(&pane_, &CurvesPane::locationChosen, this, [this](std::size_t location) {
    const FitCurves* typed = curves_.Typed();
    if (typed != nullptr && location < typed->locations.size()) boxes_.Select(*typed, location);
  });
  connect(&pane_, &CurvesPane::locationDragged, this, &LiveCurves::MoveTo);
  connect(&pane_, &CurvesPane::dragAbandoned, this, &LiveCurves::GiveDragBack);
  connect(&pane_, &CurvesPane::takeWanted, this, &LiveCurves::TakePreview);
}

void LiveCurves::SetSeen(bool isSeen) {
  const bool wasSeen = std::exchange(isSeen_, isSeen);
  if (isSeen) return timer_.start(0);
  // It would not follow what is typed.
  if (wasSeen) form_.Status().ShowReadOut({QString()});
}

void LiveCurves::ReadForm() {
  try {
    curves_.Read(RecordOf(program_));
  } catch (const RunTimeError&) {
    // More points than a file holds.
    curves_.ReadFault();
  }
}

ResponseRecord LiveCurves::Record() const {
  try {
    return RecordOf(program_);
  } catch (const RunTimeError&) {
    return curves_.Record();
  }
}

void LiveCurves::Update() {
  timer_.stop();
  if (!isSeen_) return;
  ReadForm();
  ShowAll();
  if (curves_.State() != PaneState::result) RequestPreview();
}

void LiveCurves::RequestPreview() {
  if (!isSeen_ || !wantsPreview_ || !worker_ || curves_.Typed() == nullptr) return;
  worker_->Request(curves_.Record());
}

void LiveCurves::ShowAll() {
  const ShownCurves shown = curves_.Shown();
  pane_.Show(shown, ToQString(curves_.StateInWords()), curves_.State() == PaneState::preview);
  const bool isOfDelay = IsYes(curves_.Record().Slot(slot::kEqualDelay));
  pane_.ChooseLower(isOfDelay ? DiagramKind::delay : DiagramKind::poles, false);
  form_.Status().ShowReadOut(pane_.ReadOut());
  boxes_.ShowPairs(curves_.Typed());
}

void LiveCurves::ShowResult(const ResponseRecord& record, const QString& time) {
  if (worker_) worker_->Cancel();
  curves_.SetResult(record, time.toStdString());
  ShowNow();
}

void LiveCurves::ShowOthers(const std::vector<NamedAnswers>& others) {
  curves_.SetOthers(others);
  ShowNow();
}

/// Curves that the pane showed are gone.
void LiveCurves::ShowNow() {
  if (!isSeen_) return pane_.Show({}, {}, false);
  Update();
}

void LiveCurves::SetPreview(bool isWanted) {
  wantsPreview_ = isWanted;
  if (!isWanted) {
    if (worker_) worker_->Cancel();
    curves_.DropPreview();
    return ShowAll();
  }
  if (!worker_) {
    worker_ = std::make_unique<PreviewWorker>([this] {
      // From the worker's thread into this one.
      QMetaObject::invokeMethod(
          this, [this] { TakePreviewed(); }, Qt::QueuedConnection);
    });
  }
  Update();
  if (curves_.State() == PaneState::result) RequestPreview();
}

/// It may come when the answers have changed again: then it is not shown.
void LiveCurves::TakePreviewed() {
  std::optional<Preview> preview = worker_->TakeFound();
  if (!preview || !wantsPreview_ || timer_.isActive()) return;
  if (!curves_.SetPreview(*std::move(preview))) return;
  ShowAll();
  Q_EMIT previewShown();
}

void LiveCurves::PutAsStep(const ResponseRecord& record, const QString& step) {
  form_.RecordStep(tr("Typing"));
  boxes_.PutChanges(Record(), record);
  form_.RecordStep(step);
  Update();
}

void LiveCurves::TakePreview() {
  const std::optional<Preview>& preview = curves_.Previewed();
  if (preview) PutAsStep(ResponseRecord(preview->record), tr("Take Preview"));
}

void LiveCurves::TakeAnswers(const std::vector<ChangedAnswer>& answers, const QString& step) {
  PutAsStep(WithAnswers(Record(), answers), step);
}

void LiveCurves::SuggestStart() {
  program_.notices.Remove(kSuggestNotice);
  const SuggestedStart suggested = polefit::SuggestStart(Record(), false);
  switch (suggested.outcome) {
    case SuggestedStart::Outcome::found:
      return PutAsStep(suggested.record, tr("Suggest Start Values"));
    case SuggestedStart::Outcome::allTyped:
      return program_.notices.Post(
          {kSuggestNotice,
           Urgency::asks,
           tr("No starting value is missing.").toStdString(),
           {{tr("&Replace Them").toStdString(), [this] { ReplaceStart(); }}}});
    case SuggestedStart::Outcome::faulty:
      return form_.Status().ShowReadOut(
          {tr("no starting values: other answers have a fault, see findings (F7)"),
           tr("no starting values: see findings (F7)")});
  }
}

void LiveCurves::ReplaceStart() {
  const SuggestedStart suggested = polefit::SuggestStart(Record(), true);
  if (suggested.outcome == SuggestedStart::Outcome::found) {
    PutAsStep(suggested.record, tr("Suggest Start Values"));
  }
}

/// The cell of what is wanted: Yout, or the delay. The focus stays in the diagram.
void LiveCurves::SelectPoint(bool isDelay, std::size_t row) {
  form_.SelectTab(isDelay ? Tab::delayData : Tab::passbandData);
  auto* grid = form_.findChild<GridWidget*>(isDelay ? "DelayData" : "PassData");
  grid->SetCurrentCell(static_cast<int>(row) + 1, isDelay ? kTxColumn : kYoutColumn);
}

void LiveCurves::MoveTo(std::size_t location, double real, double imaginary, bool isEnd) {
  if (!drag_) {
    Update();
    const ResponseRecord& record = curves_.Record();
    const FitCurves* typed = curves_.Typed();
    if (typed == nullptr || location >= typed->locations.size()) return;
    form_.RecordStep(tr("Typing"));
    drag_ = {record, typed->locations[location].kind, typed->words[location]};
  }
  PutDragged(real, imaginary);
  if (!isEnd) return;
  drag_.reset();
  form_.RecordStep(tr("Move"));
}

/// Locations may change their order on the way: one zero passes another.
void LiveCurves::PutDragged(double real, double imaginary) {
  const auto dragged = [this]() -> std::optional<std::size_t> {
    const FitCurves* typed = curves_.Typed();
    for (std::size_t i = 0; typed != nullptr && i < typed->locations.size(); ++i) {
      if (typed->locations[i].kind == drag_->kind && typed->words[i] == drag_->word) return i;
    }
    return std::nullopt;
  };
  const std::optional<std::size_t> location = dragged();
  if (!location) return;
  for (const ChangedAnswer& answer :
       MoveLocation(curves_.Record(), *curves_.Typed(), *location, real, imaginary)) {
    boxes_.Put(answer.slot, answer.text);
  }
  Update();
  pane_.MarkLocation(dragged());
}

void LiveCurves::GiveDragBack() {
  if (!drag_) return;
  boxes_.PutChanges(curves_.Record(), std::exchange(drag_, std::nullopt)->before);
  Update();
}

/// The current cells of the tables are ringed in the diagrams, but in the one that has the focus.
void LiveCurves::MarkCurrentCells() {
  if (!isSeen_) return;
  for (DiagramView* view : {&pane_.UpperView(), &pane_.ErrorView(), &pane_.LowerView()}) {
    const StopKind kind = view->Shown().stopKind;
    const bool isDelay = kind == StopKind::delayRow;
    if (view->hasFocus() || (!isDelay && kind != StopKind::passbandRow)) continue;
    const int current = (isDelay ? form_.DelayData() : form_.PassData()).CurrentRow();
    const auto row = static_cast<std::size_t>(std::max(current - 1, 0));
    const std::vector<Stop>& stops = view->Shown().stops;
    const auto at = std::find_if(stops.begin(), stops.end(),
                                 [row](const Stop& stop) { return stop.index == row; });
    view->Mark(at == stops.end() ? std::nullopt : std::optional<std::size_t>(at - stops.begin()));
  }
}

}  // namespace polefit
