// The page that a player reads after a Checkup: what to install first, and which activities can be played.
#pragma once

#include <string>

#include "checkup/CauseList.h"

namespace quillon {

/// A whole page in UTF-8. It needs no other file, and no name in it can act in a browser.
std::string CausesPage(const CauseList& list);

/// Gives a page another date and other changes; `changes.since` is its own date. False, and nothing is done,
/// when it is none of these pages.
bool RenewCausesPage(std::string& page, const std::string& made, const CauseList::Changes& changes);

/// The id of a route's section on that page.
std::string CausesAnchor(const std::string& routeFolder);

}  // namespace quillon
