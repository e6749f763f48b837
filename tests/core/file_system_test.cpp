#include "core/host/FileSystem.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace quillon {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

/// A folder of its own on the host, and the file calls beside the host's plain ones.
class FileSystemTest : public testing::Test {
 protected:
  FileSystemTest() {
    std::string form = testing::TempDir() + "quillon_XXXXXX";
    root_ = ::mkdtemp(form.data());
    fs::permissions(root_, fs::perms(0777));
  }
  ~FileSystemTest() override { fs::remove_all(root_); }

  std::string Path(std::string_view name) const { return root_ + "\\" + std::string(name); }
  fs::path Host(std::string_view name) const { return fs::path(root_) / name; }
  void Put(std::string_view name, std::string_view bytes = "x") const { std::ofstream(Host(name)) << bytes; }
  void MakeReadOnly(std::string_view name) const { fs::permissions(Host(name), fs::perms(0444)); }
  std::string Bytes(std::string_view name) const {
    std::ifstream in(Host(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  std::size_t Count() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(root_), fs::directory_iterator()));
  }
  bool OnDisk(std::string_view name) const { return fs::exists(fs::symlink_status(Host(name))); }

  bool Exists(std::string_view name) { return Attributes(name) != 0; }
  std::uint32_t Attributes(std::string_view name) {
    std::uint32_t attributes = 0;
    return files_->GetAttributes(Path(name), attributes) == FileCode::Ok ? attributes : 0;
  }
  FileCode CodeFor(std::string_view path) {
    std::uint32_t attributes = 0;
    return files_->GetAttributes(path, attributes);
  }
  Names Find(std::string_view pattern) {
    std::vector<FoundFile> found;
    const FileCode code = files_->Find(Path(pattern), found);
    EXPECT_EQ(code, found.empty() ? FileCode::FileNotFound : FileCode::Ok) << pattern;
    Names names;
    for (const auto& file : found) names.push_back(file.name);
    return names;
  }
  FoundFile FindOne(std::string_view name) {
    std::vector<FoundFile> found;
    files_->Find(Path(name), found);
    return found.empty() ? FoundFile{} : found.front();
  }

  std::string root_;
  std::unique_ptr<FileSystem> files_ = MakeHostFileSystem();
};

TEST(MatchesPatternTest, FollowsThePlatform) {
  const Names names = {"a.htm",       "a.ht",    "a.html",   "noext",        "name.ext",
                       "old.sav.bak", ".sav",    "game.SAV", "two.dots.sav", "x.savx",
                       "e.raw",       "x_E.RAW", "Sub2",     "ver[1].txt"};
  const auto matching = [&](std::string_view pattern) {
    std::string matches;
    for (const auto& name : names)
      if (MatchesPattern(name, pattern)) matches += " " + name;
    return matches;
  };
  EXPECT_EQ(matching("*.*"), matching("*"));
  EXPECT_EQ(matching("*.").append(matching("*.*.*")).size(), matching("*").size());
  EXPECT_EQ(matching("*."), " noext Sub2");
  EXPECT_EQ(matching("*.sav. "), " .sav game.SAV two.dots.sav");
  EXPECT_EQ(matching("*.sav.*"), " old.sav.bak .sav game.SAV two.dots.sav");
  EXPECT_EQ(matching("?.htm"), " a.htm");
  EXPECT_EQ(matching("a.ht?"), " a.htm a.ht");
  EXPECT_EQ(matching("a.htm?"), " a.htm a.html");
  EXPECT_EQ(matching("noext?.*"), " noext");
  EXPECT_EQ(matching("no?ext"), "");
  EXPECT_EQ(matching("*_e.raw"), " x_E.RAW");
  EXPECT_EQ(matching("????.???"), " a.htm a.ht name.ext .sav game.SAV e.raw x_E.RAW Sub2");
  EXPECT_EQ(matching("VER[1].txt"), " ver[1].txt");
  EXPECT_TRUE(MatchesPattern("\xC3\xA9t\xC3\xA9.ace", "?T\xC3\x89.*"));
  EXPECT_TRUE(MatchesPattern("..", "*."));
  // A pattern from an archive must not be able to stall the program.
  EXPECT_FALSE(MatchesPattern(std::string(250, 'a'), "*a*a*a*a*a*a*a*a*a*a*a*a*a*a*b"));
}

TEST_F(FileSystemTest, NamesAreFoundInAnyCase) {
  fs::create_directories(Host("TRAINS/Consists"));
  Put("TRAINS/Consists/\xC3\x89t\xC3\xA9.con");
  EXPECT_TRUE(Exists("trains\\CONSISTS\\\xC3\xA9T\xC3\x89.con"));
  EXPECT_TRUE(Exists("trains//consists\\"));
  EXPECT_TRUE(Exists("none\\..\\.\\Trains. \\consists."));
  EXPECT_EQ(files_->HostPath(Path("trains\\consists\\New.Con")), Host("TRAINS/Consists/New.Con"));
  EXPECT_EQ(files_->HostPath("\\..\\..\\"), "/");
  // Names that differ in case only: the exact one, else always the same one.
  Put("twin", "lower");
  Put("TWIN", "upper");
  std::string bytes;
  files_->Read(Path("twin"), bytes, kNoLimit);
  EXPECT_EQ(bytes, "lower");
  files_->Read(Path("Twin"), bytes, kNoLimit);
  EXPECT_EQ(bytes, "upper");
  EXPECT_EQ(Find("tw*"), (Names{"TWIN", "twin"}));
  Put("\xFF\xFE.txt");
  EXPECT_EQ(Find("*.TXT"), Names{"\xFF\xFE.txt"});
  EXPECT_TRUE(Exists("\xFF\xFE.TXT"));
}

TEST_F(FileSystemTest, TellsWhyNothingIsThere) {
  Put("file");
  EXPECT_EQ(CodeFor(Path("none")), FileCode::FileNotFound);
  EXPECT_EQ(CodeFor(Path("none\\none")), FileCode::PathNotFound);
  EXPECT_EQ(CodeFor(Path("file\\none")), FileCode::PathNotFound);
  EXPECT_EQ(CodeFor(""), FileCode::PathNotFound);
  EXPECT_EQ(CodeFor("C:\\Windows"), FileCode::PathNotFound);
  EXPECT_EQ(CodeFor(Path("file\\")), FileCode::InvalidName);
  for (const char* name : {"a<", "a>", "a\"", "a|", "a:b", "a\x1F", "a*", "a?b\\c"})
    EXPECT_EQ(CodeFor(Path(name)), FileCode::InvalidName) << name;
  EXPECT_EQ(files_->Replace("C:\\new", "x"), FileCode::PathNotFound);
  EXPECT_EQ(files_->HostPath("C:\\new"), "");
  for (const char* name : {"con", "Nul.txt", "com1.a.b", "LPT9 .x", "new\\"})
    EXPECT_EQ(files_->Replace(Path(name), "x"), FileCode::InvalidName) << name;
  EXPECT_EQ(files_->Replace(Path("com10"), "x"), FileCode::Ok);
  std::vector<FoundFile> found;
  EXPECT_EQ(files_->Find(Path("none\\*"), found), FileCode::PathNotFound);
  EXPECT_EQ(files_->Find(root_ + "\\", found), FileCode::FileNotFound);
}

TEST_F(FileSystemTest, ListsInThePlatformsOrder) {
  fs::create_directory(Host("folder"));
  const Names order = {"!t",          "10",  "9",  "A",  "aB", "aZ",       "b",
                       "Z",           "[1]", "^t", "_x", "~t", "\xC3\x89", "\xF0\x9F\x9A\x82",
                       "\xEF\xBC\x81"};
  for (const auto& name : order) Put("folder/" + name);
  Names expected = {".", ".."};
  expected.insert(expected.end(), order.begin(), order.end());
  EXPECT_EQ(Find("folder\\*.*"), expected);
  EXPECT_EQ(Find("FOLDER"), Names{"folder"});
  EXPECT_EQ(Find("folder\\*.sav"), Names{});
}

TEST_F(FileSystemTest, ReadOnlyFilesAreLeftAloneByEveryUser) {
  Put("fixed", "old");
  Put("other", "new");
  EXPECT_EQ(Attributes("fixed"), kArchive);
  EXPECT_EQ(files_->SetAttributes(Path("fixed"), kReadOnly), FileCode::Ok);
  EXPECT_EQ(FindOne("fixed").attributes, kReadOnly | kArchive);
  std::unique_ptr<OutputFile> out;
  EXPECT_EQ(files_->Delete(Path("fixed")), FileCode::AccessDenied);
  EXPECT_EQ(files_->Replace(Path("fixed"), "new"), FileCode::AccessDenied);
  EXPECT_EQ(files_->Copy(Path("other"), Path("FIXED")), FileCode::AccessDenied);
  EXPECT_EQ(files_->Open(Path("fixed"), true, out), FileCode::AccessDenied);
  EXPECT_EQ(Bytes("fixed"), "old");
  EXPECT_EQ(files_->Move(Path("fixed"), Path("moved")), FileCode::Ok);
  EXPECT_EQ(files_->Copy(Path("moved"), Path("copy")), FileCode::Ok);
  EXPECT_EQ(Attributes("copy"), kReadOnly | kArchive);
  EXPECT_EQ(fs::last_write_time(Host("copy")), fs::last_write_time(Host("moved")));
  EXPECT_EQ(files_->SetAttributes(Path("copy"), kArchive), FileCode::Ok);
  EXPECT_EQ(files_->Delete(Path("copy")), FileCode::Ok);
}

TEST_F(FileSystemTest, CopiesAndReplacesWhole) {
  fs::create_directory(Host("folder"));
  const std::string large(1'000'000, 'q');
  Put("Large", large);
  Put("small", "small");
  EXPECT_EQ(files_->Copy(Path("LARGE"), Path("folder\\new")), FileCode::Ok);
  EXPECT_EQ(Bytes("folder/new"), large);
  EXPECT_EQ(files_->Copy(Path("small"), Path("LARGE")), FileCode::Ok);
  EXPECT_EQ(Bytes("Large"), "small");
  EXPECT_EQ(files_->Copy(Path("small"), Path("SMALL")), FileCode::SharingViolation);
  EXPECT_EQ(files_->Copy(Path("small"), Path("folder")), FileCode::AccessDenied);
  EXPECT_EQ(files_->Copy(Path("folder"), Path("new")), FileCode::AccessDenied);
  EXPECT_EQ(files_->Copy(Path("none"), Path("new")), FileCode::FileNotFound);
  EXPECT_EQ(files_->Copy(Path("small"), Path("none\\new")), FileCode::PathNotFound);
  fs::permissions(Host("small"), fs::perms(0751));
  Put("small.part~", "left by a run that was ended");
  EXPECT_EQ(files_->Replace(Path("Small"), "replaced"), FileCode::Ok);
  EXPECT_EQ(Bytes("small"), "replaced");
  EXPECT_EQ(fs::status(Host("small")).permissions(), fs::perms(0751));
  EXPECT_EQ(files_->Replace(Path(std::string(255, 'n')), "1"), FileCode::Ok);
  EXPECT_EQ(files_->Replace(Path(std::string(255, 'n')), "22"), FileCode::Ok);
  EXPECT_EQ(Count(), 4u);
}

TEST_F(FileSystemTest, AFailedCopyLeavesNothing) {
  Put("source", std::string(300'000, 'q'));
  Put("old", "old");
  // The host refuses bytes behind the limit as it does on a full disk.
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit before;
  ::getrlimit(RLIMIT_FSIZE, &before);
  const rlimit tight = {100'000, before.rlim_max};
  ::setrlimit(RLIMIT_FSIZE, &tight);
  const FileCode onto = files_->Copy(Path("source"), Path("old"));
  const FileCode fresh = files_->Copy(Path("source"), Path("new"));
  const FileCode replace = files_->Replace(Path("old"), std::string(300'000, 'q'));
  ::setrlimit(RLIMIT_FSIZE, &before);
  for (const FileCode code : {onto, fresh, replace}) EXPECT_NE(code, FileCode::Ok);
  EXPECT_EQ(Bytes("old"), "old");
  EXPECT_EQ(Count(), 2u);
}

TEST_F(FileSystemTest, MovesToFreeNamesOnly) {
  fs::create_directory(Host("folder"));
  Put("a.sav", "a");
  Put("b.sav", "b");
  EXPECT_EQ(files_->Move(Path("a.sav"), Path("B.SAV")), FileCode::AlreadyExists);
  EXPECT_EQ(files_->Move(Path("a.sav"), Path("FOLDER")), FileCode::AlreadyExists);
  EXPECT_EQ(files_->Move(Path("none"), Path("new")), FileCode::FileNotFound);
  EXPECT_EQ(files_->Move(Path("a.sav"), Path("none\\new")), FileCode::PathNotFound);
  EXPECT_EQ(files_->Move(Path("folder"), Path("folder\\inner")), FileCode::SharingViolation);
  EXPECT_EQ(files_->Move(Path("a.sav"), Path("a.sav")), FileCode::Ok);
  EXPECT_EQ(files_->Move(Path("A.SAV"), Path("A.Sav")), FileCode::Ok);
  EXPECT_EQ(Find("*.sav"), (Names{"A.Sav", "b.sav"}));
  EXPECT_EQ(Bytes("A.Sav") + Bytes("b.sav"), "ab");
}

TEST_F(FileSystemTest, FoldersAreMadeAndRemovedOneLevelAtATime) {
  EXPECT_EQ(files_->CreateFolder(Path("a\\b")), FileCode::PathNotFound);
  EXPECT_EQ(files_->CreateFolder(Path("A. \\")), FileCode::Ok);
  EXPECT_EQ(files_->CreateFolder(Path("a")), FileCode::AlreadyExists);
  Put("A/file");
  EXPECT_EQ(files_->RemoveFolder(Path("a")), FileCode::DirectoryNotEmpty);
  EXPECT_EQ(files_->RemoveFolder(Path("a\\file")), FileCode::NotADirectory);
  EXPECT_EQ(files_->Delete(Path("a")), FileCode::AccessDenied);
  EXPECT_EQ(files_->Delete(Path("a\\file")), FileCode::Ok);
  EXPECT_EQ(files_->RemoveFolder(Path("a")), FileCode::Ok);
  EXPECT_EQ(files_->RemoveFolder(Path("a")), FileCode::FileNotFound);
}

TEST_F(FileSystemTest, LinksGoAndWhatTheyPointToStays) {
  fs::create_directory(Host("folder"));
  Put("folder/file", "old");
  MakeReadOnly("folder/file");
  fs::create_directory_symlink(Host("folder"), Host("ToFolder"));
  fs::create_symlink(Host("folder/file"), Host("ToFile"));
  fs::create_symlink(Host("nowhere"), Host("ToNothing"));
  EXPECT_TRUE(FindOne("tofolder").link && FindOne("tofolder").folder());
  EXPECT_TRUE(FindOne("tofile").link && !FindOne("tofile").folder());
  EXPECT_FALSE(FindOne("folder").link);
  EXPECT_EQ(Attributes("tonothing"), kArchive);
  EXPECT_EQ(files_->SetAttributes(Path("tofile"), kArchive), FileCode::Ok);
  EXPECT_EQ(files_->Replace(Path("tofile"), "new"), FileCode::AccessDenied);
  EXPECT_EQ(files_->SetAttributes(Path("tofolder\\file"), kArchive), FileCode::Ok);
  EXPECT_EQ(files_->SetAttributes(Path("tofile"), kReadOnly), FileCode::Ok);
  EXPECT_EQ(files_->Replace(Path("tofile"), "new"), FileCode::Ok);
  EXPECT_EQ(files_->Replace(Path("tonothing"), "new"), FileCode::FileNotFound);
  EXPECT_TRUE(FindOne("tofile").link);
  EXPECT_EQ(files_->Delete(Path("tofolder")), FileCode::AccessDenied);
  EXPECT_EQ(files_->RemoveFolder(Path("tofolder")), FileCode::Ok);
  EXPECT_EQ(files_->Delete(Path("tofile")), FileCode::Ok);
  EXPECT_EQ(files_->Delete(Path("tonothing")), FileCode::Ok);
  EXPECT_EQ(Count(), 1u);
  EXPECT_EQ(Bytes("folder/file"), "new");
}

TEST_F(FileSystemTest, APassKnowsWhatItDidItself) {
  fs::create_directories(Host("Folder/Sub"));
  Put("Folder/Old");
  fs::create_directory_symlink(Host("Folder"), Host("Link"));
  const FileSystem::Pass outer(*files_);
  {
    const FileSystem::Pass inner(*files_);
    EXPECT_FALSE(Exists("folder\\none"));
  }
  Put("Folder/Foreign");
  EXPECT_FALSE(Exists("Folder\\Foreign"));  // the folder was listed: nobody asks the host again
  std::unique_ptr<OutputFile> out;
  EXPECT_EQ(files_->Replace(Path("folder\\Replaced"), "x"), FileCode::Ok);
  EXPECT_EQ(files_->Open(Path("folder\\Opened"), false, out), FileCode::Ok);
  EXPECT_EQ(files_->Copy(Path("folder\\old"), Path("LINK\\Copied")), FileCode::Ok);
  EXPECT_EQ(files_->Move(Path("folder\\old"), Path("folder\\sub\\Moved")), FileCode::Ok);
  EXPECT_EQ(files_->CreateFolder(Path("link\\Made")), FileCode::Ok);
  Put("Folder/Library");
  files_->Touched(Path("folder\\Library"), true);
  files_->Touched(Path("folder\\library"), true);
  fs::remove(Host("Folder/Opened"));
  files_->Touched(Path("folder\\opened"), false);
  EXPECT_EQ(Find("folder\\*"), (Names{".", "..", "Copied", "Library", "Made", "Replaced", "Sub"}));
  EXPECT_TRUE(Exists("link\\SUB\\moved"));
  EXPECT_EQ(files_->CreateFolder(Path("folder\\OLD")), FileCode::Ok);
  EXPECT_EQ(files_->Move(Path("folder\\sub"), Path("folder\\made\\Sub2")), FileCode::Ok);
  EXPECT_TRUE(Exists("folder\\made\\sub2\\moved") && !Exists("folder\\sub\\moved"));
  EXPECT_EQ(files_->Delete(Path("link\\copied")), FileCode::Ok);
  EXPECT_FALSE(Exists("folder\\copied"));
}

TEST_F(FileSystemTest, BetweenPassesOthersAreSeen) {
  {
    const FileSystem::Pass pass(*files_);
    EXPECT_FALSE(Exists("file"));
  }
  Put("File");
  EXPECT_TRUE(Exists("file"));
  FileSystem::Stamp before, after;
  EXPECT_EQ(files_->GetStamp(Path("file"), before), FileCode::Ok);
  Put("File", "longer");
  EXPECT_EQ(files_->GetStamp(Path("file"), after), FileCode::Ok);
  EXPECT_FALSE(before == after);
  std::uint64_t size = 0;
  EXPECT_EQ(files_->GetSize(Path("file"), size), FileCode::Ok);
  EXPECT_EQ(size, 6u);
  fs::rename(Host("File"), Host("FILE2"));
  EXPECT_TRUE(!Exists("file") && Exists("file2"));
  EXPECT_GT(files_->FreeSpace(Path("none\\none\\none")), 0u);
}

TEST_F(FileSystemTest, OpenFilesKeepOrLoseWhatTheyHeld) {
  std::unique_ptr<OutputFile> out;
  std::string expected;
  for (const bool append : {true, true, false}) {
    expected = (append ? expected : "") + "line.";
    EXPECT_EQ(files_->Open(Path("list"), append, out), FileCode::Ok);
    EXPECT_EQ(out->Write("line"), FileCode::Ok);
    EXPECT_EQ(out->Write("."), FileCode::Ok);
    EXPECT_EQ(Bytes("list"), expected);
  }
}

TEST_F(FileSystemTest, AFolderThatCantBeListedIsSearchedByExactNames) {
  if (::geteuid() != 0) GTEST_SKIP() << "changes the user";
  fs::create_directory(Host("shut"));
  Put("shut/File");
  fs::permissions(Host("shut"), fs::perms(0711));
  ASSERT_EQ(::seteuid(65534), 0);
  const bool exact = Exists("shut\\File"), other = Exists("shut\\file");
  std::vector<FoundFile> found;
  const FileCode listing = files_->Find(Path("shut\\*"), found);
  EXPECT_EQ(::seteuid(0), 0);
  EXPECT_TRUE(exact);
  EXPECT_FALSE(other);
  EXPECT_EQ(listing, FileCode::AccessDenied);
}

}  // namespace
}  // namespace quillon
