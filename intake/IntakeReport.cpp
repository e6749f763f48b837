#include "intake/IntakeReport.h"

#include <array>
#include <string>
#include <string_view>

#include "core/ReportPage.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

const std::string kEnd = "\r\n";
const std::string kIndent = "&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;";

// The place of a section's count in its head.
constexpr std::string_view kCountMark = "][*][";

const std::string kHeadStart = R"(<TR><TD BGCOLOR=#EEE8C4><FONT SIZE=4 FACE="Tahoma" color = "#000080")";

const std::string kAddedHead =
    R"(><u><b>Routes added:</u> <font color = #009911>][*][</b></font></font><BR>)"
    R"(<font size=2 color=#000000><b>These routes were successfully added to Quillon.</b></font></TD></TR>)"
    R"(<TR><TD BGCOLOR=#FFF9D5>)" +
    kEnd +
    R"(<font size=-2><b>Note:</b> The route's name is shown in <font color = "Green"><b>green</b></font> and )"
    R"(its zip file is shown in <b>black</b>  enclosed within parenthesis.  In cases where a name was not able )"
    R"(to be determined, the zip file name has been used in its place.  If you would like to make a back up of )"
    R"(these routes, the original zip files scan be found by clicking the <B>"Route Files"</b> button on the )"
    R"(Route Manager screen.</font><BR><BR>)" +
    kEnd + kEnd;

const std::string kManualHead =
    R"(><u><b>Not auto-added. Manual installation required:</u> <font color = #DD0000>][*][</b></font></b>)"
    R"(</font><BR><font size=2 color=#000000><b>These zip files contain special installation files and could )"
    R"(not be automatically added.</b></font></TD></TR><TR><TD BGCOLOR=#FFF9D5>)" +
    kEnd +
    R"(<font size=-2><b>Note:</b> These routes must be installed manually into Train Simulator.  The zip files )"
    R"(shown below can be found by clicking the <B>"Route Files"</b> button on the Route Manager screen.  )" +
    kEnd +
    R"(You will have to install these routes into Train Simulator and then use the "Pack Route" option in )"
    R"(order to use them with Quillon.</font><BR><BR>)";

const std::string kPatchHead =
    R"(><u><b>Not auto-added. Patch files and misc.:</u> <font color = #DD0000>][*][</b></font></font><BR>)"
    R"(<font size=2 color=#000000><b>Quillon could not determine whether these are routes or not so they were )"
    R"(not added.</b></font></TD></TR><TR><TD BGCOLOR=#FFF9D5>)" +
    kEnd +
    R"(<font size=-2><b>Note:</b> The zip files shown below can be found by clicking the <B>"Route Files"</b> )"
    R"(button on the Route Manager screen.  )" +
    kEnd + R"(Please see 'help' for information on how to use these files.</font><BR><BR>)";

const std::string kBadHead =
    R"(><u><b>Not auto-added. Corrupted zip files.:</u> <font color = #DD0000>][*][</b></font></font><BR>)"
    R"(<font size=2 color=#000000><b>These zip files are corrupted in some way and were not added.</b></font>)"
    R"(</TD></TR><TR><TD BGCOLOR=#FFF9D5>)" +
    kEnd +
    R"(<font size=-2><b>Note:</b> These files must be downloaded again as they are not complete.  The zip files )"
    R"(shown below can be found by clicking the <b>"Route Files"</b> button on the Route Manager screen. </font>)"
    R"(<BR><BR>)";

/// One section of the page.
struct Section {
  std::string_view recordHead;  // the line of the record that begins it
  const std::string& head;      // what stands then on the page
  std::string_view mark;        // begins each line of the list, in record and page
  std::string_view noneFound;   // the only line of an empty list

  std::string buffer = {};
  bool seen = false;
  int count = 0;

  void AddLine(std::string_view colour, const std::string& text) {
    buffer += kIndent + R"(<font size =-1 color = ")" + std::string(colour) + R"("><b>)" + text +
              "</b></font></font><BR>" + kEnd;
    seen = true;
    ++count;
  }
};

class IntakePage {
 public:
  explicit IntakePage(const Program& program) : program_(program) {}

  /// One line of the record.
  void Take(const std::string& line) {
    for (auto& section : sections_) {
      if (line == section.recordHead) section.buffer += kHeadStart + section.head;
      if (line.starts_with(section.mark)) AddToList(section, line);
    }
  }

  std::string Body() {
    std::string body;
    for (auto& section : sections_) {
      body += ReplaceAll(section.buffer, kCountMark, std::to_string(section.count)) + kEnd;
      if (!section.seen)
        body += kIndent + R"(<font size =-1 color = "GREEN"><b>)" + std::string(section.noneFound) +
                "</b></font>" + kEnd;
      body += "<BR><BR>" + kEnd;
    }
    return body;
  }

 private:
  void AddToList(Section& section, const std::string& line) {
    const std::string text = ReplaceAll(ReplaceAll(line, section.mark, ""), "=", "");
    if (section.mark == "ADD:")
      section.AddLine("Green", Route(ReplaceAll(text, ".zip", "")));
    else
      section.AddLine("Red", Harmless(text));
  }

  std::string Route(const std::string& zip) const {
    const std::string name = program_.ini.ReadIni(zip, "Name", zip, program_.app.RoutesIni());
    return ReplaceAll(
        Harmless(name) + R"(</b><font size =-2 color = "Black"> ()" + Harmless(zip) + ".zip)</font><b>",
        "Quillon-", "");
  }

  const Program& program_;
  std::array<Section, 4> sections_ = {
      {{"[Added routes]", kAddedHead, "ADD:", "No new routes were automatically added."},
       {"[Manual install]", kManualHead, "EXE:", "No special installer files were found."},
       {"[Patch or other]", kPatchHead, "MSC:", "No patches or otherwise were found."},
       {"[Bad zips]", kBadHead, "BAD:", "No corrupted zip files were found."}}};
};

std::string PageStart(const std::string& refresh, const std::string& title, const std::string& heading) {
  return "<html>" + kEnd + "<head>" + kEnd + R"(<meta name="GENERATOR" content=")" +
         std::string(kApplicationTitle) + R"(">)" + kEnd + refresh + "<title>" + title + "</title>" + kEnd +
         "</head>" + kEnd + R"(<body BGCOLOR="#FFFFFF">)" + kEnd + R"(<font face="Tahoma" size ="4"><b>)" +
         heading + "</b></font>" + kEnd + R"(<font BASEFONT SIZE=1 face="Arial" SIZE=1>)" + kEnd +
         "<BR><BR><table WIDTH=640 Cellpadding=4 Border=0>" + kEnd + "<TR><TD>" + kEnd + kEnd + kEnd;
}

}  // namespace

void WriteIntakeReport(Program& program) {
  program.Step("Writing the report of the intake");
  if (!program.files.FileExists(program.app.ReportIni())) {
    program.boxes.Tell("No list yet.", "No list yet.  Add some routes to generate one.");
    return;
  }
  IntakePage page(program);
  for (const auto& line : RecordLines(program.files.ReadAll(program.app.ReportIni()))) page.Take(line);

  const auto [date, time] = Now();
  const std::string report = program.app.MiscInfo() + "\\routereport.html",
                    forward = program.app.MiscInfo() + "\\routereporttemp.html";
  program.files.WriteAll(
      report, PageStart("", "Quillon Routes Report " + date + " at " + time,
                        "Quillon Routes Added Results for: &nbsp;" + date + "&nbsp; at&nbsp; " + time) +
                  page.Body() + Imprint() + std::string(kPageEnd));
  program.files.WriteAll(forward,
                         PageStart(R"(<META HTTP-EQUIV="Refresh" content="0;URL=routereport.html">)" + kEnd,
                                   "Quillon Routes Report", "Quillon Routes Added Results for: " + date) +
                             std::string(kPageEnd));
  program.shell.OpenInShell(forward);
  program.shared.ShowIntakeReport = false;
}

}  // namespace quillon
