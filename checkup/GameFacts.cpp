#include "checkup/GameFacts.h"

#include <algorithm>
#include <array>

#include "core/text/Text.h"

namespace quillon {
namespace {

using Broken = FileFacts::Broken;

/// The end of the character that begins at `at`.
std::size_t Behind(std::string_view text, std::size_t at) {
  if (at < text.size()) ++at;
  while (at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80) ++at;
  return at;
}

/// Name and folder as the first double quote parts them; they share a character. Empty when there is neither
/// a quote nor a blank.
std::optional<std::pair<std::string_view, std::string_view>> Split(std::string_view item) {
  const auto parts = [&](std::size_t nameEnd, std::size_t folderStart) {
    return std::pair(item.substr(0, nameEnd), item.substr(std::min(folderStart, item.size())));
  };
  const auto quote = item.find('"');
  if (quote == item.npos) {
    const auto blank = item.find(' ');
    if (blank == item.npos) return {};
    return parts(blank + 1, blank);
  }
  const std::size_t second = Behind(item, 0);
  if (quote > second) return parts(quote, LessLast(item.substr(0, quote)).size());
  const auto closing = item.find('"', quote + 1);
  if (closing == item.npos) return parts(second, 0);
  return parts(Behind(item, closing + 1), closing + 1);
}

struct Token {
  TrainKind kind;
  std::string_view word;  // lower case
};

/// The text between the parentheses of the item that begins at `at`, on a line that ends at `lineEnd`.
std::string ItemText(const GameText& text, std::size_t at, std::size_t lineEnd) {
  // The line counts without the blanks at its end.
  const std::string_view whole = text.Text();
  while (lineEnd > at && whole[lineEnd - 1] == ' ') --lineEnd;
  const std::string_view rest = whole.substr(at, lineEnd - at);
  auto end = rest.find('\t');
  if (end == rest.npos) end = rest.find('\n');
  if (end == rest.npos) end = rest.size();
  if (end == 0) text.Fail(at, "nothing stands behind the opening parenthesis");
  std::string_view cut = LessLast(rest.substr(0, end));
  if (cut.ends_with(" )")) cut.remove_suffix(1);
  return Trim(cut);
}

void TakeItems(const GameText& text, std::vector<FoundItem>& items) {
  static constexpr std::array<Token, 2> kTokens = {
      {{TrainKind::Engine, "enginedata ("}, {TrainKind::Wagon, "wagondata ("}}};
  const std::string_view whole = text.Text();
  // From token to token; of each kind the first one on a line counts, the engine before the wagon.
  for (std::size_t at = text.Find("data (", 0); at != GameText::kNone;) {
    // A lone LF ends no line.
    const std::size_t before = whole.rfind('\r', at), lineStart = before == whole.npos ? 0 : before + 1;
    const std::size_t lineEnd = std::min(whole.find('\r', at), whole.size());
    const std::string_view line = text.Lower().substr(lineStart, lineEnd - lineStart);
    for (const Token& token : kTokens) {
      const auto found = line.find(token.word);
      if (found == line.npos) continue;
      const std::size_t start = lineStart + found + token.word.size();
      std::string item = ItemText(text, start, lineEnd);
      const auto number = Split(item) ? 0 : static_cast<std::uint32_t>(text.LineOf(start));
      items.push_back({token.kind, std::move(item), number});
    }
    at = text.Find("data (", lineEnd);
  }
}

/// The last one of the file counts.
void TakeConfigName(const GameText& text, FileFacts& facts) {
  constexpr std::string_view kTrainCfg = "traincfg (";
  constexpr std::string_view kUsualComment =
      "comment(individual consist name usually same name as this file)";
  for (auto at = text.Find(kTrainCfg, 0); at != GameText::kNone;) {
    const auto start = at + kTrainCfg.size();
    auto end = text.FindCharacter('\r', start);
    if (end == GameText::kNone) end = text.FindCharacter('\n', start);
    if (end == GameText::kNone) end = text.FindCharacter('\t', start);
    facts.name = ReplaceAll(
        Trim(ReplaceAll(text.Between(start, end, "\"TrainCfg (\" has no end"), kUsualComment, "")), "\"", "");
    at = text.Find(kTrainCfg, end);
  }
}

/// The first one that is not empty.
void TakeServiceName(const GameText& text, FileFacts& facts) {
  constexpr std::string_view kName = "name (";
  for (auto at = text.Find(kName, 0); at != GameText::kNone && !facts.name;) {
    const auto start = at + kName.size(), end = text.FindCharacter('\r', start);
    std::string name = WithoutQuotes(text.BetweenLessLast(start, end, "\"Name (\" has no end"));
    if (!name.empty()) facts.name = std::move(name);
    at = text.Find(kName, end);
  }
}

/// The last one.
void TakeConsist(const GameText& text, FileFacts& facts) {
  constexpr std::string_view kConfig = "train_config (";
  for (auto at = text.Find(kConfig, 0); at != GameText::kNone;) {
    const auto start = at + kConfig.size(), end = text.FindCharacter('\r', start);
    facts.consist = WithoutQuotes(text.BetweenLessLast(start, end, "\"Train_Config (\" has no end"));
    at = text.Find(kConfig, end);
  }
}

void TakeActivityName(const GameText& text, FileFacts& facts) {
  constexpr std::string_view kName = "name (";
  if (text.Empty()) return;
  const auto at = text.Find(kName, 0);
  if (at == GameText::kNone) {
    facts.name = "unknown";
    return;
  }
  const auto start = at + kName.size();
  const auto name = text.Between(start, text.FindCharacter(')', start), "\"Name (\" is not closed");
  facts.name = "\"" + WithoutQuotes(name) + "\"";
}

void TakePlayersServices(const GameText& text, FileFacts& facts) {
  constexpr std::string_view kDefinition = "player_service_definition (";
  for (auto at = text.Find(kDefinition, 0); at != GameText::kNone;) {
    const auto start = at + kDefinition.size(), end = text.FindCharacter('\r', start);
    const auto name = text.Between(start, end, "\"Player_Service_Definition (\" has no end");
    facts.playersServices.push_back(
        {WithoutQuotes(name), static_cast<std::uint32_t>(at), static_cast<std::uint32_t>(end)});
    at = text.Find(kDefinition, end);
  }
}

void TakeOtherServices(const GameText& text, FileFacts& facts) {
  // The tab keeps the player's definition out.
  constexpr std::string_view kDefinition = "\tservice_definition (";
  for (auto at = text.Find(kDefinition, 0); at != GameText::kNone;) {
    const auto start = at + kDefinition.size(), end = text.FindCharacter('\r', start);
    const std::string line = Trim(text.Between(start, end, "\"Service_Definition (\" has no end"));
    // The name ends where the start time begins; the blank in front of the name makes up for the one behind
    // it.
    const auto blank = line.rfind(' ');
    const std::size_t length =
        blank == line.npos ? 0 : CharacterCount(std::string_view(line).substr(0, blank + 1));
    const std::string_view name = FirstCharacters(text.Text().substr(start), length);
    facts.otherServices.push_back(
        {WithoutQuotes(name), static_cast<std::uint32_t>(at), static_cast<std::uint32_t>(end)});
    at = text.Find(kDefinition, end);
  }
}

/// Goes on behind a part that can't be taken apart: the first one is the file's.
template <class Take>
void Try(FileFacts& facts, Broken place, Take take) {
  try {
    take();
  } catch (const RunTimeError& error) {
    if (facts.broken != Broken::Nowhere) return;
    facts.broken = place;
    facts.error = std::make_shared<RunTimeError>(error);
  }
}

}  // namespace

std::uint32_t ItemTable::LowerText(const std::string& text) {
  const auto [at, isNew] = lowerNumbers_.try_emplace(text, static_cast<std::uint32_t>(lowerTexts_.size()));
  if (isNew) lowerTexts_.push_back(&at->first);
  return at->second;
}

std::uint32_t ItemTable::Add(TrainKind kind, std::string_view text) {
  std::string key(1, kind == TrainKind::Engine ? 'e' : 'w');
  key += text;
  const auto [at, isNew] = numbers_.try_emplace(std::move(key), static_cast<std::uint32_t>(items_.size()));
  if (!isNew) return at->second;
  TrainItem item{.kind = kind, .text = std::string(text)};
  item.lowerText = LowerText(LowerCase(text));
  if (const auto parts = Split(item.text)) {
    item.wantedFile = WithoutQuotes(parts->first) + (kind == TrainKind::Engine ? ".eng" : ".wag");
    item.wantedFolder = WithoutQuotes(parts->second);
    item.file = LowerCase(item.wantedFile);
    item.folder = LowerCase(item.wantedFolder);
  } else {
    item.splits = false;
  }
  items_.push_back(std::move(item));
  return at->second;
}

FileFacts TakeFacts(FileKind kind, const GameText& text, std::vector<FoundItem>& items) {
  FileFacts facts;
  switch (kind) {
    case FileKind::Consist: Try(facts, Broken::Name, [&] { TakeConfigName(text, facts); }); break;
    case FileKind::Service:
      Try(facts, Broken::Name, [&] { TakeServiceName(text, facts); });
      Try(facts, Broken::Consist, [&] { TakeConsist(text, facts); });
      return facts;
    case FileKind::Activity:
      Try(facts, Broken::Name, [&] { TakeActivityName(text, facts); });
      Try(facts, Broken::PlayersServices, [&] { TakePlayersServices(text, facts); });
      Try(facts, Broken::OtherServices, [&] { TakeOtherServices(text, facts); });
  }
  Try(facts, Broken::Items, [&] { TakeItems(text, items); });
  return facts;
}

}  // namespace quillon
