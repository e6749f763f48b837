#include "catalogue/Unfinished.h"

#include "catalogue/IntakeJournal.h"
#include "catalogue/RouteRemoval.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

constexpr std::string_view kDelete = "Delete";
constexpr std::string_view kRemovedMark = "\\Quillon-removed-";

}  // namespace

void Unfinished::Begin(std::string_view act,
                       const std::vector<std::pair<std::string, std::string>>& facts) const {
  const std::string file = program_.app.UnfinishedIni();
  {
    const auto batch = program_.ini.Batch();
    program_.ini.WriteIni(act, kBegun, "Yes", file);
    for (const auto& [key, value] : facts) program_.ini.WriteIni(act, key, value, file);
  }
  program_.files.Flush(file);
}

std::string Unfinished::Fact(std::string_view act, std::string_view key) const {
  return program_.ini.ReadIni(act, key, "", program_.app.UnfinishedIni());
}

void Unfinished::End(std::string_view act) const {
  const std::string file = program_.app.UnfinishedIni();
  if (!HasBegun(act)) return;
  program_.files.Flush(file);  // what the act has done comes before its end
  program_.ini.DeleteIniSection(act, file);
  DropIfEmpty();
  program_.files.Flush(file);
}

void Unfinished::DropIfEmpty() const {
  const std::string file = program_.app.UnfinishedIni();
  if (program_.files.FileExists(file) && !Contains(program_.files.ReadAll(file), "["))
    program_.files.KillIfThere(file);
}

bool DeleteWhole(Program& program, const std::string& folder, const Files::Each& each) {
  Files& files = program.files;
  if (!files.IsPathAFolder(folder)) return true;
  const Unfinished unfinished(program);
  // Where the game shows no routes; on another disk than that only beside the folder itself.
  for (const std::string& place : {program.shared.TrainSimPath, CutBackslash(FolderOf(folder))}) {
    const std::string wanted = place + std::string(kRemovedMark) + std::string(FileNameOf(folder));
    std::string away = wanted;
    for (int i = 2; files.FileExists(away); ++i) away = wanted + "~" + std::to_string(i);
    unfinished.Begin(kDelete, {{"Folder", away}});
    if (files.Host().Move(folder, away) != FileCode::Ok) continue;
    if (files.DelTree(away, each) != 0) return false;
    unfinished.End(kDelete);
    return true;
  }
  unfinished.End(kDelete);
  return false;
}

bool FinishWhatWasCutShort(Program& program) {
  const Unfinished unfinished(program);
  if (!program.files.FileExists(program.app.UnfinishedIni()) &&
      !program.files.FileExists(program.app.IntakeJournal()))
    return false;
  program.Step("Finishing what was cut short");
  if (const std::string folder = unfinished.Fact(kDelete, "Folder"); !folder.empty()) {
    if (Contains(folder, kRemovedMark) && program.files.DelTree(folder) == 0)
      program.TellHealed("The removal of a route folder that was cut short has been finished.");
    if (!program.files.FileExists(folder)) unfinished.End(kDelete);
  }
  if (unfinished.HasBegun(kPackAct)) {
    program.files.KillIfThere(program.app.DownloadedRoutes() + "\\QNPacked-*.tmp");
    unfinished.End(kPackAct);
    program.TellHealed("Packing a route was cut short; its folder is as it was. Pack it again.");
  }
  IntakeJournal(program).TakeBackWhatWasCutShort();
  const bool permanent = RouteRemoval::FinishPermanent(program);
  RouteRemoval::FinishRemoval(program);
  program.files.PartSweep(program.app.Rescued() + "\\*.*");
  unfinished.DropIfEmpty();
  return permanent;
}

}  // namespace quillon
