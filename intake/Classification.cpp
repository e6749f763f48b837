#include "intake/Classification.h"

#include "catalogue/RouteMap.h"
#include "core/archive/ArchiveCheck.h"
#include "core/text/Text.h"
#include "intake/ForeignDownloads.h"

namespace quillon {
namespace {

constexpr int kMostInnerZips = 3;  // of inner zips that are told

}  // namespace

void Classification::Run() {
  const auto zips = state_.DownloadedZips();
  std::size_t done = 0;
  for (const auto& zip : zips) {
    state_.progress.Detail(done++, zips.size(), "zips");
    state_.Step("Verifying file integrity of " + zip + ".zip", zip);
    // Before anything is known of it: what follows may take the download apart.
    state_.KeepOriginal(zip);
    state_.program.files.SetAttributes(state_.Download(zip), kArchive);
    state_.progress.Caption("Verifying file integrity of " + zip + ".zip");
    const Judgement judgement = Judge(zip);
    if (judgement.verdict == Class::Candidate)
      state_.ListofRouteZips.push_back(zip);
    else
      Reject(zip, judgement);
    state_.progress.Yield();
  }
}

Classification::Judgement Classification::Judge(const std::string& zip) {
  state_.BadZipFlag = false;
  ArchiveReader unzip1 = state_.Reader();
  unzip1.InputFile = state_.Download(zip);
  unzip1.ReadDirectory();
  std::string innerZips, executable;
  int innerCount = 0;
  for (int i = 0; i < unzip1.EntryCount(); ++i) {
    const std::string entry = unzip1.LowerName(i);
    const std::string& name = unzip1.Entries()[static_cast<std::size_t>(i)].name;
    if (Contains(entry, ".zip") && ++innerCount <= kMostInnerZips)
      innerZips += (innerCount > 1 ? ", " : "") + name;
    if (Contains(entry, ".exe") && executable.empty()) executable = name;
  }
  const bool MultiZipFlag = innerCount > 1;
  if (state_.BadZipFlag) return {Class::Bad, unzip1.DamageReason()};
  if (const std::string reason = ReasonAgainst(unzip1); !reason.empty()) return {Class::Bad, reason};
  if (MultiZipFlag)
    return {Class::Patch,
            "it holds more than one zip: " + innerZips + (innerCount > kMostInnerZips ? ", ..." : "")};
  if (!executable.empty()) return {Class::Installer, "it holds a program: " + executable};
  return {Class::Candidate, {}};
}

/// What could never be loaded, or is there to do harm.
std::string Classification::ReasonAgainst(const ArchiveReader& unzip1) const {
  if (const int locked = MapRoute(unzip1).unreadable; locked >= 0) {
    const ArchiveEntry& entry = unzip1.Entries()[static_cast<std::size_t>(locked)];
    return entry.name + " can't be unpacked: " + entry.Obstacle();
  }
  return BombIn(state_.program.files, unzip1);
}

void Classification::Reject(const std::string& zip, const Judgement& judgement) {
  const bool bad = judgement.verdict == Class::Bad;
  state_.journal.TakeOriginalBack(zip);
  const std::string folder = bad ? state_.program.app.BadZipFiles() : state_.program.app.NotInstalled();
  ForeignDownloads(state_).MoveOriginalAside(zip, folder);
  state_.MoveAside(zip, folder);
  state_.SetAside(zip);
  const char* kind = "EXE";
  switch (judgement.verdict) {
    case Class::Bad:
      kind = "BAD";
      state_.record.BadZip(zip);
      break;
    case Class::Patch:
      kind = "MSC";
      state_.record.PatchOrOther(zip);
      break;
    default: state_.record.ManualInstall(zip);
  }
  state_.verdicts.Give(zip, kind, judgement.reason);
  if (bad) state_.BadZipFlag = false;
}

}  // namespace quillon
