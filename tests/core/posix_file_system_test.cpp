// What only this platform's disks and users do.
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>

#include "core/Files.h"
#include "core/host/PathText.h"
#include "tests/core/FileSystemTest.h"

namespace quillon {
namespace {

using enum FileCode;

TEST_F(FileSystemTest, AFailedCopyLeavesNothing) {
  const std::string large(300'000, 'q');
  Put("source", large);
  Put("old", "old");
  // The host refuses bytes behind the limit as it does on a full disk.
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit before;
  ::getrlimit(RLIMIT_FSIZE, &before);
  const rlimit tight = {100'000, before.rlim_max};
  ::setrlimit(RLIMIT_FSIZE, &tight);
  const auto codes = {Copy("source", "old"), Copy("source", "new"), Replace("old", large)};
  ::setrlimit(RLIMIT_FSIZE, &before);
  for (const FileCode code : codes) EXPECT_NE(code, Ok);
  EXPECT_EQ(Bytes("old"), "old");
  EXPECT_EQ(Count(), 2u);
}

TEST_F(FileSystemTest, AFolderThatCantBeListedIsSearchedByExactNames) {
  if (::geteuid() != 0) GTEST_SKIP() << "changes the user";
  Put("shut/File");
  fs::permissions(Host("shut"), fs::perms(0711));
  ASSERT_EQ(::seteuid(65534), 0);
  const bool exact = Exists("shut\\File"), other = Exists("shut\\file");
  std::vector<FoundFile> found;
  const FileCode listing = files_->Find(Path("shut\\*"), found);
  EXPECT_EQ(::seteuid(0), 0);
  EXPECT_TRUE(exact && !other);
  EXPECT_EQ(listing, AccessDenied);
}

TEST_F(FileSystemTest, NamesThatNoTextCanTellAreReadMovedAndDeleted) {
  for (const std::string name : {"12:30.srv", "a?b.srv", "a\\b.srv", "tab\t.srv"}) {
    Put(name, name);
    std::vector<FoundFile> found;
    ASSERT_EQ(files_->Find(Path("*.srv"), found), Ok) << name;
    const std::string text = found.at(0).name;
    EXPECT_EQ(WithoutStandIns(text), name);
    std::string bytes;
    EXPECT_EQ(files_->Read(Path(text), bytes, kNoLimit), Ok);
    EXPECT_EQ(bytes, name);
    ASSERT_EQ(files_->Move(Path(text), Path("x" + text)), Ok);
    EXPECT_EQ(Bytes("x" + name), name) << "the name keeps its letters";
    EXPECT_EQ(files_->Delete(Path("X" + text)), Ok);
    EXPECT_EQ(Count(), 0u);
  }
}

TEST_F(FileSystemTest, AWalkThroughLinksEndsWhereItBegan) {
  Put("top/real/file");
  fs::create_directory_symlink("real", Host("top/beside"));
  fs::create_directory_symlink("..", Host("top/real/up"));
  Random random(1);
  struct : CopyMeter {
    void CopyFoundNothing(std::string_view) override {}
    void CopyMoved(int) override {}
    void CopyFailed(std::string_view, FileCode) override {}
  } meter;
  std::vector<std::string> walked;
  Files(*files_, random, meter)
      .WalkThroughLinks(Path("top\\*.*"), [&](const std::string& folder, const std::string&) {
        walked.push_back(folder.substr(Path("top").size()));
      });
  EXPECT_EQ(walked, (std::vector<std::string>{"\\beside\\", "\\real\\"}));
}

TEST_F(FileSystemTest, APassAsksTheHostOnlyOnce) {
  fs::create_directories(Host("Folder/Sub"));
  const FileSystem::Pass pass(*files_);
  EXPECT_FALSE(Exists("folder\\none"));
  Put("Folder/Foreign");
  EXPECT_FALSE(Exists("Folder\\Foreign"));  // the folder was listed
}

TEST_F(FileSystemTest, NamesThatOnlyThisHostKnowsAreFoundToo) {
  EXPECT_EQ(files_->HostPath("\\..\\..\\"), "/");
  // Names that differ in case only: the exact one, else always the same one.
  Put("twin", "lower");
  Put("TWIN", "upper");
  EXPECT_EQ(Read("twin") + Read("Twin"), "lowerupper");
  EXPECT_EQ(Find("tw*"), (Strings{"TWIN", "twin"}));
  {
    const FileSystem::Pass pass(*files_);
    EXPECT_EQ(Read("TWIN") + Read("twin"), "upperlower") << "also in a folder that is yet to be listed";
  }
  Put("\xFF\xFE.txt");
  EXPECT_EQ(Find("*.TXT"), Strings{"\xFF\xFE.txt"});
  EXPECT_TRUE(Exists("\xFF\xFE.TXT"));
}

TEST_F(FileSystemTest, DrivesAreNowhere) {
  EXPECT_EQ(CodeFor("C:\\a"), PathNotFound);
  EXPECT_EQ(files_->Replace("C:\\new", "x"), PathNotFound);
  EXPECT_EQ(files_->HostPath("C:\\new"), "");
}

TEST_F(FileSystemTest, AReplacedFileKeepsItsPermissions) {
  Put("file");
  fs::permissions(Host("file"), fs::perms(0751));
  EXPECT_EQ(Replace("FILE", "new"), Ok);
  EXPECT_EQ(fs::status(Host("file")).permissions(), fs::perms(0751));
}

}  // namespace
}  // namespace quillon
