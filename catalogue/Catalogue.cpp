#include "catalogue/Catalogue.h"

#include <algorithm>
#include <utility>

#include "core/text/Text.h"

namespace quillon {
namespace {

constexpr std::string_view kFree = "NADA!";          // no route has this display name
constexpr std::string_view kUnknown = "Not There!";  // no route has this zip name

std::string Numbered(std::string_view name, int number) {
  return std::string(name) + " (" + std::to_string(number) + ")";
}

/// A value that is read back as it is: blanks and a pair of quotes around it would be taken off.
std::string Kept(std::string_view value) {
  const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
  const bool quoted =
      value.size() > 1 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
  const bool loses = !value.empty() && (quoted || isBlank(value.front()) || isBlank(value.back()));
  return loses ? "\"" + std::string(value) + "\"" : std::string(value);
}

/// No route can have the name of a section that holds something else.
bool IsReserved(std::string_view name) {
  return EqualNoCase(name, "Current") || EqualNoCase(name, "Versions");
}

}  // namespace

std::string KeyOf(std::string_view name) {
  std::string key = ReplaceAll(name, "=", "-");
  return key.starts_with('[') || key.starts_with(';') ? "-" + key : key;
}

std::string NameOfRow(std::string_view row) { return Trim(ReplaceAll(row, kLoadedMark, "")); }

std::string Catalogue::ReadCurrent(std::string_view key, std::string_view defaultText) const {
  return program_.ini.ReadIni("Current", key, defaultText, program_.app.RoutesIni());
}

void Catalogue::WriteCurrent(std::string_view key, std::string_view value) const {
  program_.ini.WriteIni("Current", key, Kept(value), program_.app.RoutesIni());
}

void Catalogue::Select(std::string_view name, std::string_view zip) const {
  WriteCurrent("Temp", name);
  WriteCurrent("Zip", zip);
}

std::string Catalogue::NameOf(std::string_view zip, std::string_view defaultText) const {
  return program_.ini.ReadIni(zip, "Name", defaultText, program_.app.RoutesIni());
}

std::string Catalogue::ZipOf(std::string_view name, std::string_view defaultText) const {
  return program_.ini.ReadIni(name, "Zip", defaultText, program_.app.RoutesIni());
}

bool Catalogue::IsLoaded(std::string_view name) const { return ZipOf(name, kNoData) == Loaded(); }

bool Catalogue::AnyRoute() const { return program_.files.FileExists(program_.app.AnyRouteFile()); }

void Catalogue::Discard() const {
  // What was cut short is only known from here.
  if (ReadCurrent("PutAway", kUnknown) == kUnknown) program_.files.KillIfThere(program_.app.RoutesIni());
}

std::string Catalogue::Add(std::string_view zip, std::string_view routeName) const {
  if (NameOf(zip, kUnknown) != kUnknown) return {};
  std::string name;
  {
    const auto batch = program_.ini.Batch();  // one write: no half of an entry is ever read
    name = UniqueName(std::string(routeName));
    Enter(zip, name);
    WriteCurrent("Zip", zip);
    WriteCurrent("Temp", name);
  }
  RequireEntry(zip);
  return name;
}

void Catalogue::Enter(std::string_view zip, std::string_view name) const {
  program_.ini.WriteIni(name, "Zip", Kept(zip), program_.app.RoutesIni());
  program_.ini.WriteIni(zip, "Name", Kept(name), program_.app.RoutesIni());
}

/// Writes to profile files fail in silence, and a route without an entry can't be chosen.
void Catalogue::RequireEntry(std::string_view zip) const {
  if (NameOf(zip, kUnknown) == kUnknown)
    throw RunTimeError(ErrorNumber::PathFileAccessError, program_.app.RoutesIni(), kNoPermission);
}

void Catalogue::Restore(std::string_view zip, std::string_view name) const {
  if (NameOf(zip, kUnknown) != kUnknown) return;
  {
    const auto batch = program_.ini.Batch();
    Enter(zip, ZipOf(name, kFree) == kFree ? std::string(name) : UniqueName(std::string(name)));
  }
  RequireEntry(zip);
}

void Catalogue::Mend(std::string_view zip, std::string_view routeName) const {
  const std::string known = NameOf(zip, kUnknown);
  {
    const auto batch = program_.ini.Batch();
    const bool isFree = known != kUnknown && !Trim(known).empty() && ZipOf(known, kFree) == kFree;
    const bool leadsHere = EqualNoCase(ZipOf(routeName, kFree), zip);
    Enter(zip, isFree ? known : leadsHere ? std::string(routeName) : UniqueName(std::string(routeName)));
  }
  RequireEntry(zip);
}

bool Catalogue::IsWhole(std::string_view zip) const {
  const std::string name = NameOf(zip, kUnknown);
  return name != kUnknown && EqualNoCase(ZipOf(name, kFree), zip);
}

void Catalogue::RequireVersions(std::string_view routeName, int count) const {
  const std::string file = program_.app.RoutesIni(), key = KeyOf(routeName);
  if (NumericValue(program_.ini.ReadIni("Versions", key, "0", file)) < count)
    program_.ini.WriteIni("Versions", key, std::to_string(count), file);
}

std::string Catalogue::UniqueName(const std::string& routeName) const {
  const std::string file = program_.app.RoutesIni();
  int number = NumericValue(program_.ini.ReadIni("Versions", KeyOf(routeName), "0", file)) + 1;
  program_.ini.WriteIni("Versions", KeyOf(routeName), std::to_string(number), file);
  if (IsReserved(routeName)) return UniqueName(routeName + " (route)");
  // The name may be free again although the count goes on.
  if (number == 1 || ZipOf(routeName, kFree) == kFree) return routeName;
  for (int i = 2; i <= number; ++i) {
    if (ZipOf(Numbered(routeName, i), kFree) == kFree) return Numbered(routeName, i);
  }
  return Numbered(routeName, number);
}

Catalogue::RouteList Catalogue::BuildList() const {
  RouteList list;
  if (!AnyRoute()) {
    Discard();
    list.rows.emplace_back(kAddSomeRoutes);
    return list;
  }
  for (const auto& file : program_.files.ListFiles(program_.app.AnyRouteFile()))
    list.zips.push_back(CutAtLastDot(file));
  const std::string loaded = Loaded();
  std::vector<std::pair<std::string, std::string>> rows;  // upper case, to sort by; the row
  for (const auto& zip : list.zips) {
    std::string row = NameOf(zip, kRunCleanup);
    program_.shared.CatalogueGap = row == kRunCleanup;
    if (zip == loaded) row += kLoadedMark;
    rows.emplace_back(UpperCase(row), std::move(row));
  }
  std::stable_sort(rows.begin(), rows.end(),
                   [](const auto& a, const auto& b) { return ComesBefore(a.first, b.first); });
  for (auto& row : rows) list.rows.push_back(std::move(row.second));
  return list;
}

}  // namespace quillon
