#include "platform/registry.h"

#include <gtest/gtest.h>

#include "base/error_of.h"
#include "platform/linux/console_host.h"
#include "platform/temporary_folder.h"

namespace polefit::testing {
namespace {

constexpr const char* kKey = "Software\\Corvane Systems\\Polefit";
using Bytes = std::vector<std::uint8_t>;

class RegistryTest : public ::testing::Test {
 protected:
  /// A value of our key, or "none".
  RegistryData Query(Host& host, const std::string& name, int type = registry_type::kString) {
    return QueryRegValue(host, kCurrentUser, kKey, name, type, std::string("none"));
  }
  void Set(Host& host, const std::string& name, int type, const RegistryData& value) {
    SetRegValue(host, kCurrentUser, kKey, name, type, value);
  }

  TemporaryFolder folder_;
  std::string store_ = folder_.File("deep/er/registry.reg");
  ConsoleHost host_{store_};
};

TEST_F(RegistryTest, AStoreThatNobodyMadeIsReadInNoTimeAndNeverWrittenOver) {
  std::string deep = "REGEDIT4\n[HKEY_CURRENT_USER";
  for (int level = 0; level < 30'000; ++level) deep += "\\x";
  for (const std::string& text : {deep + "]\n\"a\"=\"b\"\n", std::string(2U << 20U, '\n')}) {
    WriteBytes(store_, text);
    ConsoleHost host(store_);
    EXPECT_FALSE(RegKeyExists(host, kCurrentUser, kKey));
    EXPECT_EQ(ErrorOf([&] { CreateRegKey(host, kCurrentUser, kKey); }), 1001);
    EXPECT_EQ(FileBytes(store_), text);
  }
}

TEST_F(RegistryTest, CreateSaysWhetherTheKeyExisted) {
  EXPECT_TRUE(RegKeyExists(host_, kCurrentUser, ""));
  EXPECT_FALSE(RegKeyExists(host_, kCurrentUser, kKey));
  EXPECT_FALSE(CreateRegKey(host_, kCurrentUser, kKey));
  EXPECT_TRUE(CreateRegKey(host_, kCurrentUser, kKey));
  EXPECT_TRUE(CreateRegKey(host_, kCurrentUser, "Software\\Corvane Systems"));
  EXPECT_TRUE(RegKeyExists(host_, kCurrentUser, "SOFTWARE\\corvane systems\\POLEFIT"));
  EXPECT_FALSE(RegKeyExists(host_, 0x80000002, kKey));
}

TEST_F(RegistryTest, ValuesOfEveryTypeComeBackFromDisk) {
  CreateRegKey(host_, kCurrentUser, kKey);
  const std::tuple<const char*, int, RegistryData> values[] = {{"text", 1, "C:\\data \"ü\""},
                                                               {"lines", 1, "a\nb"},
                                                               {"bytes", 3, Bytes{0, 255, 10}},
                                                               {"number", 4, 0xDEADBEEF}};
  for (const auto& [name, type, value] : values) Set(host_, name, type, value);
  ConsoleHost later{store_};
  for (const auto& [name, type, value] : values) EXPECT_EQ(Query(later, name, type), value) << name;
  EXPECT_EQ(Query(later, "TEXT"), Query(host_, "text"));
}

TEST_F(RegistryTest, WhatCannotBeReadIsTheDefault) {
  EXPECT_EQ(Query(host_, "x"), RegistryData("none"));
  Set(host_, "x", 1, "no key yet");
  EXPECT_FALSE(RegKeyExists(host_, kCurrentUser, kKey));
  CreateRegKey(host_, kCurrentUser, kKey);
  Set(host_, "full", 1, std::string(1023, 'a'));
  Set(host_, "long", 1, std::string(1024, 'a'));
  Set(host_, "odd", 2, "unknown types write nothing");
  EXPECT_EQ(Query(host_, "full"), RegistryData(std::string(1023, 'a')));
  for (const char* const name : {"x", "long", "odd"}) {
    EXPECT_EQ(Query(host_, name), RegistryData("none")) << name;
  }
}

TEST_F(RegistryTest, AnUnknownTypeOrAStoreThatCannotBeMadeIsError1001) {
  const RunTimeError error = ThrownBy([&] { Query(host_, "x", 2); });
  EXPECT_EQ(error.number, 1001);
  EXPECT_EQ(error.description, "Unsupported value type");
  WriteBytes(folder_.File("file"), "");
  ConsoleHost host{folder_.File("file/registry.reg")};
  EXPECT_EQ(ErrorOf([&] { CreateRegKey(host, kCurrentUser, kKey); }), 1001);
  EXPECT_FALSE(RegKeyExists(host, kCurrentUser, kKey));
}

TEST_F(RegistryTest, AStoreEditedByHandIsReadButNotWrittenOverWhenALineIsNotUnderstood) {
  const std::string good =
      "[HKEY_CURRENT_USER\\Software\\Corvane Systems\\Polefit]\r\n\"x\"=\"/data\"\r\n";
  for (const std::string& text :
       {"REGEDIT4\r\n\"y\"=\"no key\"\n" + good, good + "\"y\"=dword:zz\n", good + "\"y\"=\"open\n",
        good + "\"y\"=hex:1,100\n", good + "; by hand\n"}) {
    WriteBytes(store_, text);
    ConsoleHost host{store_};
    Set(host, "x", 1, "new");
    EXPECT_EQ(ErrorOf([&] { CreateRegKey(host, kCurrentUser, "B"); }), 1001) << text;
    EXPECT_FALSE(RegKeyExists(host, kCurrentUser, "B"));
    EXPECT_EQ(Query(host, "x"), RegistryData("/data"));
    EXPECT_EQ(Query(host, "y"), RegistryData("none"));
    EXPECT_EQ(FileBytes(store_), text);
  }
}

}  // namespace
}  // namespace polefit::testing
