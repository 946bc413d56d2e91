#include "responsefile/value_line.h"

#include <gtest/gtest.h>

namespace polefit {
namespace {

TEST(ValueLine, IsTheTextBeforeTheFirstMark) {
  const std::pair<const char*, const char*> cases[] = {
      {" 12\t\t! 23. » points", "12"},
      {"  plain  ", "plain"},
      {"a!b!c", "a"},
      {"!only a comment", ""},
      {"", ""},
      {"-999\t\t! empty", ""},
      {"-999.25\t\t! blanked too", ""},
      {"-9990", ""},
      {"\t-999", "-999"},
      {"5 \t\t! the blank stands before the tabs", "5 "},
      {"a\tb", "ab"},
      {" \t 5 \t", " 5 "},
  };
  for (const auto& [line, value] : cases) {
    EXPECT_EQ(ValueOfLine(line), value) << line;
  }
}

TEST(ValueLine, AListHasSingleBlanksOnly) {
  const std::pair<const char*, const char*> cases[] = {{"1,0.5,0.5,1", "1 0.5 0.5 1"},
                                                       {"  1  2   3 ", "1 2 3"},
                                                       {",,1, ,2,", "1 2"},
                                                       {"", ""},
                                                       {" , ", ""},
                                                       {"1,5", "1 5"}};
  for (const auto& [text, list] : cases) EXPECT_EQ(NormalizeList(text), list) << text;
}

}  // namespace
}  // namespace polefit
