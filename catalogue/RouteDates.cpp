#include "catalogue/RouteDates.h"

#include "catalogue/Catalogue.h"
#include "core/text/LocalTime.h"

namespace quillon {

void RouteDates::Note(const char* what, std::string_view zip) const {
  program_.ini.WriteIni(what, KeyOf(zip), LocalTime(kIsoTime), program_.app.DatesIni());
}

std::string RouteDates::Added(const ProfileSnapshot& dates, std::string_view zip) {
  return dates.Read("Added", KeyOf(zip), "");
}

std::string RouteDates::LastLoaded(const ProfileSnapshot& dates, std::string_view zip) {
  return dates.Read("Loaded", KeyOf(zip), "");
}

/// A deletion would make a file that is missing.
void RouteDates::Forget(std::string_view zip) const {
  const std::string file = program_.app.DatesIni();
  for (const char* what : {"Added", "Loaded"})
    if (!program_.ini.ReadIni(what, KeyOf(zip), "", file).empty())
      program_.ini.DeleteIniKey(what, KeyOf(zip), file);
}

}  // namespace quillon
