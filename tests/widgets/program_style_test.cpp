#include "widgets/program_style.h"

#include <gmock/gmock.h>

#include <QHeaderView>
#include <QTableWidget>

namespace polefit::testing {
namespace {

TEST(ProgramStyleTest, DisabledFieldsLookSoAndCanBeReadOnEveryPalette) {
  for (const auto& [window, base, text, disabled] :
       {std::tuple("#efefef", "#ffffff", "#000000", "#bebebe"),
        {"#2d2d2d", "#1b1b1b", "#eeeeee", "#454545"},
        {"#ffffff", "#ffffff", "#333333", "#ffffff"}}) {
    QPalette palette;
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::Button, window);
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
      palette.setColor(role, text);
      palette.setColor(QPalette::Disabled, role, disabled);
    }
    palette.setColor(QPalette::PlaceholderText, QColor(0, 0, 0, 128));
    ProgramStyle().polish(palette);
    const QColor hint = palette.color(QPalette::PlaceholderText);
    EXPECT_EQ(hint == QColor(0, 0, 0, 128), palette.color(QPalette::Base).lightness() > 128);
    EXPECT_EQ(palette.color(QPalette::Disabled, QPalette::Base), QColor(window));
    EXPECT_EQ(palette.color(QPalette::Active, QPalette::Base), QColor(base));
    for (const auto& [front, ground] : {std::pair(QPalette::Text, QPalette::Base),
                                        {QPalette::WindowText, QPalette::Window},
                                        {QPalette::ButtonText, QPalette::Button}}) {
      const QColor seen = palette.color(QPalette::Disabled, front);
      EXPECT_GE(ContrastOf(seen, palette.color(QPalette::Disabled, ground)), 3) << window;
      EXPECT_NE(seen, palette.color(QPalette::Active, front)) << window;
    }
  }
}

/// The first line of pixels with something dark, which in a row of one digit is the digit.
int TopOfText(QWidget& widget) {
  const QImage image = widget.grab().toImage();
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (image.pixelColor(x, y).lightness() < 60) return y;
    }
  }
  return -1;
}

TEST(ProgramStyleTest, RowNumbersStandOnTheLineOfTheirCells) {
  QTableWidget table(1, 1);
  ProgramStyle style;
  table.setStyle(&style);
  table.verticalHeader()->setStyle(&style);
  table.verticalHeader()->setDefaultAlignment(Qt::AlignCenter);
  table.verticalHeader()->setHighlightSections(false);
  table.setVerticalHeaderItem(0, new QTableWidgetItem("8"));
  table.setItem(0, 0, new QTableWidgetItem("8"));
  table.item(0, 0)->setTextAlignment(Qt::AlignCenter);
  for (int height = 20; height < 26; ++height) {
    table.verticalHeader()->resizeSection(0, height);
    const int top = TopOfText(*table.viewport());
    EXPECT_GT(top, 0);
    EXPECT_EQ(TopOfText(*table.verticalHeader()->viewport()), top) << height;
  }
}

}  // namespace
}  // namespace polefit::testing
