#include "app/console.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/scripted_host.h"

namespace polefit {
namespace {

using testing::FileBytes;
using ::testing::HasSubstr;
using testing::ScriptedHost;
using ::testing::StartsWith;
using testing::WriteBytes;

struct Outcome {
  int exitCode = -1;
  std::string out;
  std::string error;
};

/// A file that the solver would take, with one row replaced.
std::string GoodFile(const std::string& secondRow = "2 .9 .8 1") {
  std::string text = "Run1.txt\t\t! header\n";
  const char* const answers[] = {"N",    "76.7", "-2",   "-2", "N",    "10", "10", "0 1",
                                 "-999", ".5",   ".15",  "N",  ".05",  "N",  "N",  "0 0 0",
                                 "-999", "-999", "-999", "1",  ".005", "4"};
  for (const char* const answer : answers) text += std::string(answer) + "\t\t! question\n";
  text += "5\nhead\nhead\n1 1 1 1\n" + secondRow + "\n3 .8 .7 1\n4 .7 .5 1\n5 .6 .3 1\n";
  return text + "0\nhead\nhead\nsay \"hi\"\\\n-999\nN\n";
}

class ConsoleTest : public ::testing::Test {
 protected:
  Outcome Run(std::vector<std::string> arguments) {
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    const CommandLineResult result = RunCommandLine(host_, arguments);
    Outcome outcome;
    outcome.exitCode = result.exitCode.value_or(-1);
    outcome.out = ::testing::internal::GetCapturedStdout();
    outcome.error = ::testing::internal::GetCapturedStderr();
    return outcome;
  }
  Outcome Check(const std::string& text, bool json = false) {
    WriteBytes(host_.Path("x"), text);
    if (json) return Run({"--check", "--json", host_.Path("x")});
    return Run({"--check", host_.Path("x")});
  }

  ScriptedHost host_;
};

TEST_F(ConsoleTest, AGoodFileIsCleanAndShownWhole) {
  const Outcome outcome = Check(GoodFile());
  EXPECT_EQ(outcome.exitCode, 0) << outcome.out;
  for (const char* const part : {"Run1.txt", "76.7", "(empty)", "Passband points: 5", ".9"}) {
    EXPECT_THAT(outcome.out, HasSubstr(part));
  }
}

TEST_F(ConsoleTest, JsonHoldsWhatTheReaderUnderstood) {
  const Outcome outcome = Check(GoodFile("2,.9,.8,1,extra"), true);
  EXPECT_EQ(outcome.exitCode, 0);
  EXPECT_EQ(outcome.out,
            "{\"name\": \"Run1.txt\",\n \"folder\": \"" + host_.CurrentFolder() +
                "\",\n \"slots\": [\"N\", \"76.7\", \"-2\", \"-2\", \"N\", \"10\", \"10\", "
                "\"0 1\", \"\", \".5\", \".15\", \"N\", \".05\", \"N\", \"N\", \"0 0 0\", \"\", "
                "\"\", \"\", \"1\", \".005\", \"4\", \"5\", \"0\"],\n "
                "\"note1\": \"say \\\"hi\\\"\\\\\",\n \"note2\": \"\",\n "
                "\"solver\": [\"\", \"\", \"\", \"\", \"\", \"\", \"\", \"\", \"\"],\n "
                "\"solverCount\": 0,\n \"nFreqPoints\": 5,\n \"nDelayPoints\": 0,\n "
                "\"passband\": [[\"1\", \"1\", \"1\", \"1\"], [\"2\", \".9\", \".8\", \"1\"], "
                "[\"3\", \".8\", \".7\", \"1\"], [\"4\", \".7\", \".5\", \"1\"], "
                "[\"5\", \".6\", \".3\", \"1\"]],\n \"delay\": [],\n \"findings\": [],\n "
                "\"error\": null}\n");
}

TEST_F(ConsoleTest, FindingsNameTheirQuestion) {
  std::string text = GoodFile("1 .9 .8 1");
  text.replace(text.find("N\t\t"), 1, "yes");
  text.replace(text.find("10\t\t! question\n0 1"), 2, "0,5");
  text.replace(text.find(".5\t\t"), 2, ".5 .4");
  const Outcome outcome = Check(text, true);
  EXPECT_EQ(outcome.exitCode, 1);
  EXPECT_THAT(outcome.out, HasSubstr("{\"question\": \"5\", \"text\": \"Question 5 (Freq Norm): "
                                     "\\\"0,5\\\" is not a number (decimal point, no comma).\"}"));
  EXPECT_THAT(outcome.out, HasSubstr("{\"question\": \"8\", \"text\": \"Question 8"));
  EXPECT_THAT(outcome.out, HasSubstr("{\"question\": \"1\", \"text\": \"Question 1: \\\"yes\\\""));
  EXPECT_THAT(outcome.out, HasSubstr("{\"question\": \"23\", \"text\": \"Passband point 2: "
                                     "frequency 1 does not lie above 1 of the point before.\"}"));
}

TEST_F(ConsoleTest, AFileThatStopsSaysWhereAndWhy) {
  const Outcome shortRow = Check(GoodFile("2 .9 .8"));
  EXPECT_EQ(shortRow.exitCode, 2);
  EXPECT_THAT(shortRow.out, HasSubstr("Reading stopped at line 28: error 9, Subscript out of"));
  EXPECT_THAT(shortRow.out, HasSubstr("Passband point 2: 3 value(s) found; the form needs 4"));
  const Outcome cut = Check("name\nY\n", true);
  EXPECT_EQ(cut.exitCode, 2);
  EXPECT_THAT(cut.out, HasSubstr("\"error\": {\"number\": 62, \"description\": \"Input past"));
  EXPECT_EQ(Run({"--check", host_.Path("gone")}).exitCode, 3);
  EXPECT_EQ(Run({"--check", host_.Path("no/gone")}).exitCode, 3);
}

TEST_F(ConsoleTest, RewriteGivesTheLayoutOfASavedFile) {
  WriteBytes(host_.Path("in"), GoodFile());
  EXPECT_EQ(Run({"--rewrite", host_.Path("in"), host_.Path("-out !'ü.txt")}).exitCode, 0);
  const std::string bytes = FileBytes(host_.Path("-out !'ü.txt"));
  EXPECT_THAT(bytes, StartsWith("-out !'\xFC.txt\t\t! 22, 5, and 0          March 03, 2004"));
  EXPECT_THAT(bytes, HasSubstr("\r\n 5\t\t! 23. \xBB  # of Freq. points"));
  EXPECT_THAT(bytes, HasSubstr("2  .9  .8  1\t\t ! Point #  2 \r\n"));
}

TEST_F(ConsoleTest, RewriteLosesNoFormerFile) {
  WriteBytes(host_.Path("in"), "torn\n");
  WriteBytes(host_.Path("out"), "former");
  EXPECT_EQ(Run({"--rewrite", host_.Path("in"), host_.Path("out")}).exitCode, 2);
  EXPECT_EQ(Run({"--rewrite", host_.Path("gone"), host_.Path("out")}).exitCode, 3);
  WriteBytes(host_.Path("in"), GoodFile());
  host_.Fail("WriteLine", 61, 20);
  EXPECT_EQ(Run({"--rewrite", host_.Path("in"), host_.Path("out")}).exitCode, 4);
  EXPECT_EQ(FileBytes(host_.Path("out~")), "former");
}

TEST_F(ConsoleTest, OtherCommandLines) {
  EXPECT_EQ(Run({"--version"}).out, "Polefit 4.12\n");
  EXPECT_THAT(Run({"--help"}).out, StartsWith("Usage: polefit [FILE]"));
  const std::vector<std::string> wrong[] = {
      {"--what"}, {"-x"}, {"a", "b"}, {"--check"}, {"--rewrite", "a"}, {"--version", "x"}};
  for (const auto& arguments : wrong) {
    const Outcome outcome = Run(arguments);
    EXPECT_EQ(outcome.exitCode, 64) << arguments[0];
    EXPECT_EQ(std::count(outcome.error.begin(), outcome.error.end(), '\n'), 1);
  }
  const std::vector<std::string> none;
  EXPECT_EQ(RunCommandLine(host_, none).window.fileToOpen, "");
  const std::vector<std::string> file = {"Run 1.txt"};
  EXPECT_EQ(RunCommandLine(host_, file).window.fileToOpen, "Run 1.txt");
  const std::vector<std::string> dash = {"--", "-run.txt"};
  EXPECT_EQ(RunCommandLine(host_, dash).window.fileToOpen, "-run.txt");
}

}  // namespace
}  // namespace polefit
