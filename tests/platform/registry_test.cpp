#include "platform/registry.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/console_host.h"
#include "platform/error_of.h"
#include "platform/temporary_folder.h"

namespace polefit {
namespace {

using testing::ErrorOf;
using testing::FileBytes;
using testing::TemporaryFolder;
using testing::WriteBytes;

constexpr const char* kKey = "Software\\Corvane Systems\\Polefit";
using Bytes = std::vector<std::uint8_t>;

class RegistryTest : public ::testing::Test {
 protected:
  RegistryData Query(const std::string& name, int type, const RegistryData& otherwise) {
    return QueryRegValue(host_, kCurrentUser, kKey, name, type, otherwise);
  }
  void Set(const std::string& name, int type, const RegistryData& value) {
    SetRegValue(host_, kCurrentUser, kKey, name, type, value);
  }

  TemporaryFolder folder_;
  std::string store_ = folder_.File("deep/er/registry.reg");
  ConsoleHost host_{store_};
};

TEST_F(RegistryTest, CreateSaysWhetherTheKeyExisted) {
  EXPECT_FALSE(RegKeyExists(host_, kCurrentUser, kKey));
  EXPECT_FALSE(CreateRegKey(host_, kCurrentUser, kKey));
  EXPECT_TRUE(CreateRegKey(host_, kCurrentUser, kKey));
  EXPECT_TRUE(RegKeyExists(host_, kCurrentUser, "SOFTWARE\\corvane systems\\POLEFIT"));
  EXPECT_TRUE(CreateRegKey(host_, kCurrentUser, "Software\\Corvane Systems"));
  EXPECT_TRUE(RegKeyExists(host_, kCurrentUser, ""));
  EXPECT_FALSE(RegKeyExists(host_, 0x80000002, kKey));
}

TEST_F(RegistryTest, ValuesOfEveryTypeComeBackFromDisk) {
  CreateRegKey(host_, kCurrentUser, kKey);
  const std::string text = "C:\\data \"ü\"\n";
  Set("text", 1, text);
  Set("bytes", 3, Bytes{0, 255, 10});
  Set("number", 4, std::uint32_t{0xDEADBEEF});
  ConsoleHost later{store_};
  const auto query = [&](const char* name, int type) {
    return QueryRegValue(later, kCurrentUser, kKey, name, type, std::string("none"));
  };
  EXPECT_EQ(query("TEXT", 1), RegistryData(text));
  EXPECT_EQ(query("bytes", 3), RegistryData(Bytes{0, 255, 10}));
  EXPECT_EQ(query("number", 4), RegistryData(std::uint32_t{0xDEADBEEF}));
}

TEST_F(RegistryTest, WhatCannotBeReadIsTheDefault) {
  const RegistryData otherwise = std::string("else");
  EXPECT_EQ(Query("x", 1, otherwise), otherwise);
  Set("x", 1, std::string("no key yet"));
  EXPECT_FALSE(RegKeyExists(host_, kCurrentUser, kKey));
  CreateRegKey(host_, kCurrentUser, kKey);
  EXPECT_EQ(Query("x", 1, otherwise), otherwise);
  Set("long", 1, std::string(1024, 'a'));
  EXPECT_EQ(Query("long", 1, otherwise), otherwise);
  Set("full", 1, std::string(1023, 'a'));
  EXPECT_EQ(Query("full", 1, otherwise), RegistryData(std::string(1023, 'a')));
  Set("odd", 2, std::string("unknown types write nothing"));
  EXPECT_EQ(Query("odd", 1, otherwise), otherwise);
}

TEST_F(RegistryTest, AnUnknownTypeOrAStoreThatCannotBeMadeIsError1001) {
  const auto query = [&] { Query("x", 2, std::string()); };
  EXPECT_EQ(ErrorOf(query), 1001);
  EXPECT_THAT(query, ::testing::Throws<RunTimeError>(
                         ::testing::Field(&RunTimeError::description, "Unsupported value type")));
  WriteBytes(folder_.File("file"), "");
  ConsoleHost host{folder_.File("file/registry.reg")};
  EXPECT_EQ(ErrorOf([&] { CreateRegKey(host, kCurrentUser, kKey); }), 1001);
  EXPECT_FALSE(RegKeyExists(host, kCurrentUser, kKey));
}

TEST_F(RegistryTest, AccessIsWhatTheKeyWasOpenedWith) {
  CreateRegKey(host_, kCurrentUser, kKey);
  Set("x", 1, std::string("kept"));
  const auto reading = host_.RegOpenKeyExA(kCurrentUser, kKey, registry_access::kRead);
  EXPECT_FALSE(host_.RegSetValueExA(*reading, "x", {1, "changed"}));
  const auto writing = host_.RegOpenKeyExA(kCurrentUser, kKey, registry_access::kWrite);
  EXPECT_FALSE(host_.RegQueryValueExA(*writing, "x"));
  host_.RegCloseKey(*reading);
  EXPECT_FALSE(host_.RegQueryValueExA(*reading, "x"));
  EXPECT_EQ(Query("x", 1, std::string()), RegistryData(std::string("kept")));
}

TEST_F(RegistryTest, AStoreEditedByHandIsReadAndABrokenLineIsPassedOver) {
  const std::string path = folder_.File("hand.reg");
  WriteBytes(path,
             "REGEDIT4\r\n\"lost\"=\"no key\"\n[HKEY_CURRENT_USER\\A]\r\n\"x\"=\"/data\"\r\n"
             "\"y\"=dword:zz\n\"z\"=\"open\n\"w\"=hex:1,xx\n");
  ConsoleHost host{path};
  const auto query = [&](const char* name) {
    return QueryRegValue(host, kCurrentUser, "a", name, 1, std::string("none"));
  };
  EXPECT_EQ(query("x"), RegistryData(std::string("/data")));
  for (const char* name : {"y", "z", "w"}) {
    EXPECT_EQ(query(name), RegistryData(std::string("none"))) << name;
  }
}

TEST_F(RegistryTest, AStoreThatIsNotUnderstoodIsNotWrittenOver) {
  const std::string path = folder_.File("hand.reg");
  const std::string text = "; by hand\n[HKEY_CURRENT_USER\\A]\n\"x\"=\"/data\"\n";
  WriteBytes(path, text);
  ConsoleHost host{path};
  EXPECT_THROW(CreateRegKey(host, kCurrentUser, "B"), RunTimeError);
  SetRegValue(host, kCurrentUser, "A", "x", 1, std::string("new"));
  EXPECT_EQ(QueryRegValue(host, kCurrentUser, "A", "x", 1, std::string()),
            RegistryData(std::string("/data")));
  EXPECT_FALSE(RegKeyExists(host, kCurrentUser, "B"));
  EXPECT_EQ(FileBytes(path), text);
}

}  // namespace
}  // namespace polefit
