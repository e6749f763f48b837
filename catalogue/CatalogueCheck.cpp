#include "catalogue/CatalogueCheck.h"

#include <algorithm>
#include <utility>

#include "catalogue/Previews.h"
#include "catalogue/RouteChecks.h"
#include "catalogue/RouteMap.h"
#include "catalogue/RouteName.h"
#include "core/CopyOver.h"
#include "core/ProfileSnapshot.h"
#include "core/archive/ArchiveCheck.h"
#include "core/host/RawFile.h"
#include "core/host/Workers.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

constexpr std::string_view kNone = "Not There!";

bool IsRouteSection(std::string_view name) {
  return !EqualNoCase(name, "Current") && !EqualNoCase(name, "Versions");
}

/// The name without " (n)", and n; 1 without one.
std::pair<std::string, int> BaseOf(const std::string& name) {
  const auto open = name.rfind(" (");
  if (open == name.npos || open == 0 || !name.ends_with(')')) return {name, 1};
  const std::string digits = name.substr(open + 2, name.size() - open - 3);
  constexpr std::size_t kMostDigits = 3;  // four are a year
  const bool isNumber = !digits.empty() && digits.size() <= kMostDigits &&
                        digits.find_first_not_of("0123456789") == digits.npos;
  const int number = isNumber ? NumericValue(digits) : 0;
  return number > 1 ? std::pair{name.substr(0, open), number} : std::pair{name, 1};
}

/// Why the file can't be opened; empty when it can.
std::string OpeningFault(const std::string& hostPath) {
  if (!RawInput(hostPath).IsOpen()) return kNoPermissionToRead;
  try {
    return ZipFile(hostPath).Entries().empty() ? "it is empty" : "";
  } catch (const Damage& damage) {
    return damage.reason.empty() ? "it can't be read" : damage.reason;
  }
}

}  // namespace

std::string CatalogueFinding::KindText() const {
  switch (kind) {
    case Kind::NoEntry: return "no entry";
    case Kind::NoFile: return "no file";
    case Kind::NoPreview: return "no preview";
    case Kind::StoreWithoutRoute: return "store without route";
    case Kind::Damaged: return "damaged";
  }
  return {};
}

std::string CatalogueFinding::Advice() const {
  switch (kind) {
    case Kind::NoEntry:
      return "The route file is not in the catalogue. " +
             (reason.empty() ? "A repair enters it." : "It could not be entered: " + reason + ".");
    case Kind::NoFile:
      return "The catalogue knows a route whose file is gone. Put it back from the rescued files, or add its "
             "zip again.";
    case Kind::NoPreview:
      return "The route has no picture. " +
             (reason.empty() ? "A repair makes one." : "None could be made: " + reason + ".");
    case Kind::StoreWithoutRoute:
      return "These files belong to no route. Look whether you want to keep them; nothing else needs them.";
    case Kind::Damaged:
      if (reason == kNoPermissionToRead)
        return "The route file can't be opened. Get the right to read it, or close the program that has it.";
      return "The route file is damaged: " + reason +
             ". Add the route's zip from original_zips\\Installed again.";
  }
  return {};
}

bool CatalogueHasGaps(Program& program) {
  const FileSystem::Pass pass(program.files.Host());
  const ProfileSnapshot names(program.files, program.app.RoutesIni());
  const auto files = program.files.ListFiles(program.app.AnyRouteFile());
  return std::any_of(files.begin(), files.end(), [&](const std::string& file) {
    const std::string zip = CutAtLastDot(file), name = names.Read(zip, "Name", "");
    return Trim(name).empty() || !EqualNoCase(names.Read(name, "Zip", ""), zip) ||
           !program.files.FileExists(program.app.Preview(zip));
  });
}

bool AnythingLeft(const std::vector<CatalogueFinding>& findings) {
  return std::any_of(findings.begin(), findings.end(), [](const auto& finding) { return !finding.repaired; });
}

bool CanBeRepaired(const std::vector<CatalogueFinding>& findings) {
  using Kind = CatalogueFinding::Kind;
  return std::any_of(findings.begin(), findings.end(), [](const auto& finding) {
    return finding.kind == Kind::NoEntry || finding.kind == Kind::NoPreview;
  });
}

std::vector<CatalogueFinding> CatalogueCheck::Run(bool deep, bool repair) {
  program_.Step("Comparing the catalogue with the files");
  findings_.clear();
  {
    const FileSystem::Pass pass(program_.files.Host());
    ReadNames();
    FindMissingEntries();
    FindMissingFiles();
    FindMissingPreviews();
    FindStrayStores();
    FindDamage();
  }
  if (deep) FindDeepDamage();
  if (repair) Repair();
  progress_.Detail(0, 0, {});
  return findings_;
}

void CatalogueCheck::ReadNames() {
  for (const auto& route : ListRouteFiles(program_)) {
    zips_.push_back(route.zip);
    hostPaths_.push_back(program_.files.Host().HostPath(program_.app.RouteFile(route.zip)));
    files_.insert(UpperCase(route.zip));
  }
  const ProfileSnapshot profile(program_.files, program_.app.RoutesIni());
  const std::string names = profile.SectionNames();
  std::set<std::string> known;
  const auto enter = [&](const std::string& zip) {
    if (known.insert(UpperCase(zip)).second) entered_.push_back(zip);
  };
  for (std::size_t at = 0; at < names.size(); at = names.find('\0', at) + 1) {
    const std::string section = names.c_str() + at;
    if (!IsRouteSection(section)) continue;
    if (profile.Read(section, "Name", kNone) != kNone) enter(section);
    if (const std::string zip = profile.Read(section, "Zip", kNone); zip != kNone) {
      enter(zip);
      namesOf_.try_emplace(UpperCase(zip), section);
    }
  }
}

void CatalogueCheck::FindMissingEntries() {
  for (const auto& zip : zips_)
    if (!catalogue_.IsWhole(zip)) Add(Kind::NoEntry, zip, program_.app.RouteFile(zip));
}

void CatalogueCheck::FindMissingFiles() {
  for (const auto& zip : entered_)
    if (!files_.contains(UpperCase(zip))) Add(Kind::NoFile, zip, program_.app.RouteFile(zip));
}

void CatalogueCheck::FindMissingPreviews() {
  for (const auto& zip : zips_)
    if (!program_.files.FileExists(program_.app.Preview(zip)))
      Add(Kind::NoPreview, zip, program_.app.Preview(zip));
}

/// Empty folders are nobody's loss. What the game had while nothing was loaded is kept under a name of its
/// own.
void CatalogueCheck::FindStrayStores() {
  const Installation& app = program_.app;
  std::set<std::string> routes = files_;
  for (const auto& zip : entered_) routes.insert(UpperCase(zip));
  for (const auto& zip : {catalogue_.Loaded(), std::string(kNoData)}) routes.insert(UpperCase(zip));
  for (const std::string& place :
       {app.Activities(""), app.Paths(""), app.Services(""), app.Traffic(""), app.Consists(""),
        app.Custom(""), app.RouteInfo(""), app.RoutePics(""), app.Saves("")}) {
    std::vector<FoundFile> found;
    program_.files.Host().Find(place + "*.*", found);
    for (const auto& folder : found) {
      if (!folder.folder() || folder.dots() || routes.contains(UpperCase(folder.name))) continue;
      bool any = false;
      program_.files.Walk(place + folder.name + "\\*.*", [&](const auto&, const auto&) { any = true; });
      if (any) Add(Kind::StoreWithoutRoute, folder.name, place + folder.name);
    }
  }
  for (const auto& file : program_.files.ListFiles(app.TerrainCache("*")))
    if (const std::string zip = CutAtLastDot(file); !routes.contains(UpperCase(zip)))
      Add(Kind::StoreWithoutRoute, zip, app.TerrainCache(zip));
}

void CatalogueCheck::FindDamage() {
  std::vector<std::string> faults(zips_.size());
  OnAllProcessors(
      zips_.size(), [&](std::size_t i) { faults[i] = OpeningFault(hostPaths_[i]); },
      [&](std::size_t done) {
        progress_.Detail(done, zips_.size(), "routes");
        progress_.Yield();
      });
  for (std::size_t i = 0; i < zips_.size(); ++i)
    if (!faults[i].empty()) Add(Kind::Damaged, zips_[i], program_.app.RouteFile(zips_[i]), faults[i]);
}

void CatalogueCheck::FindDeepDamage() {
  std::set<std::string> known;
  for (const auto& finding : findings_)
    if (finding.kind == Kind::Damaged) known.insert(finding.zip);
  for (std::size_t i = 0; i < zips_.size(); ++i) {
    if (known.contains(zips_[i])) continue;
    program_.Step("Checking the route file of " + zips_[i]);
    progress_.Caption("Checking " + zips_[i] + ", " + std::to_string(i + 1) + " of " +
                      std::to_string(zips_.size()) + "...");
    if (const std::string damage = DeepDamageOf(zips_[i]); !damage.empty())
      Add(Kind::Damaged, zips_[i], program_.app.RouteFile(zips_[i]), damage);
  }
}

/// What keeps a load from having all that it needs.
std::string CatalogueCheck::DeepDamageOf(const std::string& zip) {
  ArchiveReader archive(program_.files, [] {});
  archive.InputFile = program_.app.RouteFile(zip);
  archive.ReadDirectory();
  const RouteMap map = MapRoute(archive);
  if (map.unreadable >= 0) {
    const ArchiveEntry& entry = archive.Entries()[static_cast<std::size_t>(map.unreadable)];
    return entry.name + " can't be unpacked: " + entry.Obstacle();
  }
  const auto damaged = DamagedEntries(program_.files, archive, [&](std::uint64_t done, std::uint64_t all) {
    progress_.Detail(done, all, "bytes");
    progress_.Yield();
  });
  const std::string name = NeededDamage(damaged, archive, map);
  return name.empty() ? "" : "the data of " + name + " are damaged";
}

/// The counts come first: they make the names of new entries unique.
void CatalogueCheck::Repair() {
  program_.Step("Repairing the catalogue");
  RepairVersions();
  {
    const auto batch = program_.ini.Batch();
    for (auto& finding : findings_)
      if (finding.kind == Kind::NoEntry) RepairEntry(finding.zip);
  }
  for (auto& finding : findings_) {
    if (finding.kind == Kind::NoEntry) {
      finding.repaired = catalogue_.IsWhole(finding.zip);
      if (!finding.repaired) finding.reason = "routes.ini can't be written";
    }
    if (finding.kind == Kind::NoPreview) RepairPreview(finding);
  }
  RepairVersions();
}

void CatalogueCheck::RepairVersions() {
  struct Count {
    int routes = 0, highest = 0;
  };
  std::map<std::string, Count> counts;
  for (const auto& zip : zips_) {
    if (!catalogue_.IsWhole(zip)) continue;
    const auto [base, number] = BaseOf(catalogue_.NameOf(zip, ""));
    Count& count = counts[base];
    ++count.routes;
    count.highest = std::max(count.highest, number);
  }
  const auto batch = program_.ini.Batch();
  for (const auto& [base, count] : counts)
    catalogue_.RequireVersions(base, std::max(count.routes, count.highest));
}

void CatalogueCheck::RepairEntry(const std::string& zip) {
  const std::string name = RouteNameOf(zip);
  const auto known = namesOf_.find(UpperCase(zip));
  catalogue_.Mend(zip, known == namesOf_.end() ? name : known->second);
  const std::string scripts = program_.app.ScriptsIni();
  if (program_.ini.ReadIni(zip, "Script", kNone, scripts) == kNone)
    program_.ini.WriteIni(zip, "Script", name, scripts);
}

/// By the track file in the route file; one that is damaged may have left its own among the documents.
std::string CatalogueCheck::RouteNameOf(const std::string& zip) {
  try {
    ZipFile file(program_.files.Host().HostPath(program_.app.RouteFile(zip)));
    const TrackText track = TrackTextOf(file);
    if (!track.name.empty()) return UsableRouteName(RouteNameFrom(track.text, track.name), zip);
  } catch (const Damage&) {
  } catch (const RunTimeError&) {  // the track file has no name
  }
  try {
    return StoredRouteName(program_, zip);
  } catch (const RunTimeError&) {
    return zip;
  }
}

/// As an intake does, for one route by itself. Of a picture that can't be read the one without a picture
/// stays.
void CatalogueCheck::RepairPreview(CatalogueFinding& finding) {
  try {
    CopyOver(program_.files, program_.app.NoImagePicture(), finding.path);
    Previews(program_, progress_, [this](const std::string& what, const std::string&) {
      program_.Step(what);
    }).Run({finding.zip});
  } catch (const RunTimeError& error) {
    finding.reason = error.text() + ": " + error.path();
  }
  finding.repaired = program_.files.FileExists(finding.path);
}

}  // namespace quillon
