#include "widgets/captions.h"

#include <QLabel>

namespace polefit {

QLabel* MakeTitle(const char* text) {
  constexpr double kTitleScale = 1.8;
  auto* const title = new QLabel(text);
  title->setObjectName("lblTitle");
  QFont font = title->font();
  font.setBold(true);
  font.setPointSizeF(font.pointSizeF() * kTitleScale);
  title->setFont(font);
  return title;
}

QLabel* MakeSentence(const char* name, const char* text) {
  constexpr int kLineCharacters = 78;
  auto* const sentence = new QLabel(text);
  sentence->setObjectName(name);
  sentence->setTextFormat(Qt::PlainText);
  sentence->setWordWrap(true);
  sentence->setMinimumWidth(sentence->fontMetrics().averageCharWidth() * kLineCharacters);
  return sentence;
}

}  // namespace polefit
