#include "plots/ui/legend_place.h"

#include <gtest/gtest.h>

namespace polefit::testing {
namespace {

const QRectF kRoom(0, 0, 400, 300);
const QSizeF kSize(100, 40);
const Qt::Alignment kLowerLeft = Qt::AlignLeft | Qt::AlignBottom;
const Qt::Alignment kUpperRight = Qt::AlignRight | Qt::AlignTop;

TEST(LegendPlace, CoversNeitherLinesNorMarksNorTexts) {
  Obstacles obstacles;
  EXPECT_EQ(FreeLegendPlace(kRoom, kSize, obstacles, {}), kLowerLeft);
  EXPECT_EQ(FreeLegendPlace(kRoom, kSize, obstacles, kUpperRight), kUpperRight) << "it stays";
  obstacles.marks = {{50, 280}};
  EXPECT_EQ(FreeLegendPlace(kRoom, kSize, obstacles, kLowerLeft), kUpperRight);
  obstacles.texts = {{300, 10, 50, 20}};
  EXPECT_EQ(FreeLegendPlace(kRoom, kSize, obstacles, {}), Qt::AlignHCenter | Qt::AlignBottom);
  // A long piece of a line that has no point inside.
  obstacles.lines = {{{0, 280}, {400, 281}}};
  EXPECT_EQ(FreeLegendPlace(kRoom, kSize, obstacles, {}), Qt::AlignLeft | Qt::AlignTop);
  obstacles.lines.push_back({{0, 20}, {400, 21}});
  EXPECT_EQ(FreeLegendPlace(kRoom, kSize, obstacles, {}), Qt::AlignLeft | Qt::AlignVCenter);
  obstacles.lines.push_back({{0, 127}, {400, 127}});  // as near as a mark is wide
  EXPECT_FALSE(FreeLegendPlace(kRoom, kSize, obstacles, kUpperRight));
}

TEST(LegendPlace, IsNotTakenByALineThatPassesBy) {
  Obstacles obstacles;
  obstacles.lines = {{{0, 200}, {120, 299}, {400, 0}}};
  // The first piece cuts the lower left corner's box off, the second one the upper right.
  const auto place = FreeLegendPlace(kRoom, kSize, obstacles, {});
  ASSERT_TRUE(place);
  EXPECT_EQ(*place, Qt::AlignRight | Qt::AlignBottom);
}

TEST(NotePlace, IsTheFirstAlongTheEdgesThatIsFree) {
  const QRectF strip(0, 0, 400, 60);
  const QSizeF text(150, 18);
  Obstacles obstacles;
  EXPECT_EQ(FreeNotePlace(strip, text, obstacles, Qt::TopEdge), QPointF(250, 0));
  obstacles.lines = {{{0, 30}, {400, 30}}, {{240, 0}, {280, 60}}};
  EXPECT_EQ(FreeNotePlace(strip, text, obstacles, Qt::TopEdge), QPointF(0, 0))
      << "left of what falls";
  obstacles.marks = {{20, 10}};
  EXPECT_EQ(FreeNotePlace(strip, text, obstacles, Qt::TopEdge), QPointF(62.5, 0));
  obstacles.lines.push_back({{0, 10}, {400, 10}});
  EXPECT_EQ(FreeNotePlace(strip, text, obstacles, Qt::TopEdge), QPointF(0, 42));
  EXPECT_EQ(FreeNotePlace(strip, text, {}, Qt::BottomEdge), QPointF(250, 42));
  obstacles.lines.push_back({{0, 50}, {400, 50}});
  EXPECT_FALSE(FreeNotePlace(strip, text, obstacles, Qt::TopEdge));
}

}  // namespace
}  // namespace polefit::testing
