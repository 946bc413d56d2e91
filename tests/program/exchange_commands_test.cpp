#include <gmock/gmock.h>

#include "platform/scripted_host.h"
#include "program/console.h"
#include "solver/problem/answers.h"

namespace polefit::testing {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;

/// The commands that take results out and fill columns in.
class ExchangeCommands : public ::testing::Test {
 protected:
  ExchangeCommands() { WriteBytes("in", FileBytes(POLEFIT_EXAMPLES "/Ex-Yzero.101")); }
  /// The input with a piece of it replaced.
  void Change(const std::string& from, const std::string& to) {
    std::string text = FileBytes("in");
    ASSERT_NE(text.find(from), std::string::npos);
    WriteBytes("in", text.replace(text.find(from), from.size(), to));
  }
  int Run(const std::vector<std::string>& arguments) {
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    const int exitCode = RunCommandLine(host_, arguments).exitCode.value_or(-1);
    out_ = ::testing::internal::GetCapturedStdout();
    error_ = ::testing::internal::GetCapturedStderr();
    return exitCode;
  }

  ScriptedHost host_;
  std::string out_;
  std::string error_;
};

TEST_F(ExchangeCommands, AnExportGoesToAFileOrToStandardOutput) {
  EXPECT_EQ(Run({"--export", "csv", "in", "out"}), 0);
  EXPECT_THAT(FileBytes("out"), AllOf(HasSubstr("# File: in\n"), HasSubstr("\npole pair,-0.5")));
  EXPECT_EQ(Run({"--export", "csv", "in", "-"}), 0);
  EXPECT_EQ(out_, FileBytes("out"));
  EXPECT_EQ(Run({"--export", "--points", "data", "touchstone", "--", "in", "-x"}), 0);
  EXPECT_THAT(FileBytes("-x"), HasSubstr("\n9.5 0 0 "));
}

TEST_F(ExchangeCommands, FilledColumnsReadBack) {
  EXPECT_EQ(Run({"--fill", "Yin=2*yin", "--fill", "delay=10*f", "--grid", "0:8:16", "in", "out"}),
            0)
      << error_;
  EXPECT_THAT(FileBytes("out"), AllOf(HasSubstr("out\t\t!"), HasSubstr("0.5  1.99794  1  1\t"),
                                      HasSubstr("\r\n 17\t\t! 23."), HasSubstr("\r\n8  80\t")));
  EXPECT_EQ(Run({"--check", "out"}), 0) << out_;
  EXPECT_EQ(Run({"--fill", "Weight=1/(1+x)", "--", "in", "-"}), 0);
  EXPECT_THAT(out_, HasSubstr("10  0.63662  0  0.5\t"));
}

TEST_F(ExchangeCommands, WhatGoesWrongLeavesTheOutputAlone) {
  WriteBytes("out", "former");
  const struct {
    std::vector<std::string> arguments;
    int exitCode;
    const char* error;
  } cases[] = {
      {{"--export", "csv", "gone", "out"}, 3, "cannot read 'gone'"},
      {{"--export", "csv", "torn", "out"}, 2, "cannot read 'torn'"},
      {{"--export", "cvs", "in", "out"}, 64, "no format 'cvs'; the formats are scipy"},
      {{"--export", "csv", "--points", "data", "in", "out"}, 64, "touchstone only"},
      {{"--export", "csv", "bad", "out"}, 1, "'bad': Question 8"},
      {{"--export", "csv", "in", "no/out"}, 4, "cannot write 'no/out'"},
      {{"--fill", "Yin=1+", "in", "out"}, 64, "'1+': Character 3"},
      {{"--fill", "Yin=1/f", "in", "out"}, 1, "Row 1: the formula has no finite value"},
      {{"--fill", "Yin=1", "--grid", "0:40:40", "in", "out"}, 1, "point 22 has an empty cell"},
      {{"--fill", "Delay=1", "in", "out"}, 1, "no rows yet"},
      {{"--fill", "Delay=1", "torn", "out"}, 2, "cannot read"},
      {{"--fill", "Yin=1", "in", "no/out"}, 4, "cannot write"},
  };
  WriteBytes("torn", FileBytes("in").substr(0, 900));
  const std::string good = FileBytes("in");
  Change(".5 .5 .4 .3", ".5 .5 .4");
  WriteBytes("bad", FileBytes("in"));
  WriteBytes("in", good);
  for (const auto& [arguments, exitCode, error] : cases) {
    EXPECT_EQ(Run(arguments), exitCode) << error;
    EXPECT_THAT(error_, HasSubstr(error));
    EXPECT_EQ(out_, "");
  }
  for (const char* const words :
       {"--export csv in", "--export csv --loud in out", "--fill Gain=1 in out",
        "--fill Yin=1 --grid 0:1 in out", "--fill Yin=1 --grid 0:1:2.5 in out",
        "--fill Yin=1 in out --fill", "--fill Yin=1 in", "--fill"}) {
    EXPECT_EQ(Run(Words(words)), 64) << words;
    EXPECT_THAT(error_, HasSubstr("wrong arguments"));
  }
  EXPECT_EQ(FileBytes("out"), "former");
}

}  // namespace
}  // namespace polefit::testing
