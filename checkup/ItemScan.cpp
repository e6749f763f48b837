#include "checkup/ItemScan.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "core/Text.h"

namespace quillon {

struct ItemScan::Token {
  TrainKind kind;
  std::string_view word;  // lower case
  const char* extension;
};

namespace {

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

}  // namespace

void ItemScan::BeginPass() { VerifiedItems = {"qntemp tempqn"}; }

void ItemScan::ScanFile(const GameText& text, const std::function<void(const TrainFault&)>& fault) {
  static constexpr std::array<Token, 2> kTokens = {
      {{TrainKind::Engine, "enginedata (", ".eng"}, {TrainKind::Wagon, "wagondata (", ".wag"}}};
  const std::string_view whole = text.Text();
  // From token to token; of each kind the first one on a line counts, the engine before the wagon.
  for (std::size_t at = text.Find("data (", 0); at != GameText::kNone;) {
    // A lone LF ends no line.
    const std::size_t before = whole.rfind('\r', at), lineStart = before == whole.npos ? 0 : before + 1;
    const std::size_t lineEnd = std::min(whole.find('\r', at), whole.size());
    const std::string_view line = text.Lower().substr(lineStart, lineEnd - lineStart);
    for (const Token& token : kTokens)
      if (const auto found = line.find(token.word); found != line.npos)
        ScanItem(text, token, lineStart + found + token.word.size(), lineEnd, fault);
    at = text.Find("data (", lineEnd);
  }
}

bool ItemScan::IsKnownGood(const std::string& lowerItem) {
  if (lowerItem != LastVerifiedItem && !VerifiedItems.contains(lowerItem)) return false;
  LastVerifiedItem = lowerItem;
  return true;
}

void ItemScan::ScanItem(const GameText& text, const Token& token, std::size_t at, std::size_t lineEnd,
                        const std::function<void(const TrainFault&)>& fault) {
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
  const std::string item = Trim(cut), lowerItem = LowerCase(item);
  if (IsKnownGood(lowerItem)) return;

  const auto parts = Split(item);
  if (!parts) text.Fail(at, "a train needs a name and a folder");
  const std::string file = LowerCase(WithoutQuotes(parts->first)) + token.extension;
  const std::string folder = LowerCase(WithoutQuotes(parts->second));
  if (trains_.CheckItem(token.kind, file, folder)) {
    VerifiedItems.insert(lowerItem);
    LastVerifiedItem = lowerItem;
  } else {
    fault({token.kind, file, folder, trains_.FindAlternateFolder(token.kind, file)});
  }
}

}  // namespace quillon
