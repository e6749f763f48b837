// The registry for users who may not change the machine's.
#include <gtest/gtest.h>
#include <windows.h>

#include "core/host/ProfileFunctions.h"
#include "core/host/Registry.h"
#include "tests/world/TestFolder.h"

namespace quillon {
namespace {

class WindowsRegistryTest : public testing::Test, protected TestFolder {
 protected:
  std::string Get(RegRoot root, std::string_view key, std::string_view name) {
    return registry_->RegGetText(root, key, name);
  }

  const OwnDesktop desktop_{Host("home"), Host("")};
  const std::unique_ptr<FileSystem> files_ = MakeHostFileSystem();
  const std::unique_ptr<ProfileFunctions> profiles_ = MakeProfileFunctions(*files_);
  const std::unique_ptr<Registry> registry_ = MakeRegistry(*profiles_, {});
};

TEST_F(WindowsRegistryTest, WhoMayNotChangeTheMachinesGetsKeysOfHisOwn) {
  const std::string yes = "Yes", type = "Larkmoor.Compressed.Route\\DefaultIcon";
  registry_->CreateKey(RegRoot::LocalMachine, kLarkmoorKey);
  registry_->RegSetValue(RegRoot::LocalMachine, kLarkmoorKey, "TrainSimPath", std::string("C:\\machine"));
  HKEY user = nullptr, gone = nullptr, machine = nullptr, classes = nullptr;
  ASSERT_EQ(::RegOpenKeyW(HKEY_LOCAL_MACHINE, nullptr, &machine), ERROR_SUCCESS);
  ASSERT_EQ(::RegOpenKeyW(HKEY_CLASSES_ROOT, nullptr, &classes), ERROR_SUCCESS);
  // In a key that is deleted nobody makes anything.
  ASSERT_EQ(::RegCreateKeyW(HKEY_CURRENT_USER, L"gone", &gone), ERROR_SUCCESS);
  ::RegDeleteKeyW(HKEY_CURRENT_USER, L"gone");
  for (const HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CLASSES_ROOT}) ::RegOverridePredefKey(root, gone);
  for (int again = 0; again < 2; ++again) {
    registry_->CreateKey(RegRoot::LocalMachine, kQuillonKey);
    registry_->CreateKey(RegRoot::ClassesRoot, type);
  }
  registry_->RegSetValue(RegRoot::LocalMachine, kQuillonKey, "Associated", yes);
  registry_->RegSetValue(RegRoot::ClassesRoot, type, "", yes);
  registry_->RegSetValue(RegRoot::LocalMachine, kLarkmoorKey, "TrainSimPath", std::string("C:\\own"));
  EXPECT_EQ(Get(RegRoot::LocalMachine, kQuillonKey, "Associated"), yes);
  EXPECT_EQ(Get(RegRoot::ClassesRoot, type, ""), yes);
  EXPECT_EQ(::RegOpenKeyW(HKEY_CURRENT_USER, L"Software\\Classes\\Larkmoor.Compressed.Route", &user),
            ERROR_SUCCESS);
  for (const HKEY key : {user, gone}) ::RegCloseKey(key);
  ::RegOverridePredefKey(HKEY_LOCAL_MACHINE, machine);
  ::RegOverridePredefKey(HKEY_CLASSES_ROOT, classes);
  for (const HKEY key : {machine, classes}) ::RegCloseKey(key);
  EXPECT_EQ(Get(RegRoot::LocalMachine, kLarkmoorKey, "TrainSimPath"), "C:\\own") << "before the machine's";
  EXPECT_EQ(desktop_.RegistryValue(kLarkmoorKey, "TrainSimPath"), "string:C:\\machine");
}

}  // namespace
}  // namespace quillon
