#include "platform/ui/file_dialog.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>

#include "base/pattern.h"
#include "base/text.h"
#include "platform/ui/dialog_parent.h"
#include "platform/ui/message_box.h"

namespace polefit {

namespace {

/// "*.*" meant every file, with a dot in its name or without.
QString PatternsOf(const QString& patterns) {
  QStringList list = patterns.split(';');
  for (QString& pattern : list) {
    if (pattern.endsWith("*.*")) pattern.chop(2);
  }
  return list.join(' ');
}

/// A suggestion to save as is complete but for its ending.
void SelectPattern(QLineEdit& name, QFileDialog::AcceptMode mode) {
  constexpr int kEnding = 2;  // ".*"
  const bool isSuggestion =
      mode == QFileDialog::AcceptSave && name.text().size() > kEnding && name.text().endsWith(".*");
  if (isSuggestion) {
    name.setSelection(static_cast<int>(name.text().size()) - kEnding, kEnding);
  } else {
    name.selectAll();
  }
}

/// The first of these folders that is there, else the user's own.
QString FirstThere(const QStringList& folders) {
  for (const QString& folder : folders) {
    if (!folder.isEmpty() && QDir(folder).exists()) return folder;
  }
  return QDir::homePath();
}

/// Sizes, types and dates whole, the names in what is left.
void FitColumns(QFileDialog& dialog) {
  auto* list = dialog.findChild<QTreeView*>("treeView");
  if (list == nullptr) return;
  list->header()->setStretchLastSection(false);
  list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
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

FileDialog::FileDialog(CommonDialog& settings, AcceptMode mode, QWidget* parent)
    : QFileDialog(parent), settings_(settings), filters_(NameFilters(settings.filter)) {
  setObjectName("CMDialog1");
  // Our own list on every desktop: names disregard case in it and the suggestion may be a pattern.
  setOption(DontUseNativeDialog);
  setOption(HideNameFilterDetails);
  setOption(DontConfirmOverwrite);
  setWindowTitle(QString::fromStdString(settings.title));
  setAcceptMode(mode);
  setFileMode(mode == AcceptOpen ? ExistingFile : AnyFile);
  setNameFilters(filters_);
  if (settings.filterIndex <= filters_.size()) selectNameFilter(filters_[settings.filterIndex - 1]);
  setDirectory(FirstThere({QString::fromStdString(settings.initialFolder), QDir::currentPath()}));
  FitColumns(*this);
  if (auto* name = findChild<QLineEdit*>("fileNameEdit")) {
    name->setText(QString::fromStdString(settings.fileName));
    SelectPattern(*name, mode);
    name->setFocus();
    connect(
        name, &QLineEdit::textChanged, this, [this] { AllowHiddenName(); }, Qt::QueuedConnection);
  }
  AddHiddenCount();
}

/// A file that the filter does not show can be opened by its name.
void FileDialog::AllowHiddenName() {
  auto* buttons = findChild<QDialogButtonBox*>("buttonBox");
  const auto* name = findChild<QLineEdit*>("fileNameEdit");
  const bool isFile = QFileInfo(directory(), name->text()).isFile();
  if (acceptMode() != AcceptOpen || buttons == nullptr || !isFile) return;
  if (auto* open = buttons->button(QDialogButtonBox::Open)) open->setEnabled(true);
}

/// Below all else, where the dialog opens files.
void FileDialog::AddHiddenCount() {
  auto* grid = qobject_cast<QGridLayout*>(layout());
  if (acceptMode() != AcceptOpen || grid == nullptr) return;
  hidden_ = new QLabel(this);
  hidden_->setObjectName("lblHiddenFiles");
  grid->addWidget(hidden_, grid->rowCount(), 0, 1, grid->columnCount());
  connect(this, &QFileDialog::directoryEntered, this, &FileDialog::CountHidden);
  connect(this, &QFileDialog::filterSelected, this, &FileDialog::CountHidden);
  CountHidden();
}

void FileDialog::CountHidden() {
  // The selected one is told without its patterns.
  QString filter = selectedNameFilter();
  for (const QString& whole : nameFilters()) {
    if (whole.startsWith(filter)) filter = whole;
  }
  const qsizetype from = filter.lastIndexOf('(') + 1;
  const QStringList patterns = filter.mid(from, filter.lastIndexOf(')') - from).split(' ');
  const qsizetype hidden = directory().entryList(QDir::Files).size() -
                           directory().entryList(patterns, QDir::Files).size();
  hidden_->setVisible(hidden > 0);
  hidden_->setText(hidden == 1
                       ? tr("1 file in this folder is hidden by the filter.")
                       : tr("%1 files in this folder are hidden by the filter.").arg(hidden));
}

void FileDialog::accept() {
  const auto* name = findChild<QLineEdit*>("fileNameEdit");
  const bool pattern = name != nullptr && HasWildcards(name->text().toStdString());
  if (pattern && acceptMode() == AcceptOpen) {
    setNameFilters(QStringList(name->text() + " (" + PatternsOf(name->text()) + ")") + filters_);
    return;
  }
  const QString path = selectedFiles().value(0);
  const QString fault = pattern ? tr("A file name cannot hold \"*\" or \"?\".") : FaultOf(path);
  if (!fault.isEmpty()) {
    ShowMessageBox(fault.toStdString(), message_style::kExclamation, windowTitle().toStdString());
  } else if (IsTaken(path.toStdString()) && MayReplace(path)) {
    QFileDialog::accept();
  }
}

bool FileDialog::IsTaken(const std::string& path) {
  settings_.pressed = 0;
  const auto choice = settings_.judge ? settings_.judge(path) : std::nullopt;
  if (!choice) return true;
  settings_.pressed = ShowChoice(*choice);
  return settings_.pressed + 1 < choice->buttons.size();
}

/// Asks before a file is overwritten. The toolkit's own question would take a name for markup.
bool FileDialog::MayReplace(const QString& path) const {
  constexpr int kNoIsDefault = 256;
  const QFileInfo file(path);
  if (acceptMode() == AcceptOpen || !file.isFile()) return true;
  const QString question =
      tr("%1 already exists.\nDo you want to replace it?").arg(file.fileName());
  return ShowMessageBox(question.toStdString(), message_style::kYesNoExclamation + kNoIsDefault,
                        windowTitle().toStdString()) == Reply::yes;
}

/// Why the file at `path` would fail later, when the form may be lost over it; "" when it would
/// not. What the toolkit's dialog refuses itself is left to it.
QString FileDialog::FaultOf(const QString& path) const {
  constexpr qsizetype kLongestName = 250;  // the copies made while saving bear longer names
  const QFileInfo file(path);
  const QFileInfo folder(file.path());
  if (path.isEmpty() || file.isDir()) return {};
  if (file.exists() && !file.isFile()) return tr("\"%1\" is no regular file.").arg(path);
  if (HasControlCharacters(file.fileName().toStdString())) {
    return tr(
        "A file name stands in the first line of its file, which can hold no control "
        "character.");
  }
  if (file.fileName().contains('\\')) return tr("A file name cannot hold \"\\\".");
  if (file.fileName().toUtf8().size() > kLongestName) return tr("This file name is too long.");
  if (acceptMode() == AcceptOpen) {
    const bool unreadable = file.exists() && !file.isReadable();
    return unreadable ? tr("\"%1\" cannot be read.").arg(path) : QString();
  }
  if (!folder.isDir()) return tr("There is no folder \"%1\".").arg(file.path());
  if (!folder.isWritable()) return tr("The folder \"%1\" cannot be written.").arg(file.path());
  if (file.exists() && !file.isWritable()) return tr("\"%1\" is write-protected.").arg(path);
  return {};
}

void AskForFile(CommonDialog& dialog, QFileDialog::AcceptMode mode) {
  FileDialog window(dialog, mode, DialogParent());
  const bool accepted = window.exec() == QDialog::Accepted && !window.selectedFiles().isEmpty();
  dialog.fileName = accepted ? window.selectedFiles().first().toStdString() : std::string();
  if (accepted) {
    QDir::setCurrent(QFileInfo(window.selectedFiles().first()).path());
  } else if (dialog.cancelIsError) {
    throw MakeRunTimeError(error_number::kDialogCancelled);
  }
}

}  // namespace polefit
