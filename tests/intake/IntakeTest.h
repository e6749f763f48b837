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
