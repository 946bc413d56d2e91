#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <random>
#include <sstream>
#include <string>

#include "platform/console_host.h"
#include "platform/temporary_folder.h"
#include "solver/run.h"

namespace polefit {
namespace {

using testing::FileBytes;
using testing::WriteBytes;

/// POLEFIT_MUTATIONS sets how many files are tried; the suite alone tries a few.
int MutationCount() {
  const char* const wanted = std::getenv("POLEFIT_MUTATIONS");
  return wanted != nullptr ? std::atoi(wanted) : 300;
}

class Mutator {
 public:
  /// One to four small damages, as an editor, a transfer or a script does them.
  std::string Damage(std::string bytes) {
    for (int left = Below(4); left >= 0 && !bytes.empty(); --left) {
      const std::size_t at = At(bytes.size());
      switch (Below(6)) {
        case 0:
          bytes[at] = static_cast<char>(Below(256));
          break;
        case 1:
          bytes.erase(at, At(40));
          break;
        case 2:
          bytes.insert(at, bytes.substr(At(bytes.size()), At(60)));
          break;
        case 3:
          bytes.resize(at);
          break;
        default:
          ReplaceValue(bytes, at);
      }
    }
    return bytes;
  }

 private:
  int Below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }
  std::size_t At(std::size_t end) { return random_() % end; }

  /// Puts another value at the beginning of a line.
  void ReplaceValue(std::string& bytes, std::size_t at) {
    static constexpr const char* kValues[] = {
        "0", "-1", "1e308", "1e-308",  "nan",    "40 40", "9 9 9", "Y",    "32766",
        "1", ".5", "-999",  "1 2 3 4", "999999", "0 1 0", "2 0 1", "1e-9", ""};
    const std::size_t line = bytes.rfind('\n', at);
    const std::size_t begin = line == std::string::npos ? 0 : line + 1;
    const std::size_t end = std::min(bytes.find('\t', begin), bytes.size());
    bytes.replace(begin, end - begin, kValues[At(std::size(kValues))]);
  }

  std::minstd_rand random_{20231};
};

TEST(Mutations, EndWithAReportOrAMessage) {
  const testing::TemporaryFolder folder;
  std::vector<std::string> examples;
  for (const auto& entry : std::filesystem::directory_iterator(EXAMPLES)) {
    examples.push_back(FileBytes(entry.path()));
  }
  std::sort(examples.begin(), examples.end());
  const Request request = ParseCommandLine({folder.File("x.dat")});
  Mutator mutator;
  for (int i = 0; i < MutationCount(); ++i) {
    const std::string bytes =
        mutator.Damage(examples[static_cast<std::size_t>(i) % examples.size()]);
    WriteBytes(folder.File("x.dat"), bytes);
    ConsoleHost host;
    std::ostringstream out;
    std::ostringstream err;
    int asked = 0;
    const Exit exit =
        RunSolver(host, request.files, {out, err, [&asked] { return ++asked > 60 ? 1 : 0; }});
    const std::string report = FileBytes(request.files.report);
    ASSERT_THAT(report, ::testing::EndsWith("\r\nEnd of report.\r\n")) << bytes;
    ASSERT_THAT(out.str(), ::testing::HasSubstr("pfit: "));
    ASSERT_EQ(err.str().empty(), exit == Exit::converged || exit == Exit::stopped) << bytes;
  }
}

}  // namespace
}  // namespace polefit
