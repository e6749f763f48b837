// What a later version does to what an earlier one has laid, and to what the user has made of it.
#include "core/host/Desktop.h"
#include "headless/HeadlessFrontEnd.h"
#include "stage/RunningProgram.h"
#include "stage/Setup.h"
#include "tests/world/FaultyFiles.h"
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

/// From one call on nothing is changed any more, as when the process has ended there.
class End : public Fault {
 public:
  explicit End(int at) : at_(at) {}
  FileCode Strike() override { return ++count_ >= at_ ? FileCode::AccessDenied : FileCode::Ok; }

 private:
  const int at_;
  int count_ = 0;
};

class DeliveryTest : public ProgramTest {
 protected:
  DeliveryTest() {
    for (const std::string version : {"1", "2"}) {
      fs::create_directories(ToPath(Delivered(version)));
      fs::copy(ToPath(std::string(QUILLON_SOURCE_DIR) + "/resources"),
               ToPath(Delivered(version) + "/resources"), fs::copy_options::recursive);
      Deliver(version, "files\\help.hlp", "book " + version);
      for (const std::string name : {"files.tsl", "snowmaker.tsl", "custom_scripts\\mine.txt"})
        Deliver(version, Misc(name), "list " + version);
      Deliver(version, "Do_Not_Delete!\\tsqn.ini", "[Delivered]\r\nBy=" + version + "\r\n");
    }
    for (const std::string name : {"Old\\custom.cst", "Old\\about.txt", "Older\\custom.cst"})
      Deliver("1", Misc("custom_scripts\\" + name), "old");
    Deliver("2", Misc("new\\one.txt"), "new");
    Remove(DataPath("delivered.tsl"));
    fs::remove_all(ToPath(AppPath("resources")));
    WithProgram([&](Program& program) { quillon::SetUp(program, Delivered("1"), Game()); });
    // The user's own.
    Write(DataPath("misc_info\\files.tsl"), "a user's list");
    Write(DataPath("misc_info\\custom_scripts\\Old\\about.txt"), "a user's note");
    Write(AppPath("resources\\files\\help.hlp"), "scribbled");
    GetOlder();
  }

  std::string Delivered(const std::string& version) const { return Root() + "/delivered" + version; }
  static std::string Misc(const std::string& name) { return "Do_Not_Delete!\\misc_info\\" + name; }
  void Deliver(const std::string& version, const std::string& name, const std::string& bytes) const {
    Write(Delivered(version) + "/resources\\" + name, bytes);
  }
  /// As if the release before this one had laid what is there.
  void GetOlder() const {
    const std::string list = ReadBytes(DataPath("delivered.tsl"));
    Write(DataPath("delivered.tsl"), "Quillon 0.9" + list.substr(list.find('\r')));
  }
  void WithProgram(const std::function<void(Program&)>& act, std::unique_ptr<FileSystem> files = {}) {
    RecordedOutput output;
    HeadlessFrontEnd frontEnd(output, options);
    RunningProgram program(App(), frontEnd, {}, std::move(files));
    act(program.Get());
  }
  void RenewFrom(const std::string& version) {
    WithProgram([&](Program& program) { Renew(program, Delivered(version)); });
  }
  std::string Laid(const std::string& name) const {
    const std::string path = DataPath("misc_info\\" + name);
    return Exists(path) ? ReadBytes(path) : kMissing;
  }
};

TEST_F(DeliveryTest, AnotherVersionRenewsWhatIsStillAsItWasLaid) {
  ASSERT_EQ(FirstRun(), 0);
  GetOlder();
  const std::string copyFiles = Laid("copyfiles.tsl"), settings = ReadBytes(DataPath("tsqn.ini"));
  RenewFrom("2");
  EXPECT_EQ(Laid("snowmaker.tsl") + Laid("custom_scripts\\mine.txt") + Laid("new\\one.txt"),
            "list 2list 2new");
  EXPECT_EQ(ReadBytes(AppPath("resources\\files\\help.hlp")), "book 2");
  EXPECT_EQ(Laid("files.tsl") + Laid("custom_scripts\\Old\\about.txt"), "a user's lista user's note");
  EXPECT_EQ(Laid("copyfiles.tsl"), copyFiles) << "it was filled from the user's game";
  EXPECT_EQ(ReadBytes(DataPath("tsqn.ini")), settings);
  EXPECT_EQ(Laid("custom_scripts\\Old\\custom.cst") + Laid("custom_scripts\\Older"),
            std::string(kMissing) + kMissing);

  const auto after = State(App());
  RenewFrom("1");  // of the same release: nothing is looked at
  EXPECT_EQ(Changed(after, State(App())), Strings());
  GetOlder();
  RenewFrom("2");
  EXPECT_EQ(Changed(after, State(App())), Strings());
  EXPECT_EQ(AddRoute("valley.zip", "Valley Line"), 0);
  EXPECT_EQ(Run("load", "Valley Line"), 0);
  GetOlder();
  RenewFrom("1");
  EXPECT_EQ(Laid("files.tsl") + Laid("snowmaker.tsl") + Laid("new"),
            "a user's listlist 1" + std::string(kMissing));
}

TEST_F(DeliveryTest, WhatWasCutShortGoesOnByWhicheverVersion) {
  const fs::path kept = ToPath(Root()) / "kept";
  fs::copy(ToPath(App()), kept, fs::copy_options::recursive);
  const auto restore = [&] {
    RemoveAll(ToPath(App()));
    fs::copy(kept, ToPath(App()), fs::copy_options::recursive);
  };
  const auto undisturbed = [&](const std::string& version) {
    restore();
    RenewFrom(version);
    return State(AppPath("resources"));
  };
  const std::map<std::string, NamedTexts> wanted = {{"1", undisturbed("1")}, {"2", undisturbed("2")}};
  int cut = 0;
  for (int at = 1;; at += SweepStep()) {
    restore();
    End end(at);
    bool ended = false;
    try {
      WithProgram([&](Program& program) { Renew(program, Delivered("2")); },
                  std::make_unique<FaultyFiles>(end));
    } catch (const RunTimeError&) {
      ended = true;
    }
    if (!ended) break;
    ++cut;
    const std::string next = at % 2 == 0 ? "1" : "2";
    RenewFrom(next);
    EXPECT_EQ(Changed(wanted.at(next), State(AppPath("resources"))), Strings()) << "cut at call " << at;
  }
  EXPECT_GT(cut * SweepStep(), 10);
}

TEST_F(DeliveryTest, WithoutAListAllThatDiffersIsTheUsers) {
  Remove(DataPath("delivered.tsl"));
  Remove(DataPath("misc_info\\tsnone.jpg"));
  RenewFrom("2");
  EXPECT_EQ(Laid("snowmaker.tsl") + Laid("files.tsl"), "list 1a user's list");
  EXPECT_EQ(Laid("new\\one.txt") + Laid("custom_scripts\\Older\\custom.cst"), "newold");
  EXPECT_TRUE(Exists(DataPath("misc_info\\tsnone.jpg")));
  EXPECT_EQ(ReadBytes(AppPath("resources\\files\\help.hlp")), "book 2");
}

TEST_F(DeliveryTest, TheDeliveredTreeIsNoApplicationFolder) {
  fs::path way = ToPath(Delivered("2"));
  if (HasLinks()) {
    way = ToPath(Root()) / "a link";
    MakeFolderLink(ToPath(Delivered("2")), way);
  }
  const auto before = State(Delivered("2"));
  for (const fs::path& folder : {way, way / "resources" / "files"}) {
    options.app = FromPath(folder);
    RecordedOutput output;
    HeadlessFrontEnd frontEnd(output, options);
    RunningProgram program(options.app, frontEnd);
    EXPECT_THROW(quillon::SetUp(program.Get(), Delivered("2"), {}), RunTimeError);
    Renew(program.Get(), Delivered("2"));
  }
  EXPECT_EQ(State(Delivered("2")), before);
}

TEST_F(DeliveryTest, AWrongFolderIsLeftAsItIs) {
  const std::string odd = Root() + "/odd";
  Write(odd + "/file", "a user's");
  const auto before = State(odd);
  for (const std::string app : {"/missing", "/file", ""}) {
    options.app = odd + app;
    for (const std::string command :
         {"start", "routes", "pick", "info", "load", "add", "clean", "pack", "remove", "permanent", "checkup",
          "report", "causes", "options", "verify", "shelf", "make-list", "help"}) {
      EXPECT_EQ(Run(command, "x"), 1) << command;
      EXPECT_EQ(LastError(), app == "/file" ? 75 : 76) << command;
    }
    EXPECT_EQ(Script("start\n"), 1);
  }
  options.app = odd + "/file";
  EXPECT_EQ(Run("setup"), 1);
  EXPECT_EQ(State(odd), before);
}

TEST_F(DeliveryTest, TheShortcutFollowsAMovedFolderAndNoOther) {
  const fs::path shortcut = Desktop().Desktop() / "Downloaded MSTS routes.lnk";
  const auto leadsTo = [&] { return ShortcutTarget(ReadBytes(FromPath(shortcut))); };
  ASSERT_EQ(FirstRun(), 0);
  ASSERT_EQ(Run(Command{.name = "options", .shortcut = true}), 0);
  EXPECT_EQ(leadsTo(), AppPath("downloaded_routes"));
  const std::string first = App(), moved = Root() + "/moved", copy = Root() + "/copy";
  fs::copy(ToPath(first), ToPath(copy), fs::copy_options::recursive);
  options.app = copy;
  EXPECT_EQ(Run("start"), 0);
  EXPECT_EQ(leadsTo(), AppPath("downloaded_routes")) << "that folder is still there";
  fs::rename(ToPath(first), ToPath(moved));
  options.app = moved;
  EXPECT_EQ(Run("start"), 0);
  EXPECT_EQ(leadsTo(), HostPath(moved + "\\downloaded_routes"));
  fs::rename(ToPath(moved), ToPath(first));
  options.app = Root() + "/elsewhere";
  fs::rename(ToPath(copy), ToPath(options.app));
  EXPECT_EQ(Run("start"), 0);
  EXPECT_EQ(leadsTo(), HostPath(moved + "\\downloaded_routes")) << "of another one, whose drive is out";
}

}  // namespace
}  // namespace quillon
