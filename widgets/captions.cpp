#include "widgets/captions.h"

#include <QLabel>

namespace polefit {

QLabel* MakeTitle(const QString& text) {
  constexpr double kTitleScale = 1.8;
  auto* title = new QLabel(text);
  title->setObjectName("lblTitle");
  QFont font = title->font();
  font.setBold(true);
  font.setPointSizeF(font.pointSizeF() * kTitleScale);
  title->setFont(font);
  return title;
}

QLabel* MakeSentence(const char* name, const QString& text) {
  constexpr int kLineCharacters = 78;
  auto* sentence = new QLabel(text);
  sentence->setObjectName(name);
  sentence->setTextFormat(Qt::PlainText);
  sentence->setWordWrap(true);
  sentence->setMinimumWidth(sentence->fontMetrics().averageCharWidth() * kLineCharacters);
  return sentence;
}

}  // namespace polefit
