#include "plots/ui/plot_page.h"

#include <QGridLayout>
#include <QLabel>

#include "plots/diagram.h"
#include "plots/ui/curve_style.h"
#include "plots/ui/diagram_view.h"
#include "plots/ui/picture_files.h"
#include "widgets/controls.h"

namespace polefit {

namespace {

/// Half of the page's pixels: pictures are saved at twice their size on the screen.
constexpr QSize kPage(800, 1000);

DiagramView* MakeView(DiagramKind kind, const ShownCurves& shown, QWidget* parent) {
  auto* view = new DiagramView(parent);
  view->SetLegend(kind == DiagramKind::magnitude || kind == DiagramKind::delay);
  view->Show(MakeDiagram(kind, shown, {}));
  return view;
}

}  // namespace

QByteArray PlotPage(const FitCurves& curves, const QString& title, const QString& name) {
  const ShownCurves shown = {&curves};
  QWidget page;
  page.setPalette(PaperPalette());
  auto* grid = new QGridLayout(&page);
  constexpr int kMargins = 40;
  const QString line =
      page.fontMetrics().elidedText(title, Qt::ElideMiddle, kPage.width() - kMargins);
  auto* heading = new QLabel(line, &page);
  heading->setTextFormat(Qt::PlainText);
  heading->setAlignment(Qt::AlignHCenter);
  grid->addWidget(heading, 0, 0, 1, 2);
  const std::pair<DiagramKind, int> rows[] = {{DiagramKind::magnitude, 8}, {DiagramKind::error, 4}};
  int row = 1;
  for (const auto& [kind, stretch] : rows) {
    grid->addWidget(MakeView(kind, shown, &page), row, 0, 1, 2);
    grid->setRowStretch(row++, stretch);
  }
  const DiagramKind lower[] = {DiagramKind::poles, DiagramKind::step, DiagramKind::delay,
                               DiagramKind::phase};
  for (int i = 0; i < 4; ++i) {
    grid->addWidget(MakeView(lower[i], shown, &page), row + i / 2, i % 2);
    grid->setRowStretch(row + i / 2, 7);
  }
  page.resize(kPage);
  page.grab();  // lays the page out without a window
  return PictureOf(page, name);
}

}  // namespace polefit
