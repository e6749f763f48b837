#include "checkup/CausesPage.h"

#include <gtest/gtest.h>

#include "checkup/CauseSentence.h"
#include "core/text/Text.h"

namespace quillon {

static std::string PageNaming(const std::string& name) {
  const std::vector<std::string> few{name}, two(2, name), many(9, name);
  CauseList list{name, name, name, 3, 3, 2, 2, {}, {{name, name, name}, {name, name, {}, false, few}}};
  for (auto kind : {Cause::Kind::MissingFolder, Cause::Kind::MissingFile, Cause::Kind::MissingService})
    for (const auto& files : {two, many})
      list.causes.push_back({kind, name, name, files, few, few, few, 1, 1, name, {{name, name}}});
  list.changes = {name, few, few, few, many};
  return CausesPage(list);
}

TEST(CausesPage, TakesNoNameForMarkup) {
  const std::string bad = "'\"><script>&lt;", harmless = "&#39;&quot;&gt;&lt;script&gt;&amp;lt;";
  const auto page = ReplaceAll(PageNaming(bad), CausesAnchor(bad), CausesAnchor("plain"));
  EXPECT_EQ(ReplaceAll(page, harmless, "plain"), PageNaming("plain"));
}

TEST(CausesPage, SpeaksOfNoneOneAndMany) {
  Cause cause{Cause::Kind::MissingFolder, "X", "", {}, {"a"}, {}, {"b"}, 1, 0};
  const std::string one =
                        "1 consist needs it and heals by it alone, no activity becomes playable by it alone",
                    many = "34 consists need it, 29 heal by it alone, 1 activity becomes playable";
  EXPECT_TRUE(CauseSentence(cause).ends_with("X</b> is missing: " + one));
  cause.consists.resize(34), cause.consistsHealed = 29, cause.activitiesHealed = 1;
  EXPECT_TRUE(CauseSentence(cause).ends_with(": " + many));
}

TEST(CausesPage, LinksToARoute) {
  EXPECT_EQ(CausesAnchor("Gotthard Süd_2"), "route-gotthard-s-d-2");
  EXPECT_TRUE(Contains(PageNaming("Süd"), "id=\"route-s-d\"><h3 class=\"caution\">Süd"));
}
}  // namespace quillon
