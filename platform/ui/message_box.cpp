#include "platform/ui/message_box.h"

#include <QApplication>
#include <QMessageBox>

#include "platform/message_look.h"

namespace polefit {

namespace {

QMessageBox::StandardButton ButtonOf(Answer answer) {
  switch (answer) {
    case Answer::ok:
      return QMessageBox::Ok;
    case Answer::cancel:
      return QMessageBox::Cancel;
    case Answer::yes:
      return QMessageBox::Yes;
    default:
      return QMessageBox::No;
  }
}

QMessageBox::Icon IconOf(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::critical:
      return QMessageBox::Critical;
    case MessageIcon::question:
      return QMessageBox::Question;
    case MessageIcon::exclamation:
      return QMessageBox::Warning;
    case MessageIcon::information:
      return QMessageBox::Information;
    default:
      return QMessageBox::NoIcon;
  }
}

}  // namespace

Answer ShowMessageBox(const std::string& text, int style, const std::string& title) {
  const MessageLook look = LookOf(style);
  QMessageBox box(QApplication::activeWindow());
  box.setObjectName("messageBox");
  box.setWindowTitle(QString::fromStdString(title));
  box.setTextFormat(Qt::PlainText);
  box.setText(QString::fromStdString(text));
  box.setIcon(IconOf(look.icon));
  for (const Answer button : look.buttons) box.addButton(ButtonOf(button));
  box.setDefaultButton(ButtonOf(look.defaultButton));
  box.setEscapeButton(ButtonOf(look.buttons.back()));
  const int pressed = box.exec();
  for (const Answer button : look.buttons) {
    if (ButtonOf(button) == pressed) return button;
  }
  return look.buttons.back();
}

}  // namespace polefit
