#include "stage/Setup.h"

#include "catalogue/DefaultFileScan.h"
#include "catalogue/GameFolders.h"
#include "core/Text.h"
#include "core/host/Desktop.h"
#include "desktop/Shortcut.h"

namespace quillon {
namespace {

/// Without `replace` a user's files, and lists that were filled from the user's game, stay.
void LayTree(Files& files, const std::string& source, const std::string& target, bool replace = false) {
  files.MakeFolders(target);
  std::vector<FoundFile> found;
  RaiseFileError(files.Host().Find(source + "\\*.*", found), source);
  for (const auto& entry : found) {
    if (entry.dots()) continue;
    const std::string from = source + "\\" + entry.name, to = target + "\\" + entry.name;
    if (entry.folder()) {
      LayTree(files, from, to, replace);
    } else if (replace || !files.FileExists(to)) {
      files.KillIfThere(to);
      files.FileCopy(from, to);
      files.SetAttributes(to, kArchive);  // packages may deliver read-only files
    }
  }
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

void SetUpIfNeeded(Program& program) {
  if (!program.files.FileExists(program.app.MiscInfo())) SetUp(program, DeliveredTree(), {});
}

void LayDelivered(Program& program, const std::string& deliveredTree) {
  program.Step("Laying out the application folder");
  if (deliveredTree.empty())
    throw RunTimeError(ErrorNumber::PathNotFound, "share/quillon",
                       "the delivered tree does not lie beside the program");
  const FileSystem::Pass pass(program.files.Host());
  const std::string help = "\\resources\\files";  // nobody's but the program's
  if (program.files.FileExists(deliveredTree + help))
    LayTree(program.files, deliveredTree + help, program.app.Below(help), true);
  LayTree(program.files, deliveredTree + "\\resources", program.app.Below("\\resources"));
  program.registry.CreateKey(RegRoot::LocalMachine, kLarkmoorKey);
  program.registry.CreateKey(RegRoot::LocalMachine, kQuillonKey);
}

void SetUp(Program& program, const std::string& deliveredTree, const std::optional<std::string>& game) {
  LayDelivered(program, deliveredTree);
  program.Step("Making the shortcut in the programs menu");
  MakeProgramsShortcut(program.files, program.files.Host().HostPath(program.app.DownloadedRoutes()));
  if (game && StoreGameFolder(program, AbsoluteHostPath(*game))) DefaultFileScan(program).DeriveLists();
}

}  // namespace quillon
