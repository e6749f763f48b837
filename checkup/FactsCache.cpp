#include "checkup/FactsCache.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "core/FlatFile.h"

namespace quillon {
namespace {

/// Another form of the file, or of the facts in it, gets another number.
constexpr std::string_view kMark = "Quillon's facts 2\n";
constexpr std::size_t kRoomOfAFile = 64;  // bytes, about, besides its path and its items

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

/// The items that the file holds: those that a file which is kept asks for.
class ItemNumbers {
 public:
  explicit ItemNumbers(const ItemTable& items) : items_(items), numbers_(items.size(), kNone) {}

  std::uint32_t Of(std::uint32_t item) {
    if (numbers_[item] == kNone) {
      numbers_[item] = count_++;
      AddNumber(texts_, items_[item].kind == TrainKind::Wagon ? 1 : 0);
      AddText(texts_, items_[item].text);
    }
    return numbers_[item];
  }
  /// In the order of their numbers.
  const std::string& Texts() const { return texts_; }

 private:
  static constexpr std::uint32_t kNone = ~std::uint32_t{0};

  const ItemTable& items_;
  std::vector<std::uint32_t> numbers_;
  std::uint32_t count_ = 0;
  std::string texts_;
};

std::string Written(const FileFacts& facts, ItemNumbers& numbers) {
  std::string bytes;
  AddMaybe(bytes, facts.name);
  AddMaybe(bytes, facts.consist);
  AddCalls(bytes, facts.playersServices);
  AddCalls(bytes, facts.otherServices);
  AddNumber(bytes, facts.items.size());
  for (const std::uint32_t item : facts.items) AddNumber(bytes, numbers.Of(item));
  return bytes;
}

std::optional<std::string> MaybeText(FlatReader& source) {
  if (source.Number() == 0) return {};
  return std::string(source.Text());
}

std::vector<ServiceCall> Calls(FlatReader& source) {
  std::vector<ServiceCall> calls(source.Count());
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
  facts.items.resize(source.Count());
  for (auto& item : facts.items) item = source.Small();
  return facts;
}

}  // namespace

void FactsCache::Open() {
  if (std::exchange(open_, true) || !program_.files.FileExists(path_)) return;
  try {
    bytes_ = program_.files.ReadAll(path_);
    Load(bytes_);
  } catch (const RunTimeError&) {  // all is read anew
  }
}

void FactsCache::Load(std::string_view bytes) {
  const auto content = Unsealed(kMark, bytes);
  if (!content) return;
  FlatReader source(*content);
  found_ = source.Count();
  kept_.reserve(found_);
  places_.assign(3 * found_ + 1, 0);
  for (std::size_t left = found_; left > 0; --left) {
    Kept& kept = kept_.emplace_back();
    kept.path = source.Text();
    kept.kind = static_cast<FileKind>(source.Number());
    kept.size = source.Number();
    kept.modified = static_cast<std::int64_t>(source.Number());
    kept.facts = source.Text();
    PlaceOf(kept.path) = static_cast<std::uint32_t>(kept_.size());
  }
  while (!source.Empty()) {
    const auto kind = source.Number() == 0 ? TrainKind::Engine : TrainKind::Wagon;
    items_.Add(kind, source.Text());
  }
}

/// Where the path's place is told, or is to be told: 0 until then.
std::uint32_t& FactsCache::PlaceOf(std::string_view path) {
  std::size_t i = std::hash<std::string_view>()(path) % places_.size();
  while (places_[i] != 0 && kept_[places_[i] - 1].path != path) i = (i + 1) % places_.size();
  return places_[i];
}

bool FactsCache::Take(FileKind kind, const GameFile& file, FileFacts& facts) {
  if (kept_.empty()) return false;
  const std::uint32_t place = PlaceOf(file.Path());
  if (place == 0) return false;
  const Kept& kept = kept_[place - 1];
  if (kept.kind != kind || kept.size != file.size || kept.modified != file.modified) return false;
  FileFacts found = FactsFrom(kept.facts);
  if (std::any_of(found.items.begin(), found.items.end(), [&](auto item) { return item >= items_.size(); }))
    return false;
  facts = std::move(found);
  ++taken_;
  return true;
}

void FactsCache::LetGo() {
  kept_ = std::vector<Kept>();
  places_ = std::vector<std::uint32_t>();
  std::string().swap(bytes_);  // an assignment keeps the room
}

void FactsCache::Save(const std::vector<Group>& groups) {
  std::size_t files = 0;
  for (const auto& group : groups) files += group.files.size();
  if (files == taken_ && files == found_) return;
  try {
    program_.files.WriteAll(path_, FileOf(groups));
  } catch (const RunTimeError&) {  // the next Checkup reads all anew
  }
}

std::string FactsCache::FileOf(const std::vector<Group>& groups) const {
  const auto isKept = [](const GameFile& file, const FileFacts& facts) {
    return facts.broken == FileFacts::Broken::Nowhere && facts.unsplit.empty() && !IsYoung(file.modified);
  };
  std::size_t count = 0, room = 0;
  for (const auto& group : groups) {
    for (std::size_t i = 0; i < group.files.size(); ++i) {
      if (!isKept(group.files[i], group.facts[i])) continue;
      ++count;
      room += group.files[i].folder->size() + group.files[i].shown.size() + 3 * group.facts[i].items.size() +
              kRoomOfAFile;
    }
  }
  std::string bytes;
  bytes.reserve(room);
  bytes += kMark;
  AddNumber(bytes, count);
  ItemNumbers numbers(items_);
  for (const auto& group : groups) {
    for (std::size_t i = 0; i < group.files.size(); ++i) {
      const GameFile& file = group.files[i];
      if (!isKept(file, group.facts[i])) continue;
      AddText(bytes, file.Path());
      AddNumber(bytes, static_cast<std::uint64_t>(group.kind));
      AddNumber(bytes, file.size);
      AddNumber(bytes, static_cast<std::uint64_t>(file.modified));
      AddText(bytes, Written(group.facts[i], numbers));
    }
  }
  bytes += numbers.Texts();
  Seal(bytes);
  return bytes;
}

}  // namespace quillon
