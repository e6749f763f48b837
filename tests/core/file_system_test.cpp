#include "core/archive/ZipFile.h"
#include "core/host/RawFile.h"
#include "tests/core/FileSystemTest.h"
#include "tests/world/HostFiles.h"
#include "tests/world/ZipMaker.h"

namespace quillon {
namespace {

using enum FileCode;

TEST(MatchesPatternTest, FollowsThePlatform) {
  const Strings names = {"a.htm",       "a.ht",    "a.html",   "noext",        "name.ext",
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
  Put("TRAINS/Consists/\xC3\x89t\xC3\xA9.con");
  for (const char* name :
       {"trains\\CONSISTS\\\xC3\xA9T\xC3\x89.con", "trains//consists\\", "none\\..\\.\\Trains. \\consists."})
    EXPECT_TRUE(Exists(name)) << name;
  // The event loop must not turn where a window that is being painted asks.
  files_->SetIdle([] { ADD_FAILURE() << "a host path was asked for"; });
  const fs::path made = ToPath(files_->HostPath(Path("trains\\consists\\New.Con")));
  EXPECT_TRUE(made.filename() == "New.Con" && fs::equivalent(made.parent_path(), Host("TRAINS/Consists")));
  EXPECT_EQ(ToPath(files_->HostPath(Path("TRAINS\\consists\\\xC3\xA9T\xC3\x89.con"))).filename(),
            ToPath("\xC3\x89t\xC3\xA9.con"));
}

TEST_F(FileSystemTest, TellsWhyNothingIsThere) {
  Put("file");
  EXPECT_EQ(CodeFor(Path("none")), FileNotFound);
  for (const std::string& path : {std::string(), Path("none\\none"), Path("file\\none")})
    EXPECT_EQ(CodeFor(path), PathNotFound) << path;
  for (const char* name : {"file\\", "a<", "a>", "a\"", "a|", "a:b", "a\x1F", "a*", "a?b\\c"})
    EXPECT_EQ(CodeFor(Path(name)), InvalidName) << name;
  for (const char* name : {"con", "Nul.txt", "com1.a.b", "LPT9 .x", "new\\"})
    EXPECT_EQ(Replace(name, "x"), InvalidName) << name;
  EXPECT_EQ(Replace("com10", "x"), Ok);
  std::vector<FoundFile> found;
  EXPECT_EQ(files_->Find(Path("none\\*"), found), PathNotFound);
  EXPECT_EQ(files_->Find(Path(""), found), FileNotFound);
}

TEST_F(FileSystemTest, ListsInThePlatformsOrder) {
  const Strings order = {"!t",          "10",  "9",  "A",  "aB", "aZ",       "b",
                         "Z",           "[1]", "^t", "_x", "~t", "\xC3\x89", "\xF0\x9F\x9A\x82",
                         "\xEF\xBC\x81"};
  Strings expected = {".", ".."};
  for (const auto& name : order) {
    Put("folder/" + name);
    expected.push_back(name);
  }
  EXPECT_EQ(Find("folder\\*.*"), expected);
  EXPECT_EQ(Find("FOLDER"), Strings{"folder"});
  EXPECT_EQ(Find("folder\\*.sav"), Strings{});
  // A platform with short names would find them by these.
  for (const char* name : {"page.html", "long name of a page.html"}) Put(name);
  EXPECT_EQ(Find("*.htm"), Strings{});
}

TEST_F(FileSystemTest, PathsAreAsLongAsTheyHaveToBe) {
  std::string folder;
  for (int depth = 0; depth < 8; ++depth) {
    folder += (depth == 0 ? "" : "\\") + std::string(50, static_cast<char>('a' + depth));
    ASSERT_EQ(Make(folder), Ok) << folder.size();
  }
  EXPECT_EQ(Replace(folder + "\\File", "text"), Ok);
  EXPECT_EQ(Copy(folder + "\\file", folder + "\\.\\Copy"), Ok);
  RawFile raw(files_->HostPath(Path(folder + "\\Raw")));
  EXPECT_EQ(raw.Write("raw"), Ok);
  EXPECT_EQ(raw.Keep(), Ok);
  EXPECT_EQ(Replace(folder + "\\Zip", ZipBytes({{.name = "entry"}})), Ok);
  EXPECT_EQ(ZipFile(files_->HostPath(Path(folder + "\\Zip"))).Entries().size(), 1u);
  EXPECT_EQ(Find(folder + "\\*"), (Strings{".", "..", "Copy", "File", "Raw", "Zip"}));
  EXPECT_EQ(Read(folder + "\\COPY") + Read(folder + "\\raw"), "textraw");
  EXPECT_EQ(HostFiles().files.DelTree(Path(std::string(50, 'a'))), 0);
  EXPECT_EQ(Count(), 0u);
}

TEST_F(FileSystemTest, ReadOnlyFilesAreLeftAloneByEveryUser) {
  Put("fixed", "old");
  Put("other", "new");
  EXPECT_EQ(Attributes("fixed"), kArchive);
  EXPECT_EQ(Mark("fixed", kReadOnly | kArchive), Ok);
  EXPECT_EQ(FindOne("fixed").attributes, kReadOnly | kArchive);
  EXPECT_EQ(Delete("fixed"), AccessDenied);
  EXPECT_EQ(Replace("fixed", "new"), AccessDenied);
  EXPECT_EQ(Copy("other", "FIXED"), AccessDenied);
  EXPECT_EQ(Open("fixed", true), AccessDenied);
  EXPECT_EQ(Bytes("fixed"), "old");
  EXPECT_EQ(Move("fixed", "moved"), Ok);
  EXPECT_EQ(Copy("moved", "copy"), Ok);
  EXPECT_EQ(Attributes("copy"), kReadOnly | kArchive);
  EXPECT_EQ(fs::last_write_time(Host("copy")), fs::last_write_time(Host("moved")));
  EXPECT_EQ(Mark("copy", kArchive), Ok);
  EXPECT_EQ(Delete("copy"), Ok);
}

TEST_F(FileSystemTest, CopiesAndReplacesWhole) {
  fs::create_directory(Host("folder"));
  const std::string large(1'000'000, 'q');
  Put("Large", large);
  Put("small", "small");
  EXPECT_EQ(Copy("LARGE", "folder\\new"), Ok);
  EXPECT_EQ(Bytes("folder/new"), large);
  EXPECT_EQ(Copy("small", "LARGE"), Ok);
  EXPECT_EQ(Bytes("Large"), "small");
  EXPECT_EQ(Copy("small", "SMALL"), SharingViolation);
  EXPECT_EQ(Copy("small", "folder"), AccessDenied);
  EXPECT_EQ(Copy("folder", "new"), AccessDenied);
  EXPECT_EQ(Copy("none", "new"), FileNotFound);
  EXPECT_EQ(Copy("small", "none\\new"), PathNotFound);
  Put("small.part~", "left by a run that was ended");
  EXPECT_EQ(Replace("Small", "replaced"), Ok);
  EXPECT_EQ(Bytes("small"), "replaced");
  for (int round = 0; round < 2; ++round) EXPECT_EQ(Replace(std::string(255, 'n'), "1"), Ok);
  EXPECT_EQ(Count(), 5u);
}

TEST_F(FileSystemTest, MovesToFreeNamesOnly) {
  fs::create_directory(Host("folder"));
  Put("a.sav", "a");
  Put("b.sav", "b");
  EXPECT_EQ(Move("a.sav", "B.SAV"), AlreadyExists);
  EXPECT_EQ(Move("a.sav", "FOLDER"), AlreadyExists);
  EXPECT_EQ(Move("none", "new"), FileNotFound);
  EXPECT_EQ(Move("a.sav", "none\\new"), PathNotFound);
  EXPECT_EQ(Move("folder", "folder\\inner"), SharingViolation);
  EXPECT_EQ(Move("a.sav", "a.sav"), Ok);
  EXPECT_EQ(Move("A.SAV", "A.Sav"), Ok);
  const std::string respelled = UnderWine() ? "a.sav" : "A.Sav";  // Wine keeps the old spelling
  EXPECT_EQ(Find("*.sav"), (Strings{respelled, "b.sav"}));
  EXPECT_EQ(Bytes("A.Sav") + Bytes("b.sav"), "ab");
}

TEST_F(FileSystemTest, FoldersAreMadeAndRemovedOneLevelAtATime) {
  EXPECT_EQ(Make("a\\b"), PathNotFound);
  EXPECT_EQ(Make("A. \\"), Ok);
  EXPECT_EQ(Make("a"), AlreadyExists);
  Put("A/file");
  EXPECT_EQ(RemoveFolder("a"), DirectoryNotEmpty);
  EXPECT_EQ(RemoveFolder("a\\file"), NotADirectory);
  EXPECT_EQ(Delete("a"), AccessDenied);
  EXPECT_EQ(Delete("a\\file"), Ok);
  EXPECT_EQ(RemoveFolder("a"), Ok);
  EXPECT_EQ(RemoveFolder("a"), FileNotFound);
}

TEST_F(FileSystemTest, LinksGoAndWhatTheyPointToStays) {
  if (!HasLinks()) GTEST_SKIP() << kNoLinks;
  Put("folder/file", "old");
  MakeReadOnly(Host("folder/file"));
  MakeFolderLink(Host("folder"), Host("ToFolder"));
  MakeFileLink(Host("folder/file"), Host("ToFile"));
  MakeFileLink(Host("nowhere"), Host("ToNothing"));
  EXPECT_TRUE(FindOne("tofolder").link && FindOne("tofolder").folder());
  EXPECT_TRUE(FindOne("tofile").link && !FindOne("tofile").folder());
  EXPECT_FALSE(FindOne("folder").link);
  EXPECT_EQ(Attributes("tonothing"), kArchive);
  EXPECT_EQ(Mark("tofile", kArchive), Ok);
  EXPECT_EQ(Replace("tofile", "new"), AccessDenied);
  EXPECT_EQ(Mark("tofolder\\file", kArchive), Ok);
  EXPECT_EQ(Mark("tofile", kReadOnly), Ok);
  EXPECT_EQ(Replace("tofile", "new"), Ok);
  EXPECT_EQ(Replace("tonothing", "new"), FileNotFound);
  EXPECT_TRUE(FindOne("tofile").link);
  EXPECT_EQ(Delete("tofolder"), AccessDenied);
  EXPECT_EQ(RemoveFolder("tofolder"), Ok);
  EXPECT_EQ(Delete("tofile"), Ok);
  EXPECT_EQ(Delete("tonothing"), Ok);
  EXPECT_EQ(Count(), 2u);
  EXPECT_EQ(Bytes("folder/file"), "new");
}

TEST_F(FileSystemTest, APassKnowsWhatItDidItself) {
  fs::create_directories(Host("Folder/Sub"));
  Put("Folder/Old");
  const std::string link = HasLinks() ? "LINK" : "folder";
  if (HasLinks()) MakeFolderLink(Host("Folder"), Host("Link"));
  const FileSystem::Pass outer(*files_);
  {
    const FileSystem::Pass inner(*files_);
    EXPECT_FALSE(Exists("folder\\none"));
  }
  EXPECT_EQ(Replace("folder\\Replaced", "x"), Ok);
  EXPECT_EQ(Open("folder\\Opened", false), Ok);
  EXPECT_EQ(Copy("folder\\old", link + "\\Copied"), Ok);
  EXPECT_EQ(Move("folder\\old", "folder\\sub\\Moved"), Ok);
  EXPECT_EQ(Make(link + "\\Made"), Ok);
  Put("Folder/Library");
  for (const char* name : {"folder\\Library", "folder\\library"}) files_->Touched(Path(name), true);
  out_.reset();
  fs::remove(Host("Folder/Opened"));
  files_->Touched(Path("folder\\opened"), false);
  EXPECT_EQ(Find("folder\\*"), (Strings{".", "..", "Copied", "Library", "Made", "Replaced", "Sub"}));
  EXPECT_TRUE(Exists(link + "\\SUB\\moved"));
  EXPECT_EQ(Make("folder\\OLD"), Ok);
  EXPECT_EQ(Move("folder\\sub", "folder\\made\\Sub2"), Ok);
  EXPECT_TRUE(Exists("folder\\made\\sub2\\moved") && !Exists("folder\\sub\\moved"));
  EXPECT_EQ(Delete(link + "\\copied"), Ok);
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
  EXPECT_EQ(files_->GetStamp(Path("file"), before), Ok);
  Put("File", "longer");
  EXPECT_EQ(files_->GetStamp(Path("file"), after), Ok);
  EXPECT_FALSE(before == after);
  std::uint64_t size = 0;
  EXPECT_EQ(files_->GetSize(Path("file"), size), Ok);
  EXPECT_EQ(size, 6u);
  fs::rename(Host("File"), Host("FILE2"));
  EXPECT_TRUE(!Exists("file") && Exists("file2"));
  EXPECT_GT(files_->FreeSpace(Path("none\\none\\none")), 0u);
}

TEST_F(FileSystemTest, OpenFilesKeepOrLoseWhatTheyHeld) {
  std::string expected;
  for (const bool append : {true, true, false}) {
    expected = (append ? expected : "") + "line.";
    EXPECT_EQ(Open("list", append), Ok);
    for (const char* part : {"line", "."}) EXPECT_EQ(out_->Write(part), Ok);
    EXPECT_EQ(Bytes("list"), expected);
  }
}

}  // namespace
}  // namespace quillon
