#include "catalogue/IntakeJournal.h"

#include <algorithm>
#include <utility>

#include "catalogue/Catalogue.h"
#include "core/archive/ArchiveReader.h"
#include "core/text/Text.h"
#include "shelf/Rescue.h"

namespace quillon {
namespace {

constexpr const char* kOlder = ".older~";
constexpr const char *kCopied = "copied ", *kRebuilt = "rebuilt ", *kWorkFolder = "folder ",
                     *kStores = "stores ", *kRescue = "rescue ", *kConverted = "converted ";
constexpr char kBar = '|';  // no name has one

}  // namespace

void IntakeJournal::Begin() {
  if (!list_) list_ = std::make_unique<ListFile>(program_.files, program_.app.IntakeJournal(), true);
}

void IntakeJournal::Note(const char* what, const std::string& name) {
  Begin();
  list_->Add(what + name);
}

void IntakeJournal::WorkFolderComes(const std::string& folder) {
  Note(kWorkFolder, folder);
  workFolders_.push_back(folder);
}

void IntakeJournal::OriginalComes(const std::string& zip) {
  if (program_.files.AreEqual(Original(zip + ".zip"), Download(zip))) return;  // it came before, and stays
  Note(kCopied, zip);
  SetOlderAside(zip + ".zip");
}

void IntakeJournal::SetOlderAside(const std::string& file) {
  if (!program_.files.FileExists(Original(file))) return;
  KeepOlder(file);
  program_.files.Rename(Original(file), Older(file));
}

bool IntakeJournal::BringOlderBack(const std::string& file) {
  if (!OlderWaits(file) || program_.files.FileExists(Original(file))) return false;
  program_.files.Rename(Older(file), Original(file));
  return true;
}

void IntakeJournal::RebuiltComes(const std::string& zip) {
  Note(kRebuilt, zip);
  program_.files.Flush(program_.app.IntakeJournal());
}

void IntakeJournal::ConversionComes(const std::string& zip, const std::string& file) {
  Note(kConverted, zip + kBar + file);
}

std::vector<std::string> IntakeJournal::Noted(std::string_view what) const {
  std::vector<std::string> names;
  for (const auto& line : Lines(program_.files.ReadAll(program_.app.IntakeJournal())))
    if (line.starts_with(what)) names.push_back(line.substr(what.size()));
  return names;
}

std::vector<std::pair<std::string, std::string>> IntakeJournal::Converted() const {
  std::vector<std::pair<std::string, std::string>> conversions;
  for (const auto& note : Noted(kConverted))
    if (const auto bar = note.find(kBar); bar != note.npos)
      conversions.emplace_back(note.substr(0, bar), note.substr(bar + 1));
  return conversions;
}

std::vector<std::string> IntakeJournal::Rebuilt() const { return Noted(kRebuilt); }

void IntakeJournal::OwnWorkGoesTo(const std::string& folder) { Note(kRescue, folder); }

void IntakeJournal::StoresAreRenewed(const std::string& zip) { Note(kStores, zip); }

void IntakeJournal::TakeOriginalBack(const std::string& zip) {
  const std::string file = zip + ".zip";
  // Without one, another file than the copy is the older original, which is back already.
  if (OlderWaits(file) || program_.files.AreEqual(Original(file), Download(zip)))
    program_.files.KillIfThere(Original(file));
  BringOlderBack(file);
}

void IntakeJournal::End() {
  for (const auto& name : program_.files.ListFiles(program_.app.Installed() + "\\*" + kOlder))
    KeepOlder(name.substr(0, name.size() - std::string_view(kOlder).size()));
  // What could not go in silence is tried once more.
  for (const auto& folder : workFolders_)
    if (program_.files.IsPathAFolder(folder)) RemoveWorkFolder(folder);
  list_.reset();
  program_.files.KillIfThere(program_.app.IntakeJournal());
}

void IntakeJournal::KeepOlder(const std::string& file) {
  if (!OlderWaits(file)) return;
  Rescue rescue(program_, CutAtLastDot(file),
                "Another zip of the same name was added: this is the original of before.");
  rescue.Keep(Older(file), Original(file));
  rescue.Close();
  program_.files.KillIfThere(Older(file));
}

void IntakeJournal::TakeBackWhatWasCutShort() {
  const std::string journal = program_.app.IntakeJournal();
  if (!program_.files.FileExists(journal)) return;
  const auto lines = Lines(program_.files.ReadAll(journal));
  const auto forEach = [&lines](std::string_view what, const auto& finish) {
    for (const auto& line : lines)
      if (line.starts_with(what)) finish(line.substr(what.size()));
  };
  bool taken = false;
  forEach(kRebuilt, [this](const std::string& zip) { FinishRebuilt(zip); });
  forEach(kWorkFolder, [this](const std::string& folder) { RemoveWorkFolder(folder); });
  forEach(kStores, [this](const std::string& zip) {
    FinishRouteFile(zip);
    FinishStores(zip);
  });
  forEach(kRescue, [this](const std::string& folder) { BringBack(folder); });
  // Last: the others ask for the zips.
  forEach(kRebuilt, [this](const std::string& zip) { TakeBackRebuilt(zip); });
  forEach(kCopied, [&](const std::string& zip) { taken |= FinishOriginal(zip); });
  TakeBackConversions();
  for (const auto* rest : {"*.tmp", "*.part~"})
    program_.files.KillIfThere(program_.app.DownloadedRoutes() + "\\" + rest);
  program_.files.KillIfThere(journal);
  if (taken)
    program_.TellHealed("Adding routes was cut short: what is still among the downloads is added next time.");
}

/// A known route has its old file until its new zip is taken in: its stores are filled from that again.
void IntakeJournal::FinishStores(const std::string& zip) {
  const Installation& app = program_.app;
  if (!program_.files.FileExists(app.RouteFile(zip)) || !program_.files.FileExists(Download(zip))) return;
  ArchiveReader reader(program_.files, [] {});
  reader.InputFile = app.RouteFile(zip);
  reader.KeepFolders = false;
  reader.ReadDirectory();
  for (const auto& [store, pattern] :
       {std::pair(app.Activities(zip), "*.act"), std::pair(app.Services(zip), "*.srv"),
        std::pair(app.Paths(zip), "*.pat"), std::pair(app.Traffic(zip), "*.trf"),
        std::pair(app.Consists(zip), "*.con")}) {
    reader.OutputFolder = store + "\\";
    reader.ClearFilters();
    reader.AddFilter(pattern);
    reader.Extract();
  }
}

/// While the route's old file stands, what the user has changed stands in the stores again, as before; the
/// rescue stays, too.
void IntakeJournal::BringBack(const std::string& rescue) {
  Files& files = program_.files;
  const std::string zip(FileNameOf(CutBackslash(FolderOf(rescue))));
  if (!files.FileExists(Download(zip)) || files.AreEqual(Download(zip), program_.app.RouteFile(zip))) return;
  const std::string kept = rescue + "\\app";
  files.Walk(kept + "\\*.*", [&](const std::string& folder, const std::string& name) {
    const std::string store = program_.app.App() + folder.substr(kept.size());
    files.MakeFolders(CutBackslash(store));
    files.KillIfThere(store + name);
    files.FileCopy(folder + name, store + name);
  });
}

/// The rebuilt zip, and the original in Installed, are all that the next intake needs.
void IntakeJournal::FinishRebuilt(const std::string& zip) {
  if (OlderWaits(zip + ".zip")) return;  // it is taken back
  const std::string written = program_.app.DownloadedRoutes() + "\\" + zip + ".tmp";
  if (program_.files.FileExists(written)) {
    ArchiveReader reader(program_.files, [] {});
    reader.InputFile = written;
    reader.ReadDirectory();
    const bool isLast = reader.EntryCount() > 0 && !program_.files.FileExists(Download(zip)) &&
                        !program_.files.FileExists(Download("Quillon-" + zip));
    if (isLast)
      program_.files.Rename(written, Download("Quillon-" + zip));
    else
      program_.files.KillIfThere(written);
  }
  if (program_.files.FileExists(Download("Quillon-" + zip)) &&
      program_.files.AreEqual(Download(zip), Original(zip + ".zip")))
    program_.files.KillIfThere(Download(zip));
}

/// Whether it replaces the older original is not known before it is taken in: it is rebuilt once more.
void IntakeJournal::TakeBackRebuilt(const std::string& zip) {
  Files& files = program_.files;
  if (!OlderWaits(zip + ".zip")) return;
  auto made = MadeOf(zip);
  made.push_back(program_.app.DownloadedRoutes() + "\\" + zip + ".tmp");
  const bool isLeft =
      std::any_of(made.begin(), made.end(), [&](const std::string& path) { return files.FileExists(path); });
  if (!isLeft) return;  // it was taken in, or set aside
  const std::string original = Original(zip + ".zip");
  if (!files.FileExists(Download(zip)) && files.FileExists(original)) files.Rename(original, Download(zip));
  if (files.FileExists(Download(zip)))
    for (const auto& path : made) files.KillIfThere(path);
}

/// What stands among the downloads that was rebuilt from `zip`, or from that.
std::vector<std::string> IntakeJournal::MadeOf(std::string zip) const {
  const auto rebuilt = Rebuilt();
  std::vector<std::string> made;
  while (std::find(rebuilt.begin(), rebuilt.end(), zip) != rebuilt.end()) {
    zip = "Quillon-" + zip;
    if (program_.files.FileExists(Download(zip))) made.push_back(Download(zip));
  }
  return made;
}

/// A zip that was made of another format is made once more, with what was made of it: the files that it came
/// from are downloads again.
void IntakeJournal::TakeBackConversions() {
  Files& files = program_.files;
  std::vector<std::string> made;
  for (const auto& [zip, file] : Converted()) {
    const std::string download = program_.app.DownloadedRoutes() + "\\" + file;
    auto zips = MadeOf(zip);
    if (files.FileExists(Download(zip))) zips.push_back(Download(zip));
    // Without any it was taken in, or set aside.
    if (!zips.empty() && !files.FileExists(download) && files.FileExists(Original(file)))
      files.Rename(Original(file), download);
    if (!BringOlderBack(file)) KeepOlder(file);
    if (files.FileExists(download)) made.insert(made.end(), zips.begin(), zips.end());
  }
  for (const auto& zip : made) files.KillIfThere(zip);
}

/// Only with the mark of ours in it, or when nothing is.
void IntakeJournal::RemoveWorkFolder(const std::string& folder) {
  Files& files = program_.files;
  if (files.FileExists(folder + kWorkFolderMark))
    files.DelTree(folder);
  else
    files.Host().RemoveFolder(folder);
}

/// A route that is known gets its new file; for any other the next intake makes it again.
void IntakeJournal::FinishRouteFile(const std::string& zip) {
  const std::string copy = program_.app.Routes() + "\\" + zip + ".zip", file = program_.app.RouteFile(zip);
  if (!program_.files.FileExists(copy)) return;
  const bool isKnown = Catalogue(program_).NameOf(zip, kNoData) != kNoData;
  if (isKnown && !program_.files.FileExists(file))
    program_.files.Rename(copy, file);
  else
    program_.files.KillIfThere(copy);
}

/// While the download is there the next intake copies it again; without it the copy is the original.
bool IntakeJournal::FinishOriginal(const std::string& zip) {
  Files& files = program_.files;
  if (files.FileExists(Download(zip))) {
    TakeOriginalBack(zip);
    return true;
  }
  // A zip that was rebuilt is no original: the download that it comes from is.
  constexpr std::string_view kRebuiltPrefix = "Quillon-";
  const std::string file = zip + ".zip";
  if (zip.starts_with(kRebuiltPrefix) && files.FileExists(Original(file.substr(kRebuiltPrefix.size()))))
    files.KillIfThere(Original(file));
  if (!OlderWaits(file)) return false;
  if (!BringOlderBack(file)) KeepOlder(file);
  return true;
}

}  // namespace quillon
