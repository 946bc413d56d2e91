#include "platform/ui/file_dialog.h"

#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>

namespace polefit {

namespace {

bool HasWildcards(const QString& name) {
  return name.contains('*') || name.contains('?');
}

/// "*.*" meant every file, with a dot in its name or without.
QString PatternsOf(const QString& patterns) {
  QStringList list = patterns.split(';');
  for (QString& pattern : list) {
    if (pattern.endsWith("*.*")) pattern.chop(2);
  }
  return list.join(' ');
}

}  // namespace

QStringList NameFilters(const std::string& filter) {
  const QStringList parts = QString::fromStdString(filter).split('|');
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    filters << parts[i] + " (" + PatternsOf(parts[i + 1]) + ")";
  }
  return filters;
}

FileDialog::FileDialog(const CommonDialog& settings, AcceptMode mode, QWidget* parent)
    : QFileDialog(parent), filters_(NameFilters(settings.filter)) {
  setObjectName("CMDialog1");
  // Our own list on every desktop: names disregard case in it and the suggestion may be a pattern.
  setOption(DontUseNativeDialog);
  setOption(HideNameFilterDetails);
  setWindowTitle(QString::fromStdString(settings.title));
  setAcceptMode(mode);
  setFileMode(mode == AcceptOpen ? ExistingFile : AnyFile);
  setNameFilters(filters_);
  if (settings.filterIndex <= filters_.size()) selectNameFilter(filters_[settings.filterIndex - 1]);
  const QString folder = QString::fromStdString(settings.initialFolder);
  setDirectory(QDir(folder).exists() && !folder.isEmpty() ? folder : QDir::currentPath());
  if (auto* const name = findChild<QLineEdit*>("fileNameEdit")) {
    name->setText(QString::fromStdString(settings.fileName));
    name->selectAll();
    name->setFocus();
  }
}

void FileDialog::accept() {
  const auto* const name = findChild<QLineEdit*>("fileNameEdit");
  if (name == nullptr || !HasWildcards(name->text())) {
    QFileDialog::accept();
  } else if (acceptMode() == AcceptOpen) {
    setNameFilters(QStringList(name->text() + " (" + PatternsOf(name->text()) + ")") + filters_);
  } else {
    QMessageBox::warning(this, windowTitle(), tr("A file name cannot hold \"*\" or \"?\"."));
  }
}

void AskForFile(CommonDialog& dialog, QFileDialog::AcceptMode mode) {
  FileDialog window(dialog, mode, QApplication::activeWindow());
  const bool accepted = window.exec() == QDialog::Accepted && !window.selectedFiles().isEmpty();
  dialog.fileName = accepted ? window.selectedFiles().first().toStdString() : std::string();
  if (accepted) {
    QDir::setCurrent(QFileInfo(window.selectedFiles().first()).path());
  } else if (dialog.cancelIsError) {
    throw MakeRunTimeError(error_number::kDialogCancelled);
  }
}

}  // namespace polefit
