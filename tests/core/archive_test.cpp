// Archives: what is listed, selected, unpacked, packed and carried over, and what is refused.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <system_error>
#include <thread>

#include "core/archive/ArchiveNames.h"
#include "core/archive/ArchiveReader.h"
#include "core/archive/ArchiveWriter.h"
#include "core/archive/ForeignArchive.h"
#include "core/archive/ZipLayout.h"
#include "core/text/Text.h"
#include "tests/world/Disk.h"
#include "tests/world/HostFiles.h"
#include "tests/world/ZipMaker.h"

namespace quillon {
namespace {

constexpr std::size_t kBig = (8u << 20) + 4321;  // above what is unpacked or packed in one piece

/// Bytes that do not compress.
std::string Noise(std::size_t size, std::uint64_t seed) {
  std::mt19937_64 random(seed);
  std::vector<std::uint64_t> words(size / 8 + 1);
  std::generate(words.begin(), words.end(), std::ref(random));
  std::string bytes(size, '\0');
  std::memcpy(bytes.data(), words.data(), size);
  return bytes;
}

/// The meter of a reader or a writer, which only goes forward.
struct Percents {
  int last = -1;
  template <class Archive>
  void operator()(const Archive& running) {
    EXPECT_TRUE(running.PercentDone() >= last && running.PercentDone() <= 100) << running.PercentDone();
    last = running.PercentDone();
  }
};

class ArchiveTest : public testing::Test, protected TestFolder, protected HostFiles {
 protected:
  ArchiveTest() { fs::create_directory(Host("out")); }

  NamedTexts Out() const { return Disk::Tree(Path("out")); }
  void Make(const std::vector<ZipEntry>& entries, const ZipShape& shape = {}) {
    MakeZip(Host("a.zip"), entries, shape);
  }
  /// A reader over a.zip that selects `filters`, its directory not read; it counts faults unless `strict`.
  ArchiveReader Reader(const Strings& filters = {"*"}, bool strict = false) {
    ArchiveReader reader(
        files, strict ? ArchiveReader::Fault() : [this] { ++faults_; });
    reader.InputFile = Path("a.zip");
    reader.OutputFolder = Path("out\\");
    for (const auto& filter : filters) reader.AddFilter(filter);
    return reader;
  }
  ArchiveReader Open(const std::string& name = "a.zip") {
    ArchiveReader reader = Reader();
    reader.InputFile = Path(name);
    reader.ReadDirectory();
    return reader;
  }
  /// Extracts what `filters` select, flat or not, into an empty folder.
  NamedTexts Extracted(const Strings& filters = {"*"}, bool keepFolders = true) {
    fs::remove_all(Host("out"));
    ArchiveReader reader = Reader(filters);
    reader.KeepFolders = keepFolders;
    reader.ReadDirectory();
    reader.Extract();
    return Out();
  }
  /// Whether a reader, and with `extract` an extraction, meets damage: by its handler, and as an error
  /// without one.
  bool IsDamaged(bool extract = false) {
    faults_ = 0;
    for (const bool strict : {false, true}) {
      ArchiveReader reader = Reader({"*"}, strict);
      const auto error = ErrorOf([&] {
        reader.ReadDirectory();
        if (extract) reader.Extract();
      });
      EXPECT_TRUE(faults_ == 0 || extract || reader.EntryCount() == 0);
      EXPECT_EQ(error.first != 0, strict && faults_ > 0);
      EXPECT_EQ(error.second, strict && faults_ > 0 ? Path("a.zip") : "");
    }
    return faults_ > 0;
  }

  int faults_ = 0;
};

TEST_F(ArchiveTest, ListsStoredNamesInTheSystemsForm) {
  const ZipEntry folder = {.name = "Route/Empty", .folder = true};
  const ZipEntry utf8 = {.name = "caf\xC3\xA9.txt", .utf8Flag = true};
  Make({Entry("Route/Tiles/A.t"), Entry("Route\\World\\w.w"), folder, Entry("C:/drive.txt"),
        Entry("//root.txt"), Entry("caf\x82.txt"), utf8, Entry("\xC3\xA9.txt")});
  const ArchiveReader reader = Open();
  Strings names;
  for (int i = 0; i < reader.EntryCount(); ++i)
    names.push_back(reader.Entry(i).substr(0, reader.Entry(i).find('|')));
  EXPECT_EQ(names, (Strings{"Route\\Tiles\\A.t", "Route\\World\\w.w", "Route\\Empty\\", "drive.txt",
                            "root.txt", "café.txt", "café.txt", "é.txt"}));
  EXPECT_EQ(reader.LowerName(0), "route\\tiles\\a.t");
  EXPECT_EQ(NormalStoredName("\\\\server/share"), "server\\share");
  EXPECT_EQ(faults_, 0);
}

TEST_F(ArchiveTest, WhatNoFileMayBeCalledBecomesSomethingItMay) {
  Make({Entry("slashes/make/a\\backslash"), Entry("a*b?c.s"), Entry("ab:c.txt"), Entry("con"),
        Entry("a/NUL.x"), Entry("com10.t"), Entry("Icon\r"), Entry("a\x01"), Entry("a. "), Entry("b ./x"),
        Entry("\x95\\.s"), Entry("\x83|.s"), Entry("\x94/x"), Entry("Ko\xCC\x88ln.srv"), Entry("..a/a..b"),
        Entry(std::string(300, 'x') + ".ace"), Entry("__MACOSX/R/a.s"), Entry("R/._a.trk")});
  const ArchiveReader reader = Open();
  Strings names;
  for (const auto& entry : reader.Entries()) names.push_back(entry.name);
  EXPECT_EQ(names, (Strings{"slashes\\make\\a\\backslash", "a_b_c.s", "ab_c.txt", "con_", "a\\NUL_.x",
                            "com10.t", "Icon_", "a_", "a__", "b__\\x", "ò_.s", "â_.s", "ö\\x", "Köln.srv",
                            "..a\\a..b", std::string(251, 'x') + ".ace"}));
  EXPECT_EQ(faults_, 0);
}

TEST_F(ArchiveTest, RefusesNamesThatLeadOut) {
  for (const std::string& name :
       Strings{"../x", "a/../../x", "a/..", "..\\x", "C:../x", "a/.. /x", "..", " /x"})
    for (const bool utf8 : {false, true}) {
      Make({Entry("fine.txt"), {.name = name, .utf8Flag = utf8}});
      EXPECT_TRUE(IsDamaged()) << name;
      EXPECT_FALSE(OnDisk("x"));
    }
}

TEST_F(ArchiveTest, TakesWhatIsNoReadableArchiveForDamaged) {
  const std::string whole = ZipBytes({{.name = "a.txt", .data = "text", .deflated = true}, Entry("b.txt")});
  for (std::size_t size = 0; size < whole.size(); size += 5) {
    Put("a.zip", whole.substr(0, size));
    EXPECT_TRUE(IsDamaged()) << "cut at " << size;
  }
  for (const auto& bytes : {Noise(5000, 1), ZipBytes({Entry("a.txt", "text")}, {.directoryShift = 7}),
                            ZipBytes({Entry("a"), {.name = "secret", .data = "text", .encrypted = true}}),
                            ZipBytes({{.name = "a.txt", .data = "text", .toldMethod = 97}})}) {
    Put("a.zip", bytes);
    EXPECT_TRUE(IsDamaged(true));
  }
  Make({});
  EXPECT_FALSE(IsDamaged());
  fs::remove(Host("a.zip"));
  Open();
  EXPECT_GT(faults_, 0);
  EXPECT_EQ(ErrorOf([&] { Reader({}, true).ReadDirectory(); }), std::pair(53, Path("a.zip")));
}

TEST_F(ArchiveTest, FindsTheDirectoryFromTheEnd) {
  const std::string mark = "PK\5\6";
  for (const std::string& comment : {std::string("made by hand"), mark + std::string(40, 'x'), "by " + mark})
    for (const bool past : {false, true}) {
      SCOPED_TRACE(comment);
      const ZipShape shape = {.stub = "MZ" + Noise(3000, 2), .offsetsPastStub = past, .comment = comment};
      const ZipEntry entry = {.name = "a.txt", .data = "text", .deflated = true};
      Make({entry}, shape);
      EXPECT_FALSE(IsDamaged(true)) << past;
      EXPECT_EQ(Extracted(), (NamedTexts{{"a.txt", "text"}})) << past;
      EXPECT_EQ(FindOverlap(FromPath(Host("a.zip"))), "");
      Make({entry, {.name = "b.txt", .data = "text", .deflated = true, .shared = true}}, shape);
      EXPECT_NE(FindOverlap(FromPath(Host("a.zip"))), "");
    }
}

TEST_F(ArchiveTest, DamagedEntriesLeaveNoFileAndDoNotHarmTheOthers) {
  for (ZipEntry broken : std::vector<ZipEntry>{{.data = "text", .badCrc = true},
                                               {.data = "text", .deflated = true, .badCrc = true},
                                               {.data = "text", .deflated = true, .badData = true},
                                               {.data = "text", .badData = true},
                                               {.data = "text", .deflated = true, .toldSize = 3},
                                               {.data = "text", .deflated = true, .toldSize = 5000},
                                               {.data = "text", .toldSize = 5000},
                                               {.data = "text", .deflated = true, .toldSize = kBig},
                                               {.data = Noise(kBig, 3), .badCrc = true}}) {
    broken.name = "broken.txt";
    Make({Entry("first.txt", "1"), broken, Entry("last.txt", "2")});
    EXPECT_TRUE(IsDamaged(true));
    EXPECT_EQ(Extracted(), (NamedTexts{{"first.txt", "1"}, {"last.txt", "2"}}))
        << broken.data.size() << broken.toldSize << broken.badCrc << broken.badData << broken.deflated;
  }
}

TEST_F(ArchiveTest, ManyEntriesAreUnpackedBesideEachOther) {
  std::vector<ZipEntry> entries;
  NamedTexts expected;
  for (unsigned i = 0; i < 600; ++i) {
    const std::string name = "d" + std::to_string(i % 7) + "/" + std::to_string(i);
    entries.push_back(
        {.name = name, .data = Noise(7000 + i, i), .deflated = i % 2 == 0, .badCrc = i == 500 || i == 40});
    if (!entries.back().badCrc) expected[ReplaceAll(name, "/", "\\")] = entries.back().data;
  }
  Make(entries);
  ArchiveReader reader = Open();
  Percents percents;
  reader.OnProgress = std::ref(percents);
  reader.Extract();
  EXPECT_EQ(faults_, 2);
  EXPECT_TRUE(Out() == expected);
  EXPECT_GT(percents.last, 0);
}

TEST_F(ArchiveTest, FiltersSelectByFileNameOrByOneStoredName) {
  Make({Entry("Route/Tiles/A_E.RAW", "1"), Entry("Route/Tiles/a.t", "2"), Entry("Other/A.T", "3"),
        Entry("readme.txt", "4")});
  for (const Strings& none : {Strings{}, {"a.t"}}) EXPECT_EQ(Extracted(none), NamedTexts{});
  EXPECT_EQ(Extracted({"*_e.raw"}), (NamedTexts{{"route\\tiles\\a_e.raw", "1"}}));
  EXPECT_EQ(Extracted({"route\\tiles\\a.t"}), (NamedTexts{{"route\\tiles\\a.t", "2"}}));
  EXPECT_EQ(Extracted({"*.t", "*.TXT"}).size(), 3u);
  EXPECT_EQ(Extracted({"*"}).size(), 4u);
  EXPECT_EQ(Extracted({"*.t"}, false), (NamedTexts{{"a.t", "3"}}));  // of equal names the last one stays

  ArchiveReader reader = Open();
  reader.ClearFilters();
  reader.AddFilter("readme.txt");
  reader.OutputFolder = Path("out\\deep\\er\\");
  reader.Extract();
  EXPECT_EQ(Disk::Names(Path("out\\deep\\er")), Strings{"readme.txt"});
}

TEST_F(ArchiveTest, ExtractReplacesFilesAndNeverWritesThroughLinks) {
  Make({Entry("a.txt", "first"), Entry("b.txt", "b"), Entry("A.TXT", "2nd")});
  Put("outside.txt", "untouched");
  Put("out/a.txt", "a longer text than the new one");
  if (HasLinks()) MakeFileLink(Host("outside.txt"), Host("out/b.txt"));
  Open().Extract();
  EXPECT_EQ(Out(), (NamedTexts{{"a.txt", "2nd"}, {"b.txt", "b"}}));
  EXPECT_EQ(Bytes("outside.txt"), "untouched");

  Make({Entry("x", "file"), Entry("X/y", "below it")});
  ArchiveReader clash = Open();
  EXPECT_EQ(clash.FileWhereFolderIsWanted(), "x");
  EXPECT_NE(ErrorOf([&] { clash.Extract(); }).first, 0);
}

TEST_F(ArchiveTest, RefusesMoreThanTheDiskHoldsBeforeItWrites) {
  Make({Entry("a.txt", "text"), {.name = "huge.raw", .data = "x", .toldSize = std::uint64_t{1} << 45}});
  EXPECT_EQ(ErrorOf([&] { Open().Extract(); }).first, 61);
  EXPECT_EQ(Out(), NamedTexts{});
  EXPECT_EQ(faults_, 0);
  EXPECT_EQ(Extracted({"a.txt"}), (NamedTexts{{"a.txt", "text"}}));  // only the selection counts
}

TEST_F(ArchiveTest, PacksATreeAndUnpacksTheSameBytes) {
  const NamedTexts tree = {{"readme.txt", "text"},
                           {"empty.dat", ""},
                           {"tiles\\a.t", Noise(70000, 4)},
                           {"tiles\\deep\\\xC3\xA9t\xC3\xA9.raw", Noise(500, 5)},
                           {"big.ace", Noise(kBig, 6)}};
  for (const auto& [name, bytes] : tree) Disk::Write(Path("in\\" + name), bytes);
  for (const char* name : {"in/x_e.raw", "in/tiles/X_E.RAW", "in/own.tmp", "new.tmp"}) Put(name, "out");

  ArchiveWriter writer(files);
  writer.ArchiveFile = Path("new.tmp");
  writer.AddFiles(Path("in\\own.tmp"));
  writer.ClearFiles();
  writer.PrepareRebuild(Path("in\\"));
  for (const char* name : {"readme.txt", "*.*", "missing.txt", "tiles"}) writer.AddFiles(Path("in\\") + name);
  for (const char* name : {"*_e.raw", "OWN.tmp"}) writer.ExcludeFiles(Path("in\\") + name);
  Percents percents;
  writer.OnProgress = std::ref(percents);
  writer.Zip();
  EXPECT_TRUE(Disk::Unzipped(Path("new.tmp")) == tree);
  EXPECT_GT(percents.last, 0);

  ArchiveReader reader = Open("new.tmp");
  EXPECT_EQ(reader.EntryCount(), 5);
  reader.Extract();
  EXPECT_TRUE(Out() == tree);
}

TEST_F(ArchiveTest, WritesAnArchiveWithoutEntriesAndFullPathsWithoutABase) {
  ArchiveWriter writer(files);
  writer.ArchiveFile = Path("new.tmp");
  writer.Zip();
  EXPECT_EQ(Open("new.tmp").EntryCount(), 0);
  EXPECT_EQ(faults_, 0);
  Put("in/a.t");
  writer.AddFiles(Path("in\\a.t"));
  writer.Zip();
  EXPECT_EQ(Open("new.tmp").LowerName(0), NormalStoredName(LowerCase(Path("in\\a.t"))));
}

TEST_F(ArchiveTest, CarriesEntriesFromArchiveToArchive) {
  const std::string big = Noise(kBig, 7), small = Noise(3000, 8);
  Make({Entry("Stored.dat", big), {.name = "x/deflated.dat", .data = small, .deflated = true}});
  MakeZip(Host("b.zip"), {Entry("small.dat", small), Entry("again.dat", "2nd")});
  const ArchiveReader a = Open(), b = Open("b.zip");
  Put("in/loose.txt", "loose");
  ArchiveWriter writer(files);
  writer.ArchiveFile = Path("new.tmp");
  writer.PrepareRebuild(Path("in\\"));
  writer.AddEntry(a, 0, "new\\stored.dat");
  writer.AddEntry(a, 1, "deflated.dat");
  writer.AddEntry(a, 0, "again.dat");
  writer.AddEntry(b, 0, "small.dat");
  writer.AddEntry(b, 1, "AGAIN.dat");
  writer.AddFiles(Path("in\\loose.txt"));
  writer.Zip();
  const NamedTexts expected = {{"new\\stored.dat", big},
                               {"deflated.dat", small},
                               {"again.dat", "2nd"},
                               {"small.dat", small},
                               {"loose.txt", "loose"}};
  EXPECT_TRUE(Disk::Unzipped(Path("new.tmp")) == expected);
}

TEST_F(ArchiveTest, OtherFormatsBecomeZipsOrAreRefusedWithAReason) {
  const NamedTexts tree = {
      {"r/a.t", Noise(70000, 9)}, {"r/empty", ""}, {"r/long.ace", std::string(40u << 20, 'x')}};
  const auto rebuilt = [&](const std::string& bytes) -> std::string {
    Put("a.tar", bytes.substr(0, bytes.size() / 2));
    Put("b.tar", bytes.substr(bytes.size() / 2));
    try {
      RebuildAsZip(files, {Path("a.tar"), Path("b.tar")}, Path("new.zip"),
                   [](std::uint64_t, std::uint64_t) {});
      return "";
    } catch (const Damage& damage) {
      EXPECT_FALSE(OnDisk("new.zip"));
      return damage.reason;
    }
  };
  EXPECT_EQ(rebuilt(TarBytes(tree)), "");
  const NamedTexts unpacked = Disk::Unzipped(Path("new.zip"));
  EXPECT_EQ(unpacked.size(), 3u);
  for (const auto& [name, data] : tree) EXPECT_TRUE(unpacked.at(ReplaceAll(name, "/", "\\")) == data) << name;
  fs::remove(Host("new.zip"));
  EXPECT_NE(rebuilt(TarBytes({{"R/a.t", "1"}, {"R/../../out", "2"}})), "");
  EXPECT_NE(rebuilt(TarBytes(tree).substr(0, 60000)), "");
  EXPECT_NE(rebuilt(Noise(5000, 3)), "");
}

TEST_F(ArchiveTest, WorksWithoutThreadsWhenTheMachineGivesNone) {
  if (!WithoutThreads::Possible()) GTEST_SKIP() << "the platform can't be kept from giving threads";
  std::vector<ZipEntry> entries;
  NamedTexts expected;
  for (unsigned i = 0; i < 6; ++i) {
    entries.push_back({.name = std::to_string(i), .data = Noise(1u << 20, i), .badCrc = i == 4});
    if (i != 4) expected[entries.back().name] = entries.back().data;
  }
  Make(entries);
  const WithoutThreads none;
  EXPECT_THROW(std::thread([] {}).join(), std::system_error);

  Open().Extract();
  EXPECT_EQ(faults_, 1);
  EXPECT_TRUE(Out() == expected);
  ArchiveWriter writer(files);
  writer.ArchiveFile = Path("new.tmp");
  writer.PrepareRebuild(Path("out\\"));
  writer.AddFiles(Path("out\\*.*"));
  writer.Zip();
  EXPECT_TRUE(Disk::Unzipped(Path("new.tmp")) == expected);
}

TEST_F(ArchiveTest, AnArchiveThatWasSpoiledMeanwhileIsAnErrorOfItsOwn) {
  Make({Entry("a.txt", "text")});
  const ArchiveReader source = Open();
  Put("a.zip", "no zip any more");
  ArchiveWriter writer(files);
  writer.ArchiveFile = Path("new.tmp");
  writer.AddEntry(source, 0, "a.txt");
  EXPECT_EQ(ErrorOf([&] { writer.Zip(); }), std::pair(321, Path("a.zip")));
  EXPECT_FALSE(OnDisk("new.tmp"));
}

TEST_F(ArchiveTest, AFailedZipLeavesNoFile) {
  Put("in/a.t");
  ArchiveWriter writer(files);
  writer.ArchiveFile = Path("nowhere\\new.tmp");
  writer.AddFiles(Path("in\\a.t"));
  EXPECT_NE(ErrorOf([&] { writer.Zip(); }).first, 0);
  writer.ArchiveFile = Path("new.tmp");
  fs::remove(Host("in/a.t"));
  EXPECT_EQ(ErrorOf([&] { writer.Zip(); }).second, Path("in\\a.t"));
  EXPECT_EQ(Below(""), (std::set<std::string>{"in", "out"}));
}

}  // namespace
}  // namespace quillon
