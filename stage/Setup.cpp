#include "stage/Setup.h"

#include <filesystem>

#include "catalogue/DefaultFileScan.h"
#include "catalogue/GameFolders.h"
#include "core/Version.h"
#include "core/host/Desktop.h"
#include "core/host/StandardPath.h"
#include "desktop/Shortcut.h"
#include "stage/Delivery.h"

namespace quillon {
namespace {

constexpr const char* kNoDeliveredTree = "the files that Quillon brings along are not beside the program";

/// Whether the folder, or one above it, is `other`, whatever their paths are.
bool LiesIn(const std::string& folder, const std::string& other) {
  std::error_code failed;
  const auto real = std::filesystem::weakly_canonical(ToPath(folder), failed);
  for (auto at = real;; at = at.parent_path()) {
    if (std::filesystem::equivalent(at, ToPath(other), failed)) return true;
    if (at == at.parent_path()) return false;
  }
}

/// A delivered tree is no application folder: its files are everybody's.
bool IsDelivered(Program& program, const std::string& deliveredTree) {
  auto& host = program.files.Host();
  const std::string there = host.HostPath(deliveredTree + "\\resources"),
                    here = host.HostPath(program.app.Below("\\resources"));
  return LiesIn(here, there) || LiesIn(there, here);
}

void RequireNoFile(Program& program) {
  std::uint32_t attributes = 0;
  const std::string& app = program.app.App();
  if (program.files.Host().GetAttributes(app, attributes) == FileCode::Ok && (attributes & kFolder) == 0)
    throw RunTimeError(ErrorNumber::PathFileAccessError, app, "it is no folder");
}

void RequireDeliveredTree(const std::string& deliveredTree) {
  if (deliveredTree.empty())
    throw RunTimeError(ErrorNumber::PathNotFound, ExecutableFolder(), kNoDeliveredTree);
}

bool IsSetUp(Program& program) { return program.files.IsPathAFolder(program.app.MiscInfo()); }

std::string DownloadsOnHost(Program& program, const std::string& app) {
  return program.files.Host().HostPath(Installation(app).DownloadedRoutes());
}

}  // namespace

std::string DeliveredTree() {
  const auto files = MakeHostFileSystem();
  for (const char* const below : {"/../share/quillon", "/../../share/quillon", "/delivered"}) {
    const std::string folder = AbsoluteHostPath(ExecutableFolder() + below);
    std::uint32_t attributes = 0;
    if (files->GetAttributes(folder + "\\resources", attributes) == FileCode::Ok &&
        (attributes & kFolder) != 0)
      return folder;
  }
  return {};
}

void RequireSetUp(Program& program) {
  program.Step("Looking at the application folder");
  RequireNoFile(program);
  if (!program.files.IsPathAFolder(program.app.App()))
    throw RunTimeError(ErrorNumber::PathNotFound, program.app.App(), "there is no such folder");
  if (IsSetUp(program)) return;
  RequireDeliveredTree(DeliveredTree());
  throw RunTimeError(ErrorNumber::PathNotFound, program.app.MiscInfo(),
                     "nothing is laid out in that folder yet");
}

void RequireLayable(Program& program) {
  program.Step("Looking at the application folder");
  RequireNoFile(program);
  if (!IsSetUp(program)) RequireDeliveredTree(DeliveredTree());
}

void SetUpOrRenew(Program& program) {
  if (IsSetUp(program))
    Renew(program, DeliveredTree());
  else
    SetUp(program, DeliveredTree(), {});
}

void Renew(Program& program, const std::string& deliveredTree) {
  if (program.otherInstanceRuns) return;
  const DeliveryNote note = ReadDeliveryNote(program);
  const bool moved = !note.folder.empty() && note.folder != program.files.Host().HostPath(program.app.App());
  const bool other =
      note.release != kRelease && !deliveredTree.empty() && !IsDelivered(program, deliveredTree);
  if (!moved && !other) return;
  program.Step("Renewing the delivered files");
  RenewShortcuts(program.files, DownloadsOnHost(program, program.app.App()),
                 DownloadsOnHost(program, note.folder));
  if (!other)
    NoteAppFolder(program);
  else if (note.release.empty() && !note.folder.empty())
    LayDelivered(program, deliveredTree);  // the set-up was cut short
  else
    LayDeliveredFiles(program, deliveredTree);
}

void LayDelivered(Program& program, const std::string& deliveredTree) {
  program.Step("Laying out the application folder");
  RequireDeliveredTree(deliveredTree);
  RequireNoFile(program);
  if (IsDelivered(program, deliveredTree))
    throw RunTimeError(ErrorNumber::PathFileAccessError, program.app.App(),
                       "from there the files are taken that an application folder is laid out with");
  program.files.RequireWritable(program.app.App());
  program.files.MakeFolders(program.app.App());
  program.registry.CreateKey(RegRoot::LocalMachine, kLarkmoorKey);
  program.registry.CreateKey(RegRoot::LocalMachine, kQuillonKey);
  LayDeliveredFiles(program, deliveredTree);
}

void SetUp(Program& program, const std::string& deliveredTree, const std::optional<std::string>& game) {
  LayDelivered(program, deliveredTree);
  program.Step("Making the shortcut in the programs menu");
  MakeProgramsShortcut(program.files, DownloadsOnHost(program, program.app.App()));
  if (game && StoreGameFolder(program, AbsoluteHostPath(*game))) DefaultFileScan(program).DeriveLists();
}

}  // namespace quillon
