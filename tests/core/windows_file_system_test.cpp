// What only this platform's paths and open files do.
#include <windows.h>

#include "core/host/Desktop.h"
#include "tests/core/FileSystemTest.h"

namespace quillon {
namespace {

using enum FileCode;

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
  const HANDLE held =
      ::CreateFileW(Host("held").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(held, INVALID_HANDLE_VALUE);
  std::string bytes;
  EXPECT_EQ(files_->Read(Path("held"), bytes, kNoLimit), SharingViolation);
  EXPECT_EQ(Delete("held"), SharingViolation);
  EXPECT_EQ(Move("held", "moved"), SharingViolation);
  EXPECT_EQ(Open("held", true), SharingViolation);
  EXPECT_EQ(Copy("other", "held"), SharingViolation);
  EXPECT_EQ(Replace("held", "new"), SharingViolation);
  ::CloseHandle(held);
  EXPECT_EQ(Bytes("held"), "old");
  EXPECT_EQ(Count(), 2u);
}

}  // namespace
}  // namespace quillon
