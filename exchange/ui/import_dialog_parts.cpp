#include "exchange/ui/import_dialog_parts.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

#include "widgets/controls.h"

namespace polefit {

void ChoiceBox::SetFixed(bool isFixed) {
  isFixed_ = isFixed;
  setEnabled(!isFixed);
  setMinimumWidth(isFixed ? fontMetrics().horizontalAdvance(currentText()) : 0);
  update();
}

void ChoiceBox::paintEvent(QPaintEvent* event) {
  if (!isFixed_) return QComboBox::paintEvent(event);
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::Active, QPalette::WindowText));
  const QString text = fontMetrics().elidedText(currentText(), Qt::ElideRight, width());
  painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter, text);
}

ChoiceBox* MakeChoice(const char* name, const QString& tip) {
  constexpr int kCharacters = 8;
  auto* box = new ChoiceBox;
  box->setObjectName(name);
  box->setToolTip(tip);
  box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  box->setMinimumContentsLength(kCharacters);
  return box;
}

void FillColumns(QComboBox& box, const SourceTable& table) {
  for (int column = 0; column < table.Columns(); ++column) {
    const QString heading = ToQString(table.columns[static_cast<std::size_t>(column)].heading);
    const QString number = QString::number(column + 1);
    box.addItem(heading.isEmpty() ? QWidget::tr("column %1").arg(number) : number + ": " + heading,
                column);
  }
}

void Choose(QComboBox& box, int data) {
  box.setCurrentIndex(std::max(0, box.findData(data)));
}

QWidget* Beside(QWidget* first, QWidget* second) {
  auto* line = new QWidget;
  auto* layout = new QHBoxLayout(line);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(first, 1);
  layout->addWidget(second);
  return line;
}

QLabel* AddChoice(QFormLayout& rows, const QString& label, QWidget* control, QWidget* second) {
  auto* text = new QLabel(label);
  text->setBuddy(control);
  const QString name = QString(label).remove('&').remove(':');
  control->setAccessibleName(name);
  if (second != nullptr) second->setAccessibleName(name);
  rows.addRow(text, second == nullptr ? control : Beside(control, second));
  return text;
}

}  // namespace polefit
