#include "checkup/FactsCache.h"

#include "core/FlatFile.h"

namespace quillon {
namespace {

/// Another form of the file, or of the facts in it, gets another number.
constexpr std::string_view kMark = "Quillon's facts 1\n";

void AddMaybe(std::string& bytes, const std::optional<std::string>& text) {
  AddNumber(bytes, text ? 1 : 0);
  if (text) AddText(bytes, *text);
}

void AddCalls(std::string& bytes, const std::vector<ServiceCall>& calls) {
  AddNumber(bytes, calls.size());
  for (const auto& call : calls) {
    AddText(bytes, call.service);
    AddNumber(bytes, call.at);
    AddNumber(bytes, call.end);
  }
}

std::optional<std::string> MaybeText(FlatReader& source) {
  if (source.Number() == 0) return {};
  return std::string(source.Text());
}

std::vector<ServiceCall> Calls(FlatReader& source) {
  std::vector<ServiceCall> calls(source.Number());
  for (auto& call : calls) {
    call.service = source.Text();
    call.at = source.Small();
    call.end = source.Small();
  }
  return calls;
}

FileFacts FactsFrom(std::string_view written) {
  FlatReader source(written);
  FileFacts facts;
  facts.name = MaybeText(source);
  facts.consist = MaybeText(source);
  facts.playersServices = Calls(source);
  facts.otherServices = Calls(source);
  facts.items.resize(source.Number());
  for (auto& item : facts.items) item = source.Small();
  return facts;
}

}  // namespace

FactsCache::FactsCache(Program& program) : program_(program), path_(program.app.FactsCacheFile()) {
  if (!program.files.FileExists(path_)) return;
  try {
    bytes_ = program.files.ReadAll(path_);
    Load(bytes_);
  } catch (const RunTimeError&) {  // all is read anew
  }
}

void FactsCache::Load(std::string_view bytes) {
  const auto content = Unsealed(kMark, bytes);
  if (!content) return;
  FlatReader source(*content);
  for (std::uint64_t left = source.Number(); left > 0; --left) {
    const auto kind = source.Number() == 0 ? TrainKind::Engine : TrainKind::Wagon;
    items_.Add(kind, source.Text());
  }
  kept_.reserve(source.Number());
  while (!source.Empty()) {
    const std::string_view path = source.Text();
    Kept kept{};
    kept.kind = static_cast<FileKind>(source.Number());
    kept.size = source.Number();
    kept.modified = static_cast<std::int64_t>(source.Number());
    kept.facts = source.Text();
    kept_.emplace(path, kept);
  }
}

bool FactsCache::Take(FileKind kind, const GameFile& file, FileFacts& facts) {
  const auto at = kept_.find(file.path);
  if (at == kept_.end() || at->second.kind != kind || at->second.size != file.size ||
      at->second.modified != file.modified)
    return false;
  facts = FactsFrom(at->second.facts);
  ++taken_;
  return true;
}

void FactsCache::Save(const std::vector<Group>& groups) {
  std::size_t files = 0;
  for (const auto& group : groups) files += group.files.size();
  const bool same = files == taken_ && files == kept_.size();
  kept_ = {};
  bytes_ = {};
  if (same) return;

  std::string items, entries;
  std::vector<std::uint32_t> numbers(items_.size(), 0);  // in the file, from 1
  std::uint32_t itemCount = 0;
  std::size_t count = 0;
  for (const auto& group : groups) {
    for (std::size_t i = 0; i < group.files.size(); ++i) {
      const GameFile& file = group.files[i];
      const FileFacts& facts = group.facts[i];
      if (facts.broken != FileFacts::Broken::Nowhere || !facts.unsplit.empty() || IsYoung(file.modified))
        continue;
      ++count;
      AddText(entries, file.path);
      AddNumber(entries, static_cast<std::uint64_t>(group.kind));
      AddNumber(entries, file.size);
      AddNumber(entries, static_cast<std::uint64_t>(file.modified));
      std::string written;
      AddMaybe(written, facts.name);
      AddMaybe(written, facts.consist);
      AddCalls(written, facts.playersServices);
      AddCalls(written, facts.otherServices);
      AddNumber(written, facts.items.size());
      for (const std::uint32_t item : facts.items) {
        if (numbers[item] == 0) {
          numbers[item] = ++itemCount;
          AddNumber(items, items_[item].kind == TrainKind::Wagon ? 1 : 0);
          AddText(items, items_[item].text);
        }
        AddNumber(written, numbers[item] - 1);
      }
      AddText(entries, written);
    }
  }
  std::string content;
  AddNumber(content, itemCount);
  content += items;
  AddNumber(content, count);
  content += entries;
  program_.files.WriteAll(path_, Sealed(kMark, content));
}

}  // namespace quillon
