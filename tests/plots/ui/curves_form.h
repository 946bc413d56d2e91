#pragma once

#include <QAction>
#include <QLabel>

#include "form/ui/main_form.h"
#include "plots/ui/curves_dock.h"
#include "plots/ui/curves_menu.h"
#include "plots/ui/curves_pane.h"
#include "plots/ui/diagram_view.h"
#include "solver/example_problem.h"

namespace polefit::testing {

/// The real main form with the dock beside it, showing an example.
class CurvesDockTest : public MainForm {
 protected:
  CurvesDockTest() : dock(*new CurvesDock(form, program)) {
    AddCurvesMenu(form, dock);
    form.resize(1400, 800);
    Open("Ex-Delay.101");
    dock.Pane().ChooseLower(DiagramKind::poles, true);
    QTest::qWait(20);
  }

  void Open(const std::string& name, const std::string& answers = "") {
    Open(ExampleRecord(name, answers));
  }
  void Open(const ResponseRecord& record) {
    program.document.record = record;
    GetAnswers(program);
    form.ForgetSteps();
    dock.show();
    QApplication::processEvents();
    dock.Live().Update();
    QApplication::processEvents();
  }

  QString ReadOut() { return Find<QLabel>("lblReadOut").text(); }
  QString State() { return Find<QLabel>("CurvesState").text(); }
  DiagramView& Upper() { return dock.Pane().UpperView(); }
  DiagramView& Lower() { return dock.Pane().LowerView(); }

  /// A move with a button down, which the test library does not send.
  static void Hover(QWidget& view, const QPoint& at) {
    QMouseEvent move(QEvent::MouseMove, at, view.mapToGlobal(at), Qt::NoButton, {}, {});
    QApplication::sendEvent(&view, &move);
  }
  static void Drag(QWidget& view, const QPoint& to) {
    QMouseEvent move(QEvent::MouseMove, to, view.mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(&view, &move);
  }

  CurvesDock& dock;
};

}  // namespace polefit::testing
