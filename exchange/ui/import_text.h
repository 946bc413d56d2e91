#pragma once

#include <QGroupBox>

#include "exchange/read/delimited.h"

class QComboBox;
class QSpinBox;

namespace polefit {

/// How the text of a file is read; folded to its title until it is ticked.
class ImportTextGroup final : public QGroupBox {
  Q_OBJECT

 public:
  ImportTextGroup();

  void Show(const TextLayout& layout);
  /// Shows the choices, or only the title.
  void Unfold(bool isOpen);
  TextChoices Choices() const;

 Q_SIGNALS:
  void changed();

 private:
  QWidget* inside_;
  QComboBox* separator_;
  QComboBox* decimalMark_;
  QSpinBox* headingLine_;
};

}  // namespace polefit
