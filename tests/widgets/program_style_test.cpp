#include "widgets/program_style.h"

#include <gmock/gmock.h>

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
    ProgramStyle().polish(palette);
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

}  // namespace
}  // namespace polefit::testing
