#include "widgets/one_line.h"

#include <QValidator>
#include <limits>

namespace polefit {

namespace {

QString OneLine(QString text) {
  return text.replace("\r\n", " ").replace('\n', ' ').replace('\r', ' ').replace('\t', ' ');
}

class OneLineValidator : public QValidator {
 public:
  using QValidator::QValidator;

  State validate(QString& text, int& caret) const override {
    const QString before = OneLine(text.left(caret));
    text = before + OneLine(text.mid(caret));
    caret = static_cast<int>(before.size());
    return Acceptable;
  }
};

}  // namespace

void KeepToOneLine(QLineEdit& box) {
  box.setMaxLength(std::numeric_limits<int>::max());
  box.setValidator(new OneLineValidator(&box));
}

void ShowAsItStands(QLineEdit& box, const QString& text) {
  const QValidator* validator = box.validator();
  box.setValidator(nullptr);
  box.setText(text);
  box.setValidator(validator);
}

}  // namespace polefit
