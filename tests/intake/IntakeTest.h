// A program whose working route stands, ready to take zips in.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/world/TestProgram.h"

namespace quillon {

class IntakeTest : public testing::Test {
 protected:
  IntakeTest() { program.FirstRun(); }

  /// Where a zip lies and what is told of it, such as "Installed ADD ALL qnz" or "bad_zip_files BAD".
  std::string Fate(const std::string& zip) const {
    std::string fate;
    const auto add = [&](bool is, const std::string& what) {
      if (is) fate += (fate.empty() ? "" : " ") + what;
    };
    add(program.Exists(program.Download(zip + ".zip")), "downloaded_routes");
    for (const std::string folder : {"Installed", "Not_Installed", "bad_zip_files"})
      add(program.Exists(program.AppPath("original_zips\\" + folder + "\\" + zip + ".zip")), folder);
    add(IsReported("Added routes", "ADD:" + zip + ".zip"), "ADD");
    add(IsReported("Manual install", "EXE:" + zip + ".zip"), "EXE");
    add(IsReported("Patch or other", "MSC:" + zip + ".zip"), "MSC");
    add(IsReported("Bad zips", "BAD:" + zip + ".zip"), "BAD");
    add(IsReported("All installed", "ALL:" + zip + ".qnz"), "ALL");
    add(program.Exists(program.AppPath("routes\\" + zip + ".qnz")), "qnz");
    return fate;
  }

  bool IsReported(const std::string& section, const std::string& key) const {
    const auto lines = program.IniLines("misc_info\\routereport.ini", section);
    return std::count(lines.begin(), lines.end(), key + "=") == 1;
  }

  /// The text in which the intake ended.
  std::string Finish() const {
    const auto captions = program.Captions("frmInitProg");
    return captions.empty() ? "" : captions.back();
  }

  std::string NameOf(const std::string& zip) const { return program.Ini("routes.ini", zip, "Name"); }
  std::string ZipOf(const std::string& name) const { return program.Ini("routes.ini", name, "Zip"); }
  /// The stored names of a route file, lower case.
  std::vector<std::string> Entries(const std::string& zip) const {
    std::vector<std::string> names;
    for (const auto& entry : program.Unzipped(program.AppPath("routes\\" + zip + ".qnz")))
      names.push_back(entry.first);
    return names;
  }

  TestProgram program;
};

using Texts = std::vector<std::string>;

}  // namespace quillon
