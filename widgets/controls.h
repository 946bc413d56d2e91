#pragma once

#include <QLabel>
#include <string_view>

class QPushButton;

namespace polefit {

class AnswerEdit;

QString ToQString(std::string_view utf8);

/// A caption as it reads: "&&" is an ampersand.
QString PlainCaption(const QString& caption);

/// A wrapped label whose first line stands on the base line of the control beside it, its buddy.
/// It names the control to a screen reader.
class ControlLabel final : public QLabel {
 public:
  ControlLabel(std::string_view name, const QString& caption, QWidget* control);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void AlignWithBuddy();
};

/// A wrapped text that belongs to no control.
QLabel* MakeText(std::string_view name, const QString& caption);
/// The heading of a column.
QLabel* MakeHeader(std::string_view name, const QString& caption);
/// A text that stands out over what follows it.
QLabel* MakeNote(std::string_view name, const QString& caption);

/// A text box that shows about `length` digits.
AnswerEdit* MakeBox(std::string_view name, std::string_view text, int length, bool selectsAll);
QPushButton* MakeButton(std::string_view name, const QString& caption);

/// Makes a screen reader speak `widget` by itself when it comes up.
void MakeAlert(QWidget& widget);
/// Has what an alert says spoken now, too, if it is to be seen.
void Announce(QWidget& alert);

}  // namespace polefit
