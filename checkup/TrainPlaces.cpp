#include "checkup/TrainPlaces.h"

#include <algorithm>

#include "core/Installation.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

bool IsTrain(std::string_view lowerName) {
  return lowerName.ends_with(".eng") || (lowerName.ends_with(".wag") && lowerName != "default.wag");
}

/// Without blanks around the name and in front of the extension.
std::string Squeezed(const std::string& lowerFile) {
  const auto point = lowerFile.rfind('.');
  return Trim(lowerFile.substr(0, point)) + Trim(lowerFile.substr(std::min(point, lowerFile.size())));
}

}  // namespace

TrainPlaces::TrainPlaces(Program& program) {
  const std::string top = program.BelowGame(kTrainSet);
  std::unordered_map<std::string, std::size_t> known;
  program.files.WalkThroughLinks(top + "*.*", [&](const std::string& folder, const std::string& name) {
    const std::string lower = LowerCase(name);
    const std::string_view below = std::string_view(folder).substr(top.size());
    if (below.empty() || !(IsTrain(lower) || IsTrain(Squeezed(lower)))) return;
    const std::string path(below.substr(0, below.size() - 1));
    const auto [at, isNew] = known.try_emplace(path, places_.size());
    if (isNew)
      places_.push_back({path, {}, static_cast<int>(std::count(path.begin(), path.end(), '\\')) + 1});
    places_[at->second].files.insert(lower);
    if (const std::string squeezed = Squeezed(lower); squeezed != lower)
      blanks_.try_emplace(LowerCase(path) + '\0' + squeezed, name);
  });
  std::vector<std::pair<std::string, Place>> keyed;
  for (auto& place : places_) keyed.emplace_back(UpperCase(place.path), std::move(place));
  std::sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) {
    return a.second.depth != b.second.depth ? a.second.depth < b.second.depth : a.first < b.first;
  });
  std::transform(keyed.begin(), keyed.end(), places_.begin(),
                 [](auto& pair) { return std::move(pair.second); });
  for (const auto& place : places_) {
    for (const auto& file : place.files) holders_[file].push_back(&place);
    named_[Trim(LowerCase(FileNameOf(place.path)))].push_back(&place);
  }
}

const TrainPlaces::Place* TrainPlaces::FindByName(const std::string& folder,
                                                  const std::set<std::string>& files) const {
  const Place* best = nullptr;
  std::ptrdiff_t most = 0;
  const auto named = named_.find(Trim(folder));
  if (named == named_.end()) return nullptr;
  for (const Place* place : named->second) {
    const auto held = std::count_if(files.begin(), files.end(),
                                    [&](const std::string& file) { return place->files.contains(file); });
    if (held <= most) continue;
    most = held;
    best = place;
  }
  return best;
}

const TrainPlaces::Place* TrainPlaces::Find(const std::string& folder, const std::set<std::string>& files,
                                            const std::unordered_set<std::string>& askedFor) const {
  if (const Place* named = FindByName(folder, files)) return named;
  const auto holders = holders_.find(*files.begin());
  if (holders == holders_.end()) return nullptr;
  const Place* asked = nullptr;
  for (const Place* place : holders->second) {
    if (!std::includes(place->files.begin(), place->files.end(), files.begin(), files.end())) continue;
    if (place->depth > 1 || !askedFor.contains(LowerCase(place->path))) return place;
    if (asked == nullptr) asked = place;
  }
  return asked;
}

const TrainPlaces::Place* TrainPlaces::FindBelow(const std::string& folder, const std::string& file) const {
  const auto holders = holders_.find(file);
  if (holders == holders_.end()) return nullptr;
  const auto at = std::find_if(holders->second.begin(), holders->second.end(), [&](const Place* place) {
    return LowerCase(place->path).starts_with(folder + "\\");
  });
  return at == holders->second.end() ? nullptr : *at;
}

std::string TrainPlaces::WithBlanks(const std::string& folder, const std::string& file) const {
  const auto at = blanks_.find(folder + '\0' + file);
  return at == blanks_.end() ? std::string() : at->second;
}

}  // namespace quillon
