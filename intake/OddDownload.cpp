#include "intake/OddDownload.h"

#include <algorithm>
#include <array>

#include "catalogue/Catalogue.h"
#include "catalogue/RouteRemoval.h"
#include "core/text/Text.h"
#include "intake/ForeignDownloads.h"
#include "shelf/Rescue.h"

namespace quillon {
namespace {

constexpr std::string_view kSection = "Download";
constexpr std::string_view kPrefix = "Quillon-";

std::string Fact(Program& program, std::string_view key) {
  return program.ini.ReadIni(kSection, key, "", program.app.OddDownloadIni());
}

void Note(Program& program, std::string_view key, std::string_view value) {
  program.ini.WriteIni(kSection, key, value, program.app.OddDownloadIni());
}

/// What a download's content can bring about; a full disk is no download's fault.
bool IsItsFault(const RunTimeError& error) {
  constexpr std::array kFaults = {ErrorNumber::InvalidProcedureCall, ErrorNumber::Overflow,
                                  ErrorNumber::InternalError,        ErrorNumber::FileAlreadyExists,
                                  ErrorNumber::InvalidFileFormat,    ErrorNumber::InvalidPicture};
  return std::any_of(kFaults.begin(), kFaults.end(),
                     [&](ErrorNumber number) { return static_cast<int>(number) == error.number(); });
}

/// Of a zip that triage or the rebuild has made, the name of the download that it comes from.
std::string OriginalOf(const IntakeState& state, const std::string& zip) {
  std::string name = zip;
  while (name.starts_with(kPrefix)) {
    name = name.substr(kPrefix.size());
    if (state.program.files.FileExists(state.InInstalled(name)) &&
        !state.program.files.FileExists(state.program.app.RouteFile(name)))
      return name;
  }
  return zip;
}

/// What a cut-short intake has made of a route that is in no catalogue.
void RemoveTraces(Program& program, const std::string& zip) {
  if (Catalogue(program).NameOf(zip, kNoData) != kNoData) return;
  const auto belongings = RouteRemoval::BelongingsOf(program.app, zip);
  // Where the catalogue was lost it is a whole route.
  Rescue rescue(program, zip, "Its download was set aside, and the catalogue did not know the route.");
  for (const auto& path : belongings)
    if (program.files.FileExists(path)) rescue.Keep(path);
  rescue.Close();
  for (const auto& path : belongings) {
    if (program.files.IsPathAFolder(path))
      program.files.DelTree(path);
    else
      program.files.KillIfThere(path);
  }
}

/// Also goes on with what was cut short: each step may have been done.
void SetAside(IntakeState& state, const std::string& download, const std::string& error) {
  Files& files = state.program.files;
  const bool isZip = LowerCase(download).ends_with(".zip");
  const std::string zip = CutAtLastDot(isZip ? download : ForeignDownloads::ZipOf(download)),
                    original = OriginalOf(state, zip);
  const std::string folder = state.program.app.NotInstalled();
  if (!isZip) {
    ForeignDownloads(state).MoveAside(download, folder);
  } else if (original != zip) {
    state.MoveOver(state.InInstalled(original), state.InNotInstalled(original));
    files.KillIfThere(state.Download(zip));
  } else {
    if (files.FileExists(state.Download(zip))) state.MoveAside(zip, folder);
    // Its copy; anything else there is another download's original.
    if (files.AreEqual(state.InInstalled(zip), state.InNotInstalled(zip)))
      files.KillIfThere(state.InInstalled(zip));
  }
  for (const auto& name : {zip, std::string(kPrefix) + zip}) RemoveTraces(state.program, name);
  state.SetAside(original);
  state.record.PatchOrOther(original);
  state.verdicts.Give(original, "MSC", "it was set aside, for adding it ended in an error: " + error);
}

}  // namespace

void RememberOddDownload(Program& program, const RunTimeError& error) {
  const std::string download = std::exchange(program.shared.DownloadAtWork, "");
  if (download.empty() || !IsItsFault(error)) return;
  std::string text = error.text();
  if (!error.reason().empty()) text += " (" + error.reason() + ")";
  if (!error.path().empty()) text += ": " + program.files.Host().HostPath(error.path());
  const auto batch = program.ini.Batch();
  Note(program, "Name", "\"" + download + "\"");
  Note(program, "Error", text);
}

std::string OddDownloadOf(Program& program) { return Fact(program, "Name"); }

void SetOddDownloadAsideNext(Program& program) { Note(program, "Answer", "Yes"); }

void OfferToSetOddDownloadAside(IntakeState& state) {
  Program& program = state.program;
  std::string download = OddDownloadOf(program);
  const std::string error = Fact(program, "Error");
  if (download.empty()) return;
  const auto isDownload = [&program](const std::string& file) {
    return program.files.FileExists(program.app.DownloadedRoutes() + "\\" + file);
  };
  // A start may have taken the rebuilt zip back to what it was made of.
  for (std::string name = download; !isDownload(download) && name.starts_with(kPrefix);)
    if (name = name.substr(kPrefix.size()); isDownload(name)) download = name;
  const bool isThere = isDownload(download);
  bool wanted = Fact(program, "Answer") == "Yes";
  if (!wanted && isThere)
    wanted = program.boxes.AskYesNo("Add Routes", "The last time, adding routes ended at\r\n\r\n" + download +
                                                      "\r\n\r\n" + error +
                                                      "\r\n\r\nSet it aside, and take in the others?");
  if (wanted) {
    SetOddDownloadAsideNext(program);
    SetAside(state, download, error);
  }
  program.files.KillIfThere(program.app.OddDownloadIni());
}

}  // namespace quillon
