#include "platform/rich_text.h"

#include <gtest/gtest.h>

namespace polefit {
namespace {

TEST(RichText, KeepsTheTextAndNothingElse) {
  const std::pair<std::string, std::string> cases[] = {
      {R"({\rtf1{\fonttbl{\f0 Arial;}}{\stylesheet{\s1\b heading;}}{\info{\title T}}one\par two\par})",
       "one\ntwo\n"},
      {R"({\rtf1 \'bb\u963?\u-3913?x {\uc0\u960}y\{\\\}})", "»σ\xEF\x82\xB7x πy{\\}"},
      {R"({\rtf1\b bold\b0  plain\tab z\~\_2})", "bold plain\tz -2"},
      {R"({\rtf1 {\field{\*\fldinst HYPERLINK \\l "s1"}{\fldrslt link}}{\pict\pngblip 00ff}{\*\bkmkstart s1}.})",
       "link."},
      {"{\\rtf1 a\r\nb}", "ab"},
      {R"({\rtf1 cut \)", "cut "},
  };
  for (const auto& [rtf, expected] : cases) EXPECT_EQ(PlainTextOfRtf(rtf), expected) << rtf;
}

}  // namespace
}  // namespace polefit
