// What only this platform's paths and open files do.
#include <windows.h>

#include <chrono>
#include <thread>

#include "core/host/Desktop.h"
#include "core/host/ProfileFunctions.h"
#include "core/host/RawFile.h"
#include "core/host/windows_file_facts.h"
#include "tests/core/FileSystemTest.h"

namespace quillon {
namespace {

using enum FileCode;
using namespace std::chrono_literals;

/// Another program's open file.
HANDLE Hold(const fs::path& file, DWORD share) {
  return ::CreateFileW(file.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr);
}

/// Lets go of `held` while `act` is on its way. Whether it had to wait for that.
bool WaitsFor(HANDLE held, const std::function<void()>& act) {
  std::atomic<bool> free = false;
  const std::jthread other([&] {
    std::this_thread::sleep_for(300ms);
    free = true;
    ::CloseHandle(held);
  });
  act();
  return free;
}

std::chrono::steady_clock::duration TimeOf(const std::function<void()>& act) {
  const auto start = std::chrono::steady_clock::now();
  act();
  return std::chrono::steady_clock::now() - start;
}

TEST_F(FileSystemTest, PathsStartAtRootsDrivesAndTheCurrentFolder) {
  Put("Folder/file");
  const std::string drive = Root().substr(0, 2), below = Path("Folder").substr(2);
  std::vector<FoundFile> found;
  for (const std::string& root : {drive + "\\", drive + "/..\\.", std::string("\\\\?\\") + drive + "\\"}) {
    EXPECT_EQ(CodeFor(root), Ok) << root;
    EXPECT_EQ(files_->Find(root, found), FileNotFound) << root;
    EXPECT_EQ(files_->HostPath(root), drive + "\\");
  }
  EXPECT_EQ(CodeFor("B:\\x"), UnderWine() ? FileNotFound : PathNotFound);  // Wine looks for the name first
  for (const char* path : {"\\\\nowhere\\", "\\\\?\\", "\\\\?\\UNC\\"})
    EXPECT_EQ(CodeFor(path), PathNotFound) << path;
  EXPECT_EQ(files_->HostPath("\\\\server\\share\\a/../b"), "\\\\server\\share\\b");
  EXPECT_EQ(AbsoluteHostPath("\\\\server\\share\\"), "\\\\server\\share\\");
  const std::string longOne = drive + "\\" + std::string(300, 'x');
  EXPECT_EQ(AbsoluteHostPath(longOne), longOne) << "a mark of its length would be a wildcard";
  const fs::path before = fs::current_path();
  fs::current_path(Host("Folder"));
  for (const std::string& path : {std::string("FILE"), drive + "file", below + "\\file"}) {
    EXPECT_EQ(CodeFor(path), Ok) << path;
    EXPECT_EQ(files_->HostPath(path), Path("Folder\\file")) << path;
  }
  EXPECT_EQ(AbsoluteHostPath(".."), Root());
  fs::current_path(before);
}

TEST_F(FileSystemTest, HiddenFilesAreReplacedAndStayHidden) {
  Put("new", "new");
  for (const char* name : {"copied", "replaced", "opened"}) {
    Put(name, "old");
    EXPECT_EQ(Mark(name, kHidden | kArchive), Ok);
  }
  EXPECT_EQ(Copy("new", "copied"), Ok);
  EXPECT_EQ(Replace("replaced", "new"), Ok);
  EXPECT_EQ(Open("opened", false), Ok);
  out_.reset();
  EXPECT_EQ(Read("copied") + Read("replaced") + Read("opened"), "newnew");
  if (!UnderWine()) {  // Wine has no such mark of its own
    EXPECT_EQ(Attributes("replaced") | Attributes("opened"), kHidden | kArchive);
  }
  EXPECT_EQ(Mark("new", 0), Ok);
  EXPECT_TRUE(FindOne("new").name == "new" && (FindOne("new").attributes & kHidden) == 0);
}

TEST_F(FileSystemTest, WhatAnotherProgramHoldsIsToldFromWhatIsForbidden) {
  Put("held", "old");
  Put("other");
  const HANDLE held = Hold(Host("held"), 0);
  ASSERT_NE(held, INVALID_HANDLE_VALUE);
  std::string bytes;
  const auto waited = TimeOf([&] {
    EXPECT_EQ(files_->Read(Path("held"), bytes, kNoLimit), SharingViolation);
    EXPECT_EQ(Delete("held"), SharingViolation);
    EXPECT_EQ(Move("held", "moved"), SharingViolation);
    EXPECT_EQ(Open("held", true), SharingViolation);
    EXPECT_EQ(Copy("other", "held"), SharingViolation);
    EXPECT_EQ(Replace("held", "new"), SharingViolation);
  });
  EXPECT_TRUE(waited > 1900ms && waited < 2900ms) << "once for all, since the file stays held";
  ::CloseHandle(held);
  EXPECT_EQ(Bytes("held"), "old");
  EXPECT_EQ(Count(), 2u);
  EXPECT_EQ(Replace("held", "new"), Ok);
  // What no waiting helps is told at once.
  EXPECT_EQ(Mark("other", kReadOnly), Ok);
  EXPECT_LT(TimeOf([&] {
              EXPECT_EQ(Delete("none"), FileNotFound);
              EXPECT_EQ(Delete("other"), AccessDenied);
              EXPECT_EQ(Make("held"), AlreadyExists);
              EXPECT_EQ(RemoveFolder(""), DirectoryNotEmpty);
            }),
            200ms);
}

TEST_F(FileSystemTest, WhatIsHeldForAMomentIsWaitedFor) {
  const auto profiles = MakeProfileFunctions(*files_);
  const auto written = [&](const char* value) { profiles->WriteString("S", "K", value, Path("held")); };
  const std::vector<std::function<void()>> acts = {
      [&] { EXPECT_EQ(Read("held"), "[S]\r\nK=old\r\n"); },
      [&] { EXPECT_EQ(profiles->GetString("S", "K", "none", 99, Path("held")), "old"); },
      [&] { written("new"); },
      [&] { EXPECT_EQ(Copy("held", "copy"), Ok); },
      [&] { EXPECT_EQ(Copy("copy", "held"), Ok); },
      [&] { EXPECT_EQ(Replace("held", "bytes"), Ok); },
      [&] { EXPECT_EQ(Open("held", true), Ok); },
      [&] { EXPECT_EQ(RawFile(files_->HostPath(Path("held"))).Code(), Ok); },
      [&] { EXPECT_EQ(Delete("held"), Ok); },
      [&] { EXPECT_EQ(Move("held", "moved"), Ok); }};
  for (std::size_t i = 0; i < acts.size(); ++i) {
    out_.reset();
    if (!Exists("held")) Put("held", "[S]\r\nK=old\r\n");
    EXPECT_TRUE(WaitsFor(Hold(Host("held"), 0), acts[i])) << i;
    if (i == 2) {
      EXPECT_EQ(Read("held"), "[S]\r\nK=new\r\n");
    }
  }
}

TEST_F(FileSystemTest, WhatIsDeletedButStillOpenIsWaitedFor) {
  for (const bool whole : {false, true}) {
    if (whole && UnderWine()) continue;  // it tells of such a file as of any other
    Put("folder/file");
    const HANDLE held = Hold(Host("folder/file"), FILE_SHARE_READ | FILE_SHARE_DELETE);
    EXPECT_EQ(Delete("folder\\file"), Ok);
    const bool waited = WaitsFor(
        held, [&] { EXPECT_EQ(whole ? RemoveFolder("folder") : Replace("folder\\file", "new"), Ok); });
    EXPECT_TRUE(waited || !UnderWine()) << "newer systems take the name away at once";
    EXPECT_EQ(Count(), whole ? 0u : 2u);
  }
}

TEST_F(FileSystemTest, PlaceholdersAndMarkedFoldersAreNothingSpecial) {
  constexpr DWORD kCloud = FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_OFFLINE;
  for (const DWORD tag : {0x9000001Au, 0x9000701Au, 0x80000017u}) EXPECT_FALSE(IsLink(kCloud, tag)) << tag;
  for (const DWORD tag : {0xA0000003u, 0xA000000Cu, 0u}) EXPECT_TRUE(IsLink(kCloud, tag)) << tag;
  ASSERT_EQ(Make("folder"), Ok);
  EXPECT_EQ(Mark("folder", kReadOnly), Ok);
  EXPECT_EQ(Attributes("folder") & kReadOnly, 0u);
  EXPECT_TRUE(files_->MayWrite(Path("folder")));
  EXPECT_EQ(RemoveFolder("folder"), Ok);
}

TEST_F(FileSystemTest, FilesMoveToAnotherDisk) {
  const std::string disk = "C:\\users\\Public", there = disk + "\\quillon-moved";
  if (CodeFor(disk) != Ok || files_->DiskOf(disk).size == files_->DiskOf(Root()).size)
    GTEST_SKIP() << "needs another disk";
  files_->Delete(there);
  Put("file", "bytes");
  const HANDLE held = Hold(Host("file"), FILE_SHARE_READ);
  EXPECT_EQ(files_->Move(Path("file"), there), SharingViolation);
  EXPECT_EQ(CodeFor(there), FileNotFound) << "what can't go stays as it was";
  ::CloseHandle(held);
  EXPECT_EQ(Mark("file", kReadOnly | kArchive), Ok);
  const auto time = FindOne("file").modified;
  EXPECT_EQ(files_->Move(Path("file"), there), Ok);
  EXPECT_EQ(Count(), 0u);
  Put("file", "other");
  EXPECT_EQ(files_->Move(Path("file"), there), AlreadyExists);
  std::vector<FoundFile> found;
  ASSERT_EQ(files_->Find(there, found), Ok);
  EXPECT_TRUE(found[0].modified == time && found[0].attributes == (kReadOnly | kArchive));
  EXPECT_EQ(files_->SetAttributes(there, kArchive), Ok);
  EXPECT_EQ(Delete("file"), Ok);
  EXPECT_EQ(files_->Move(there, Path("file")), Ok);
  EXPECT_EQ(Bytes("file"), "bytes");
}

}  // namespace
}  // namespace quillon
