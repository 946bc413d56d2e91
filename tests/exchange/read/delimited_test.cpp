#include "exchange/read/delimited.h"

#include <gmock/gmock.h>

#include "exchange/read/source_file.h"

namespace polefit::testing {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

/// A table in one text: headings, then rows, cells as they stand in the file.
std::string Shown(const SourceTable& table) {
  if (!table.fault.empty()) return "fault: " + table.fault;
  std::string text;
  for (const Column& column : table.columns) text += "[" + column.heading + "]";
  for (int row = 0; row < table.Rows(); ++row) {
    text += "\n" + std::to_string(table.LineOf(row)) + ":";
    for (int column = 0; column < table.Columns(); ++column) {
      text += " " + std::string(std::isnan(table.Number(row, column)) ? "?" : "") +
              std::string(table.Text(row, column));
    }
  }
  return text;
}

TEST(DelimitedTest, FilesOfEveryHandGiveTheirTable) {
  const std::pair<const char*, const char*> files[] = {
      // Spreadsheets, in English and in German, with what they leave at line ends.
      {"Frequency (MHz),Gain (dB)\r\n1.5,-0.3\r\n3,-0.9\r\n",
       "[Frequency (MHz)][Gain (dB)]\n2: 1.5 -0.3\n3: 3 -0.9"},
      {"Frequenz [MHz];Betrag;;\n1,5;0,92;;\n3;0,9;;\n;;;\n",
       "[Frequenz [MHz]][Betrag]\n2: 1,5 0,92\n3: 3 0,9"},
      {"sep=;\nf;a\n1;2\n2;3\n", "[f][a]\n3: 1 2\n4: 2 3"},
      {"\"f, \"\"raw\"\"\",\"b\"\n\"1,5\",\"2,5\"\n\"2,5\",\"3,5\"\n",
       "[f, \"raw\"][b]\n2: 1,5 2,5\n3: 2,5 3,5"},
      // Analysers: remarks, markers, trailing separators, units in a line of their own.
      {"!CSV A.01.01\n!Date: Friday, May 7\nBEGIN CH1_DATA\nFreq(Hz),S21(REAL),S21(IMAG)\n"
       "300000,0.99,0.01\n+6.0E+005,.98,-.02\nEND\n",
       "[Freq(Hz)][S21(REAL)][S21(IMAG)]\n5: 300000 0.99 0.01\n6: +6.0E+005 .98 -.02"},
      {"# Version 1.00\n#\nfreq[Hz];re:Trc1_S21;im:Trc1_S21;\n1;2;3;\n2;3;4;\n",
       "[freq[Hz]][re:Trc1_S21][im:Trc1_S21]\n4: 1 2 3\n5: 2 3 4"},
      {"Frequency,Gain\nMHz,dB\n1,-2\n2,-3\n", "[Frequency (MHz)][Gain (dB)]\n3: 1 -2\n4: 2 -3"},
      {"f a\n\n1 2 ! first\n\n2 3 # second\n", "[f][a]\n3: 1 2\n5: 2 3"},
      // Simulators: commas in headings, rulers, pages, complex cells.
      {"freq,dB(S(2,1))\n1,-2\n2,-3\n", "[freq][dB(S(2,1))]\n2: 1 -2\n3: 2 -3"},
      {"   \"Frequency / GHz\"      \"S2,1/abs,dB\"\n--------\n   1.0    -2.0\n   2.0   -3.0\n",
       "[Frequency / GHz][S2,1/abs,dB]\n3: 1.0 -2.0\n4: 2.0 -3.0"},
      {"Index  frequency  vdb(2)\n-----\n0\t1e3\t-1\t\n1\t2e3\t-2\t\n\nIndex  frequency  vdb(2)\n"
       "-----\n2\t3e3\t-3\t\n",
       "[Index][frequency][vdb(2)]\n3: 0 1e3 -1\n4: 1 2e3 -2\n8: 2 3e3 -3"},
      {"Freq.\tV(out)\n1.0e3\t(-3.0dB,-45\xB0)\n2.0e3\t(-6.0dB,-60\xB0)\n",
       "[Freq.][V(out) dB][V(out) deg]\n2: 1.0e3 -3.0 -45\n3: 2.0e3 -6.0 -60"},
      {"Freq.\tV(out)\n1.0e3\t7.0e-1,-7.0e-1\n2.0e3\t5.0e-1,-8.0e-1\n",
       "[Freq.][V(out) re][V(out) im]\n2: 1.0e3 7.0e-1 -7.0e-1\n3: 2.0e3 5.0e-1 -8.0e-1"},
      // The last remark before the rows names them; line ends of old systems; bars.
      {"# made by hand\n# freq_MHz  mag\n1 2\n2 3\n", "[freq_MHz][mag]\n3: 1 2\n4: 2 3"},
      {"% f (MHz) a (dB)\r1,5\t-2\r2,5\t-3\r", "[f (MHz)][a (dB)]\n2: 1,5 -2\n3: 2,5 -3"},
      {"f|a\n1|2\n2|3", "[f][a]\n2: 1 2\n3: 2 3"},
      {"1.0D+06 -1.5D+00\n2.0D+06 -2.5D+00\n", "[][]\n1: 1.0D+06 -1.5D+00\n2: 2.0D+06 -2.5D+00"},
      {"% MHz Mag (dB)\n1 2\n2 3\n", "[MHz][Mag (dB)]\n2: 1 2\n3: 2 3"},
      // Names with gaps over units; an empty first column, which is no remark; settings before.
      {"f,S21,,S11,\nGHz,dB,deg,dB,deg\n1,2,3,4,5\n2,3,4,5,6\n",
       "[f (GHz)][S21 (dB)][ (deg)][S11 (dB)][ (deg)]\n3: 1 2 3 4 5\n4: 2 3 4 5 6"},
      {";f (Hz);dB\n;1,5;2\n;2,5;3\n", "[][f (Hz)][dB]\n2: ? 1,5 2\n3: ? 2,5 3"},
      {"start,points\n0,2\nf,a\n1,2\n2,3\n", "[f][a]\n4: 1 2\n5: 2 3"},
      // Words beside the numbers, and cells without one.
      {"f,a,state\n1,2,ok\n2,3,ok\n", "[f][a][state]\n2: 1 2 ?ok\n3: 2 3 ?ok"},
      {"f,a,b\n1,2,3\n2,---,4\n3,5,6\n", "[f][a][b]\n2: 1 2 3\n3: 2 ?--- 4\n4: 3 5 6"}};
  for (const auto& [text, shown] : files) {
    EXPECT_EQ(Shown(ReadSourceBytes("x.csv", text).table), shown) << text;
  }
}

TEST(DelimitedTest, EncodingsAreToldApart) {
  const std::string utf8 = "Frequenz;Verst\xC3\xA4rkung\n1;2\n2;3\n";
  const std::string latin = "Frequenz;Verst\xE4rkung\n1;2\n2;3\n";
  std::string little = "\xFF\xFE";
  std::string big = "\xFE\xFF";
  for (const char c : latin) {
    little += std::string{c, '\0'};
    big += std::string{'\0', c};
  }
  for (const std::string& bytes : {utf8, "\xEF\xBB\xBF" + utf8, latin, little, big}) {
    EXPECT_EQ(Shown(ReadSourceBytes("x", bytes).table),
              "[Frequenz][Verst\xC3\xA4rkung]\n2: 1 2\n3: 2 3");
  }
}

TEST(DelimitedTest, LinesThatCannotBeReadAreTold) {
  SourceTable table = ReadDelimited("f,a\n1,2\nwords\n\n# remark\n2,3,4,5\n3\n4,5\nf,a\n5,6\n6,");
  EXPECT_THAT(table.skippedLines, ElementsAre(3, 6, 7, 11));
  EXPECT_EQ(table.Rows(), 3);
  table = ReadDelimited("set,9\nf,a\n1e999,2\n1\n2,3\n4,5\n6,1e999\n7,\nend\n8,\n");
  EXPECT_THAT(table.skippedLines, ElementsAre(4, 8));
  EXPECT_EQ(table.Rows(), 4) << "cells without a number are for who takes the column";
}

TEST(DelimitedTest, OfSeveralSweepsOneIsTaken) {
  const SourceTable table = ReadDelimited("f,a\n1,2\n2,3\nEND\nf,b\n1,5\n2,6\nEND\n");
  EXPECT_EQ(Shown(table), "[f][a]\n2: 1 2\n3: 2 3");
  EXPECT_THAT(table.notes, ElementsAre(HasSubstr("2 sweeps")));
}

TEST(DelimitedTest, WhatIsNoTableSaysWhy) {
  const std::pair<std::string, const char*> files[] = {
      {"", "fewer than two rows"},
      {"only words\n", "fewer than two rows"},
      {"1,2\n", "fewer than two rows"},
      {std::string("1,2\n\0\x01\n", 7), "no text"},
      {"Hz;dB\n1,500,000;-2\n3,000,000;-3\n", "thousands"},
      {"Hz;dB\n1.500.000,5;-2\n3.000.000,5;-3\n", "thousands"},
      {"f,a\n1,5,0,92\n2,5,0,91\n", "cannot be told apart"},
      {"1 2\n" + std::string((1U << 20U) + 1, '1'), "longer than 1 MB"}};
  for (const auto& [text, why] : files) {
    EXPECT_THAT(Shown(ReadSourceBytes("x", text).table), AllOf(HasSubstr("fault"), HasSubstr(why)))
        << text.substr(0, 50);
  }
}

TEST(DelimitedTest, ChoicesGoBeforeWhatIsFoundOut) {
  const char* const text = "unit 1,5;7\nf;a\n1,5;2,5\n2,5;3,5\n";
  TextLayout found;
  EXPECT_EQ(Shown(ReadDelimited(text, {}, &found)), "[f][a]\n3: 1,5 2,5\n4: 2,5 3,5");
  EXPECT_EQ(found.layout, (Layout{';', ','}));
  EXPECT_EQ(found.headingLine, 2);
  EXPECT_EQ(Shown(ReadDelimited(text, {{0, 0}, 1})), "[unit 1,5][7]\n3: 1,5 2,5\n4: 2,5 3,5");
  EXPECT_THAT(Shown(ReadDelimited("1\t2.5\n2\t3.5\n", {{'\t', ','}, 0})),
              HasSubstr("fewer than two rows"));
}

}  // namespace
}  // namespace polefit::testing
