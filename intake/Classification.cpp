#include "intake/Classification.h"

#include "core/Text.h"
#include "core/archive/ArchiveNames.h"

namespace quillon {

void Classification::Run() {
  const auto zips = state_.DownloadedZips();
  std::size_t done = 0;
  for (const auto& zip : zips) {
    state_.progress.Detail(done++, zips.size(), "zips");
    state_.program.Step("Verifying file integrity of " + zip + ".zip");
    // Kept before anything is known of it: what follows may take the download apart.
    state_.journal.OriginalComes(zip);
    state_.CopyOver(state_.Download(zip), state_.InInstalled(zip));
    state_.program.files.SetAttributes(state_.Download(zip), kArchive);
    state_.progress.Caption("Verifying file integrity of " + zip + ".zip");
    const Class verdict = Judge(zip);
    if (verdict == Class::Candidate)
      state_.ListofRouteZips.push_back(zip);
    else
      Reject(zip, verdict);
    state_.progress.Yield();
  }
}

Classification::Class Classification::Judge(const std::string& zip) {
  state_.BadZipFlag = false;
  // Folders are called after the zip: a name that is none, or leads elsewhere, can't be taken in.
  if (!IsUsableStem(zip)) return Class::Bad;
  ArchiveReader unzip1 = state_.Reader();
  unzip1.InputFile = state_.Download(zip);
  unzip1.ReadDirectory();
  int innerZips = 0;
  bool executable = false;
  for (int i = 0; i < unzip1.EntryCount(); ++i) {
    const std::string entry = unzip1.LowerName(i);
    if (Contains(entry, ".zip")) ++innerZips;
    if (Contains(entry, ".exe")) executable = true;
  }
  const bool MultiZipFlag = innerZips > 1;
  if (state_.BadZipFlag) return Class::Bad;
  if (MultiZipFlag) return Class::Patch;
  return executable ? Class::Installer : Class::Candidate;
}

void Classification::Reject(const std::string& zip, Class verdict) {
  const bool bad = verdict == Class::Bad;
  const std::string target =
      bad ? state_.program.app.BadZipFiles() + "\\" + zip + ".zip" : state_.InNotInstalled(zip);
  state_.journal.TakeOriginalBack(zip);
  state_.MoveOver(state_.Download(zip), target);
  state_.SetAside(zip);
  switch (verdict) {
    case Class::Bad: state_.record.BadZip(zip); break;
    case Class::Patch: state_.record.PatchOrOther(zip); break;
    default: state_.record.ManualInstall(zip); break;
  }
  if (bad) state_.BadZipFlag = false;
}

}  // namespace quillon
