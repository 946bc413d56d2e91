#include "plots/ui/clipped_line.h"

#include <gtest/gtest.h>

#include <cmath>

namespace polefit::testing {
namespace {

std::string Text(const std::vector<QPointF>& line) {
  std::string text;
  for (const QPointF& point : line) {
    text += std::isnan(point.y()) ? "| "
                                  : std::to_string(std::lround(point.x())) + "," +
                                        std::to_string(std::lround(point.y())) + " ";
  }
  return text;
}

TEST(ClippedLine, KeepsWhatIsInside) {
  const QRectF room(0, 0, 100, 100);
  struct Case {
    std::vector<QPointF> line;
    const char* inside;
  };
  const Case cases[] = {
      {{}, ""},
      {{{10, 10}}, ""},
      {{{10, 10}, {20, 90}, {30, 10}}, "10,10 20,90 30,10 "},
      {{{-50, 50}, {50, 50}, {150, 50}}, "0,50 50,50 100,50 "},
      {{{10, 50}, {20, 150}, {30, 50}}, "10,50 15,100 | 25,100 30,50 "},
      {{{10, 50}, {20, 1e9}}, "10,50 10,100 "},
      {{{10, 10}, {20, NAN}, {30, 10}, {40, 10}}, "30,10 40,10 "},
      {{{10, 10}, {20, 10}, {25, NAN}, {30, 10}, {40, 10}}, "10,10 20,10 | 30,10 40,10 "},
      {{{-10, 50}, {50, -20}}, "0,38 33,0 "},
      {{{-10, 5}, {5, -20}}, ""},  // past a corner
      {{{50, -10}, {50, 110}}, "50,0 50,100 "}};
  for (const Case& each : cases) EXPECT_EQ(Text(ClippedLine(each.line, room)), each.inside);
}

}  // namespace
}  // namespace polefit::testing
