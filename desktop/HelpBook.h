// The book of the help: its chapters and pages, its index, and a search through its text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/Files.h"

namespace quillon {

struct HelpPage {
  std::string title;
  /// Below the folder of the book, with slashes, such as "help/main-screen.html".
  std::string file;
  /// The screens that it explains, such as "frmMain".
  std::vector<std::string> screens;
  /// What the index has of it; an anchor stands behind a "#".
  std::vector<std::string> keywords;
};

struct HelpChapter {
  std::string title;
  std::vector<HelpPage> pages;
};

/// An entry of the index: where on which page a keyword is explained.
struct HelpKeyword {
  std::string text;
  const HelpPage* page;
  std::string anchor;  // may be empty
};

/// A page that holds what was searched for, and the words around the first of them.
struct HelpFinding {
  const HelpPage* page;
  std::string excerpt;
};

/// Owns all that it hands out.
class HelpBook {
 public:
  /// Reads the book whose table is `file`, a path of the system, with all its pages. Raises a RunTimeError
  /// that names the file when it can't be read or is no such table. A page that is missing has no text.
  HelpBook(Files& files, std::string file);
  HelpBook(const HelpBook&) = delete;
  HelpBook& operator=(const HelpBook&) = delete;

  const std::string& Title() const { return title_; }
  const std::vector<HelpChapter>& Chapters() const { return chapters_; }
  /// The page that the help opens with.
  const HelpPage& Home() const { return chapters_.front().pages.front(); }
  /// The system's path of a page.
  std::string PathOf(const HelpPage& page) const;

  /// The page that explains a screen; null when there is none.
  const HelpPage* PageOf(std::string_view screen) const;
  /// By keyword, without regard to case.
  const std::vector<HelpKeyword>& Index() const { return index_; }
  /// The pages that hold all of `words`, in any case and as parts of other words, too: those with the words
  /// in their title first, then those that hold more of them. None for no words.
  std::vector<HelpFinding> Find(std::string_view words) const;

 private:
  struct PageText {
    const HelpPage* page;
    std::vector<std::string> words, lower;
    std::string title;  // lower case
  };

  void ReadTable(const std::string& bytes);
  void ReadPages(Files& files);
  void MakeIndex();

  const std::string file_;
  std::string title_;
  std::vector<HelpChapter> chapters_;
  std::vector<HelpKeyword> index_;
  std::vector<PageText> texts_;
};

}  // namespace quillon
