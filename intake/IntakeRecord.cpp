#include "intake/IntakeRecord.h"

#include <string>

namespace quillon {

void IntakeRecord::Begin() const {
  const std::string file = program_.app.ReportIni();
  if (program_.files.FileExists(file)) program_.files.Kill(file);
  for (const auto section : {"Added routes", "Manual install", "Patch or other", "Bad zips", "All installed"})
    program_.ini.WriteIni(section, "", "", file);
}

void IntakeRecord::Line(std::string_view section, std::string_view kind, std::string_view zip,
                        std::string_view end) const {
  const std::string key = std::string(kind) + std::string(zip) + std::string(end);
  program_.ini.WriteIni(section, key, "", program_.app.ReportIni());
}

void IntakeRecord::SetAside(std::string_view section, std::string_view kind, std::string_view name,
                            std::string_view end) const {
  program_.ini.DeleteIniKey("Added routes", "ADD:" + std::string(name) + std::string(end),
                            program_.app.ReportIni());
  Line(section, kind, name, end);
}

}  // namespace quillon
