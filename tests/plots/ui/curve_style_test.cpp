#include "plots/ui/curve_style.h"

#include <gtest/gtest.h>

#include "widgets/program_style.h"

namespace polefit::testing {
namespace {

TEST(CurveStyle, CanBeToldByTheColourBlindAndInGrey) {
  QPalette light;
  light.setColor(QPalette::Base, Qt::white);
  light.setColor(QPalette::Text, Qt::black);
  QPalette dark;
  dark.setColor(QPalette::Base, QColor(0x1e, 0x1e, 0x1e));
  dark.setColor(QPalette::Text, Qt::white);
  for (const QPalette& palette : {light, dark}) {
    for (int role = 0; role <= static_cast<int>(SeriesRole::ghostZeros); ++role) {
      const QColor color = ColorOf(static_cast<SeriesRole>(role), palette);
      EXPECT_GE(ContrastOf(color, palette.color(QPalette::Base)), 3) << role;
    }
    // Lines differ in more than their colour.
    const auto pen = [&](SeriesRole role) {
      Series series;
      series.role = role;
      return PenOf(series, palette);
    };
    EXPECT_EQ(pen(SeriesRole::typed).style(), Qt::SolidLine);
    EXPECT_EQ(pen(SeriesRole::preview).style(), Qt::DotLine);
    EXPECT_EQ(pen(SeriesRole::other).style(), Qt::DashLine);
    EXPECT_GT(pen(SeriesRole::result).widthF(), pen(SeriesRole::typed).widthF());
    for (const SeriesRole role : {SeriesRole::typed, SeriesRole::result}) {
      Series pale = {"", role, {}, {}, true};
      const double contrast =
          ContrastOf(PenOf(pale, palette).color(), palette.color(QPalette::Base));
      EXPECT_GE(contrast, 3) << "an old curve is seen too";
      EXPECT_LT(contrast, ContrastOf(pen(role).color(), palette.color(QPalette::Base)) - .5);
    }
  }
}

}  // namespace
}  // namespace polefit::testing
