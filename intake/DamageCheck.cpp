#include "intake/DamageCheck.h"

#include "catalogue/RouteChecks.h"
#include "core/archive/ArchiveCheck.h"
#include "intake/RouteNeeds.h"

namespace quillon {
namespace {

constexpr std::size_t kMostDamaged = 3;

}  // namespace

std::string DamageText(const std::vector<std::string>& names) {
  std::string text = "the data of ";
  for (std::size_t i = 0; i < names.size() && i < kMostDamaged; ++i) text += (i > 0 ? ", " : "") + names[i];
  if (names.size() > kMostDamaged) text += " and " + std::to_string(names.size() - kMostDamaged) + " more";
  return text + " are damaged";
}

void DamageCheck::Run() {
  for (const auto& zip : state_.ListofRouteZips) {
    state_.Step("Checking the data of " + zip + ".zip", zip);
    Check(zip);
  }
  state_.progress.Detail(0, 0, "bytes");
}

void DamageCheck::Check(const std::string& zip) {
  ArchiveReader archive = state_.Reader();
  archive.InputFile = state_.Download(zip);
  archive.ReadDirectory();
  std::vector<int> damaged;
  if (!state_.sound.contains(zip))
    damaged = DamagedEntries(state_.program.files, archive, [this](std::uint64_t done, std::uint64_t all) {
      state_.progress.Detail(done, all, "bytes");
      state_.progress.Yield();
    });
  const RouteMap map = MapRoute(archive);
  state_.damage[zip] = NeededDamage(damaged, archive, map);
  std::vector<std::string> names;
  for (const int entry : damaged) names.push_back(archive.Entries()[static_cast<std::size_t>(entry)].name);
  if (!names.empty()) state_.verdicts.Note(zip, "but " + DamageText(names) + ": download it again");
  for (const auto& need : RouteNeeds(archive, map)) state_.verdicts.Note(zip, need);
}

}  // namespace quillon
