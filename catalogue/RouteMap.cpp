#include "catalogue/RouteMap.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <unordered_map>

#include "core/text/Text.h"

namespace quillon {
namespace {

using Names = std::vector<std::string>;

std::optional<std::string> PrefixBefore(const Names& names, std::string_view innerFolder) {
  for (const auto& name : names)
    if (const auto at = name.find(innerFolder); at != name.npos) return name.substr(0, at + 1);
  return std::nullopt;
}

bool AnyBeginsWith(const Names& names, std::string_view start) {
  return std::any_of(names.begin(), names.end(),
                     [&](const std::string& name) { return name.starts_with(start); });
}

/// Tiles are trusted over world files, and a match deeper down over one at the top.
std::string FindRoot(const Names& names) {
  if (const auto prefix = PrefixBefore(names, "\\tiles\\")) return *prefix;
  if (AnyBeginsWith(names, "tiles\\")) return {};
  return PrefixBefore(names, "\\world\\").value_or("");
}

/// Terrain and backups never enter the working folder; consists travel apart.
bool IsRefused(const std::string& path) {
  static constexpr std::array<std::string_view, 5> kRefused = {"_e.raw", "_n.raw", ".bk", "\\", ".con"};
  return path.empty() || std::any_of(kRefused.begin(), kRefused.end(),
                                     [&](std::string_view end) { return path.ends_with(end); });
}

/// What a route can do without.
bool IsDocument(const std::string& path) {
  static constexpr std::array<std::string_view, 11> kDocuments = {
      ".txt", ".diz", ".nfo", ".rtf", ".doc", ".docx", ".pdf", ".htm", ".html", ".url", ".md"};
  return std::any_of(kDocuments.begin(), kDocuments.end(),
                     [&](std::string_view end) { return path.ends_with(end); });
}

/// Takes out what a later file of another stored name covers.
void DropCovered(RouteMap& map) {
  std::unordered_map<std::string_view, std::size_t> lastOf;
  std::vector<bool> covered(map.entries.size());
  for (std::size_t i = 0; i < map.entries.size(); ++i) {
    const auto [at, isNew] = lastOf.try_emplace(map.lstRouteStrippedPath[i], i);
    if (isNew) continue;
    covered[at->second] = map.lstUnzipThese[at->second] != map.lstUnzipThese[i];
    at->second = i;
  }
  lastOf.clear();
  std::size_t kept = 0;
  for (std::size_t i = 0; i < covered.size(); ++i) {
    if (covered[i]) continue;
    if (kept != i) {
      map.lstRouteStrippedPath[kept] = std::move(map.lstRouteStrippedPath[i]);
      map.lstUnzipThese[kept] = std::move(map.lstUnzipThese[i]);
      map.entries[kept] = map.entries[i];
    }
    ++kept;
  }
  map.lstRouteStrippedPath.resize(kept);
  map.lstUnzipThese.resize(kept);
  map.entries.resize(kept);
}

}  // namespace

RouteMap MapRoute(const ArchiveReader& archive) {
  Names names;
  names.reserve(archive.Entries().size());
  for (int i = 0; i < archive.EntryCount(); ++i) names.push_back(archive.LowerName(i));

  RouteMap map;
  map.RouteRootPrefix = FindRoot(names);
  const std::size_t cut = map.RouteRootPrefix.size();
  map.lstRouteStrippedPath.reserve(names.size());
  map.lstUnzipThese.reserve(names.size());
  map.entries.reserve(names.size());
  for (int i = 0; i < archive.EntryCount(); ++i) {
    const std::string& name = names[static_cast<std::size_t>(i)];
    const bool inRoute = Contains(name, map.RouteRootPrefix);
    std::string path = inRoute ? name.substr(std::min(cut, name.size())) : name;
    if (IsRefused(path)) continue;
    if (!archive.Entries()[static_cast<std::size_t>(i)].Obstacle().empty()) {
      if (inRoute && !IsDocument(name)) map.unreadable = i;
      continue;
    }
    map.lstRouteStrippedPath.push_back(std::move(path));
    map.lstUnzipThese.push_back(name);
    map.entries.push_back(i);
  }
  DropCovered(map);
  return map;
}

}  // namespace quillon
