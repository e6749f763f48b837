#include "core/Files.h"

#include <gtest/gtest.h>

#include "tests/world/HostFiles.h"
#include "tests/world/TestFolder.h"

namespace quillon {
namespace {

using Names = std::set<std::string>;

/// The helpers on a folder of their own, and the host's plain calls beside them.
class FilesTest : public testing::Test, protected TestFolder, protected HostFiles {
 protected:
  int KillError(const std::string& name) {
    return ErrorOf([&] { files.Kill(Path(name)); }).first;
  }
};

TEST_F(FilesTest, DelTreeTakesReadOnlyFilesAndHiddenFolders) {
  for (const char* name : {"folder/Read Only.txt", "folder/.hidden/deep/\xC3\xA9.sav", "folder/sub/a"}) {
    Put(name);
    MakeReadOnly(Host(name));
  }
  Put("folder2/stays");
  EXPECT_EQ(files.DelTree("  " + Path("FOLDER") + "\\ "), 0);
  EXPECT_EQ(Below(""), (Names{"folder2", "folder2/stays"}));
}

TEST_F(FilesTest, DelTreeRefusesWhatIsNoFolderAndNeverFollowsLinks) {
  Put("outside/kept");
  Put("folder/sub/file");
  for (const std::string& path :
       Strings{"", "   ", "folder", "folder\\", "\\", Host("folder").generic_string(), Path("outside\\kept"),
               Path("none"), Path("folder\\*.*")})
    EXPECT_EQ(files.DelTree(path), -1) << '"' << path << '"';
  if (HasLinks()) {
    MakeFolderLink(Host("outside"), Host("folder/sub/ToFolder"));
    MakeFileLink(Host("outside/kept"), Host("folder/ToFile"));
    MakeFileLink(Host("nowhere"), Host("folder/ToNothing"));
    MakeFolderLink(Host("outside"), Host("link"));
    EXPECT_EQ(files.DelTree(Path("link")), 0);
  }
  EXPECT_EQ(files.DelTree(Path("folder")), 0);
  EXPECT_EQ(Below(""), (Names{"outside", "outside/kept"}));
}

TEST_F(FilesTest, CopyAllFilesCountsAllThatItFindsAndTellsWhenThatIsNothing) {
  Put("from/A.Sav", "new");
  Put("from/b.txt", "b");
  Put("from/sub.sav/inner");
  Put("to/a.sav", "old");
  EXPECT_EQ(files.CopyAllFiles(Path("FROM\\"), Path("to\\"), "*.*"), 5);  // with ".", ".." and the folder
  EXPECT_EQ(Below("to"), (Names{"a.sav", "b.txt"}));
  EXPECT_EQ(Bytes("to/a.sav"), "new");
  EXPECT_EQ(files.CopyAllFiles(Path("from\\"), Path("Made\\"), "*.sav"), 2);
  EXPECT_EQ(Below("Made"), Names{"A.Sav"});
  EXPECT_EQ(meter.positions.size(), 7u);

  fs::create_directory(Host("empty"));
  EXPECT_EQ(files.CopyAllFiles(Path("empty\\"), Path("to\\"), "*.*"), 2);
  EXPECT_TRUE(meter.captions.empty());
  EXPECT_EQ(files.CopyAllFiles(Path("none\\"), Path("new\\"), "*.*"), 0);
  EXPECT_EQ(files.CopyAllFiles(Path("empty\\"), Path("new\\"), "*.sav"), 0);
  EXPECT_EQ(meter.captions, Strings(2, "No new routes found."));
  EXPECT_TRUE(OnDisk("new"));
}

TEST_F(FilesTest, CopyAllFilesPassesFailuresOver) {
  Put("from/a", "new");
  Put("from/b", "new");
  Put("to/a", "old");
  MakeReadOnly(Host("to/a"));
  EXPECT_EQ(files.CopyAllFiles(Path("from\\"), Path("to\\"), "*.*"), 4);
  EXPECT_EQ(Bytes("to/a") + Bytes("to/b"), "oldnew");
  EXPECT_EQ(files.CopyAllFiles(Path("from\\"), Path("none\\none\\"), "*.*"), 4);
  EXPECT_FALSE(OnDisk("none"));
}

TEST_F(FilesTest, TheCopyBarWandersOnFromCallToCall) {
  for (int i = 0; i < 40; ++i) Put("from/" + std::to_string(i));
  for (int call = 0; call < 3; ++call) files.CopyAllFiles(Path("from\\"), Path("to\\"), "*.*");
  ASSERT_EQ(meter.positions.size(), 3u * 42u);
  int before = 0, wraps = 0;
  for (const int position : meter.positions) {
    const int step = position - before;
    wraps += step < 0;
    EXPECT_TRUE(step < 0 ? position == 5 && before >= 96 : step >= 1 && step <= 5 && position <= 100) << step;
    before = position;
  }
  EXPECT_GE(wraps, 2);
}

TEST_F(FilesTest, SetAttributesActsOnTheFirst255Characters) {
  std::string name = "\xC3\xA9\xC3\xA9";
  name.append(255 - Root().size() - 1 - 2, 'n');
  for (const auto& file : {name, name + "abc", std::string("fixed")}) {
    Put(file);
    MakeReadOnly(Host(file));
  }
  files.SetAttributes(Path(name + "abc"), kArchive);
  EXPECT_EQ(KillError(name + "abc"), 75);
  EXPECT_EQ(KillError(name), 0);
  files.SetAttributes(Path("fix*"), kArchive);
  files.SetAttributes(Path("none"), kArchive);
  EXPECT_EQ(KillError("fixed"), 75);
}

TEST_F(FilesTest, KillDeletesAllFilesThatMatch) {
  for (const char* name : {"a.raw", "B.RAW", "c.rawx", "d.raw/inner", "e.t"}) Put(name);
  files.Kill(Path("*.raw"));
  EXPECT_EQ(Below(""), (Names{"c.rawx", "d.raw", "d.raw/inner", "e.t"}));
  EXPECT_EQ(KillError("*.raw"), 53);
  MakeReadOnly(Host("e.t"));
  EXPECT_EQ(KillError("e.t"), 75);
  EXPECT_TRUE(OnDisk("e.t"));
  files.KillReadOnly(Path("E.T"));
  EXPECT_FALSE(OnDisk("e.t"));
}

TEST_F(FilesTest, RefusalsSayWhatStandsInTheWay) {
  const auto told = [&](const std::function<void()>& action) {
    try {
      action();
    } catch (const RunTimeError& error) {
      return std::to_string(error.number()) + " " + error.path() + ": " + error.reason();
    }
    return std::string("nothing");
  };
  Put("kept", "old");
  Put("new");
  Put("folder/in");
  MakeReadOnly(Host("kept"));
  const std::string kept = "75 " + Path("kept") + ": " + kNoPermission;
  const std::string folder = "75 " + Path("folder") + ": a folder stands where a file is wanted";
  EXPECT_EQ(told([&] { files.Kill(Path("kept")); }), kept);
  EXPECT_EQ(told([&] { files.FileCopy(Path("new"), Path("kept")); }), kept);
  EXPECT_EQ(told([&] { files.WriteAll(Path("kept"), "new"); }), kept);
  EXPECT_EQ(told([&] { files.RequireWritable(Path("kept")); }), kept);
  EXPECT_EQ(told([&] { files.FileCopy(Path("new"), Path("folder")); }), folder);
  EXPECT_EQ(told([&] { files.FileCopy(Path("folder"), Path("new")); }), folder);  // the source is to blame
  EXPECT_EQ(told([&] { files.FileCopy(Path("none"), Path("new")); }), "53 " + Path("none") + ": ");
  for (const char* name : {"new", "folder", "none"})
    EXPECT_EQ(told([&] { files.RequireWritable(Path(name)); }), "nothing");
  if (!HasPermissions()) return;
  const WithoutPrivileges user(Root());
  const ShutFolder shut(Host("folder"));
  EXPECT_EQ(told([&] { files.RequireWritable(Path("folder")); }),
            "75 " + Path("folder") + ": " + kNoPermission);
  fs::permissions(Host("new"), fs::perms(0200));
  EXPECT_EQ(told([&] { files.FileCopy(Path("new"), Path("copy")); }),
            "75 " + Path("new") + ": " + kNoPermissionToRead);
}

TEST_F(FilesTest, RoomIsCountedInBlocksAndToldInReadableUnits) {
  EXPECT_EQ(RoomFor(0), 0u);
  EXPECT_EQ(RoomFor(1), 4096u);
  EXPECT_EQ(RoomFor(4096), 4096u);
  EXPECT_EQ(RoomFor(~std::uint64_t{0}), ~std::uint64_t{0});
  const auto told = [&](std::uint64_t bytes) {
    try {
      files.RequireRoom(FullDisk(), bytes);
    } catch (const RunTimeError& error) {
      return error.reason();
    }
    return std::string();
  };
  EXPECT_EQ(told(0), "");
  EXPECT_EQ(told(5000), "5 KB are needed, 0 KB are free");
  EXPECT_EQ(told((10u << 20) + 1), "11 MB are needed, 0 MB are free");
}

TEST_F(FilesTest, WalkMeetsEachFileBelow) {
  for (const char* name : {"tree/b", "tree/A/x", "tree/A/deep/y", "tree/c/z", "outside/never"}) Put(name);
  if (HasLinks()) MakeFolderLink(Host("outside"), Host("tree/link"));
  Strings met;
  for (const char* folder : {"none\\", "tree\\"})
    files.Walk(Path(folder) + "*.*",
               [&](const std::string& at, const std::string& name) { met.push_back(at + name); });
  EXPECT_EQ(met,
            (Strings{Path("tree\\A\\deep\\y"), Path("tree\\A\\x"), Path("tree\\b"), Path("tree\\c\\z")}));
}

TEST_F(FilesTest, BackupSweepTakesBackupsOnly) {
  for (const std::string name : {"tree/ts-bak-a.s", "tree/sub/ostr-b.ace", "tree/sub/ts-bak-",
                                 "tree/TS-BAK-c", "tree/sub/xts-bak-d", "tree/ostr"}) {
    Put(name);
    MakeReadOnly(Host(name));
  }
  files.BackupSweep(Path("tree\\*.*"));
  EXPECT_EQ(Below("tree"), (Names{"TS-BAK-c", "ostr", "sub", "sub/xts-bak-d"}));
}

}  // namespace
}  // namespace quillon
