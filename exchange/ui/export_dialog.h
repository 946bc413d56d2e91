#pragma once

#include <QDialog>
#include <functional>

#include "exchange/export.h"
#include "exchange/last_result.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace polefit {

/// Shows a result as each format writes it, to be saved or copied.
class ExportDialog final : public QDialog {
  Q_OBJECT

 public:
  /// Saves a text; gets the format and the dialog.
  using Saver = std::function<void(const ExportFormatName& format, const std::string& text)>;

  ExportDialog(LastResult result, std::string date, Saver save, QWidget* parent);

 private:
  void BuildChoices();
  void BuildButtons();
  void ShowFormat();
  const ExportFormatName& Format() const;

  LastResult result_;
  std::string date_;
  Saver save_;
  std::string text_;
  QComboBox* formats_;
  QCheckBox* atDataPoints_;
  QPlainTextEdit* preview_;
  QPushButton* saveAs_ = nullptr;
  QPushButton* copy_ = nullptr;
};

}  // namespace polefit
