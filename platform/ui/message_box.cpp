#include "platform/ui/message_box.h"

#include <QGridLayout>
#include <QMessageBox>
#include <QPushButton>
#include <algorithm>
#include <vector>

#include "platform/message_look.h"
#include "platform/ui/dialog_parent.h"

namespace polefit {

namespace {

QMessageBox::StandardButton ButtonOf(Reply reply) {
  switch (reply) {
    case Reply::ok:
      return QMessageBox::Ok;
    case Reply::cancel:
      return QMessageBox::Cancel;
    case Reply::yes:
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

/// The box without its icon and buttons, over the window that is in front.
void Prepare(QMessageBox& box, const std::string& text, const std::string& title) {
  box.setObjectName("messageBox");
  box.setWindowTitle(QString::fromStdString(title));
  box.setTextFormat(Qt::PlainText);
  box.setText(QString::fromStdString(text));
}

/// A box that is only as wide as a short text would cut its title.
void MakeRoomForTitle(QMessageBox& box) {
  constexpr int kEdges = 12;  // the window's icon and buttons, in character heights
  QFont font = box.font();
  font.setBold(true);
  const QFontMetrics metrics(font);
  const int width = metrics.horizontalAdvance(box.windowTitle()) + kEdges * metrics.height();
  auto* grid = static_cast<QGridLayout*>(box.layout());
  grid->addItem(new QSpacerItem(width, 0), grid->rowCount(), 0, 1, grid->columnCount());
}

QMessageBox::ButtonRole RoleOf(const Choice& choice, const std::string& caption) {
  if (caption == choice.buttons.back()) return QMessageBox::RejectRole;
  return caption == choice.buttons.front() ? QMessageBox::AcceptRole : QMessageBox::ActionRole;
}

}  // namespace

Reply ShowMessageBox(const std::string& text, int style, const std::string& title) {
  const MessageLook look = LookOf(style);
  QMessageBox box(DialogParent());
  Prepare(box, text, title);
  box.setIcon(IconOf(look.icon));
  for (const Reply button : look.buttons) box.addButton(ButtonOf(button));
  box.setDefaultButton(ButtonOf(look.defaultButton));
  box.setEscapeButton(ButtonOf(look.buttons.back()));
  MakeRoomForTitle(box);
  const int pressed = box.exec();
  for (const Reply button : look.buttons) {
    if (ButtonOf(button) == pressed) return button;
  }
  return look.buttons.back();
}

std::size_t ShowChoice(const Choice& choice) {
  QMessageBox box(DialogParent());
  Prepare(box, choice.sentence, "Polefit");
  const bool onlyTold = choice.buttons.size() == 1;
  box.setIcon(onlyTold ? QMessageBox::Warning : QMessageBox::Question);
  std::vector<QAbstractButton*> buttons;
  for (const std::string& caption : choice.buttons) {
    buttons.push_back(box.addButton(QString::fromStdString(caption), RoleOf(choice, caption)));
  }
  box.setDefaultButton(static_cast<QPushButton*>(buttons.back()));
  box.setEscapeButton(buttons.back());
  MakeRoomForTitle(box);
  box.exec();
  const auto pressed = std::ranges::find(buttons, box.clickedButton());
  return std::min(static_cast<std::size_t>(pressed - buttons.begin()), buttons.size() - 1);
}

}  // namespace polefit
