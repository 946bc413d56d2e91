#include "program/console.h"

#include <gmock/gmock.h>

#include <iostream>

#include "base/text.h"
#include "platform/linux/console_host.h"
#include "platform/scripted_host.h"
#include "program/console_exit.h"

namespace polefit::testing {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Pair;
using ::testing::StartsWith;

/// A file that the solver would take, with one row replaced.
std::string GoodFile(const std::string& secondRow = "2 .9 .8 1") {
  std::string text = "Run1.txt\t\t! header\n";
  for (const char* const answer :
       {"N", "76.7", "-2", "-2", "N",     "10",   "10",   "0 1",  "-999", ".5",   ".15",
        "N", ".05",  "N",  "N",  "0 0 0", "-999", "-999", "-999", "1",    ".005", "4"}) {
    text += std::string(answer) + "\t\t! question\n";
  }
  text += "5\nhead\nhead\n1 1 1 1\n" + secondRow + "\n3 .8 .7 1\n4 .7 .5 1\n5 .6 .3 1\n";
  return text + "0\nhead\nhead\nsay \"hi\"\\\n-999\nN\n";
}

class ConsoleTest : public ::testing::Test {
 protected:
  /// The exit code, -1 for none, and the output, double quotes in it as single ones.
  std::pair<int, std::string> Run(const std::vector<std::string>& arguments) {
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    const int exitCode = RunCommandLine(host_, arguments).exitCode.value_or(-1);
    error_ = ::testing::internal::GetCapturedStderr();
    std::string out = ::testing::internal::GetCapturedStdout();
    std::replace(out.begin(), out.end(), '"', '\'');
    return {exitCode, out};
  }
  /// A file with this text.
  std::string File(const std::string& text) {
    WriteBytes("x", text);
    return "x";
  }

  ScriptedHost host_;
  std::string error_;
};

TEST_F(ConsoleTest, AGoodFileIsCleanAndShownWhole) {
  EXPECT_THAT(Run({"--check", File(GoodFile())}),
              Pair(0, AllOf(HasSubstr("Run1.txt"), HasSubstr("76.7"), HasSubstr("(empty)"),
                            HasSubstr("Passband points: 5"), HasSubstr(".9"))));
}

TEST_F(ConsoleTest, AWholePathNeedsNoCurrentFolder) {
  const std::string path = host_.Path(File(GoodFile()));
  host_.MakeFolder("gone");
  host_.ChangeFolder("gone");
  std::filesystem::remove(host_.Path("gone"));
  ConsoleHost console;
  ::testing::internal::CaptureStdout();
  EXPECT_EQ(RunCommandLine(console, std::vector<std::string>{"--check", path}).exitCode, 0);
  EXPECT_THAT(::testing::internal::GetCapturedStdout(), HasSubstr("Passband points: 5"));
}

TEST_F(ConsoleTest, JsonHoldsWhatTheReaderUnderstood) {
  EXPECT_THAT(
      Run({"--check", "--json", File(GoodFile("2,.9,.8,1,extra"))}),
      Pair(1, "{'name': 'Run1.txt',\n 'folder': '" + host_.Root() +
                  "',\n 'slots': ['N', '76.7', '-2', '-2', 'N', '10', '10', '0 1', '', '.5', "
                  "'.15', 'N', '.05', 'N', 'N', '0 0 0', '', '', '', '1', '.005', '4', '5', "
                  "'0'],\n 'note1': 'say \\'hi\\'\\\\',\n 'note2': '',\n 'solver': ['', '', '', "
                  "'', '', '', '', '', ''],\n 'solverCount': 0,\n 'nFreqPoints': 5,\n "
                  "'nDelayPoints': 0,\n 'passband': [['1', '1', '1', '1'], ['2', '.9', '.8', '1'], "
                  "['3', '.8', '.7', '1'], ['4', '.7', '.5', '1'], ['5', '.6', '.3', '1']],\n "
                  "'delay': [],\n 'findings': [{'question': '23', 'text': 'Warning: Passband point "
                  "2: 5 "
                  "cells for 4 columns.'}],\n 'error': null}\n"));
}

TEST_F(ConsoleTest, FindingsNameTheirQuestion) {
  std::string text = GoodFile("1 .9 .8 1");
  text.replace(text.find("N\t\t"), 1, "yes");
  text.replace(text.find("10\t\t! question\n0 1"), 2, "0,5");
  text.replace(text.find(".5\t\t"), 2, ".5 .4");
  const auto [exitCode, out] = Run({"--check", "--json", File(text)});
  EXPECT_EQ(exitCode, 1);
  for (const char* const finding : {"{'question': '1', 'text': 'Warning: Question 1: \\'yes\\'",
                                    "{'question': '5', 'text': 'Question 5 (Freq Norm): \\'0,5\\' "
                                    "is not a number (decimal point, no comma).'}",
                                    "{'question': '8', 'text': 'Question 8",
                                    "{'question': '23', 'text': 'Warning: Passband point 2: "
                                    "frequency 1 stands in point 1 already.'}"}) {
    EXPECT_THAT(out, HasSubstr(finding));
  }
}

TEST_F(ConsoleTest, AFileThatStopsSaysWhereAndWhy) {
  EXPECT_THAT(Run({"--check", File(GoodFile("2 .9 .8"))}),
              Pair(2, AllOf(HasSubstr("Reading stopped at line 28: error 9, Subscript out of"),
                            HasSubstr("Passband point 2: 3 value(s) found; the form needs 4"))));
  EXPECT_THAT(Run({"--check", "--json", File("name\nY\n")}),
              Pair(2, HasSubstr("'error': {'number': 62, 'description': 'Input past")));
  EXPECT_THAT(Run({"--check", "gone"}), Pair(3, ""));
  EXPECT_THAT(Run({"--check", "no/gone"}), Pair(3, ""));
}

TEST_F(ConsoleTest, RewriteGivesTheLayoutOfASavedFile) {
  EXPECT_THAT(Run({"--rewrite", File(GoodFile()), host_.Path("Tessel.hz/-out !'ü.txt")}),
              Pair(0, ""));
  EXPECT_THAT(FileBytes("Tessel.hz/-out !'ü.txt"),
              AllOf(StartsWith("-out !'\xFC.txt\t\t! 22, 5, and 0          March 03, 2004"),
                    HasSubstr("\r\n 5\t\t! 23. \xBB  # of Freq. points"),
                    HasSubstr("2  .9  .8  1\t\t ! Point #  2 \r\n")));
}

TEST_F(ConsoleTest, OutputThatCannotBeWrittenIsSaid) {
  struct TakesNothing final : std::streambuf {
  } full;
  std::streambuf* const former = std::cout.rdbuf(&full);
  EXPECT_THAT(Run({"--check", File(GoodFile())}), Pair(4, ""));
  EXPECT_EQ(error_, "polefit: the output cannot be written\n");
  std::cout.rdbuf(former);
}

TEST_F(ConsoleTest, NoControlCharacterReachesTheTerminalAndJsonIsAlwaysUtf8) {
  std::string text = GoodFile();
  text.replace(text.find("76.7"), 4, "\x1B[2J\x9B");
  const std::string folder = host_.Path("a\xFF");
  host_.MakeFolder(folder);
  host_.ChangeFolder(folder);
  EXPECT_THAT(Run({"--check", File(text)}).second,
              AllOf(HasSubstr("\\x1b[2J"), Not(HasSubstr("\x1B"))));
  const std::string json = Run({"--check", "--json", "x"}).second;
  EXPECT_THAT(json, AllOf(HasSubstr("a\uFFFD'"), HasSubstr("\\u001b[2J")));
  EXPECT_TRUE(IsUtf8(json));
  EXPECT_THAT(Run({"--check", "\x1B[2J"}), Pair(3, ""));
  EXPECT_THAT(error_, HasSubstr("'\\x1b[2J'"));
  EXPECT_THAT(Run({"--rewrite", "x", "two\nlines"}), Pair(4, ""));
  EXPECT_THAT(error_, HasSubstr("no control character"));
}

TEST_F(ConsoleTest, RewriteLosesNoFormerFile) {
  WriteBytes("out", "former");
  EXPECT_THAT(Run({"--rewrite", File("torn\n"), "out"}), Pair(2, ""));
  EXPECT_THAT(Run({"--rewrite", "gone", "out"}), Pair(3, ""));
  host_.Fail("WriteLine", 61, 20);
  EXPECT_THAT(Run({"--rewrite", File(GoodFile()), "out"}), Pair(4, ""));
  EXPECT_EQ(FileBytes("out~"), "former");
}

TEST_F(ConsoleTest, OtherCommandLines) {
  EXPECT_THAT(Run({"--version"}), Pair(0, "Polefit 4.12\n"));
  EXPECT_THAT(Run({"--help"}), Pair(0, StartsWith("Usage: polefit [FILE...]")));
  const std::vector<std::string> wrong[] = {{"--what"},         {"-x"},
                                            {"a", "-b"},        {"--check"},
                                            {"--check", "-a"},  {"--rewrite", "a"},
                                            {"--version", "x"}, {"--plot", "a", "b.txt"}};
  for (const auto& arguments : wrong) {
    EXPECT_THAT(Run(arguments), Pair(64, "")) << arguments[0];
    EXPECT_EQ(std::count(error_.begin(), error_.end(), '\n'), 1);
  }
  const std::pair<std::vector<std::string>, std::vector<std::string>> opened[] = {
      {{}, {}},
      {{"Run 1.txt", "b"}, {"Run 1.txt", "b"}},
      {{"--", "-run.txt", "--"}, {"-run.txt", "--"}}};
  for (const auto& [arguments, files] : opened) {
    EXPECT_EQ(RunCommandLine(host_, arguments).window.filesToOpen, files);
  }
}

TEST_F(ConsoleTest, OfSeveralFilesTheHighestCodeCounts) {
  WriteBytes("-torn", "name\nY\n");
  const std::string good = File(GoodFile());
  EXPECT_THAT(Run({"--check", good, good}), Pair(0, HasSubstr("Run1.txt")));
  EXPECT_THAT(Run({"--check", "--json", "--", good, "-torn", good}),
              Pair(2, AllOf(HasSubstr("'number': 62"), HasSubstr("'error': null"))));
  EXPECT_THAT(Run({"--check", "gone", good}), Pair(3, HasSubstr("Run1.txt")));
}

TEST_F(ConsoleTest, WithoutWindowsOnlyTheirCommandsAreMissing) {
  Speaker() = {"polefit-cli", false};
  const auto [exitCode, help] = Run({"--help"});
  EXPECT_THAT(help, AllOf(StartsWith("Usage: polefit-cli --check"), Not(HasSubstr("--plot"))));
  EXPECT_THAT(Run({"--check", File(GoodFile())}), Pair(0, HasSubstr("Run1.txt")));
  const std::vector<std::string> wrong[] = {{}, {"x"}, {"--plot", "x", "y.png"}};
  for (const auto& arguments : wrong) {
    EXPECT_THAT(Run(arguments), Pair(64, ""));
    EXPECT_THAT(error_, AllOf(StartsWith("polefit-cli: "), HasSubstr("'polefit-cli --help'")));
  }
  Speaker() = {};
}

}  // namespace
}  // namespace polefit::testing
