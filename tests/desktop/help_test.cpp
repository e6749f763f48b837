// The book of the help: what is delivered hangs together, and what is looked for is found.
#include <gtest/gtest.h>

#include <regex>

#include "core/text/Text.h"
#include "desktop/HelpBook.h"
#include "desktop/HtmlText.h"
#include "tests/world/HostFiles.h"
#include "tests/world/TestFolder.h"

namespace quillon {
namespace {

std::string BytesOf(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

Strings AllOf(const std::string& text, const std::string& pattern) {
  const std::regex regex(pattern);
  Strings found;
  for (std::sregex_iterator at(text.begin(), text.end(), regex), end; at != end; ++at)
    found.push_back((*at)[1]);
  return found;
}

class DeliveredHelp : public testing::Test, protected HostFiles {
 protected:
  fs::path PathOf(const HelpPage& page) const { return folder_ / page.file; }
  /// The anchors of a page, by its path.
  std::set<std::string> AnchorsOf(const fs::path& page) const {
    const Strings anchors = AllOf(BytesOf(page), "<[a-z0-9]+ (?:id|name)=\"([^\"]*)\"");
    return {anchors.begin(), anchors.end()};
  }
  std::vector<HelpPage> Pages() const {
    std::vector<HelpPage> pages;
    for (const auto& chapter : book_.Chapters())
      pages.insert(pages.end(), chapter.pages.begin(), chapter.pages.end());
    return pages;
  }

  const fs::path folder_ = (fs::path(QUILLON_SOURCE_DIR) / "resources/files").make_preferred();
  const HelpBook book_{files, folder_.string() + "\\help.hlp"};
};

TEST_F(DeliveredHelp, TableFolderAndContentsHoldTheSamePages) {
  std::set<std::string> listed, lying;
  for (const auto& page : Pages())
    EXPECT_TRUE(listed.insert(page.file).second) << page.file << " comes twice";
  for (const auto& file : fs::directory_iterator(folder_ / "help"))
    if (file.path().extension() == ".html" && file.path().filename() != "index.html")
      lying.insert("help/" + file.path().filename().string());
  EXPECT_EQ(listed, lying);
  std::set<std::string> linked;
  for (const auto& link : AllOf(BytesOf(folder_ / "help/index.html"), "href=\"([^\"]*\\.html)\""))
    linked.insert("help/" + link);
  EXPECT_EQ(linked, listed);
}

TEST_F(DeliveredHelp, EveryLinkAndPictureLeadsSomewhere) {
  std::set<std::string> shown;
  for (const auto& file : fs::directory_iterator(folder_ / "help")) {
    if (file.path().extension() != ".html") continue;
    for (const auto& link : AllOf(BytesOf(file.path()), "(?:href|src)=\"([^\"]*)\"")) {
      if (link.starts_with("http")) continue;
      const auto mark = std::min(link.find('#'), link.size());
      const fs::path target = mark == 0 ? file.path() : folder_ / "help" / link.substr(0, mark);
      EXPECT_TRUE(fs::is_regular_file(target)) << file.path() << ": " << link;
      const std::string anchor = link.substr(std::min(mark + 1, link.size()));
      EXPECT_TRUE(anchor.empty() || AnchorsOf(target).contains(anchor)) << file.path() << ": " << link;
      shown.insert(target.filename().string());
    }
  }
  for (const auto& picture : fs::directory_iterator(folder_ / "help/pictures"))
    EXPECT_TRUE(shown.contains(picture.path().filename().string())) << picture.path() << " is never shown";
}

TEST_F(DeliveredHelp, EveryScreenHasAPage) {
  for (const auto& screen : fs::directory_iterator(fs::path(QUILLON_SOURCE_DIR) / "art")) {
    const std::string name = screen.path().filename().string();
    EXPECT_TRUE(!name.starts_with("frm") || book_.PageOf(name) != nullptr) << name;
  }
  EXPECT_NE(book_.PageOf("error"), nullptr);
  EXPECT_EQ(book_.PageOf("frmNowhere"), nullptr);
}

/// F1 on the box of an error turns to it by its number.
TEST_F(DeliveredHelp, EveryErrorIsExplained) {
  const auto anchors = AnchorsOf(folder_ / "help/errors.html");
  const Strings numbers =
      AllOf(BytesOf(fs::path(QUILLON_SOURCE_DIR) / "core/RunTimeError.h"), " = ([0-9]+),");
  EXPECT_GT(numbers.size(), 10u);
  for (const auto& number : numbers) EXPECT_TRUE(anchors.contains("e" + number)) << number;
}

TEST_F(DeliveredHelp, TheIndexIsInOrderAndLeadsToItsAnchors) {
  std::string before;
  for (const auto& keyword : book_.Index()) {
    const std::string upper = UpperCase(keyword.text);
    EXPECT_TRUE(ComesBefore(before, upper)) << keyword.text << " comes twice, or too late";
    before = upper;
    const std::string& anchor = keyword.anchor;
    EXPECT_TRUE(anchor.empty() || AnchorsOf(PathOf(*keyword.page)).contains(anchor)) << keyword.text;
  }
  EXPECT_GT(book_.Index().size(), 100u);
}

/// What a driver in trouble types.
TEST_F(DeliveredHelp, WordsOfTroubleLeadToTheirPages) {
  const std::pair<std::string, std::string> cases[] = {
      {"disk FULL", "help/errors.html"},
      {"a default file can't be kept", "help/errors.html"},
      {"wrong textures", "help/trouble.html"},
      {"password", "help/zips.html"},
      {"patch", "help/zips.html"},
      {"right mouse", "help/main-screen.html"},
  };
  for (const auto& [words, file] : cases) {
    Strings found;
    for (const auto& finding : book_.Find(words)) found.push_back(finding.page->file);
    EXPECT_NE(std::find(found.begin(), found.end(), file), found.end()) << words;
  }
}

class SmallHelp : public testing::Test, protected TestFolder, protected HostFiles {
 protected:
  void PutBook(const std::string& pages) {
    Put("b/help.hlp", R"({"title": "T", "chapters": )" + pages + "}");
  }
  HelpBook Open() { return HelpBook(files, Path("b\\help.hlp")); }
  std::string Found(const HelpBook& book, std::string_view words) {
    std::string found;
    for (const auto& finding : book.Find(words)) found += finding.page->title + "|";
    return found;
  }
};

TEST_F(SmallHelp, FindWantsAllWordsAndPutsTitlesFirst) {
  PutBook(R"([{"title": "C", "pages": [
      {"title": "Trains", "file": "help/a.html"}, {"title": "Signals", "file": "help/b.html"},
      {"title": "Gone", "file": "help/gone.html"}, {"title": "Wagons", "file": "help/c.html"}]}])");
  Put("b/help/a.html", "<p>A signal, <b>red</b>. M\xC3\x9CHLE.</p>");
  Put("b/help/b.html", "<p>Red &amp; green</p><p>signals</p>");
  Put("b/help/c.html", "<p>signal signal</p>");
  const HelpBook book(files, Path("b\\help.hlp"));
  EXPECT_EQ(Found(book, "SIGNAL"), "Signals|Wagons|Trains|");
  EXPECT_EQ(Found(book, " red  signal "), "Signals|Trains|");
  EXPECT_EQ(Found(book, "m\xC3\xBChle"), "Trains|");
  EXPECT_EQ(Found(book, "amp"), "");
  EXPECT_EQ(Found(book, " "), "");
  EXPECT_EQ(book.Find("green").front().excerpt, "Red & green signals");
}

TEST_F(SmallHelp, AnExcerptShowsTheWordsAround) {
  PutBook(R"([{"title": "C", "pages": [{"title": "P", "file": "p.html"}]}])");
  std::string text;
  for (int i = 0; i < 100; ++i) text += "w" + std::to_string(i) + " ";
  Put("b/p.html", text);
  const HelpBook book(files, Path("b\\help.hlp"));
  const std::string excerpt = book.Find("w50").front().excerpt;
  EXPECT_TRUE(excerpt.starts_with("... w4") && excerpt.ends_with(" ...")) << excerpt;
  EXPECT_TRUE(Contains(excerpt, " w50 ")) << excerpt;
}

TEST_F(SmallHelp, WhatIsNoTableIsRefusedByName) {
  const auto errorOf = [this] { return ErrorOf([this] { HelpBook(files, Path("b\\help.hlp")); }); };
  EXPECT_EQ(errorOf(), std::pair(76, Path("b\\help.hlp")));
  for (const char* chapters : {"[]", R"([{"title": "C", "pages": []}])", R"([{"title": "C"}])", "7", "[7]",
                               "[", R"([{"title": "C", "pages": [{"title": 7, "file": "a"}]}])",
                               R"([{"title": "C", "pages": [{"title": "P", "file": "a", "index": "x"}]}])"}) {
    PutBook(chapters);
    EXPECT_EQ(errorOf(), std::pair(321, Path("b\\help.hlp"))) << chapters;
  }
}

TEST(HelpText, IsWhatAPersonReads) {
  EXPECT_EQ(
      PlainText("<html><head><title>No</title></head><body><h1>One</h1>two<br>three <!-- <p>no -->four"),
      "One two three four");
  EXPECT_EQ(PlainText("<p>wo<b>rd</b>,&nbsp;&lt;a&gt; &#39;x&#x27; &unknown; R&D &#0;</p>"),
            "word, <a> 'x' &unknown; R&D &#0;");
  EXPECT_EQ(PlainText("a < b"), "a");
}

}  // namespace
}  // namespace quillon
