#include "base/text.h"

#include <gtest/gtest.h>

#include <set>

#include "base/rich_text.h"

namespace polefit::testing {
namespace {

TEST(Windows1252, EveryByteHasItsOwnCharacterAndComesBack) {
  std::set<std::string> characters;
  for (int byte = 0; byte < 256; ++byte) {
    const std::string bytes(1, static_cast<char>(byte));
    const std::string utf8 = FromWindows1252(bytes);
    characters.insert(utf8);
    EXPECT_EQ(ToWindows1252(utf8), bytes) << byte;
  }
  EXPECT_EQ(characters.size(), 256U);
  EXPECT_EQ(FromWindows1252("\xBB\x80\x99\x81"), "»€™\u0081");
}

TEST(Windows1252, WhatTheCodePageLacksBecomesAQuestionMarkAndIsCounted) {
  const std::pair<std::string, std::string> cases[] = {
      {"aΩb", "a?b"},    {"𝄞", "?"},         {"\u0080", "?"},    {"\xFFz", "?z"},
      {"\xC3", "?"},     {"\xE2\x82", "??"}, {"\xC0\xAF", "??"}, {"\xE0\x80\xA1", "???"},
      {"é»", "\xE9\xBB"}};
  for (const auto& [utf8, expected] : cases) {
    std::string buffer;
    int replaced = 0;
    EXPECT_EQ(ToWindows1252(utf8, buffer, replaced), expected);
    EXPECT_EQ(replaced, std::count(expected.begin(), expected.end(), '?')) << utf8;
  }
}

TEST(Text, IsCutByCharactersAndNotByBytes) {
  EXPECT_EQ(FirstCharacters("1. » x", 4), "1. »");
  EXPECT_EQ(FirstCharacters("ab", 5), "ab");
  EXPECT_EQ(CharacterCount("1. »€"), 5U);
}

TEST(Text, BytesThatAreNoCharactersAndControlsAreMadeFitToBeShown) {
  const std::tuple<std::string, bool, const char*> cases[] = {
      {"Größe €\n", true, "Größe €\n"},
      {"\x1B[2J\t\x7F", true, "\\x1b[2J\\x09\\x7f"},
      {"a\xFF\xC3", false, "a\\xff\\xc3"},
      {"\u0090", true, "\\x90"},
      {"\xC0\xAF", false, "\\xc0\\xaf"}};
  for (const auto& [bytes, isUtf8, shown] : cases) {
    EXPECT_EQ(IsUtf8(bytes), isUtf8) << shown;
    EXPECT_EQ(Printable(bytes), shown);
  }
}

TEST(Text, TrimsBlanksOnly) {
  EXPECT_EQ(TrimBlanks("  \ta b\t  "), "\ta b\t");
  EXPECT_EQ(TrimBlanks("   "), "");
}

TEST(Text, LowerCaseKnowsTheLettersOfTheCodePage) {
  EXPECT_EQ(LowerCase("RUN1.TXT ÄÖÜ ÞŸŠŒŽ ×ß€"), "run1.txt äöü þÿšœž ×ß€");
}

TEST(RichText, KeepsTheTextAndNothingElse) {
  const std::pair<std::string, std::string> cases[] = {
      {R"({\rtf1{\fonttbl{\f0 Arial;}}{\stylesheet{\s1\b heading;}}{\info{\title T}}one\par two\par})",
       "one\ntwo\n"},
      {R"({\rtf1 \'bb\u963?\u-3913?x {\uc0\u960}y\{\\\}})", "»σ\xEF\x82\xB7x πy{\\}"},
      {R"({\rtf1\b bold\b0  plain\tab z\~\_2})", "bold plain\tz -2"},
      {R"({\rtf1 {\field{\*\fldinst HYPERLINK \\l "s1"}{\fldrslt link}}{\pict\pngblip 00ff}{\*\bkmkstart s1}.})",
       "link."},
      {"{\\rtf1 a\r\nb}", "ab"},
      {R"({\rtf1 cut \)", "cut "}};
  for (const auto& [rtf, expected] : cases) EXPECT_EQ(PlainTextOfRtf(rtf), expected) << rtf;
}

}  // namespace
}  // namespace polefit::testing
