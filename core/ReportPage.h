// What the report pages have in common: the record they are made of, and the frame around them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// The lines of a record that was written by the profile functions. A lone LF ends no line.
std::vector<std::string> RecordLines(std::string_view text);

/// A name as text of a page. Names come from strangers: nothing in them may act in a browser.
std::string Harmless(std::string_view name);

/// Date and time as the user's desktop writes them.
struct ReportTime {
  std::string date, time;
};
ReportTime Now();

/// The last lines within the frame: who made the page.
std::string Imprint();

/// What closes the frame.
inline constexpr std::string_view kPageEnd = "</TD></TR></table>\r\n</font></body>\r\n";

}  // namespace quillon
