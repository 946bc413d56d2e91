#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <random>
#include <sstream>
#include <string>

#include "platform/linux/console_host.h"
#include "platform/temporary_folder.h"
#include "solver/run.h"

namespace polefit::testing {
namespace {

class Mutator {
 public:
  /// One to four small damages, as an editor, a transfer or a script does them.
  std::string Damage(std::string bytes) {
    for (std::size_t left = 1 + Below(4); left > 0 && !bytes.empty(); --left) {
      const std::size_t at = Below(bytes.size());
      const std::size_t kind = Below(6);
      if (kind == 0) bytes[at] = static_cast<char>(Below(256));
      if (kind == 1) bytes.erase(at, Below(40));
      if (kind == 2) bytes.insert(at, bytes.substr(Below(bytes.size()), Below(60)));
      if (kind == 3) bytes.resize(at);
      if (kind > 3) ReplaceValue(bytes, at);
    }
    return bytes;
  }

 private:
  std::size_t Below(std::size_t end) { return random_() % end; }

  /// Puts another value at the beginning of a line.
  void ReplaceValue(std::string& bytes, std::size_t at) {
    static constexpr const char* kValues[] = {
        "0", "-1", "1e308", "1e-308",  "nan",    "40 40", "9 9 9", "Y",    "32766",
        "1", ".5", "-999",  "1 2 3 4", "999999", "0 1 0", "2 0 1", "1e-9", ""};
    const std::size_t begin = bytes.rfind('\n', at) + 1;  // the end's npos comes out as 0
    const std::size_t end = std::min(bytes.find('\t', begin), bytes.size());
    bytes.replace(begin, end - begin, kValues[Below(std::size(kValues))]);
  }

  std::minstd_rand random_{20231};
};

TEST(Mutations, EndWithAReportOrAMessage) {
  const TemporaryFolder folder;
  std::vector<std::string> examples;
  for (const auto& entry : std::filesystem::directory_iterator(EXAMPLES)) {
    examples.push_back(FileBytes(entry.path()));
  }
  std::sort(examples.begin(), examples.end());
  ConsoleHost parser;
  const RunFiles files = ParseCommandLine({folder.File("x.dat")}, parser).files.at(0);
  // POLEFIT_MUTATIONS sets how many files are tried; the suite alone tries a few.
  const char* const wanted = std::getenv("POLEFIT_MUTATIONS");
  const std::size_t count = wanted != nullptr ? std::stoul(wanted) : 300;
  Mutator mutator;
  for (std::size_t i = 0; i < count; ++i) {
    const std::string bytes = mutator.Damage(examples[i % examples.size()]);
    WriteBytes(folder.File("x.dat"), bytes);
    ConsoleHost host;
    std::ostringstream out;
    std::ostringstream err;
    int asked = 0;
    const RunOutcome outcome =
        SolveFile(host, files, {out, err, [&asked] { return ++asked > 60 ? 1 : 0; }});
    const std::string report = FileBytes(files.report);
    ASSERT_THAT(report, ::testing::EndsWith("\r\nEnd of report.\r\n")) << bytes;
    std::istringstream lines(report);
    for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 79 + 1U) << line;
    ASSERT_EQ(err.str().empty(), outcome.figures.has_value()) << bytes;
  }
}

}  // namespace
}  // namespace polefit::testing
