#include "checkup/FactsCache.h"

#include <libdeflate.h>

#include <chrono>
#include <cstring>
#include <utility>

namespace quillon {
namespace {

/// Another form of the file, or of the facts in it, gets another number.
constexpr std::string_view kMark = "Quillon's facts 1\n";
constexpr std::int64_t kYoung = 3'000'000'000;  // nanoseconds: the coarsest disk counts two seconds

void AddNumber(std::string& bytes, std::uint64_t number) {
  for (; number > 0x7F; number >>= 7) bytes += static_cast<char>((number & 0x7F) | 0x80);
  bytes += static_cast<char>(number);
}

void AddText(std::string& bytes, std::string_view text) {
  AddNumber(bytes, text.size());
  bytes += text;
}

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

/// What was written so, in the same order. The checksum was right: only a number too large is caught.
class Source {
 public:
  explicit Source(std::string_view bytes) : rest_(bytes) {}

  std::uint64_t Number() {
    std::uint64_t number = 0;
    for (int shift = 0; shift < 64 && !rest_.empty(); shift += 7) {
      const auto byte = static_cast<unsigned char>(rest_.front());
      rest_.remove_prefix(1);
      number |= std::uint64_t{byte & 0x7Fu} << shift;
      if (byte < 0x80) break;
    }
    return number;
  }
  std::uint32_t Small() { return static_cast<std::uint32_t>(Number()); }
  std::string_view Text() {
    const std::string_view text = rest_.substr(0, static_cast<std::size_t>(Number()));
    rest_.remove_prefix(text.size());
    return text;
  }
  std::optional<std::string> MaybeText() {
    if (Number() == 0) return {};
    return std::string(Text());
  }
  std::vector<ServiceCall> Calls() {
    std::vector<ServiceCall> calls(Number());
    for (auto& call : calls) {
      call.service = Text();
      call.at = Small();
      call.end = Small();
    }
    return calls;
  }
  bool Empty() const { return rest_.empty(); }

 private:
  std::string_view rest_;
};

FileFacts FactsFrom(std::string_view written) {
  Source source(written);
  FileFacts facts;
  facts.name = source.MaybeText();
  facts.consist = source.MaybeText();
  facts.playersServices = source.Calls();
  facts.otherServices = source.Calls();
  facts.items.resize(source.Number());
  for (auto& item : facts.items) item = source.Small();
  return facts;
}

}  // namespace

std::int64_t FactsCache::YoungFrom() {
  return std::chrono::nanoseconds(std::chrono::system_clock::now().time_since_epoch()).count() - kYoung;
}

void FactsCache::Open() {
  if (std::exchange(open_, true) || !program_.files.FileExists(path_)) return;
  try {
    bytes_ = program_.files.ReadAll(path_);
    Load(bytes_);
  } catch (const RunTimeError&) {  // all is read anew
  }
}

void FactsCache::Load(std::string_view bytes) {
  std::uint32_t checksum = 0;
  if (!bytes.starts_with(kMark) || bytes.size() < kMark.size() + sizeof checksum) return;
  std::memcpy(&checksum, bytes.data() + bytes.size() - sizeof checksum, sizeof checksum);
  bytes.remove_suffix(sizeof checksum);
  if (libdeflate_crc32(0, bytes.data(), bytes.size()) != checksum) return;
  Source source(bytes.substr(kMark.size()));
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
  const std::int64_t young = YoungFrom();
  for (const auto& group : groups) {
    for (std::size_t i = 0; i < group.files.size(); ++i) {
      const GameFile& file = group.files[i];
      const FileFacts& facts = group.facts[i];
      if (facts.broken != FileFacts::Broken::Nowhere || !facts.unsplit.empty() || file.modified >= young)
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
  std::string bytes(kMark);
  AddNumber(bytes, itemCount);
  bytes += items;
  AddNumber(bytes, count);
  bytes += entries;
  const std::uint32_t checksum = libdeflate_crc32(0, bytes.data(), bytes.size());
  bytes.append(reinterpret_cast<const char*>(&checksum), sizeof checksum);
  try {
    program_.files.WriteAll(path_, bytes);
  } catch (const RunTimeError&) {  // the next Checkup reads all anew
  }
}

}  // namespace quillon
