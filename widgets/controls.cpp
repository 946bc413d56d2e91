#include "widgets/controls.h"

#include <QAccessibleWidget>
#include <QEvent>
#include <QPushButton>
#include <algorithm>

#include "widgets/answer_edit.h"

namespace polefit {

namespace {

constexpr const char* kAlert = "isAlert";

QAccessibleInterface* AlertOf(const QString&, QObject* object) {
  if (!object->property(kAlert).toBool()) return nullptr;
  return new QAccessibleWidget(qobject_cast<QWidget*>(object), QAccessible::AlertMessage);
}

}  // namespace

QString ToQString(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QString PlainCaption(const QString& caption) {
  return QString(caption).replace("&&", "&");
}

ControlLabel::ControlLabel(std::string_view name, const QString& caption, QWidget* control)
    : QLabel(caption) {
  setObjectName(ToQString(name));
  setTextFormat(Qt::PlainText);
  setWordWrap(true);
  setBuddy(control);
  if (control->accessibleName().isEmpty()) {
    control->setAccessibleName(PlainCaption(caption).simplified());
  }
  AlignWithBuddy();
}

void ControlLabel::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) AlignWithBuddy();
}

void ControlLabel::AlignWithBuddy() {
  if (buddy() == nullptr) return;
  const int height = std::max(buddy()->sizeHint().height(), buddy()->minimumHeight());
  setContentsMargins(0, std::max(0, (height - fontMetrics().height()) / 2), 0, 0);
}

QLabel* MakeText(std::string_view name, const QString& caption) {
  auto* label = new QLabel(PlainCaption(caption));
  label->setObjectName(ToQString(name));
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  return label;
}

QLabel* MakeHeader(std::string_view name, const QString& caption) {
  QLabel* label = MakeText(name, caption);
  label->setWordWrap(false);
  QFont font = label->font();
  font.setBold(true);
  label->setFont(font);
  return label;
}

QLabel* MakeNote(std::string_view name, const QString& caption) {
  QLabel* label = MakeText(name, caption);
  label->setAlignment(Qt::AlignCenter);
  label->setBackgroundRole(QPalette::AlternateBase);
  label->setAutoFillBackground(true);
  label->setMargin(label->fontMetrics().height() / 3);
  return label;
}

AnswerEdit* MakeBox(std::string_view name, std::string_view text, int length, bool selectsAll) {
  auto* box = new AnswerEdit(length, selectsAll);
  box->setObjectName(ToQString(name));
  box->setText(ToQString(text));
  box->setCursorPosition(0);
  box->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  return box;
}

QPushButton* MakeButton(std::string_view name, const QString& caption) {
  auto* button = new QPushButton(caption);
  button->setObjectName(ToQString(name));
  button->setAutoDefault(true);  // Return presses it, as the space bar does
  button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  return button;
}

void MakeAlert(QWidget& widget) {
  widget.setProperty(kAlert, true);
  QAccessible::installFactory(&AlertOf);
}

void Announce(QWidget& alert) {
  QAccessibleEvent spoken(&alert, QAccessible::Alert);
  QAccessible::updateAccessibility(&spoken);
  // What AT-SPI passes on of an alert is only that it has come up.
  QAccessibleEvent shown(&alert, QAccessible::ObjectShow);
  if (alert.isVisible()) QAccessible::updateAccessibility(&shown);
}

}  // namespace polefit
