#include "desktop/HelpBook.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

#include "core/text/Text.h"
#include "desktop/HtmlText.h"

namespace quillon {
namespace {

using nlohmann::json;

constexpr std::size_t kWordsBefore = 8, kWordsAfter = 18;  // of an excerpt

std::vector<std::string> WordsOf(std::string_view text) {
  std::vector<std::string> words;
  for (std::size_t at = 0; at < text.size();) {
    const auto end = std::min(text.find(' ', at), text.size());
    if (end > at) words.emplace_back(text.substr(at, end - at));
    at = end + 1;
  }
  return words;
}

HelpPage PageFrom(const json& table) {
  const auto texts = [&](const char* key) { return table.value(key, std::vector<std::string>()); };
  return {table.at("title"), table.at("file"), texts("screens"), texts("index")};
}

/// Where the words of one page stand.
struct Places {
  std::size_t first = 0;  // of the first word searched for
  std::size_t count = 0;
};

/// Nothing when one of `wanted` is missing.
std::optional<Places> PlacesOf(const std::vector<std::string>& wanted,
                               const std::vector<std::string>& words) {
  Places places;
  for (const auto& word : wanted) {
    const auto holds = [&](const std::string& candidate) { return Contains(candidate, word); };
    const auto first = std::find_if(words.begin(), words.end(), holds);
    if (first == words.end()) return std::nullopt;
    if (&word == &wanted.front()) places.first = static_cast<std::size_t>(first - words.begin());
    places.count += static_cast<std::size_t>(std::count_if(first, words.end(), holds));
  }
  return places;
}

std::string ExcerptAt(const std::vector<std::string>& words, std::size_t place) {
  const std::size_t from = place > kWordsBefore ? place - kWordsBefore : 0,
                    to = std::min(words.size(), place + kWordsAfter);
  std::string excerpt = from > 0 ? "..." : "";
  for (std::size_t i = from; i < to; ++i) excerpt += (excerpt.empty() ? "" : " ") + words[i];
  return excerpt + (to < words.size() ? " ..." : "");
}

}  // namespace

HelpBook::HelpBook(Files& files, std::string file) : file_(std::move(file)) {
  ReadTable(files.ReadAll(file_));
  ReadPages(files);
  MakeIndex();
}

void HelpBook::ReadTable(const std::string& bytes) {
  const RunTimeError noTable(ErrorNumber::InvalidFileFormat, file_, "it is not the help's table of contents");
  try {
    const json table = json::parse(bytes);
    title_ = table.at("title");
    for (const json& chapter : table.at("chapters")) {
      chapters_.push_back({chapter.at("title"), {}});
      for (const json& page : chapter.at("pages")) chapters_.back().pages.push_back(PageFrom(page));
    }
  } catch (const json::exception&) {
    throw noTable;
  }
  if (chapters_.empty() || chapters_.front().pages.empty()) throw noTable;
}

void HelpBook::ReadPages(Files& files) {
  for (const auto& chapter : chapters_)
    for (const auto& page : chapter.pages) {
      std::string html;
      files.Host().Read(PathOf(page), html, kNoLimit);
      PageText text{&page, WordsOf(PlainText(html)), {}, LowerCase(page.title)};
      for (const auto& word : text.words) text.lower.push_back(LowerCase(word));
      texts_.push_back(std::move(text));
    }
}

void HelpBook::MakeIndex() {
  for (const auto& chapter : chapters_)
    for (const auto& page : chapter.pages)
      for (const auto& keyword : page.keywords) {
        const auto mark = std::min(keyword.find('#'), keyword.size());
        index_.push_back(
            {keyword.substr(0, mark), &page, keyword.substr(std::min(mark + 1, keyword.size()))});
      }
  std::stable_sort(index_.begin(), index_.end(), [](const HelpKeyword& a, const HelpKeyword& b) {
    return ComesBefore(UpperCase(a.text), UpperCase(b.text));
  });
}

std::string HelpBook::PathOf(const HelpPage& page) const {
  return std::string(FolderOf(file_)) + ReplaceAll(page.file, "/", "\\");
}

const HelpPage* HelpBook::PageOf(std::string_view screen) const {
  for (const auto& chapter : chapters_)
    for (const auto& page : chapter.pages)
      if (std::find(page.screens.begin(), page.screens.end(), screen) != page.screens.end()) return &page;
  return nullptr;
}

std::vector<HelpFinding> HelpBook::Find(std::string_view words) const {
  struct Hit {
    std::ptrdiff_t inTitle;
    std::size_t count;
    HelpFinding finding;
  };
  const auto wanted = WordsOf(LowerCase(words));
  std::vector<Hit> hits;
  for (const auto& text : texts_) {
    const auto places = PlacesOf(wanted, text.lower);
    if (wanted.empty() || !places) continue;
    const auto inTitle = std::count_if(wanted.begin(), wanted.end(),
                                       [&](const std::string& word) { return Contains(text.title, word); });
    hits.push_back({inTitle, places->count, {text.page, ExcerptAt(text.words, places->first)}});
  }
  std::stable_sort(hits.begin(), hits.end(), [](const Hit& a, const Hit& b) {
    return std::pair(a.inTitle, a.count) > std::pair(b.inTitle, b.count);
  });
  std::vector<HelpFinding> findings;
  findings.reserve(hits.size());
  for (auto& hit : hits) findings.push_back(std::move(hit.finding));
  return findings;
}

}  // namespace quillon
