// The pages of the Checkup: report.html, and temp.html, which leads to it and makes a browser fetch it anew.
#pragma once

#include <string>

#include "core/Program.h"

namespace quillon {

/// Writes both from finalreport.ini, and opens them when `ShowReportWhenDone` is set. Without a result it
/// says so.
void WriteCheckupReport(Program& program);

/// The page that a browser is to open.
std::string CheckupPage(const Program& program);

}  // namespace quillon
