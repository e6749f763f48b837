#include "checkup/CausesPage.h"

#include <algorithm>

#include "checkup/CauseSentence.h"
#include "checkup/CausesArt.h"
#include "checkup/CausesStyle.h"
#include "core/Installation.h"
#include "core/Version.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

using TextList = std::vector<std::string>;

// No name on the page can look like these.
constexpr std::string_view kMade = "<p class=\"made\">Checkup of ",
                           kChangesSection = "<section aria-labelledby=\"changes\">",
                           kBehindChanges = "</main>";

std::string OfActivities(int playable, int all) {
  return std::to_string(playable) + " of " + Count(all, "activity", "activities");
}

class Page {
 public:
  explicit Page(const CauseList& list) : list_(list), playable_(list.Playable().playable) {}

  std::string Text() {
    Head();
    Board();
    Causes();
    Routes();
    Changes();
    Foot();
    return std::move(text_);
  }

  std::string ChangesText() {
    Changes();
    return std::move(text_);
  }

 private:
  void Line(std::string_view text) { text_.append(text).append("\n"); }

  void Items(const TextList& names) {
    for (const auto& name : names) Line("<li>" + Safe(name));
  }

  void Unfold(const std::string& caption, const char* look, bool open) {
    Line(std::string(open ? "<details open>" : "<details>") + "<summary>" + caption +
         "</summary><ul class=\"" + look + "\">");
  }

  void Folded(const std::string& caption, const TextList& names, const char* look = "names",
              bool open = false) {
    if (names.empty()) return;
    Unfold(caption, look, open);
    Items(names);
    Line("</ul></details>");
  }

  void Head() {
    const bool all = playable_ == Size(list_.activities) && list_.upTo.empty();
    const char* aspect = all ? "go" : playable_ > 0 || list_.activities.empty() ? "caution" : "stop";
    text_.append(kCausesHead).append("<style>").append(kCausesStyle).append("</style>\n</head>\n<body>\n");
    Line("<header class=\"station " + std::string(aspect) + "\">" + std::string(kDusk));
    Line("<div class=\"page\"><h1>" + std::string(all && list_.causes.empty() ? "Nothing" : "What") +
         " holds the trains up</h1>" + std::string(kSignal) + "</div>\n</header>\n<main class=\"page\">");
  }

  void Figure(int number, const char* aspect, const char* word) {
    Line("<dd class=\"" + std::string(number > 0 ? aspect : "off") + "\"><span><b>" + std::to_string(number) +
         "</b> " + word + "</span></dd>");
  }

  void Board() {
    const int all = Size(list_.activities);
    Line("<div class=\"board\">\n<p class=\"lead\">" +
         (all == 0                                 ? "No activities were found."
          : playable_ == all && list_.upTo.empty() ? "Every activity can be played."
          : playable_ == 0                         ? "No activity can be played yet."
                                                   : OfActivities(playable_, all) + " can be played.") +
         "</p>\n<dl><div><dt>Activities</dt>");
    Figure(playable_, "go", "playable");
    Figure(all - playable_, "stop", "not playable");
    Line("</div><div><dt>Consists</dt>");
    Figure(list_.consistsWhole, "go", "whole");
    Figure(list_.consistsFaulty, "stop", "faulty");
    Line("</div><div><dt>Trains</dt>");
    Figure(list_.trainsMissing, "stop", "missing");
    Figure(list_.trainsMisplaced, "caution", "misplaced");
    Line("</div></dl>\n" + std::string(kMade) + Safe(list_.made) +
         (list_.route.empty() ? "" : ", route <b>" + Safe(list_.route) + "</b>") + "</p>\n</div>");
    if (!list_.upTo.empty())
      Line("<p class=\"notice\" role=\"note\"><b>The Checkup ended early.</b> " + Safe(list_.upTo) +
           " Mend that file, or take it away, and run the Checkup again.</p>");
    Line(
        "<nav aria-label=\"On this page\"><ul><li><a href=\"#causes\">Causes</a>"
        "<li><a href=\"#routes\">Routes</a><li><a href=\"#changes\">What changed</a></ul></nav>");
  }

  void Share(int healed, int all, const char* before, const char* behind) {
    if (healed <= 0 || all <= 0) return;
    Line("<li><span class=\"track\"><span class=\"train\" style=\"width:" +
         std::to_string(std::min(100 * healed / all, 100)) + "%\"></span></span>" + before +
         std::to_string(healed) + " of " + std::to_string(all) + behind);
  }

  void Files(const Cause& cause) {
    // A missing file is its own only file.
    if (cause.files.empty() || cause.files == TextList{cause.name}) return;
    const std::string caption = Count(Size(cause.files), "file", "files");
    if (cause.files.size() > 8) return Folded(caption, cause.files);
    Line("<ul class=\"files\"><li class=\"label\">" + caption + ":");
    Items(cause.files);
    Line("</ul>");
  }

  void Moves(const std::vector<TrainMove>& moves) {
    if (moves.empty()) return;
    Line("<div class=\"mend\"><p>Quillon can do " +
         (moves.size() == 1 ? "this rename" : "these " + std::to_string(moves.size()) + " renames") +
         " itself: by the button in the window, or <code>quillon causes --fix</code>.</p>\n<ul>");
    for (const auto& move : moves)
      Line("<li><code>" + Safe(move.from) + "</code> &rarr; <code>" + Safe(move.to) + "</code>");
    Line("</ul></div>");
  }

  void Causes() {
    Line("<section aria-labelledby=\"causes\">\n<h2 id=\"causes\">Causes</h2>");
    if (list_.causes.empty()) {
      const bool all = playable_ > 0 && playable_ == Size(list_.activities);
      const char* words = !list_.upTo.empty() ? "Nothing was found missing until then."
                          : all               ? "Nothing is missing: everything can be played."
                                              : "Nothing is missing.";
      return Line("<div class=\"plate calm\">" + std::string(kAsleep) + "<p>" + words +
                  "</p></div></section>");
    }
    Line("<p class=\"hint\">" + Count(Size(list_.causes), "thing is", "things are") +
         " missing or in the wrong place. What heals most comes first.</p>\n<ol class=\"causes\">");
    for (const auto& cause : list_.causes) OneCause(cause);
    Line("</ol>\n</section>");
  }

  void OneCause(const Cause& cause) {
    Line("<li class=\"plate cause\"><p class=\"kind\">" + std::string(NameOf(cause.kind)) + "</p>");
    Line("<h3>" + CauseSentence(cause) + "</h3>");
    if (cause.consistsHealed > 0 || cause.activitiesHealed > 0) {
      Line("<ul class=\"heals\">");
      Share(cause.consistsHealed, list_.consistsFaulty, "heals ", " faulty consists");
      Share(cause.activitiesHealed, Size(list_.activities) - playable_, "frees ", " waiting activities");
      Line("</ul>");
    }
    Files(cause);
    if (!cause.advice.empty()) Line("<p class=\"advice\">" + Safe(cause.advice) + "</p>");
    Moves(cause.moves);
    Folded(Count(Size(cause.consists), "consist", "consists"), cause.consists);
    Folded(Count(Size(cause.services), "service", "services"), cause.services);
    Folded(Count(Size(cause.activities), "activity", "activities"), cause.activities);
    Line("</li>");
  }

  void Activities(auto begin, auto end, bool playable, int number) {
    if (number == 0) return;
    // What is in order needs no reading, and a long list is looked into on purpose.
    Unfold(std::to_string(number) + (playable ? " playable" : " not playable"),
           playable ? "lamps go" : "lamps stop", !playable && number <= 40);
    for (auto one = begin; one != end; ++one) {
      if (one->playable != playable) continue;
      Line("<li><b>" + Safe(one->name.empty() ? one->file : one->name) + "</b> <small>" + Safe(one->file) +
           "</small>");
      if (one->reasons.empty()) continue;
      Line("<ul class=\"chain\">");
      Items(one->reasons);
      Line("</ul>");
    }
    Line("</ul></details>");
  }

  void Routes() {
    Line("<section aria-labelledby=\"routes\">\n<h2 id=\"routes\">Route by route</h2>");
    if (list_.activities.empty()) Line("<p class=\"plate\">There are no activities in these routes.</p>");
    for (auto begin = list_.activities.begin(); begin != list_.activities.end();) {
      const auto end = std::find_if(begin, list_.activities.end(), [&](const JudgedActivity& other) {
        return !EqualNoCase(other.route, begin->route);
      });
      const int all = static_cast<int>(end - begin);
      const int playable =
          static_cast<int>(std::count_if(begin, end, [](auto& one) { return one.playable; }));
      const bool working = !list_.route.empty() && EqualNoCase(begin->route, FileNameOf(kWorkingRoute));
      Line("<section class=\"plate route\" id=\"" + CausesAnchor(begin->route) + "\"><h3 class=\"" +
           (playable == all ? "go"
            : playable > 0  ? "caution"
                            : "stop") +
           "\">" + Safe(begin->route) + (working ? " (" + Safe(list_.route) + ")" : "") + " <span>" +
           OfActivities(playable, all) + " playable</span></h3>");
      Activities(begin, end, false, all - playable);
      Activities(begin, end, true, playable);
      Line("</section>");
      begin = end;
    }
    Line("</section>");
  }

  void Changes() {
    const auto& changes = list_.changes;
    Line(std::string(kChangesSection) + "\n<h2 id=\"changes\">What has changed</h2>");
    Line("<div class=\"plate\">");
    if (changes.since.empty()) {
      Line("<p>This Checkup is the first one: the next will tell here what has changed.</p>");
    } else if (changes.playableNow.empty() && changes.brokenNow.empty() && changes.causesGone.empty() &&
               changes.causesNew.empty()) {
      Line("<p>Nothing, since the Checkup of " + Safe(changes.since) + ".</p>");
    } else {
      Line("<p>Since the Checkup of " + Safe(changes.since) + ":</p>");
      const auto fold = [&](const TextList& names, const char* one, const char* many, const char* look) {
        Folded(Count(Size(names), one, many), names, look, names.size() <= 12);
      };
      fold(changes.playableNow, "activity is playable now", "activities are playable now", "lamps go");
      fold(changes.brokenNow, "activity is no longer playable", "activities are no longer playable",
           "lamps stop");
      fold(changes.causesGone, "cause is gone", "causes are gone", "names");
      fold(changes.causesNew, "cause is new", "causes are new", "names");
    }
    Line("</div>\n</section>\n" + std::string(kBehindChanges));
  }

  void Foot() {
    const std::string page(kMakersPage), made = "Generated with Quillon Version " + std::string(kVersion);
    Line("<footer class=\"page\"><p>" + made + ". " + std::string(kLegalText) +
         "</p>\n<p>Get cool stuff to play with at <a href=\"" + page + "\">" +
         page.substr(page.find("//") + 2) + "</a></p></footer>\n</body>\n</html>");
  }

  const CauseList& list_;
  const int playable_;
  std::string text_;
};

}  // namespace

std::string CausesPage(const CauseList& list) { return Page(list).Text(); }

bool RenewCausesPage(std::string& page, const std::string& made, const CauseList::Changes& changes) {
  CauseList list;
  list.changes = changes;
  const std::string before = std::string(kMade) + Safe(changes.since);
  const std::size_t date = page.find(before), from = page.rfind(kChangesSection),
                    end = page.rfind(kBehindChanges);
  if (date == page.npos || from == page.npos || end == page.npos || date > from || from > end) return false;
  // Its end comes with its own line.
  page.replace(from, end + kBehindChanges.size() + 1 - from, Page(list).ChangesText());
  page.replace(date, before.size(), std::string(kMade) + Safe(made));
  return true;
}

std::string CausesAnchor(const std::string& routeFolder) {
  std::string anchor = "route-";
  for (const char c : LowerCase(routeFolder)) {
    if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')) anchor += c;
    // A letter of several bytes counts once.
    else if ((static_cast<unsigned char>(c) & 0xC0) != 0x80)
      anchor += '-';
  }
  return anchor;
}

}  // namespace quillon
