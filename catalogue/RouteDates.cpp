#include "catalogue/RouteDates.h"

#include "catalogue/Catalogue.h"
#include "core/LocalTime.h"

namespace quillon {

void RouteDates::Note(const char* what, std::string_view zip) const {
  program_.ini.WriteIni(what, KeyOf(zip), LocalTime(kIsoTime), program_.app.DatesIni());
}

std::string RouteDates::Noted(const char* what, std::string_view zip) const {
  return program_.ini.ReadIni(what, KeyOf(zip), "", program_.app.DatesIni());
}

/// A deletion would make a file that is missing.
void RouteDates::Forget(std::string_view zip) const {
  for (const char* what : {"Added", "Loaded"})
    if (!Noted(what, zip).empty()) program_.ini.DeleteIniKey(what, KeyOf(zip), program_.app.DatesIni());
}

}  // namespace quillon
