#include "responsefile/file_look.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <sstream>

#include "platform/temporary_folder.h"

namespace polefit::testing {
namespace {

/// A file of two passband points and one delay point; `values` stand in place of its lines, counted
/// from 1.
std::string FileWith(const std::map<int, std::string>& values, const std::string& end = "\r\n") {
  std::string lines =
      "a.1\nY\n45\n1\n1\nN\n1\n1\n2 2\n1 1\n.5\n1\nn\n-999\nN\ny\n0 0 0\n1\n1\n1\n"
      "1\n1\n1\n2\nFreq\n====\n1 2 3 4\n5 6 7 8\n1\nFreq\n====\n3 44\n\n\nN\n";
  std::istringstream source(lines);
  std::string text;
  std::string line;
  for (int number = 1; std::getline(source, line); ++number) {
    const auto value = values.find(number);
    text += (value == values.end() ? line : value->second) + end;
  }
  return text;
}

TEST(FileLook, TheExamplesPassWithTheirCommentsAndWithout) {
  int examples = 0;
  for (const auto& entry : std::filesystem::directory_iterator(POLEFIT_EXAMPLES)) {
    std::string bytes = FileBytes(entry.path());
    EXPECT_TRUE(LookAt(bytes).isResponseFile) << entry.path();
    std::string bare;
    bool comment = false;
    for (const char c : bytes) {
      comment = c != '\n' && (comment || c == '!' || c == '\r');
      if (!comment) bare += c;
    }
    EXPECT_TRUE(LookAt(bare).isResponseFile) << entry.path();
    EXPECT_EQ(LookAt(bare).points, LookAt(bytes).points);
    ++examples;
  }
  EXPECT_EQ(examples, 7);
}

TEST(FileLook, SaysWhatAFileHolds) {
  const FileLook look = LookAt(FileWith({{1, "caf\xE9.1\t\t! then"}}));
  EXPECT_TRUE(look.isResponseFile);
  EXPECT_EQ(look.points, 3);
  EXPECT_EQ(look.firstLine, "café.1\t\t! then");
}

TEST(FileLook, PassesWhatAPersonOrAnotherProgramWrites) {
  const std::map<int, std::string> cases[] = {{},
                                              {{27, "1,2,3,4"}, {28, " 5, 6 ,7,8 , 9"}},
                                              {{2, "-999\t\t! 1."}, {24, " 2 ! 23."}},
                                              {{17, "0  0"}},
                                              {{17, "-999"}},
                                              {{24, "2.4"}}};
  for (const auto& values : cases) {
    EXPECT_TRUE(LookAt(FileWith(values)).isResponseFile) << values.size();
    EXPECT_TRUE(LookAt(FileWith(values, "\n")).isResponseFile) << values.size();
  }
}

TEST(FileLook, AsksAboutWhatReadsToItsEndAndIsNoAnswer) {
  const std::map<int, std::string> cases[] = {
      {{2, "yes"}},  {{6, "1"}},      {{13, ""}},       {{15, "Y N"}}, {{16, "?"}},
      {{17, "0 0"}}, {{17, "0"}},     {{24, "two 2"}},  {{24, "1 2"}}, {{24, "32767"}},
      {{29, "-1"}},  {{24, "1e400"}}, {{29, "999999"}}, {{29, ""}},    {{27, "1 2 3"}}};
  for (const auto& values : cases) {
    const FileLook look = LookAt(FileWith(values));
    EXPECT_FALSE(look.isResponseFile) << values.begin()->first << ": " << values.begin()->second;
    EXPECT_EQ(look.firstLine, "a.1");
  }
}

TEST(FileLook, AsksAboutOtherFiles) {
  std::string measured = "! S2P\n# MHz S RI R 50\n";
  std::string table = "Frequency,Gain\n";
  for (int row = 0; row < 200; ++row) {
    measured += std::to_string(row) + " 0.1 0.2 0.3 0.4 0.5 0.6 0.7 0.8\n";
    table += std::to_string(row) + ",0.5\n";
  }
  const std::string others[] = {"",
                                "\n",
                                std::string(4000, '\n'),
                                measured,
                                table,
                                std::string("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16),
                                "#!/bin/sh\nset -e\necho 1\n",
                                FileWith({}).substr(0, 60)};
  for (const std::string& bytes : others) {
    EXPECT_FALSE(LookAt(bytes).isResponseFile) << bytes.substr(0, 40);
    EXPECT_FALSE(LookAt(bytes).hasFlags) << bytes.substr(0, 40);
  }
}

TEST(FileLook, TellsATornOrUnansweredFileFromPoints) {
  const std::string files[] = {FileWith({}).substr(0, 110), FileWith({{13, ""}, {24, "two"}}),
                               FileWith({{2, "-999"}, {6, "! 5."}})};
  for (const std::string& bytes : files) {
    EXPECT_FALSE(LookAt(bytes).isResponseFile) << bytes;
    EXPECT_TRUE(LookAt(bytes).hasFlags) << bytes;
  }
  EXPECT_FALSE(LookAt(FileWith({{2, "yes"}})).hasFlags);
}

}  // namespace
}  // namespace polefit::testing
