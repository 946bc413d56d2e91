#include "exchange/read/network_file.h"

#include <gmock/gmock.h>

#include "exchange/filter_sweep.h"

namespace polefit::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

/// "S21 0.5 90" for each parameter of the first row, with the frequency before them.
std::string FirstRow(const SourceTable& table) {
  if (table.Rows() == 0) return "fault: " + table.fault;
  std::string text(table.Text(0, 0));
  for (const NetworkParameter& parameter : table.parameters) {
    text += " " + parameter.name + "=" + std::string(table.Text(0, parameter.column)) + ":" +
            std::string(table.Text(0, parameter.column + 1));
  }
  return text;
}

/// Two rows of numbers that count on: 1, 2, 3 ..., each row in lines of these lengths.
std::string Counting(const std::vector<int>& lengths) {
  std::string text;
  for (int row = 1; row <= 2; ++row) {
    int number = row;
    for (const int length : lengths) {
      for (int i = 0; i < length; ++i) text += std::to_string(number++) + " ";
      text += "\n";
    }
  }
  return text;
}

TEST(NetworkFileTest, ParametersHaveTheirOrderByVersionAndPorts) {
  const std::string two = Counting({9});
  const std::string half = Counting({7});
  const std::string version2 = "[Version] 2.0\n# MHz\n[Number of Ports] 2\n";
  const std::tuple<const char*, std::string, const char*> files[] = {
      {"a.s1p", Counting({3}), "1 S11=2:3"},
      {"a.s2p", two, "1 S11=2:3 S21=4:5 S12=6:7 S22=8:9"},
      {"a.ts", version2 + "[Two-Port Data Order] 21_12\n[Network Data]\n" + two + "[End]\n",
       "1 S11=2:3 S21=4:5 S12=6:7 S22=8:9"},
      {"a.ts", version2 + "[two-port data order] 12_21\n[Reference]\n50 75\n[network data]\n" + two,
       "1 S11=2:3 S12=4:5 S21=6:7 S22=8:9"},
      {"a.s2p", version2 + "[Matrix Format] Lower\n[Network Data]\n" + half,
       "1 S11=2:3 S21=4:5 S12=4:5 S22=6:7"},
      {"a.s2p", version2 + "[Matrix Format] upper\n[Network Data]\n" + half,
       "1 S11=2:3 S12=4:5 S21=4:5 S22=6:7"},
      {"a.S3P", Counting({7, 6, 6}),
       "1 S11=2:3 S12=4:5 S13=6:7 S21=8:9 S22=10:11 S23=12:13 S31=14:15 S32=16:17 S33=18:19"},
      // Any wrapping will do, and a name without a number of ports.
      {"a.s3p", Counting({1, 6, 6, 6}),
       "1 S11=2:3 S12=4:5 S13=6:7 S21=8:9 S22=10:11 S23=12:13 S31=14:15 S32=16:17 S33=18:19"},
      {"a.s2p", Counting({1, 3, 3, 2}), "1 S11=2:3 S21=4:5 S12=6:7 S22=8:9"},
      {"a.ts", version2 + "[Matrix Format] Lower\n[Network Data]\n" + Counting({5, 1, 1}),
       "1 S11=2:3 S21=4:5 S12=4:5 S22=6:7"},
      {"a.txt", "# MHz S MA R 50\n" + Counting({9}), "1 S11=2:3 S21=4:5 S12=6:7 S22=8:9"},
      {"a.s5p", "# MHz Z\n" + Counting({3}), "1 Z11=2:3"}};
  for (const auto& [name, text, row] : files) {
    ASSERT_TRUE(IsNetworkFile(name, text)) << name;
    EXPECT_EQ(FirstRow(ReadNetworkFile(name, text)), row) << name << "\n" << text;
  }
  EXPECT_EQ(ReadNetworkFile("a.s4p", Counting({9, 8, 8, 8})).parameters.size(), 16U);
  EXPECT_THAT(FirstRow(ReadNetworkFile("a.s12p", Counting({289}))), HasSubstr("S1,12=24:25 S2,1="));
  EXPECT_FALSE(IsNetworkFile("a.txt", "# freq s21\n1 2\n"));
}

TEST(NetworkFileTest, TheOptionLineMayHaveAnyOrderAndLeaveOutAnything) {
  const std::tuple<const char*, FrequencyUnit, Quantity> lines[] = {
      {"", FrequencyUnit::gigahertz, Quantity::linear},
      {"#\n", FrequencyUnit::gigahertz, Quantity::linear},
      {"# R 75 ri s khz\n", FrequencyUnit::kilohertz, Quantity::real},
      {"#HZ S DB R 50 ! remark\n# GHz MA\n", FrequencyUnit::hertz, Quantity::decibel},
      {"! remark\n\n  # mhz\n", FrequencyUnit::megahertz, Quantity::linear}};
  for (const auto& [line, unit, quantity] : lines) {
    const SourceTable table = ReadNetworkFile("a.s1p", line + Counting({3}));
    ASSERT_EQ(table.Rows(), 2) << line;
    EXPECT_EQ(table.columns[0].meaning.frequencyUnit, unit) << line;
    EXPECT_EQ(table.columns[1].meaning.quantity, quantity) << line;
  }
}

TEST(NetworkFileTest, NoiseIsLeftOutAndBrokenRowsAreTold) {
  const SourceTable noisy =
      ReadNetworkFile("a.s2p", "# MHz\n" + Counting({9}) + "1 .1 .2 3 4\n2 .1 .2 3 4 ! end\n");
  EXPECT_EQ(noisy.Rows(), 2);
  EXPECT_THAT(noisy.notes, ElementsAre("noise data left out (2 lines)"));
  EXPECT_TRUE(noisy.skippedLines.empty());

  const SourceTable version2 =
      ReadNetworkFile("a.ts",
                      "[Version] 2.0\n# Hz\n[Number of Ports] 1\n[Begin Information]\n9 9 9\n"
                      "[End Information]\n[Network Data]\n" +
                          Counting({3}) + "[Noise Data]\n5 5 5\n[End]");
  EXPECT_EQ(version2.Rows(), 2);

  const SourceTable broken = ReadNetworkFile("a.s2p",
                                             "words\n1 1 1 1 1 1 1 1 1\n2 1 x 1 1 1 1 1 1\n3 1 1\n"
                                             "4 1 1 1 1 1 1 nan 1\n5 1 1 1 1 1 1 1 1\n6 1 1 1");
  EXPECT_EQ(broken.Rows(), 2);
  EXPECT_THAT(broken.skippedLines, ElementsAre(3, 4, 5, 7));
  const SourceTable short1 = ReadNetworkFile("a.s1p", "1 1 1\n2 x 1\n3 1\n4 1 1\n");
  EXPECT_EQ(short1.Rows(), 2);
  EXPECT_THAT(short1.skippedLines, ElementsAre(2, 3));
  EXPECT_THAT(ReadNetworkFile("a.s1p", "# H\n" + Counting({3})).notes,
              ElementsAre(HasSubstr("H parameters: the magnitude is taken as the file has it")));
  EXPECT_EQ(FirstRow(ReadNetworkFile("a.s2p", "# MHz\nno numbers\n")), "fault: no rows of numbers");
}

}  // namespace
}  // namespace polefit::testing
