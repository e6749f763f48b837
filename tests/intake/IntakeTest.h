// A program whose working route stands, ready to take zips in.
#pragma once

#include <algorithm>

#include "tests/world/TestProgram.h"

namespace quillon {

class IntakeTest : public ProgramTest {
 protected:
  IntakeTest() { FirstRun(); }

  /// Where a zip lies and what is told of it, such as "Installed ADD ALL qnz" or "bad_zip_files BAD".
  std::string Fate(const std::string& zip) const {
    std::string fate;
    const auto add = [&](bool is, const std::string& what) {
      if (is) fate += (fate.empty() ? "" : " ") + what;
    };
    add(Exists(Download(zip + ".zip")), "downloaded_routes");
    for (const std::string folder : {"Installed", "Not_Installed", "bad_zip_files"})
      add(Exists(AppPath("original_zips\\" + folder + "\\" + zip + ".zip")), folder);
    for (const auto& [section, mark] : kRecord) {
      const std::string key = mark + ":" + zip + (mark == "ALL" ? ".qnz" : ".zip");
      add(Ini("misc_info\\routereport.ini", section, key) != kMissing, mark);
    }
    add(Exists(AppPath("routes\\" + zip + ".qnz")), "qnz");
    return fate;
  }
  /// The text in which the intake ended.
  std::string Finish() const {
    const auto captions = Captions("frmInitProg");
    return captions.empty() ? "" : captions.back();
  }
  std::string NameOf(const std::string& zip) const { return Ini("routes.ini", zip, "Name"); }
  std::string ZipOf(const std::string& name) const { return Ini("routes.ini", name, "Zip"); }
  /// Names in a folder below "routes".
  Strings Stored(const std::string& folder) const { return Names(AppPath("routes\\" + folder)); }
  /// A route as a tar archive.
  static std::string RouteTar(const std::string& displayName, const std::vector<ZipEntry>& extra = {}) {
    NamedTexts files;
    for (const auto& entry : RouteEntries(displayName, extra)) files[entry.name] = entry.data;
    return TarBytes(files);
  }
  /// Puts a download of any format there and adds it; the exit status.
  int AddDownload(const std::string& file, const std::string& bytes) {
    Write(Download(file), bytes);
    return Run("add");
  }
  /// What lies in a folder of the originals, but for the program's own page.
  NamedTexts Originals(const std::string& folder) const {
    auto files = Tree(AppPath("original_zips\\" + folder));
    std::erase_if(files, [](const auto& file) { return file.first.ends_with(".html"); });
    return files;
  }
  Strings Rows() {
    Run("routes");
    return Texts("row");
  }
  /// The routes that a clean-up makes of the originals when the catalogue is lost.
  Strings RowsFromOriginals() {
    Remove(DataPath("routes.ini"));
    EXPECT_EQ(Script("routes\nclean\n"), 0) << Last("error");
    return Rows();
  }
  /// The stored names of a route file, lower case.
  Strings Entries(const std::string& zip) const {
    Strings names;
    for (const auto& entry : Unzipped(AppPath("routes\\" + zip + ".qnz"))) names.push_back(entry.first);
    return names;
  }

  const std::vector<std::pair<std::string, std::string>> kRecord = {{"Added routes", "ADD"},
                                                                    {"Manual install", "EXE"},
                                                                    {"Patch or other", "MSC"},
                                                                    {"Bad zips", "BAD"},
                                                                    {"All installed", "ALL"}};
};

}  // namespace quillon
