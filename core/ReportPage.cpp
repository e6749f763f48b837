#include "core/ReportPage.h"

#include <algorithm>

#include "core/Installation.h"
#include "core/Version.h"
#include "core/text/LocalTime.h"
#include "core/text/Text.h"

namespace quillon {

std::vector<std::string> RecordLines(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const auto end = std::min(text.find('\r'), text.size());
    lines.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + (text.substr(end).starts_with("\r\n") ? 2 : 1), text.size()));
  }
  return lines;
}

std::string Harmless(std::string_view name) { return ReplaceAll(ReplaceAll(name, "<", "&lt;"), ">", "&gt;"); }

ReportTime Now() { return {LocalTime("%x"), LocalTime("%X")}; }

std::string Imprint() {
  const std::string page(kMakersPage);
  return "<BR><BR><CENTER><font size=-2>Generated with Quillon Version " + std::string(kVersion) + "\r\n" +
         std::string(kLegalText) + "\r\n<BR>Get cool stuff to play with at <a href=\"" + page +
         "\" target=new>" + page.substr(page.find("//") + 2) + "</a></font></CENTER>\r\n";
}

}  // namespace quillon
