// The catalogue against the files, and what a repair of it can do.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "catalogue/Catalogue.h"
#include "catalogue/DetailsCache.h"
#include "core/Program.h"
#include "core/Progress.h"

namespace quillon {

/// Something that does not fit.
struct CatalogueFinding {
  enum class Kind { NoEntry, NoFile, NoPreview, StoreWithoutRoute, Damaged };
  Kind kind;
  std::string zip, path;
  std::string reason;  // of the damage, or why the repair has failed
  bool repaired = false;

  /// Such as "no entry".
  std::string KindText() const;
  /// What is wrong and what to do about it, in plain words.
  std::string Advice() const;
};

class CatalogueCheck {
 public:
  /// Both outlive the object.
  CatalogueCheck(Program& program, Progress& progress)
      : program_(program), progress_(progress), catalogue_(program) {}

  /// `deep`: the data of all route files are read and checked. `repair`: entries and previews are made anew;
  /// nothing is deleted, and selection and loaded route stay as they were. What can't be healed stays a
  /// finding.
  std::vector<CatalogueFinding> Run(bool deep, bool repair);

 private:
  using Kind = CatalogueFinding::Kind;
  void ReadNames();
  void FindMissingEntries();
  void FindMissingFiles();
  void FindMissingPreviews();
  void FindStrayStores();
  void FindDamage();
  void FindDeepDamage();
  std::string DeepDamageOf(const std::string& zip);

  void Repair();
  void RepairVersions();
  void RepairEntry(const std::string& zip);
  std::string RouteNameOf(const std::string& zip);
  void RepairPreview(CatalogueFinding& finding);
  void Add(Kind kind, const std::string& zip, std::string path, std::string reason = {}) {
    findings_.push_back({kind, zip, std::move(path), std::move(reason), false});
  }

  Program& program_;
  Progress& progress_;
  Catalogue catalogue_;
  std::vector<std::string> zips_;               // of the route files
  std::vector<std::string> hostPaths_;          // of the same
  std::vector<std::string> entered_;            // zip names in routes.ini
  std::map<std::string, std::string> namesOf_;  // the display name that leads to a zip name in upper case
  std::set<std::string> files_;                 // zip names with a route file, in upper case
  std::vector<CatalogueFinding> findings_;
};

/// Whether a route file lacks its entry or its preview: a quick look, without the rest.
bool CatalogueHasGaps(Program& program);
/// Whether anything is left that is not repaired.
bool AnythingLeft(const std::vector<CatalogueFinding>& findings);
/// Whether a repair would find something to do.
bool CanBeRepaired(const std::vector<CatalogueFinding>& findings);

}  // namespace quillon
