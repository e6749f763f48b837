#include "intake/WhyScreen.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "core/text/Text.h"

namespace quillon {
namespace {

struct Kind {
  std::string_view code, word;
};

constexpr std::array<Kind, 4> kKinds = {{
    {"ADD", "Added"},
    {"BAD", "Bad file"},
    {"EXE", "By hand"},
    {"MSC", "Set aside"},
}};

std::string KindText(const std::string& code) {
  const auto at =
      std::find_if(kKinds.begin(), kKinds.end(), [&](const Kind& kind) { return kind.code == code; });
  return at == kKinds.end() ? code : std::string(at->word) + " (" + code + ")";
}

}  // namespace

void WhyScreen::Activate() {
  program_.Step("Reading what became of the downloads");
  lines_ = IntakeLog(program_).LastIntake();
  ListWhy.rows.clear();
  for (const auto& line : lines_)
    ListWhy.rows.push_back(KindText(line.kind) + "\t" + line.zip + "\t" + line.reason);
  ListWhy.current = -1;
  SetLabel("lblWhen", lblWhen, lines_.empty() ? "" : ReplaceAll(lines_.front().date, " ", "\r\n"), true);
  SetLabel("lblReason", lblReason, "No routes were added yet.", true);
  ListWhyHover(0);
}

void WhyScreen::ListWhyHover(int row) {
  if (row < 0 || row >= static_cast<int>(lines_.size())) return;
  ListWhy.current = row;
  const IntakeLog::Line& line = lines_[static_cast<std::size_t>(row)];
  SetLabel("lblReason", lblReason, line.zip + ":\r\n" + line.reason, true);
}

void WhyScreen::btnExploreClick() { program_.shell.Explore(FolderOfCurrent() + "\\"); }

std::string WhyScreen::FolderOfCurrent() const {
  const Installation& app = program_.app;
  if (ListWhy.current < 0) return app.OriginalZips();
  const IntakeLog::Line& line = lines_[static_cast<std::size_t>(ListWhy.current)];
  // A program that is no archive has stayed.
  if (program_.files.FileExists(app.DownloadedRoutes() + "\\" + line.zip)) return app.DownloadedRoutes();
  if (line.kind == "ADD") return app.Installed();
  return line.kind == "BAD" ? app.BadZipFiles() : app.NotInstalled();
}

}  // namespace quillon
