#include "app/version_store.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "base/error_of.h"
#include "platform/scripted_host.h"

namespace polefit::testing {
namespace {

using ::testing::ElementsAre;

constexpr std::int64_t kDay = 86400;
constexpr std::int64_t kToday = 20000 * kDay + 500;

/// How many of `count` versions of one kind expire when one was kept each `step` seconds.
std::size_t ExpiredOf(int count, VersionKind kind, std::int64_t step, std::uint64_t size = 1) {
  std::vector<Version> versions;
  for (int i = 0; i < count; ++i) {
    versions.push_back({std::to_string(i), "key", kToday - i * step, 1, 0, kind, size});
  }
  return Expired(versions, kToday).size();
}

TEST(Expired, FollowsTheKind) {
  const struct {
    int count;
    VersionKind kind;
    std::int64_t step;
    std::size_t expired;
  } cases[] = {{20, VersionKind::saved, 400 * kDay, 0}, {21, VersionKind::saved, 1, 1},
               {40, VersionKind::saved, kDay, 9},       {300, VersionKind::saved, kDay / 10, 252},
               {91, VersionKind::foreign, kDay, 0},     {93, VersionKind::foreign, kDay, 2},
               {500, VersionKind::foreign, 60, 0},      {33, VersionKind::unsaved, kDay, 2}};
  for (const auto& one : cases) {
    EXPECT_EQ(ExpiredOf(one.count, one.kind, one.step), one.expired) << one.count;
  }
}

TEST(Expired, TheOldestGoBeyond200MegabytesButNeverTheNewest) {
  EXPECT_EQ(ExpiredOf(20, VersionKind::foreign, 60, 10'000'000), 0U);
  EXPECT_EQ(ExpiredOf(23, VersionKind::foreign, 60, 10'000'000), 3U);
  EXPECT_EQ(ExpiredOf(1, VersionKind::foreign, 60, 300'000'000), 0U);
}

struct VersionStoreTest : ::testing::Test {
  Version Keep(const std::string& bytes, VersionKind kind = VersionKind::saved) {
    return store.Keep("/data/a.1", bytes, 1000, kind);
  }
  std::vector<std::string> Kept() {
    std::vector<std::string> bytes;
    for (const Version& version : store.Of("/data/a.1")) bytes.push_back(store.BytesOf(version));
    return bytes;
  }

  ScriptedHost host;
  VersionStore store{host};
};

TEST_F(VersionStoreTest, KeepsBytesForTheUserAloneAndEqualOnesOnce) {
  Keep("1 one\r\nx\xE9");
  Keep("2 later\r\nx\xE9");
  Keep("3\r\ny");
  Keep("4\r\nx\xE9");
  EXPECT_THAT(Kept(), ElementsAre("4\r\nx\xE9", "3\r\ny", "1 one\r\nx\xE9"));
  EXPECT_EQ(store.Of("/data/a.1")[0].written, 1000);
  EXPECT_THAT(store.Of("/data/a.2"), ElementsAre());
  EXPECT_THAT(store.Paths(), ElementsAre("/data/a.1"));
  for (const auto& entry : std::filesystem::directory_iterator(host.Path("state/versions"))) {
    EXPECT_EQ(entry.status().permissions(), std::filesystem::perms(0600)) << entry;
  }
  EXPECT_EQ(std::filesystem::status(host.Path("state/versions")).permissions(),
            std::filesystem::perms(0700));
}

TEST_F(VersionStoreTest, DropsWhatHasHadItsTimeAndLeavesForeignFilesAlone) {
  Keep("a measurement", VersionKind::foreign);
  host.time = "2004-07-01 00:00:00";
  WriteBytes(host.Path("state/versions/notes.txt"), "mine");
  WriteBytes(host.Path("state/versions/0123456789abcdef-12-x-1-s"), "mine too");
  Keep("1\nnew");
  EXPECT_THAT(Kept(), ElementsAre("1\nnew"));
  EXPECT_EQ(FileBytes(host.Path("state/versions/notes.txt")), "mine");
  EXPECT_EQ(FileBytes(host.Path("state/versions/0123456789abcdef-12-x-1-s")), "mine too");
}

TEST_F(VersionStoreTest, AFaultAtAnyStepReachesTheCallerAndLosesNoVersion) {
  Keep("1\nfirst");
  const std::pair<const char*, int> faults[] = {
      {"MakeOwnFolders", 1}, {"FilesIn", 1}, {"ReplaceFile", 1}};
  for (const auto& [operation, call] : faults) {
    host.Fail(operation, error_number::kDiskFull, call);
    EXPECT_EQ(ErrorOf([&] { Keep("2\nsecond"); }), error_number::kDiskFull) << operation << call;
    EXPECT_THAT(Kept(), ElementsAre("1\nfirst"));
  }
}

}  // namespace
}  // namespace polefit::testing
