#include "platform/linux/installation.h"

#include <gtest/gtest.h>

#include "platform/linux/user_folders.h"
#include "platform/temporary_folder.h"

namespace polefit::testing {
namespace {

TEST(InstallationTest, AMarkBesideTheProgramsMakesItOneForAllUsers) {
  const TemporaryFolder root;
  const std::string programs = root.File("usr/lib/polefit");
  WriteBytes(programs + "/pfit", "");
  EXPECT_FALSE(SharedInstallationWith(programs));
  EXPECT_EQ(OwnFolderFor(programs), programs);
  WriteBytes(programs + "/for-all-users", "");
  ASSERT_TRUE(SharedInstallationWith(programs));
  EXPECT_EQ(SharedInstallationWith(programs)->programs, programs);
  EXPECT_EQ(SharedInstallationWith(programs)->shipped, root.File("usr/share/polefit"));
  ::setenv("XDG_DATA_HOME", "/home/a b/data", 1);
  EXPECT_EQ(OwnFolderFor(programs), "/home/a b/data/polefit/cv-Tools/Tessel.hz");
  ::unsetenv("XDG_DATA_HOME");
}

TEST(InstallationTest, AFolderThatIsNotTheUsersToWriteIsSharedToo) {
  // Nobody writes there, root neither.
  ASSERT_TRUE(SharedInstallationWith("/proc/1/Tessel.hz"));
  EXPECT_EQ(SharedInstallationWith("/proc/1/Tessel.hz")->shipped, "/proc/1");
}

TEST(UserFolders, WhatLastsASessionLiesWhereTheDesktopClearsIt) {
  const TemporaryFolder root;
  ::setenv("XDG_STATE_HOME", "/home/a/state", 1);
  ::setenv("XDG_RUNTIME_DIR", root.Path().c_str(), 1);
  EXPECT_EQ(OwnRuntimeFolder(), root.File("polefit"));
  for (const char* const none : {"", "relative", "/no/such/folder"}) {
    ::setenv("XDG_RUNTIME_DIR", none, 1);
    EXPECT_EQ(OwnRuntimeFolder(), "/home/a/state/polefit") << none;
  }
  ::unsetenv("XDG_RUNTIME_DIR");
  ::unsetenv("XDG_STATE_HOME");
}

}  // namespace
}  // namespace polefit::testing
