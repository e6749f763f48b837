#include "core/host/Registry.h"

#include <gtest/gtest.h>

#include "core/host/ProfileFunctions.h"
#include "tests/world/TestFolder.h"

namespace quillon {
namespace {

using namespace std::string_literals;

class RegistryTest : public testing::Test, protected TestFolder {
 protected:
  RegValue Get(std::string_view name) {
    return registry_->RegGetValue(RegRoot::LocalMachine, kQuillonKey, name);
  }
  void Set(std::string_view name, const RegValue& value) {
    registry_->RegSetValue(RegRoot::LocalMachine, kQuillonKey, name, value);
  }

  const OwnDesktop desktop_{Host("home"), Host("")};
  const std::unique_ptr<FileSystem> files_ = MakeHostFileSystem();
  const std::unique_ptr<ProfileFunctions> profiles_ = MakeProfileFunctions(*files_);
  const std::unique_ptr<Registry> registry_ = MakeRegistry(*profiles_, Path("registry.ini"));
};

TEST_F(RegistryTest, WritesOnlyToKeysThatExist) {
  Set("Associated", "Yes"s);
  EXPECT_EQ(Get("Associated"), RegValue());
  registry_->CreateKey(RegRoot::LocalMachine, kQuillonKey);
  EXPECT_EQ(Get("Associated"), RegValue());
  Set("Associated", "Yes"s);
  registry_->CreateKey(RegRoot::LocalMachine, kQuillonKey);
  EXPECT_EQ(Get("ASSOCIATED"), RegValue("Yes\0"s)) << "the closing NUL is kept";
  EXPECT_EQ(registry_->RegGetText(RegRoot::LocalMachine, kQuillonKey, "Associated"), "Yes");
  EXPECT_EQ(desktop_.RegistryValue(kQuillonKey, "Associated"), "string:Yes");
  EXPECT_EQ(registry_->RegGetValue(RegRoot::ClassesRoot, kQuillonKey, "Associated"), RegValue());
}

TEST_F(RegistryTest, KeepsTextsAndNumbersApart) {
  registry_->CreateKey(RegRoot::LocalMachine, kQuillonKey);
  const std::string path = "C:\\M\xC3\xBChle \xE2\x82\xAC\\game";
  Set("", path);
  Set("Number", std::uint32_t{4'000'000'000});
  Set("Empty", ""s);
  EXPECT_EQ(Get(""), RegValue(path + '\0'));
  EXPECT_EQ(Get("Number"), RegValue(std::uint32_t{4'000'000'000}));
  EXPECT_EQ(Get("Empty"), RegValue("\0"s));
  EXPECT_EQ(registry_->RegGetText(RegRoot::LocalMachine, kQuillonKey, "Number"), "");
  Set("Number", "text"s);
  EXPECT_EQ(Get("Number"), RegValue("text\0"s));
}

}  // namespace
}  // namespace quillon
