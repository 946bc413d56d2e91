#pragma once

#include <QFileDialog>
#include <string>

#include "platform/host.h"

class QLabel;

namespace polefit {

/// The program's file dialog on a CommonDialog's settings. A name with "*" or "?" is no file: to
/// open, it narrows the list to what fits; to save, it is refused, as is any file that could not be
/// read or written later. The dialog then stays open.
/// What the settings' judge asks about comes up over it.
class FileDialog final : public QFileDialog {
 public:
  FileDialog(CommonDialog& settings, AcceptMode mode, QWidget* parent);

 protected:
  void accept() override;

 private:
  QString FaultOf(const QString& path) const;
  bool MayReplace(const QString& path) const;
  bool IsTaken(const std::string& path);
  void AllowHiddenName();
  void AddHiddenCount();
  void CountHidden();

  CommonDialog& settings_;
  QLabel* hidden_ = nullptr;
  QStringList filters_;
};

/// Shows the dialog and waits. An accepted one gives its path and leaves the process in the chosen
/// folder; a cancelled one gives an empty name, or error 32755 when the settings ask for it.
void AskForFile(CommonDialog& dialog, QFileDialog::AcceptMode mode);

/// A CommonDialog's filter text in the toolkit's notation: one entry a pair, "*.*" as every file.
QStringList NameFilters(const std::string& filter);

}  // namespace polefit
