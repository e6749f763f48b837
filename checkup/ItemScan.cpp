#include "checkup/ItemScan.h"

#include <algorithm>
#include <array>

#include "core/Text.h"

namespace quillon {

struct ItemScan::Token {
  TrainKind kind;
  std::string_view word;  // lower case
  const char* extension;
};

namespace {

/// Where the name ends and the folder begins, counted from 1 and decided by the first double quote; 0 when
/// there is neither a quote nor a blank.
std::size_t SplitPosition(std::string_view item) {
  const auto quote = item.find('"');
  if (quote == item.npos) {
    const auto blank = item.find(' ');
    return blank == item.npos ? 0 : blank + 1;
  }
  if (quote >= 2) return quote;
  const auto second = item.find('"', quote + 1);
  return second == item.npos ? 1 : second + 2;
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

  const std::size_t split = SplitPosition(item);
  if (split == 0) text.Fail(at, "a train needs a name and a folder");
  const std::string file = LowerCase(WithoutQuotes(item.substr(0, split))) + token.extension;
  const std::string folder = LowerCase(WithoutQuotes(item.substr(std::min(split - 1, item.size()))));
  if (trains_.CheckItem(token.kind, file, folder)) {
    VerifiedItems.insert(lowerItem);
    LastVerifiedItem = lowerItem;
  } else {
    fault({token.kind, file, folder, trains_.FindAlternateFolder(token.kind, file)});
  }
}

}  // namespace quillon
