#include "plots/ui/structure_menu.h"

#include <QMenu>

#include "plots/change_structure.h"
#include "plots/ui/diagram_view.h"
#include "plots/ui/live_curves.h"
#include "widgets/controls.h"

namespace polefit {

namespace {

void AddChange(QMenu& menu, const char* name, const QString& caption, LiveCurves& live,
               const std::optional<std::vector<ChangedAnswer>>& answers, const QString& step) {
  QAction* action = menu.addAction(caption);
  action->setObjectName(name);
  action->setEnabled(answers.has_value());
  if (!answers) return;
  QObject::connect(action, &QAction::triggered, &live,
                   [&live, answers = *answers, step] { live.TakeAnswers(answers, step); });
}

/// The typed location at a place, or else the marked one.
std::optional<std::size_t> LocationAt(const DiagramView& view, const QPoint& at) {
  const std::optional<std::size_t> near = view.StopNear(at);
  const std::optional<std::size_t> stop = near ? near : view.Marked();
  if (!stop || view.Shown().stops[*stop].curve != 0) return std::nullopt;
  return view.Shown().stops[*stop].index;
}

}  // namespace

void AddStructureEntries(QMenu& menu, LiveCurves& live, const DiagramView& view, const QPoint& at) {
  const FitCurves* typed = live.Curves().Typed();
  if (typed == nullptr) return;
  const ResponseRecord record = WithDrawnLists(live.Curves().Record(), *typed);
  const QPointF place = view.ValuesAt(at);
  struct Kind {
    FactorKind kind;
    const char* name;
    QString caption;
  };
  const Kind kinds[] = {
      {FactorKind::polePair, "actAddPolePair", QObject::tr("Add Pole Pair")},
      {FactorKind::sigmaPole, "actAddSigmaPole", QObject::tr("Add Sigma-Axis Pole")},
      {FactorKind::omegaZero, "actAddOmegaZero", QObject::tr("Add Omega-Axis Zero")},
      {FactorKind::zeroPair, "actAddZeroPair", QObject::tr("Add Zero Pair")},
      {FactorKind::zeroQuad, "actAddZeroQuad", QObject::tr("Add Zero Quad")},
      {FactorKind::sigmaZero, "actAddSigmaZero", QObject::tr("Add Sigma-Axis Zero")}};
  for (const Kind& each : kinds) {
    AddChange(menu, each.name, each.caption, live,
              AddLocation(record, each.kind, place.x(), place.y()), each.caption);
  }
  if (const auto location = LocationAt(view, at); location) {
    const QString name = ToQString(LocationText(*typed, *location)).section(':', 0, 0);
    AddChange(menu, "actRemoveLocation", QObject::tr("Remove %1").arg(name), live,
              RemoveLocation(record, *typed, *location), QObject::tr("Remove %1").arg(name));
  }
  menu.addSeparator();
}

}  // namespace polefit
