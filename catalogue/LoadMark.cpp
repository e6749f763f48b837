#include "catalogue/LoadMark.h"

namespace quillon {
namespace {

constexpr std::string_view kNoMark = "Not There!";

}  // namespace

bool LoadMark::Stands() const { return catalogue_.ReadCurrent("PutAway", kNoMark) == catalogue_.Loaded(); }

std::string LoadMark::Loading() const { return catalogue_.ReadCurrent("Loading", kNoData); }

std::string LoadMark::Healed() const {
  if (Loading() == kNoData) return "A clean-up that was cut short has been finished.";
  const std::string loaded = catalogue_.Loaded();
  return "A load that was cut short has been put right" +
         (loaded == kNoData ? std::string(".") : "; nothing of " + loaded + " was lost.");
}

void LoadMark::Set(std::string_view loading) const {
  const std::string loaded = catalogue_.Loaded();
  {
    const auto batch = program_.ini.Batch();
    catalogue_.WriteCurrent("PutAway", loaded);
    catalogue_.WriteCurrent("Loading", loading);
  }
  Require("PutAway", loaded);
  program_.files.Flush(program_.app.RoutesIni());
}

void LoadMark::Commit(std::string_view loaded) const {
  const std::string file = program_.app.RoutesIni();
  {
    const auto batch = program_.ini.Batch();
    catalogue_.WriteCurrent("Loaded", loaded);
    program_.ini.DeleteIniKey("Current", "PutAway", file);
    program_.ini.DeleteIniKey("Current", "Loading", file);
  }
  Require("Loaded", loaded);
  Require("PutAway", kNoMark);
  program_.files.Flush(file);
}

/// Writes to profile files fail in silence.
void LoadMark::Require(std::string_view key, std::string_view value) const {
  if (catalogue_.ReadCurrent(key, kNoMark) != value)
    throw RunTimeError(ErrorNumber::PathFileAccessError, program_.app.RoutesIni(), kNoPermission);
}

}  // namespace quillon
