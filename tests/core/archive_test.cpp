// Archives: what is listed, selected, unpacked, packed and carried over, and what is refused.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <functional>
#include <random>

#include "core/Text.h"
#include "core/archive/ArchiveNames.h"
#include "core/archive/ArchiveReader.h"
#include "core/archive/ArchiveWriter.h"
#include "tests/world/TestProgram.h"
#include "tests/world/ZipMaker.h"

namespace quillon {
namespace {

namespace fs = std::filesystem;
using Tree = std::map<std::string, std::string>;

constexpr std::size_t kBig = (8u << 20) + 4321;  // above what is unpacked or packed in one piece

class SilentMeter : public CopyMeter {
  void CopyFoundNothing(std::string_view) override {}
  void CopyMoved(int) override {}
};

/// Bytes that do not compress.
std::string Noise(std::size_t size, std::uint64_t seed) {
  std::mt19937_64 random(seed);
  std::vector<std::uint64_t> words(size / 8 + 1);
  std::generate(words.begin(), words.end(), std::ref(random));
  std::string bytes(size, '\0');
  std::memcpy(bytes.data(), words.data(), size);
  return bytes;
}

class ArchiveTest : public testing::Test {
 protected:
  ArchiveTest() {
    std::string name = (fs::temp_directory_path() / "quillon-archive-XXXXXX").string();
    root_ = mkdtemp(name.data());
    fs::create_directories(root_ / "out");
  }
  ~ArchiveTest() override { fs::remove_all(root_); }

  std::string At(const std::string& name) const { return root_.string() + "\\" + name; }
  std::string Host(const std::string& name) const { return (root_ / name).string(); }
  Tree Out() const { return TestProgram::Tree(Host("out")); }

  std::string Make(const std::vector<ZipEntry>& entries, const ZipShape& shape = {}) {
    MakeZip(Host("a.zip"), entries, shape);
    return At("a.zip");
  }

  /// A reader that counts faults, over a.zip, its directory read.
  ArchiveReader Open() { return Open(At("a.zip")); }
  ArchiveReader Open(const std::string& path) {
    ArchiveReader reader(files_, [this] { ++faults_; });
    reader.InputFile = path;
    reader.OutputFolder = At("out\\");
    reader.ReadDirectory();
    return reader;
  }

  /// Extracts what `filters` select, flat or not, into an empty folder.
  Tree Extracted(const std::vector<std::string>& filters, bool keepFolders) {
    fs::remove_all(Host("out"));
    ArchiveReader reader = Open();
    reader.KeepFolders = keepFolders;
    for (const auto& filter : filters) reader.AddFilter(filter);
    reader.Extract();
    return Out();
  }

  /// Whether a reader, and with `extract` an extraction, meets damage: by its handler, and as an error
  /// without one.
  bool IsDamaged(bool extract = false) {
    faults_ = 0;
    ArchiveReader reader = Open();
    reader.AddFilter("*");
    if (extract) reader.Extract();
    EXPECT_TRUE(faults_ == 0 || extract || reader.EntryCount() == 0);
    ArchiveReader strict(files_);
    strict.InputFile = At("a.zip");
    strict.OutputFolder = At("out\\");
    strict.AddFilter("*");
    try {
      strict.ReadDirectory();
      if (extract) strict.Extract();
      EXPECT_EQ(faults_, 0) << "heard of by the handler alone";
    } catch (const RunTimeError& error) {
      EXPECT_GT(faults_, 0) << "an error alone";
      EXPECT_EQ(error.path(), At("a.zip"));
    }
    return faults_ > 0;
  }

  /// The error that `action` ends in, by number and path.
  static std::pair<int, std::string> ErrorOf(const std::function<void()>& action) {
    try {
      action();
    } catch (const RunTimeError& error) {
      return {error.number(), error.path()};
    }
    return {0, ""};
  }

  fs::path root_;
  std::unique_ptr<FileSystem> host_ = MakeHostFileSystem();
  Random random_;
  SilentMeter meter_;
  Files files_{*host_, random_, meter_};
  int faults_ = 0;
};

TEST_F(ArchiveTest, ListsStoredNamesInTheSystemsForm) {
  Make({Entry("Route/Tiles/A.t", "12345"),
        Entry("Route\\World\\w.w"),
        {.name = "Route/Empty", .folder = true},
        Entry("C:/drive.txt"),
        Entry("//root.txt"),
        Entry("caf\x82.txt"),
        {.name = "caf\xC3\xA9.txt", .utf8Flag = true},
        Entry("\xC3\xA9.txt")});
  const ArchiveReader reader = Open();
  ASSERT_EQ(reader.EntryCount(), 8);
  std::vector<std::string> names;
  for (int i = 0; i < 8; ++i) names.push_back(reader.Entry(i).substr(0, reader.Entry(i).find('|')));
  EXPECT_EQ(names, (std::vector<std::string>{"Route\\Tiles\\A.t", "Route\\World\\w.w", "Route\\Empty\\",
                                             "drive.txt", "root.txt", "café.txt", "café.txt", "├⌐.txt"}));
  EXPECT_EQ(reader.LowerName(0), "route\\tiles\\a.t");
  EXPECT_EQ(faults_, 0);
}

TEST_F(ArchiveTest, RefusesNamesThatLeadOutOrFitNoDisk) {
  for (const std::string name : {"../x", "a/../../x", "a/..", "..\\x", "C:../x", "a/.. /x", "a*b", "a?b",
                                 "ab:c.txt", "con", "a/NUL.txt", "com1.t", "a|b", "a/lpt9/b"}) {
    Make({Entry("fine.txt"), Entry(name)});
    EXPECT_TRUE(IsDamaged()) << name;
    EXPECT_FALSE(fs::exists(Host("x")));
  }
  Make({Entry(std::string(300, 'x'))});
  EXPECT_TRUE(IsDamaged());
  Make({Entry("..a/x"), Entry("a..b"), Entry("console.txt"), Entry("com10.t"), Entry("a/.hidden")});
  EXPECT_FALSE(IsDamaged());
  EXPECT_STREQ(HarmIn("route\\tiles\\a.t"), nullptr);
  EXPECT_EQ(NormalStoredName("\\\\server/share"), "server\\share");
}

TEST_F(ArchiveTest, RefusesControlCharactersInNames) {
  for (const bool utf8 : {true, false}) {
    Make({{.name = "a\x01.txt", .utf8Flag = utf8}});
    EXPECT_TRUE(IsDamaged()) << utf8;
    Make({{.name = "a\nb.txt", .utf8Flag = utf8}});
    EXPECT_TRUE(IsDamaged()) << utf8;
  }
}

TEST_F(ArchiveTest, TakesWhatIsNoReadableArchiveForDamaged) {
  const std::string whole = ZipBytes({{.name = "a.txt", .data = "text", .deflated = true}, Entry("b.txt")});
  for (std::size_t size = 0; size < whole.size(); size += 5) {
    WriteBytes(Host("a.zip"), whole.substr(0, size));
    EXPECT_TRUE(IsDamaged()) << "cut at " << size;
  }
  WriteBytes(Host("a.zip"), Noise(5000, 1));
  EXPECT_TRUE(IsDamaged());
  Make({Entry("a.txt", "text")}, {.directoryShift = 7});
  EXPECT_TRUE(IsDamaged());
  Make({Entry("a.txt"), {.name = "secret.txt", .data = "text", .encrypted = true}});
  EXPECT_TRUE(IsDamaged());
  Make({{.name = "a.txt", .data = "text", .toldMethod = 97}});
  EXPECT_TRUE(IsDamaged());
  Make({});
  EXPECT_FALSE(IsDamaged());

  Open(At("missing.zip"));
  EXPECT_GT(faults_, 0);
  ArchiveReader strict(files_);
  strict.InputFile = At("missing.zip");
  EXPECT_EQ(ErrorOf([&] { strict.ReadDirectory(); }), std::pair(53, At("missing.zip")));
}

TEST_F(ArchiveTest, FindsTheDirectoryFromTheEnd) {
  const std::vector<ZipEntry> entries = {{.name = "a.txt", .data = "text", .deflated = true}};
  for (const bool past : {false, true}) {
    Make(entries, {.stub = "MZ" + Noise(3000, 2), .offsetsPastStub = past, .comment = "made by hand"});
    EXPECT_FALSE(IsDamaged(true)) << past;
    EXPECT_EQ(Extracted({"*"}, true), (Tree{{"a.txt", "text"}})) << past;
  }
}

TEST_F(ArchiveTest, DamagedEntriesLeaveNoFileAndDoNotHarmTheOthers) {
  const std::string big = Noise(kBig, 3);
  for (const ZipEntry& broken : std::vector<ZipEntry>{{.data = "text", .badCrc = true},
                                                      {.data = "text", .deflated = true, .badCrc = true},
                                                      {.data = "text", .deflated = true, .badData = true},
                                                      {.data = "text", .badData = true},
                                                      {.data = "text", .deflated = true, .toldSize = 3},
                                                      {.data = "text", .deflated = true, .toldSize = 5000},
                                                      {.data = "text", .toldSize = 5000},
                                                      {.data = "text", .deflated = true, .toldSize = kBig},
                                                      {.data = big, .badCrc = true}}) {
    ZipEntry named = broken;
    named.name = "broken.txt";
    Make({Entry("first.txt", "1"), named, Entry("last.txt", "2")});
    EXPECT_TRUE(IsDamaged(true));
    EXPECT_EQ(Extracted({"*"}, true), (Tree{{"first.txt", "1"}, {"last.txt", "2"}}))
        << broken.data.size() << " told " << broken.toldSize << (broken.badCrc ? " crc" : "")
        << (broken.badData ? " data" : "") << (broken.deflated ? " deflated" : "");
  }
}

TEST_F(ArchiveTest, ManyEntriesAreUnpackedBesideEachOther) {
  std::vector<ZipEntry> entries;
  Tree expected;
  for (unsigned i = 0; i < 600; ++i) {
    entries.push_back({.name = "d" + std::to_string(i % 7) + "/" + std::to_string(i),
                       .data = Noise(7000 + i, i),
                       .deflated = i % 2 == 0});
    expected["d" + std::to_string(i % 7) + "\\" + std::to_string(i)] = entries.back().data;
  }
  entries[500].badCrc = entries[40].badCrc = true;
  expected.erase("d3\\500");
  expected.erase("d5\\40");
  Make(entries);
  ArchiveReader reader = Open();
  std::vector<int> percents;
  reader.OnProgress = [&](const ArchiveReader& running) { percents.push_back(running.PercentDone()); };
  reader.AddFilter("*");
  reader.Extract();
  EXPECT_EQ(faults_, 2);
  EXPECT_TRUE(Out() == expected);
  EXPECT_TRUE(!percents.empty() && std::is_sorted(percents.begin(), percents.end()) &&
              percents.back() <= 100);

  ArchiveReader strict(files_);
  strict.InputFile = At("a.zip");
  strict.OutputFolder = At("out\\");
  strict.AddFilter("*");
  strict.ReadDirectory();
  EXPECT_EQ(ErrorOf([&] { strict.Extract(); }).second, At("a.zip"));
}

TEST_F(ArchiveTest, FiltersSelectByFileNameOrByOneStoredName) {
  Make({Entry("Route/Tiles/A_E.RAW", "1"), Entry("Route/Tiles/a.t", "2"), Entry("Other/A.T", "3"),
        Entry("readme.txt", "4")});
  EXPECT_EQ(Extracted({}, true), Tree{});
  EXPECT_EQ(Extracted({"*_e.raw"}, true), (Tree{{"route\\tiles\\a_e.raw", "1"}}));
  EXPECT_EQ(Extracted({"route\\tiles\\a.t"}, true), (Tree{{"route\\tiles\\a.t", "2"}}));
  EXPECT_EQ(Extracted({"*.t", "*.TXT"}, true).size(), 3u);
  EXPECT_EQ(Extracted({"a.t"}, true), Tree{});
  EXPECT_EQ(Extracted({"*"}, true).size(), 4u);
  EXPECT_EQ(Extracted({"*.t"}, false), (Tree{{"a.t", "3"}}));  // of equal names the last one stays

  ArchiveReader reader = Open();
  reader.AddFilter("*");
  reader.ClearFilters();
  reader.AddFilter("readme.txt");
  reader.OutputFolder = At("out\\deep\\er\\");
  reader.Extract();
  EXPECT_EQ(TestProgram::Names(Host("out/deep/er")), std::vector<std::string>{"readme.txt"});
}

TEST_F(ArchiveTest, ExtractReplacesFilesAndNeverWritesThroughLinks) {
  Make({Entry("a.txt", "first"), Entry("b.txt", "b"), Entry("A.TXT", "2nd")});
  WriteBytes(Host("outside.txt"), "untouched");
  WriteBytes(Host("out/a.txt"), "a longer text than the new one");
  fs::create_symlink(Host("outside.txt"), Host("out/b.txt"));
  ArchiveReader reader = Open();
  reader.AddFilter("*");
  reader.Extract();
  EXPECT_EQ(Out(), (Tree{{"a.txt", "2nd"}, {"b.txt", "b"}}));
  EXPECT_EQ(TestProgram::ReadBytes(Host("outside.txt")), "untouched");

  Make({Entry("x", "file"), Entry("X/y", "below it")});
  ArchiveReader clash = Open();
  EXPECT_EQ(clash.FileWhereFolderIsWanted(), "x");
  clash.AddFilter("*");
  EXPECT_NE(ErrorOf([&] { clash.Extract(); }).first, 0);
}

TEST_F(ArchiveTest, RefusesMoreThanTheDiskHoldsBeforeItWrites) {
  Make({Entry("a.txt", "text"), {.name = "huge.raw", .data = "x", .toldSize = std::uint64_t{1} << 45}});
  ArchiveReader reader = Open();
  reader.AddFilter("*");
  EXPECT_EQ(ErrorOf([&] { reader.Extract(); }).first, 61);
  EXPECT_EQ(Out(), Tree{});
  EXPECT_EQ(faults_, 0);
  EXPECT_EQ(Extracted({"a.txt"}, true), (Tree{{"a.txt", "text"}}));  // only the selection counts
}

TEST_F(ArchiveTest, PacksATreeAndUnpacksTheSameBytes) {
  const Tree tree = {{"readme.txt", "text"},
                     {"empty.dat", ""},
                     {"tiles\\a.t", Noise(70000, 4)},
                     {"tiles\\deep\\\xC3\xA9t\xC3\xA9.raw", Noise(500, 5)},
                     {"big.ace", Noise(kBig, 6)}};
  for (const auto& [name, bytes] : tree) TestProgram::Write(At("in\\" + name), bytes);
  for (const std::string name : {"x_e.raw", "tiles\\X_E.RAW", "own.tmp"})
    TestProgram::Write(At("in\\" + name), "out");
  WriteBytes(Host("new.tmp"), "an old file, to be replaced");

  ArchiveWriter writer(files_);
  writer.ArchiveFile = At("new.tmp");
  writer.AddFiles(At("in\\own.tmp"));
  writer.ClearFiles();
  writer.PrepareRebuild(At("in\\"));
  writer.AddFiles(At("in\\readme.txt"));
  writer.AddFiles(At("in\\*.*"));
  writer.AddFiles(At("in\\missing.txt"));
  writer.AddFiles(At("in\\tiles"));
  writer.ExcludeFiles(At("in\\*_e.raw"));
  writer.ExcludeFiles(At("in\\OWN.tmp"));
  std::vector<int> percents;
  writer.OnProgress = [&](const ArchiveWriter& running) { percents.push_back(running.PercentDone()); };
  writer.Zip();
  EXPECT_TRUE(TestProgram::Unzipped(At("new.tmp")) == tree);
  EXPECT_TRUE(!percents.empty() && std::is_sorted(percents.begin(), percents.end()) &&
              percents.back() <= 100);

  ArchiveReader reader = Open(At("new.tmp"));
  EXPECT_EQ(reader.EntryCount(), 5);
  reader.AddFilter("*");
  reader.Extract();
  EXPECT_TRUE(Out() == tree);
}

TEST_F(ArchiveTest, WritesAnArchiveWithoutEntriesAndFullPathsWithoutABase) {
  ArchiveWriter writer(files_);
  writer.ArchiveFile = At("new.tmp");
  writer.Zip();
  EXPECT_EQ(Open(At("new.tmp")).EntryCount(), 0);
  EXPECT_EQ(faults_, 0);
  TestProgram::Write(At("in\\a.t"), "a");
  writer.AddFiles(At("in\\a.t"));
  writer.Zip();
  EXPECT_EQ(Open(At("new.tmp")).LowerName(0), NormalStoredName(LowerCase(At("in\\a.t"))));
}

TEST_F(ArchiveTest, CarriesEntriesFromArchiveToArchive) {
  const std::string big = Noise(kBig, 7), small = Noise(3000, 8);
  Make({Entry("Stored.dat", big), {.name = "x/deflated.dat", .data = small, .deflated = true}});
  MakeZip(Host("b.zip"), {Entry("small.dat", small), Entry("again.dat", "2nd")});
  const ArchiveReader a = Open(), b = Open(At("b.zip"));
  TestProgram::Write(At("in\\loose.txt"), "loose");
  ArchiveWriter writer(files_);
  writer.ArchiveFile = At("new.tmp");
  writer.PrepareRebuild(At("in\\"));
  writer.AddEntry(a, 0, "new\\stored.dat");
  writer.AddEntry(a, 1, "deflated.dat");
  writer.AddEntry(a, 0, "again.dat");
  writer.AddEntry(b, 0, "small.dat");
  writer.AddEntry(b, 1, "AGAIN.dat");
  writer.AddFiles(At("in\\loose.txt"));
  writer.Zip();
  EXPECT_TRUE(TestProgram::Unzipped(At("new.tmp")) == (Tree{{"new\\stored.dat", big},
                                                            {"deflated.dat", small},
                                                            {"again.dat", "2nd"},
                                                            {"small.dat", small},
                                                            {"loose.txt", "loose"}}));
}

TEST_F(ArchiveTest, AFailedZipLeavesNoFile) {
  TestProgram::Write(At("in\\a.t"), "a");
  ArchiveWriter writer(files_);
  writer.ArchiveFile = At("nowhere\\new.tmp");
  writer.AddFiles(At("in\\a.t"));
  EXPECT_NE(ErrorOf([&] { writer.Zip(); }).first, 0);
  writer.ArchiveFile = At("new.tmp");
  TestProgram::Remove(At("in\\a.t"));
  EXPECT_EQ(ErrorOf([&] { writer.Zip(); }).second, At("in\\a.t"));
  EXPECT_FALSE(fs::exists(Host("new.tmp")));
  EXPECT_EQ(TestProgram::Names(Host("")), (std::vector<std::string>{"in\\", "out\\"}));
}

}  // namespace
}  // namespace quillon
