// The registry for users who may not change the machine's.
#include <gtest/gtest.h>
#include <windows.h>

#include "core/host/ProfileFunctions.h"
#include "core/host/Registry.h"
#include "core/host/windows_text.h"
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
  HKEY machine = nullptr, user = nullptr;
  // In what is forgotten at the end of a session nothing lasting can be made.
  ASSERT_EQ(::RegCreateKeyExW(HKEY_CURRENT_USER, L"machine", 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS,
                              nullptr, &machine, nullptr),
            ERROR_SUCCESS);
  for (const HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CLASSES_ROOT}) ::RegOverridePredefKey(root, machine);
  ::RegCreateKeyExW(machine, Widen(kLarkmoorKey).c_str(), 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS,
                    nullptr, &user, nullptr);
  ::RegCloseKey(user);
  registry_->RegSetValue(RegRoot::LocalMachine, kLarkmoorKey, "TrainSimPath", std::string("C:\\machine"));
  registry_->RegSetValue(RegRoot::LocalMachine, kQuillonKey, "Associated", yes);
  EXPECT_EQ(Get(RegRoot::LocalMachine, kQuillonKey, "Associated"), "") << "the key is missing";
  for (int again = 0; again < 2; ++again) {
    registry_->CreateKey(RegRoot::LocalMachine, kQuillonKey);
    registry_->CreateKey(RegRoot::ClassesRoot, type);
  }
  registry_->RegSetValue(RegRoot::LocalMachine, kQuillonKey, "Associated", yes);
  registry_->RegSetValue(RegRoot::ClassesRoot, type, "", yes);
  EXPECT_EQ(Get(RegRoot::LocalMachine, kQuillonKey, "Associated"), yes);
  EXPECT_EQ(Get(RegRoot::ClassesRoot, type, ""), yes);
  EXPECT_EQ(::RegOpenKeyW(HKEY_CURRENT_USER, Widen("Software\\Classes\\" + type).c_str(), &user),
            ERROR_SUCCESS);
  EXPECT_EQ(Get(RegRoot::LocalMachine, kLarkmoorKey, "TrainSimPath"), "C:\\machine");
  registry_->RegSetValue(RegRoot::LocalMachine, kLarkmoorKey, "TrainSimPath", std::string("C:\\own"));
  EXPECT_EQ(Get(RegRoot::LocalMachine, kLarkmoorKey, "TrainSimPath"), "C:\\own");
  EXPECT_EQ(desktop_.RegistryValue(kLarkmoorKey, "TrainSimPath"), "string:C:\\machine") << "as it was";
  for (const HKEY key : {user, machine}) ::RegCloseKey(key);
}

}  // namespace
}  // namespace quillon
