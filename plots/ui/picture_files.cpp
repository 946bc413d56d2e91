#include "plots/ui/picture_files.h"

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QLabel>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QSvgGenerator>
#include <algorithm>
#include <utility>

#include "form/state.h"
#include "platform/file_checks.h"
#include "platform/file_choice.h"
#include "platform/message_style.h"
#include "platform/paths.h"
#include "plots/curve_table.h"
#include "plots/ui/curve_style.h"
#include "plots/ui/curves_pane.h"
#include "plots/ui/diagram_view.h"
#include "widgets/controls.h"

namespace polefit {

namespace {

/// The colours of paper for a widget, as long as a picture of it is made.
class OnPaper {
 public:
  explicit OnPaper(QWidget& widget)
      : widget_(widget),
        former_(widget.testAttribute(Qt::WA_SetPalette) ? widget.palette() : QPalette()) {
    widget_.setPalette(PaperPalette());
  }
  ~OnPaper() { widget_.setPalette(former_); }
  OnPaper(const OnPaper&) = delete;
  OnPaper& operator=(const OnPaper&) = delete;

 private:
  QWidget& widget_;
  const QPalette former_;
};

/// Draws the widget's texts and its diagrams; no buttons.
void Draw(QWidget& widget, QCPPainter& painter) {
  const OnPaper paper(widget);
  painter.fillRect(widget.rect(), widget.palette().color(QPalette::Window));
  for (auto* part : widget.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
    if (!part->isVisibleTo(&widget)) continue;
    painter.save();
    painter.translate(part->pos());
    if (auto* view = qobject_cast<DiagramView*>(part)) {
      view->PrepareForPicture();
      view->toPainter(&painter, view->width(), view->height());
    } else if (const auto* text = qobject_cast<QLabel*>(part)) {
      painter.setFont(text->font());
      painter.setPen(text->palette().color(QPalette::WindowText));
      painter.drawText(text->rect(), static_cast<int>(text->alignment()), text->text());
    }
    painter.restore();
  }
}

QByteArray AsPng(QWidget& widget) {
  constexpr double kScale = 2;
  QPixmap picture(widget.size() * kScale);
  picture.setDevicePixelRatio(kScale);
  QCPPainter painter(&picture);
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
  generator.setResolution(widget.logicalDpiX());
  generator.setSize(widget.size());
  generator.setViewBox(widget.rect());
  generator.setTitle("Polefit");
  QCPPainter painter(&generator);
  painter.setMode(QCPPainter::pmVectorized);
  Draw(widget, painter);
  painter.end();
  return bytes;
}

/// Draws the widget on a page as large as fits. The page's resolution is that of the screen, so
/// that texts and lines keep their proportion; places are no whole dots there anyway.
void DrawPage(QWidget& widget, QPagedPaintDevice& device, const QRectF& page) {
  QCPPainter painter(&device);
  painter.setMode(QCPPainter::pmVectorized);
  const double scale = std::min(page.width() / widget.width(), page.height() / widget.height());
  painter.scale(scale, scale);
  Draw(widget, painter);
}

QByteArray AsPdf(QWidget& widget) {
  constexpr double kPointsPerInch = 72;
  const double points = kPointsPerInch / widget.logicalDpiX();
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter writer(&buffer);
  writer.setResolution(widget.logicalDpiX());
  writer.setPageSize(
      QPageSize(QSizeF(widget.size()) * points, QPageSize::Point, {}, QPageSize::ExactMatch));
  writer.setPageMargins(QMarginsF());
  DrawPage(widget, writer, QRectF(0, 0, writer.width(), writer.height()));
  return bytes;
}

using Endings = std::vector<std::string>;

/// A name without any of the endings gets the first one.
std::string WithEnding(const std::string& path, const Endings& endings) {
  const QString name = ToQString(path);
  const auto ends = [&name](const std::string& ending) {
    return name.endsWith(ToQString(ending), Qt::CaseInsensitive);
  };
  return std::any_of(endings.begin(), endings.end(), ends) ? path : path + endings.front();
}

/// The name with its ending; empty when the dialog was given up. The dialog asks before it takes
/// the name of a file; for the name that an ending makes, this does.
QString ChosenName(Program& program, const char* title, const char* filter,
                   const Endings& endings) {
  const std::string& file = program.files.currentFileName;
  CommonDialog dialog;
  dialog.title = title;
  dialog.filter = filter;
  dialog.fileName = file.substr(0, file.rfind('.')) + "_curves" + endings.front();
  dialog.judge = [&](const std::string& path) -> std::optional<Choice> {
    const std::string whole = WithEnding(path, endings);
    if (whole == path || !FileExists(program.host, whole)) return std::nullopt;
    return Choice{"'" + CutPath(whole).name + "' already exists.", {"Replace", "Back"}};
  };
  const std::string path = ChooseOtherFile(program.host, std::move(dialog), &Host::ShowSave);
  return path.empty() ? QString() : ToQString(WithEnding(path, endings));
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

void SavePicture(Program& program, CurvesPane& pane) {
  const QString name =
      ChosenName(program, "Save Picture", "Pictures|*.png;*.svg;*.pdf", {".png", ".svg", ".pdf"});
  if (!name.isEmpty()) Save(program.host, name, PictureOf(pane, name));
}

void SaveData(Program& program, CurvesPane& pane) {
  const QString name = ChosenName(program, "Save Data", "Tables|*.csv;*.txt", {".csv", ".txt"});
  if (!name.isEmpty()) {
    Save(program.host, name, QByteArray::fromStdString(CurvesAsCsv(pane.Curves())));
  }
}

void CopyPicture(CurvesPane& pane) {
  QApplication::clipboard()->setPixmap(QPixmap::fromImage(QImage::fromData(AsPng(pane))));
}

void CopyData(CurvesPane& pane) {
  QApplication::clipboard()->setText(ToQString(CurvesAsCsv(pane.Curves())));
}

void PrintPicture(CurvesPane& pane) {
  QPrinter printer;
  printer.setDocName(QObject::tr("Curves"));
  QPrintDialog dialog(&printer, &pane);
  if (dialog.exec() != QDialog::Accepted) return;
  printer.setResolution(pane.logicalDpiX());
  DrawPage(pane, printer, printer.pageRect(QPrinter::DevicePixel));
}

}  // namespace polefit
