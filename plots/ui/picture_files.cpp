#include "plots/ui/picture_files.h"

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QPainter>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QSvgGenerator>

#include "platform/host.h"
#include "platform/message_style.h"
#include "plots/curve_table.h"
#include "plots/ui/curves_pane.h"
#include "plots/ui/diagram_view.h"
#include "widgets/controls.h"

namespace polefit {

namespace {

/// Draws the widget and its diagrams, these as lines and not as pixels.
void Draw(QWidget& widget, QPainter& painter) {
  painter.fillRect(widget.rect(), widget.palette().color(QPalette::Window));
  for (QObject* child : widget.findChildren<QWidget*>()) {
    auto* part = static_cast<QWidget*>(child);
    if (!part->isVisibleTo(&widget) || part->parentWidget() != &widget) continue;
    painter.save();
    painter.translate(part->pos());
    if (auto* view = qobject_cast<DiagramView*>(part)) {
      QCPPainter lines;
      QPicture picture;
      lines.begin(&picture);
      view->toPainter(&lines, view->width(), view->height());
      lines.end();
      picture.play(&painter);
    } else {
      part->render(&painter, {}, {}, QWidget::DrawChildren);
    }
    painter.restore();
  }
}

QByteArray AsPng(QWidget& widget) {
  constexpr double kScale = 2;
  QPixmap picture(widget.size() * kScale);
  picture.setDevicePixelRatio(kScale);
  QPainter painter(&picture);
  Draw(widget, painter);
  painter.end();
  QByteArray bytes;
  QBuffer buffer(&bytes);
  picture.save(&buffer, "PNG");
  return bytes;
}

QByteArray AsSvg(QWidget& widget) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  QSvgGenerator generator;
  generator.setOutputDevice(&buffer);
  generator.setSize(widget.size());
  generator.setViewBox(widget.rect());
  generator.setTitle("Polefit");
  QPainter painter(&generator);
  Draw(widget, painter);
  painter.end();
  return bytes;
}

/// Draws the widget on a page as large as fits.
void DrawPage(QWidget& widget, QPagedPaintDevice& device, const QRectF& page) {
  QPainter painter(&device);
  const double scale = std::min(page.width() / widget.width(), page.height() / widget.height());
  painter.scale(scale, scale);
  Draw(widget, painter);
}

QByteArray AsPdf(QWidget& widget) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter writer(&buffer);
  writer.setPageSize(QPageSize(QSizeF(widget.size()) * .75, QPageSize::Point));
  writer.setPageMargins(QMarginsF());
  DrawPage(widget, writer, QRectF(0, 0, writer.width(), writer.height()));
  return bytes;
}

/// Empty when the dialog was given up.
QString ChosenName(Host& host, const char* title, const char* filter) {
  CommonDialog dialog;
  dialog.title = title;
  dialog.filter = filter;
  const std::string folder = host.CurrentFolder();
  host.ShowSave(dialog);
  try {
    // An accepted dialog leaves the process in its folder; Save looks for the current file in this.
    if (!dialog.fileName.empty()) host.ChangeFolder(folder);
  } catch (const RunTimeError&) {
    // That folder has gone meanwhile; a save will say so.
  }
  return ToQString(dialog.fileName);
}

void Save(Host& host, const QString& name, const QByteArray& bytes) {
  try {
    host.ReplaceFile(name.toStdString(), bytes.toStdString());
  } catch (const RunTimeError& error) {
    const QString text = QObject::tr("'%1' cannot be written: %2");
    host.MessageBox(text.arg(name, ToQString(error.description)).toStdString(),
                    message_style::kCritical, "Polefit");
  }
}

}  // namespace

QByteArray PictureOf(QWidget& widget, const QString& name) {
  if (name.endsWith(".png", Qt::CaseInsensitive)) return AsPng(widget);
  if (name.endsWith(".svg", Qt::CaseInsensitive)) return AsSvg(widget);
  if (name.endsWith(".pdf", Qt::CaseInsensitive)) return AsPdf(widget);
  return {};
}

void SavePicture(Host& host, CurvesPane& pane) {
  QString name = ChosenName(host, "Save Picture", "Pictures|*.png;*.svg;*.pdf");
  if (name.isEmpty()) return;
  QByteArray picture = PictureOf(pane, name);
  if (picture.isEmpty()) picture = PictureOf(pane, name += ".png");
  Save(host, name, picture);
}

void SaveData(Host& host, CurvesPane& pane) {
  const QString name = ChosenName(host, "Save Data", "CSV|*.csv");
  if (name.isEmpty()) return;
  const bool hasEnding = name.section('/', -1).contains('.');
  Save(host, hasEnding ? name : name + ".csv",
       QByteArray::fromStdString(CurvesAsCsv(pane.Curves())));
}

void CopyPicture(CurvesPane& pane) {
  QApplication::clipboard()->setPixmap(QPixmap::fromImage(QImage::fromData(AsPng(pane))));
}

void CopyData(CurvesPane& pane) {
  QApplication::clipboard()->setText(ToQString(CurvesAsCsv(pane.Curves())));
}

void PrintPicture(CurvesPane& pane) {
  QPrinter printer(QPrinter::HighResolution);
  QPrintDialog dialog(&printer, &pane);
  if (dialog.exec() != QDialog::Accepted) return;
  DrawPage(pane, printer, printer.pageRect(QPrinter::DevicePixel));
}

}  // namespace polefit
