#include "core/Files.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

namespace quillon {
namespace {

namespace fs = std::filesystem;
using Strings = std::vector<std::string>;
using Names = std::set<std::string>;

struct RecordedMeter : CopyMeter {
  void CopyFoundNothing(std::string_view caption) override { captions.emplace_back(caption); }
  void CopyMoved(int position) override { positions.push_back(position); }
  Strings captions;
  std::vector<int> positions;
};

/// The helpers on a folder of their own, and the host's plain calls beside them.
class FilesTest : public testing::Test {
 protected:
  FilesTest() {
    std::string form = testing::TempDir() + "quillon_XXXXXX";
    root_ = ::mkdtemp(form.data());
    fs::permissions(root_, fs::perms(0777));
  }
  ~FilesTest() override { fs::remove_all(root_); }

  std::string Path(std::string_view name) const { return root_ + "\\" + std::string(name); }
  fs::path Host(std::string_view name) const { return fs::path(root_) / name; }
  void Put(std::string_view name, std::string_view bytes = "x") const {
    fs::create_directories(Host(name).parent_path());
    std::ofstream(Host(name)) << bytes;
  }
  void MakeReadOnly(std::string_view name) const { fs::permissions(Host(name), fs::perms(0444)); }
  bool OnDisk(std::string_view name) const { return fs::exists(fs::symlink_status(Host(name))); }
  std::string Bytes(std::string_view name) const {
    std::ifstream in(Host(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  /// What lies below a folder, relative to it.
  Names Tree(std::string_view name) const {
    Names names;
    for (const auto& entry : fs::recursive_directory_iterator(Host(name)))
      names.insert(entry.path().lexically_relative(Host(name)).string());
    return names;
  }

  std::string root_;
  std::unique_ptr<FileSystem> host_ = MakeHostFileSystem();
  Random random_{7};
  RecordedMeter meter_;
  Files files_{*host_, random_, meter_};
};

/// The number of the run-time error that `statement` raises, 0 for none.
template <class Statement>
int ErrorOf(Statement statement) {
  try {
    statement();
    return 0;
  } catch (const RunTimeError& error) {
    return error.number();
  }
}

TEST_F(FilesTest, DelTreeTakesReadOnlyFilesAndHiddenFolders) {
  Put("folder/Read Only.txt");
  Put("folder/.hidden/deep/\xC3\xA9.sav");
  Put("folder/sub/a");
  MakeReadOnly("folder/Read Only.txt");
  MakeReadOnly("folder/sub/a");
  Put("folder2/stays");
  EXPECT_EQ(files_.DelTree("  " + Path("FOLDER") + "\\ "), 0);
  EXPECT_EQ(Tree(""), (Names{"folder2", "folder2/stays"}));
}

TEST_F(FilesTest, DelTreeRefusesWhatIsNoFolderOrNoPath) {
  Put("folder/file");
  for (const std::string& path :
       {std::string(), std::string("   "), std::string("folder"), std::string("folder\\"), std::string("\\"),
        root_, Host("folder").string(), Path("folder\\file"), Path("none"), Path("folder\\*.*")})
    EXPECT_EQ(files_.DelTree(path), -1) << '"' << path << '"';
  EXPECT_TRUE(OnDisk("folder/file"));
}

TEST_F(FilesTest, DelTreeNeverFollowsLinks) {
  Put("outside/kept");
  Put("folder/sub/file");
  fs::create_directory_symlink(Host("outside"), Host("folder/sub/ToFolder"));
  fs::create_symlink(Host("outside/kept"), Host("folder/ToFile"));
  fs::create_symlink(Host("nowhere"), Host("folder/ToNothing"));
  EXPECT_EQ(files_.DelTree(Path("folder")), 0);
  EXPECT_FALSE(OnDisk("folder"));
  fs::create_directory_symlink(Host("outside"), Host("folder"));
  EXPECT_EQ(files_.DelTree(Path("folder")), 0);
  EXPECT_EQ(Tree(""), (Names{"outside", "outside/kept"}));
}

TEST_F(FilesTest, CopyAllFilesCountsAllThatItFinds) {
  Put("from/A.Sav", "new");
  Put("from/b.txt", "b");
  Put("from/sub.sav/inner");
  Put("to/a.sav", "old");
  EXPECT_EQ(files_.CopyAllFiles(Path("FROM\\"), Path("to\\"), "*.*"), 5);  // with ".", ".." and the folder
  EXPECT_EQ(Tree("to"), (Names{"a.sav", "b.txt"}));
  EXPECT_EQ(Bytes("to/a.sav"), "new");
  EXPECT_EQ(files_.CopyAllFiles(Path("from\\"), Path("Made\\"), "*.sav"), 2);
  EXPECT_EQ(Tree("Made"), Names{"A.Sav"});
  EXPECT_TRUE(meter_.captions.empty());
  EXPECT_EQ(meter_.positions.size(), 7u);
}

TEST_F(FilesTest, CopyAllFilesTellsWhenNothingMatches) {
  fs::create_directory(Host("empty"));
  EXPECT_EQ(files_.CopyAllFiles(Path("none\\"), Path("to\\"), "*.*"), 0);
  EXPECT_EQ(files_.CopyAllFiles(Path("empty\\"), Path("to\\"), "*.sav"), 0);
  EXPECT_EQ(meter_.captions, Strings(2, "No new routes found."));
  EXPECT_TRUE(OnDisk("to"));
  EXPECT_EQ(files_.CopyAllFiles(Path("empty\\"), Path("to\\"), "*.*"), 2);
  EXPECT_EQ(meter_.captions.size(), 2u);
}

TEST_F(FilesTest, CopyAllFilesPassesFailuresOver) {
  Put("from/a", "new");
  Put("from/b", "new");
  Put("to/a", "old");
  MakeReadOnly("to/a");
  EXPECT_EQ(files_.CopyAllFiles(Path("from\\"), Path("to\\"), "*.*"), 4);
  EXPECT_EQ(Bytes("to/a") + Bytes("to/b"), "oldnew");
  EXPECT_EQ(files_.CopyAllFiles(Path("from\\"), Path("none\\none\\"), "*.*"), 4);
  EXPECT_FALSE(OnDisk("none"));
}

TEST_F(FilesTest, TheCopyBarWandersOnFromCallToCall) {
  for (int i = 0; i < 40; ++i) Put("from/" + std::to_string(i));
  for (int call = 0; call < 3; ++call) files_.CopyAllFiles(Path("from\\"), Path("to\\"), "*.*");
  ASSERT_EQ(meter_.positions.size(), 3u * 42u);
  std::set<int> steps;
  int before = 0, wraps = 0;
  for (const int position : meter_.positions) {
    EXPECT_LE(position, 100);
    if (position > before) {
      steps.insert(position - before);
    } else {
      EXPECT_EQ(position, 5);
      EXPECT_GE(before, 96);
      ++wraps;
    }
    before = position;
  }
  EXPECT_EQ(steps, (std::set<int>{1, 2, 3, 4, 5}));
  EXPECT_GE(wraps, 2);
}

TEST_F(FilesTest, SetAttributesActsOnTheFirst255Characters) {
  std::string name;
  for (int i = 0; i < 8; ++i) name += "\xC3\xA9";
  name.append(255 - root_.size() - 1 - 8, 'n');
  for (const auto& file : {name, name + "abc"}) {
    Put(file);
    MakeReadOnly(file);
  }
  files_.SetAttributes(Path(name + "abc"), kArchive);
  EXPECT_EQ(ErrorOf([&] { files_.Kill(Path(name + "abc")); }), 75);
  EXPECT_EQ(ErrorOf([&] { files_.Kill(Path(name)); }), 0);
  Put("fixed");
  MakeReadOnly("fixed");
  files_.SetAttributes(Path("fix*"), kArchive);
  files_.SetAttributes(Path("none"), kArchive);
  EXPECT_EQ(ErrorOf([&] { files_.Kill(Path("fixed")); }), 75);
}

TEST_F(FilesTest, KillDeletesAllFilesThatMatch) {
  for (const char* name : {"a.raw", "B.RAW", "c.rawx", "d.raw/inner", "e.t"}) Put(name);
  files_.Kill(Path("*.raw"));
  EXPECT_EQ(Tree(""), (Names{"c.rawx", "d.raw", "d.raw/inner", "e.t"}));
  EXPECT_EQ(ErrorOf([&] { files_.Kill(Path("*.raw")); }), 53);
  MakeReadOnly("e.t");
  EXPECT_EQ(ErrorOf([&] { files_.Kill(Path("e.t")); }), 75);
  EXPECT_TRUE(OnDisk("e.t"));
  files_.KillReadOnly(Path("E.T"));
  EXPECT_FALSE(OnDisk("e.t"));
}

TEST_F(FilesTest, WalkMeetsEachFileBelow) {
  for (const char* name : {"b", "A/x", "A/deep/y", "c/z", "outside/never"}) Put("tree/" + std::string(name));
  fs::rename(Host("tree/outside"), Host("outside"));
  fs::create_directory_symlink(Host("outside"), Host("tree/link"));
  Strings met;
  files_.Walk(Path("tree\\*.*"), [&](const std::string& folder, const std::string& name) {
    EXPECT_TRUE(folder.starts_with(Path("tree\\"))) << folder;
    met.push_back(folder.substr(Path("tree\\").size()) + name);
  });
  EXPECT_EQ(met, (Strings{"A\\deep\\y", "A\\x", "b", "c\\z"}));
  files_.Walk(Path("none\\*.*"), [](const std::string&, const std::string& name) { ADD_FAILURE() << name; });
}

TEST_F(FilesTest, BackupSweepTakesBackupsOnly) {
  for (const char* name :
       {"ts-bak-a.s", "sub/ostr-b.ace", "sub/ts-bak-", "TS-BAK-c", "sub/xts-bak-d", "ostr"}) {
    Put("tree/" + std::string(name));
    MakeReadOnly("tree/" + std::string(name));
  }
  files_.BackupSweep(Path("tree\\*.*"));
  EXPECT_EQ(Tree("tree"), (Names{"TS-BAK-c", "ostr", "sub", "sub/xts-bak-d"}));
}

}  // namespace
}  // namespace quillon
