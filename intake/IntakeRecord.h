// routereport.ini: the record of what became of each zip.
#pragma once

#include <string_view>

#include "core/Program.h"

namespace quillon {

class IntakeRecord {
 public:
  explicit IntakeRecord(Program& program) : program_(program) {}

  /// A fresh file with its five empty sections.
  void Begin() const;

  /// A route was entered: `ADD:<zip>.zip`.
  void Added(std::string_view zip) const { Line("Added routes", "ADD:", zip, ".zip"); }
  /// A route file stands: `ALL:<zip>.qnz`.
  void Stands(std::string_view zip) const { Line("All installed", "ALL:", zip, ".qnz"); }
  void ManualInstall(std::string_view zip) const { SetAside("Manual install", "EXE:", zip); }
  void PatchOrOther(std::string_view zip) const { SetAside("Patch or other", "MSC:", zip); }
  /// A file that is known to be none, by its whole name: `MSC:<file>`.
  void KnownNonRoute(std::string_view file) const { SetAside("Patch or other", "MSC:", file, ""); }
  /// A file of another format, by its whole name: `BAD:<file>`.
  void BadFile(std::string_view file) const { SetAside("Bad zips", "BAD:", file, ""); }
  void BadZip(std::string_view zip) const { SetAside("Bad zips", "BAD:", zip); }

 private:
  void Line(std::string_view section, std::string_view kind, std::string_view zip,
            std::string_view end) const;
  void SetAside(std::string_view section, std::string_view kind, std::string_view name,
                std::string_view end = ".zip") const;

  Program& program_;
};

}  // namespace quillon
