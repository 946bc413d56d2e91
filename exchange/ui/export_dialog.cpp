#include "exchange/ui/export_dialog.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "widgets/window_size.h"

namespace polefit {

namespace {

QString FaultLines(const std::vector<std::string>& faults) {
  QString text;
  for (const std::string& fault : faults) text += QString::fromStdString(fault) + '\n';
  return text;
}

}  // namespace

ExportDialog::ExportDialog(LastResult result, std::string date, Saver save, QWidget* parent)
    : QDialog(parent),
      result_(std::move(result)),
      date_(std::move(date)),
      save_(std::move(save)),
      formats_(new QComboBox),
      atDataPoints_(new QCheckBox(tr("At the frequencies of the &points (Touchstone)"))),
      preview_(new QPlainTextEdit) {
  setObjectName("frmExport");
  setWindowTitle(tr("Export Result"));
  auto* rows = new QVBoxLayout(this);
  const QString file = QString::fromStdString(result_.file);
  auto* about = new QLabel(
      result_.isOutdated
          ? tr("The form was changed since the last run; this is the result of %1.").arg(file)
          : tr("The result of %1.").arg(file));
  about->setObjectName("lblResult");
  about->setTextFormat(Qt::PlainText);
  about->setWordWrap(true);
  rows->addWidget(about);
  BuildChoices();
  BuildButtons();
  ResizeOnScreen(*this, {fontMetrics().averageCharWidth() * 100, fontMetrics().height() * 30});
  ShowFormat();
  formats_->setFocus();
}

void ExportDialog::BuildChoices() {
  auto* label = new QLabel(tr("&Format:"));
  label->setBuddy(formats_);
  formats_->setObjectName("exportFormats");
  for (const ExportFormatName& format : kExportFormats) {
    formats_->addItem(QString::fromUtf8(format.description.data()));
  }
  atDataPoints_->setObjectName("exportAtPoints");
  atDataPoints_->setToolTip(tr("Else at 401 frequencies from 0 to three times Freq Norm"));
  preview_->setObjectName("exportText");
  preview_->setReadOnly(true);
  preview_->setLineWrapMode(QPlainTextEdit::NoWrap);
  preview_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  preview_->setTabChangesFocus(true);
  preview_->setAccessibleName(tr("The text that is exported"));
  for (QWidget* const widget :
       std::initializer_list<QWidget*>{label, formats_, atDataPoints_, preview_}) {
    layout()->addWidget(widget);
  }
  connect(formats_, &QComboBox::currentIndexChanged, this, &ExportDialog::ShowFormat);
  connect(atDataPoints_, &QCheckBox::toggled, this, &ExportDialog::ShowFormat);
}

void ExportDialog::BuildButtons() {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
  saveAs_ = buttons->addButton(tr("&Save As ..."), QDialogButtonBox::ActionRole);
  copy_ = buttons->addButton(tr("&Copy"), QDialogButtonBox::ActionRole);
  saveAs_->setObjectName("cmdExportSave");
  copy_->setObjectName("cmdExportCopy");
  copy_->setToolTip(tr("Puts the whole text onto the clipboard"));
  connect(saveAs_, &QPushButton::clicked, this, [this] { save_(Format(), text_); });
  connect(copy_, &QPushButton::clicked, this,
          [this] { QGuiApplication::clipboard()->setText(QString::fromStdString(text_)); });
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  layout()->addWidget(buttons);
}

const ExportFormatName& ExportDialog::Format() const {
  return kExportFormats.at(static_cast<std::size_t>(formats_->currentIndex()));
}

void ExportDialog::ShowFormat() {
  const bool isNetwork = Format().format == ExportFormat::touchstone;
  atDataPoints_->setEnabled(isNetwork);
  const Export exported =
      ExportResult(result_.record,
                   {Format().format, isNetwork && atDataPoints_->isChecked(), result_.file, date_});
  text_ = exported.text;
  preview_->setPlainText(exported.faults.empty() ? QString::fromStdString(text_)
                                                 : FaultLines(exported.faults));
  saveAs_->setEnabled(exported.faults.empty());
  copy_->setEnabled(exported.faults.empty());
}

}  // namespace polefit
