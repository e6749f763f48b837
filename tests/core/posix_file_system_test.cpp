// What only this platform's disks and users do.
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>

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
