#include "intake/ForeignDownloads.h"

#include <algorithm>
#include <array>
#include <set>
#include <unordered_set>

#include "core/archive/ArchiveCheck.h"
#include "core/archive/ArchiveWriter.h"
#include "core/archive/ForeignArchive.h"
#include "core/host/RawFile.h"
#include "core/text/Text.h"
#include "shelf/Rescue.h"

namespace quillon {
namespace {

constexpr std::array<std::string_view, 16> kArchives = {
    ".7z",  ".rar",     ".tar.gz", ".tgz", ".tar.bz2", ".tbz2", ".tbz",    ".tar.xz",
    ".txz", ".tar.zst", ".tar",    ".lzh", ".lha",     ".exe",  ".7z.001", ".zip.001"};
constexpr std::size_t kPiece = 1u << 20;  // bytes

/// The ending of such a download's first file, as the table has it; empty for other files.
std::string_view EndingOf(std::string_view name) {
  const std::string lower = LowerCase(name);
  const auto at = std::find_if(kArchives.begin(), kArchives.end(), [&](std::string_view ending) {
    return lower.size() > ending.size() && lower.ends_with(ending);
  });
  return at == kArchives.end() ? std::string_view() : *at;
}

std::string StemOf(std::string_view name) {
  return std::string(name.substr(0, name.size() - EndingOf(name).size()));
}

bool IsDigits(std::string_view text) {
  return text.find_first_not_of("0123456789") == text.npos && !text.empty();
}

/// "foo.7z.002", "foo.r00", "foo.z01": a part, but the first one.
bool IsLaterPart(std::string_view name) {
  const std::string lower = LowerCase(name);
  const auto dot = lower.rfind('.');
  if (dot == lower.npos) return false;
  const std::string_view end = std::string_view(lower).substr(dot + 1),
                         front = std::string_view(lower).substr(0, dot);
  if (end.size() == 3 && (end[0] == 'r' || end[0] == 'z')) return IsDigits(end.substr(1));
  return end.size() == 3 && IsDigits(end) && (front.ends_with(".zip") || front.ends_with(".7z"));
}

}  // namespace

bool ForeignDownloads::IsOne(std::string_view name) { return !EndingOf(name).empty() || IsLaterPart(name); }

bool ForeignDownloads::IsCheckedByRebuild(std::string_view name) {
  const std::string_view ending = EndingOf(name);
  return !ending.empty() && ending != ".exe" && !ending.ends_with(".001");
}

std::string ForeignDownloads::ZipOf(std::string_view name) {
  const std::string first = IsLaterPart(name) ? CutAtLastDot(name) + ".001" : std::string(name);
  return StemOf(first) + ".zip";
}

void ForeignDownloads::Run() {
  state_.program.Step("Looking for downloads of other formats than zip");
  const auto downloads = Find();
  RefuseTakenNames(downloads);
  for (const auto& download : downloads) {
    Rebuild(download);
    state_.progress.Detail(0, 0, "bytes");
  }
  state_.program.shared.DownloadAtWork.clear();
}

std::vector<ForeignDownloads::Download> ForeignDownloads::Find() const {
  Files& files = state_.program.files;
  const std::string folder = state_.program.app.DownloadedRoutes() + "\\";
  std::vector<Download> downloads;
  for (const auto& name : files.ListFiles(folder + "*.*")) {
    const std::string_view ending = EndingOf(name);
    if (ending.empty()) continue;
    Download download{StemOf(name), {name}};
    if (ending == ".exe") download.kind = Download::Kind::Program;
    if (ending == ".zip.001") download.kind = Download::Kind::ZipParts;
    if (ending.ends_with(".001"))
      for (int part = 2;; ++part) {
        std::string number = std::to_string(part);
        number.insert(0, 3 - std::min<std::size_t>(3, number.size()), '0');
        const std::string next = name.substr(0, name.size() - 3) + number;
        if (!files.FileExists(folder + next)) break;
        download.files.push_back(next);
      }
    downloads.push_back(std::move(download));
  }
  // Most programs are no archives: they wait for their user, as they always did.
  std::erase_if(downloads, [&](const Download& download) {
    if (download.kind != Download::Kind::Program) return false;
    ArchiveReader zip(files, [] {});
    zip.InputFile = PathsOf(download).front();
    zip.ReadDirectory();
    const bool isArchive =
        zip.EntryCount() > 0 || HasForeignArchive(files, zip.InputFile, [this] { state_.progress.Yield(); });
    if (!isArchive)
      state_.verdicts.Give(
          download.files.front(), "EXE",
          "it is a program, not an archive: it stays in downloaded_routes, to be run by hand");
    return !isArchive;
  });
  return downloads;
}

std::vector<std::string> ForeignDownloads::PathsOf(const Download& download) const {
  std::vector<std::string> paths;
  for (const auto& file : download.files)
    paths.push_back(state_.program.app.DownloadedRoutes() + "\\" + file);
  return paths;
}

void ForeignDownloads::RefuseTakenNames(const std::vector<Download>& downloads) const {
  std::unordered_set<std::string> names;
  for (const auto& download : downloads) {
    const bool isNew = names.insert(UpperCase(download.zip)).second;
    if (isNew && !state_.program.files.FileExists(state_.Download(download.zip))) continue;
    state_.program.shared.DownloadAtWork = download.files.front();
    throw RunTimeError(ErrorNumber::FileAlreadyExists, PathsOf(download).front(),
                       "another download has the name " + download.zip + ": rename one of them");
  }
}

void ForeignDownloads::Rebuild(const Download& download) {
  Files& files = state_.program.files;
  state_.program.Step("Rebuilding " + download.files.front() + " as a zip");
  state_.program.shared.DownloadAtWork = download.files.front();
  const std::string written = state_.program.app.DownloadedRoutes() + "\\" + download.zip + ".tmp";
  try {
    WriteZip(download, written);
  } catch (const Damage& damage) {
    return SetAside(download, damage.reason);
  }
  for (const auto& file : download.files) state_.journal.ConversionComes(download.zip, file);
  state_.converted[download.zip] = download.files.front();
  files.Flush(written);
  files.Rename(written, state_.Download(download.zip));
  for (const auto& file : download.files) {
    const std::string from = state_.program.app.DownloadedRoutes() + "\\" + file,
                      original = state_.program.app.Installed() + "\\" + file;
    if (!files.AreEqual(from, original)) state_.journal.SetOlderAside(file);
    state_.MoveOver(from, original);
  }
}

void ForeignDownloads::WriteZip(const Download& download, const std::string& target) {
  Files& files = state_.program.files;
  const auto paths = PathsOf(download);
  if (download.kind == Download::Kind::ZipParts) return JoinParts(download, target);
  if (download.kind == Download::Kind::Program) {
    ArchiveReader zip(files, [] {});
    zip.InputFile = paths.front();
    zip.ReadDirectory();
    if (zip.EntryCount() > 0) return StripProgram(paths.front(), target);
  }
  RebuildAsZip(files, paths, target, [this](std::uint64_t done, std::uint64_t all) {
    state_.progress.Detail(done, all, "bytes");
    state_.progress.Yield();
  });
}

void ForeignDownloads::JoinParts(const Download& download, const std::string& target) {
  Files& files = state_.program.files;
  std::uint64_t size = 0, done = 0;
  for (const auto& part : PathsOf(download)) size += files.Size(part);
  files.RequireRoom(target, size);
  RawFile joined(files.Host().HostPath(target));
  for (const auto& part : PathsOf(download)) {
    const RawInput input(files.Host().HostPath(part));
    std::string piece;
    for (std::uint64_t at = 0; input.IsOpen() && input.ReadAt(at, kPiece, piece) && !piece.empty();
         at += piece.size()) {
      joined.Write(piece);
      state_.progress.Detail(done += piece.size(), size, "bytes");
      state_.progress.Yield();
    }
  }
  RaiseFileError(joined.Keep(), target);
  files.Host().Touched(target, true);
  ArchiveReader zip(files, [] {});
  zip.InputFile = target;
  zip.ReadDirectory();
  if (zip.DamageReason().empty()) return;
  files.KillIfThere(target);
  throw Damage{zip.DamageReason() + "; is a part missing?"};
}

void ForeignDownloads::StripProgram(const std::string& program, const std::string& target) {
  ArchiveReader zip(state_.program.files, [] {});
  zip.InputFile = program;
  zip.ReadDirectory();
  if (const std::string bomb = BombIn(state_.program.files, zip); !bomb.empty()) throw Damage{bomb};
  ArchiveWriter writer(state_.program.files);
  writer.ArchiveFile = target;
  for (int i = 0; i < zip.EntryCount(); ++i) {
    const ArchiveEntry& entry = zip.Entries()[static_cast<std::size_t>(i)];
    if (const std::string obstacle = entry.Obstacle(); !obstacle.empty())
      throw Damage{entry.name + ": " + obstacle};
    if (!entry.folder()) writer.AddEntry(zip, i, entry.name);
  }
  writer.Zip();
}

void ForeignDownloads::SetAside(const Download& download, const std::string& reason) {
  MoveAside(download.files.front(), state_.program.app.BadZipFiles());
  state_.SetAside(download.zip);
  state_.record.BadFile(download.files.front());
  state_.verdicts.Give(download.zip, "BAD", reason);
}

void ForeignDownloads::MoveAside(const std::string& file, const std::string& folder) const {
  const std::string downloads = state_.program.app.DownloadedRoutes() + "\\";
  if (state_.program.files.FileExists(downloads + file))
    state_.MoveOver(downloads + file, folder + "\\" + file);
  for (const auto& part : state_.program.files.ListFiles(downloads + "*.*"))
    if (IsLaterPart(part) &&
        (EqualNoCase(ZipOf(part), ZipOf(file)) || EqualNoCase(CutAtLastDot(part), StemOf(file))))
      state_.MoveOver(downloads + part, folder + "\\" + part);
}

void ForeignDownloads::KeepOlderOriginals(const std::string& zip) const {
  const std::string installed = state_.program.app.Installed() + "\\";
  std::set<std::string> own;
  for (const auto& file : OriginalsOf(zip)) own.insert(UpperCase(file));
  Rescue rescue(state_.program, zip,
                "Another download of the same name was added: this is the original of before.");
  for (const auto& file : state_.program.files.ListFiles(installed + zip + ".*"))
    if (EqualNoCase(file, zip + ".zip") ||
        (IsOne(file) && EqualNoCase(ZipOf(file), zip + ".zip") && !own.contains(UpperCase(file))))
      rescue.Keep(installed + file);
  rescue.Close();
}

void ForeignDownloads::MoveOriginalAside(const std::string& zip, const std::string& folder) const {
  const std::string installed = state_.program.app.Installed() + "\\",
                    download = state_.verdicts.DownloadOf(zip);
  auto originals = OriginalsOf(download);
  // A zip that was rebuilt stays among the originals, but not in the place of a known route's.
  if (download != zip && state_.journal.OlderWaits(download + ".zip")) originals.push_back(download + ".zip");
  for (const auto& file : originals) {
    if (state_.program.files.FileExists(installed + file))
      state_.MoveOver(installed + file, folder + "\\" + file);
    state_.journal.BringOlderBack(file);
  }
}

std::vector<std::string> ForeignDownloads::OriginalsOf(const std::string& zip) const {
  std::vector<std::string> files;
  for (const auto& [converted, file] : state_.journal.Converted())
    if (converted == zip) files.push_back(file);
  return files;
}

}  // namespace quillon
