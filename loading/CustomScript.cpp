#include "loading/CustomScript.h"

#include <utility>

#include "core/archive/ArchiveNames.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

constexpr std::string_view kSnowTexture = "\\Routes\\Europe2\\TerrTex\\Snow\\oegenfield3.ace";

/// Whether a copy can wait for others between the same folders: it meets none of what they read or make.
bool MayGather(const std::string& file) {
  return IsUsableStem(file) && file.back() != '.' && !LowerCase(file).starts_with(kBackupPrefix);
}

bool HasStar(std::string_view name) { return name.find('*') != name.npos; }

}  // namespace

// Tested one after another on every line.
const std::array<CustomScript::Command, 9> CustomScript::kCommands = {{
    {"copy", &CustomScript::Copy},
    {"tscopy", &CustomScript::TSCopy},
    {"!heavysnow", &CustomScript::HeavySnow},
    {"setattr", &CustomScript::SetAttr},
    {"removefromqn", &CustomScript::RemoveFromQN},
    {"del ", &CustomScript::Del},
    {"rename", &CustomScript::Rename},
    {"deldir", &CustomScript::DelDir},
    {"msg", &CustomScript::Msg},
}};

/// The script is named after the route as its track file has it: a stranger's text must not lead out of the
/// folder.
std::string CustomScript::PathOf(const std::string& zip) const {
  const std::string ScriptName = program_.ini.ReadIni(zip, "Script", kNoData, program_.app.ScriptsIni());
  if (!IsUsableStem(ScriptName)) return {};
  return program_.app.MiscInfo() + "\\custom_scripts\\" + ScriptName + "\\custom.cst";
}

void CustomScript::Run(const std::string& zip) {
  script_ = PathOf(zip);
  if (script_.empty() || !files_.FileExists(script_)) return;
  ScriptMessage.clear();
  number_ = 0;
  gathered_ = {};
  currentList_.reset();
  defaultList_.reset();
  own_.emplace(program_, std::vector{zip});
  rescue_.emplace(program_, zip, "The route's custom script would have deleted what nothing else held.");
  ownCovered_.clear();
  const std::string text = files_.ReadAll(script_);
  for (const auto& line : Lines(text)) {
    ++number_;
    RunLine(line);
    program_.watcher.Yield();
  }
  CopyGathered();
  rescue_->Close();
  if (!ownCovered_.empty()) PlacedRecord(program_).NoteOwn(ownCovered_);
}

void CustomScript::KeepOwn(const std::string& path) {
  own_->KeepIfOwn(*rescue_, path);
  rescue_->Flush();
}

void CustomScript::RunLine(std::string_view line) {
  line_ = line;
  for (const auto& [prefix, act] : kCommands) {
    if (LowerCase(line.substr(0, prefix.size())) != prefix) continue;
    if (act != &CustomScript::Copy && act != &CustomScript::TSCopy) CopyGathered();
    (this->*act)();
  }
}

void CustomScript::Fatal(std::string_view lacking) {
  CopyGathered();
  throw RunTimeError(
      ErrorNumber::InvalidProcedureCall, script_,
      "line " + std::to_string(number_) + " has no " + std::string(lacking) + ": " + std::string(line_));
}

/// From the first backslash to the first comma.
std::string CustomScript::Folder() {
  const auto backslash = line_.find('\\'), comma = line_.find(',');
  if (backslash == line_.npos) Fatal("\"\\\"");
  if (comma == line_.npos || comma < backslash) Fatal("\",\" behind the folder");
  return Trim(line_.substr(backslash, comma - backslash));
}

CustomScript::Arguments CustomScript::Parse() {
  Arguments arguments{.Folder = Folder()};
  const auto comma = line_.find(','), mark = line_.find('!');
  if (mark == line_.npos || mark < comma) Fatal("\"!\" behind the comma");
  arguments.Name = Trim(line_.substr(comma + 1, mark - comma - 1));
  arguments.Last = Trim(line_.substr(mark + 1));
  return arguments;
}

void CustomScript::Append(std::unique_ptr<ListFile>& list, const std::string& path, const std::string& line) {
  if (!list) list = std::make_unique<ListFile>(files_, path, true);
  list->Add(line);
}

void CustomScript::CopyFrom(const std::string& root) {
  const auto [source, destination, file] = Parse();
  if (HasStar(file)) return;
  const std::string from = root + source, target = WorkingRoute + destination;
  const bool alone = !MayGather(file);
  if (alone || from != gathered_.source || target != gathered_.target ||
      gathered_.known.contains(LowerCase(file))) {
    CopyGathered();
    files_.MakeFolderIfMissing(target.substr(0, target.size() - 1));
  }
  Append(currentList_, program_.app.CurrentList(), target + file);
  const std::string covered = target + "\\" + file,
                    backup = target + "\\" + std::string(kBackupPrefix) + file;
  if (files_.FileExists(covered) && !files_.FileExists(backup)) {
    Cover(target + file, backup, target + std::string(kBackupPrefix) + file);
  }
  if (alone) {
    files_.CopyAllFiles(from, target, file);
    return;
  }
  // The list and the cover were told one by one; only the bytes wait.
  gathered_.source = from;
  gathered_.target = target;
  gathered_.names.push_back(file);
  gathered_.known.insert(LowerCase(file));
}

void CustomScript::CopyGathered() {
  const Copies copies = std::exchange(gathered_, {});
  if (!copies.names.empty()) files_.CopyNamedFiles(copies.source, copies.target, copies.names);
}

void CustomScript::Cover(const std::string& path, const std::string& backup, const std::string& line) {
  if (own_->IsOwn(path)) ownCovered_.push_back(path);
  files_.SetAttributes(path, kArchive);
  // The line first: a backup that no list names would never come back.
  Append(defaultList_, program_.app.DefaultList(), line);
  files_.Rename(path, backup);
}

void CustomScript::HeavySnow() {
  const std::string snow = WorkingRoute + "\\TerrTex\\snow\\";
  const std::string names = files_.ReadAll(program_.app.SnowMakerList());
  for (const auto& name : Lines(names)) {
    const std::string texture = snow + std::string(name),
                      backup = snow + std::string(kBackupPrefix) + std::string(name);
    if (files_.FileExists(texture) && !files_.FileExists(backup)) {
      Cover(texture, backup, backup);
    }
    files_.FileCopy(program_.BelowGame(kSnowTexture), texture);
  }
}

void CustomScript::SetAttr() {
  const auto arguments = Parse();
  const std::string path = WorkingRoute + arguments.Folder + arguments.Name;
  if (!HasStar(arguments.Name) && files_.FileExists(path)) files_.SetAttributes(path, kArchive);
}

void CustomScript::DeleteBelow(const std::string& root) {
  const auto arguments = Parse();
  const std::string path = root + arguments.Folder + arguments.Name;
  if (HasStar(arguments.Name) || !files_.FileExists(path)) return;
  if (root == WorkingRoute)
    KeepOwn(path);
  else if (!files_.IsPathAFolder(path) && path.find('?') == path.npos)
    rescue_->Keep(path), rescue_->Flush();
  if (files_.FileExists(path)) files_.KillReadOnly(path);
}

void CustomScript::Rename() {
  const auto [folder, from, to] = Parse();
  const std::string path = WorkingRoute + folder + from;
  if (HasStar(to) || !files_.FileExists(path)) return;
  files_.SetAttributes(path, kArchive);
  files_.Rename(path, WorkingRoute + folder + to);
}

void CustomScript::DelDir() {
  const std::string folder = WorkingRoute + Folder();
  if (!files_.IsPathAFolder(folder)) return;
  own_->KeepBelow(*rescue_, CutBackslash(folder));
  rescue_->Flush();
  files_.DelTree(folder);
}

void CustomScript::Msg() {
  const auto startsWith = [this](std::string_view word) {
    return LowerCase(line_.substr(0, word.size())) == word;
  };
  if (startsWith("msgstart")) return;
  if (startsWith("msg++")) {
    ScriptMessage += "\r\n" + std::string(line_.substr(5));
  } else if (startsWith("msgend")) {
    program_.shared.CustomMessage = ScriptMessage;
    program_.shared.CustomMessagePending = true;
    program_.watcher.LabelChanged("frmCustomMessage", "lblMessage", Label{ScriptMessage});
  }
}

}  // namespace quillon
