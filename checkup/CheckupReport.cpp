#include "checkup/CheckupReport.h"

#include <algorithm>

#include "core/ReportPage.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

constexpr std::string_view kEnd = "\r\n", kIndent = "&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;";

/// The heading of a section: a title and a subtitle on a dark row; a row of notes follows.
std::string Heading(std::string_view closing, std::string_view title, std::string_view subtitle) {
  return std::string(closing) +
         "<TR><TD BGCOLOR=#EEE8C4><FONT SIZE=4 FACE=\"Tahoma\" color = \"#000080\"><u><b>" +
         std::string(title) + "</b></u></font><BR><font size=2 color=#000000><b>" + std::string(subtitle) +
         "</b></font></TD></TR><TR><TD BGCOLOR=#FFF9D5>\r\n<font size=-1><b>Note:</b> ";
}

std::string ActivitiesHeading() {
  return Heading("",
                 "Activities with problems:", "Do not use these activities until the problems are solved.") +
         "These activities have been found to reference either trains or services you do not have or faulty "
         "consists. \r\nThe activities are listed by route folder, <b>not</b> by route name.  If an activity "
         "is "
         "listed as being in the Quillon-route folder, this activity is for the route you have currently "
         "loaded "
         "from Quillon. \r\nThe route folders are shown in <font color = \"Blue\"><b>blue</b></font> and the "
         "activity itself is shown in <font color = \"Red\"><b>red</b></font>.</font><BR>\r\n\r\n";
}

std::string ServicesHeading() {
  return Heading("</TD></TR>", "Services with problems:",
                 "Activities that call on these services will crash Train Simulator.") +
         "These services have been found to either reference faulty consists or they are missing entirely "
         "from "
         "your system. \r\nThe route folder is shown in <font color = \"Blue\"><b>blue</b></font> and the "
         "service "
         "and related consist and activities are shown in <font color = \"Red\"><b>red</b></font>.</font><BR>"
         "\r\n\r\n";
}

std::string ConsistsHeading() {
  return Heading("</TD></TR>", "Consists with missing trains:",
                 "Installing missing trains should fix these problem consists.") +
         "These consists have been backed up and will reappear with your regular consists once you install "
         "any "
         "missing trains listed below. \r\nIf a consist is listed as <font color = "
         "\"Black\"><b>(MISSING!)</b>"
         "</font> then it is referenced by one of the activities or services listed above, but you do not "
         "have "
         "this consist at all.</font><BR><BR>\r\n\r\n";
}

std::string TrainsHeading(const std::string& title, const std::string& trains) {
  return Heading("<BR></TD></TR>", title, "Installing missing trains is the best way to resolve problems.") +
         trains +
         " listed in <b><font color = \"Green\">green</font></b> have been found to be installed in a "
         "different "
         "folder than required by the consist or activity.  " +
         trains +
         " listed in <b><font color = \"Red\">red</font></b> were not found anywhere in your "
         "system.</font><BR>"
         "<BR>\r\n";
}

/// One section of the page: its heading, and its entries in the order of the records.
struct Section {
  std::string text;
  bool found = false;  // any record
};

class ReportPage {
 public:
  /// One line of finalreport.ini.
  void Take(const std::string& line) {
    if (line == "[Problem Activities]") activities_.text += ActivitiesHeading();
    if (line == "[Problem Services]") services_.text += ServicesHeading();
    if (line == "[Problem Consists]") consists_.text += ConsistsHeading();
    if (line == "[Missing Locomotives]")
      locomotives_.text += TrainsHeading("Missing Locomotives:", "Locomotives");
    if (line == "[Missing Wagons]") wagons_.text += TrainsHeading("Missing Wagons:", "Wagons");
    if (line.starts_with("ACT:")) AddActivity(Harmless(line));
    if (line.starts_with("SRV:")) AddService(Harmless(line));
    if (line.starts_with("CON:")) AddConsist(Harmless(line));
    if (line.starts_with("ENG:")) AddTrain(locomotives_, ReplaceAll(Harmless(line), "ENG:", ""));
    if (line.starts_with("WAG:")) AddTrain(wagons_, ReplaceAll(Harmless(line), "WAG:", ""));
  }

  std::string Body() const {
    std::string body;
    const auto line = [&](std::string_view text) { body.append(text).append(kEnd); };
    const auto noneFound = [&](const Section& section, const char* words, std::string_view behind = {}) {
      if (!section.found)
        line(std::string(kIndent) + "<font size =-1 color = \"GREEN\"><b>" + words + "</b></font>" +
             std::string(behind));
    };
    line(activities_.text);
    noneFound(activities_, "No problem activities were found.");
    line("<BR><BR>");
    line(services_.text);
    noneFound(services_, "No problem services were found.");
    line("<BR><BR>");
    line(consists_.text);
    noneFound(consists_, "No problem consists were found.");
    line("<BR>");
    line(locomotives_.text);
    noneFound(locomotives_, "There are no missing locomotives.", "<BR><BR>");
    line(wagons_.text);
    noneFound(wagons_, "There are no missing wagons.");
    return body;
  }

 private:
  /// Each route is named once in blue, what belongs to it stands below it in red.
  static std::string BelowRoute(std::string& previousRoute, const std::string& line) {
    const std::string indent(kIndent), font = "<font SIZE =-1 color=\"Red\">";
    const std::string head =
        line.substr(0, line.find("][") + 1);  // up to the first bracket; empty without one
    if (head == previousRoute) return ReplaceAll(line, head + "[", "</font>" + indent + font);
    previousRoute = head;
    return ReplaceAll(line, "][", " <BR>" + indent + "</font>" + font);
  }

  static void AddEntry(Section& section, const std::string& line) {
    section.text += "<font size =-1 color = \"Blue\"><b>" + line + "</b></font></font><BR>\r\n";
    section.found = true;
  }

  void AddActivity(const std::string& record) {
    const std::string line =
        ReplaceAll(ReplaceAll(record, "ACT:", "<BR>"), "=", " </B><font color = \"Black\" SIZE =-2 >( ");
    AddEntry(activities_, BelowRoute(PrevActivityRoute, line + " )</font><b>"));
  }

  void AddService(const std::string& record) {
    const std::string line = ReplaceAll(ReplaceAll(record, "SRV:", "<BR>"), "=", "");
    AddEntry(services_, ReplaceAll(BelowRoute(PrevServiceRoute, line), "Consist:",
                                   "</font></B><font size=-2 color=#000000>needs the consist:</font><b><font "
                                   "size=-1 color=\"Red\">"));
  }

  void AddConsist(const std::string& record) {
    std::string line = ReplaceAll(ReplaceAll(record, "CON:", ""), " (MISSING!)",
                                  " <font size=-2 color=#000000>(MISSING!)</font>");
    if (!line.empty()) line.pop_back();  // the "=" of the empty value
    consists_.text +=
        std::string(kIndent) + "<font size =-1 color = \"Red\"><b>" + line + "</b></font><BR>\r\n";
    consists_.found = true;
  }

  static void AddTrain(Section& section, std::string line) {
    section.found = true;
    const std::string value = line.substr(std::min(line.find('='), line.size()));
    line =
        ReplaceAll(ReplaceAll(line, value, ""), "Folder:",
                   "</b></font><font size=-2 color =#000000>should be in a folder named </font><font size=-1 "
                   "color = \"Red\"><b>");
    const std::string folder = Trim(ReplaceAll(value, "=", ""));
    const bool nowhere = folder == "none";
    section.text += std::string(kEnd) + std::string(kIndent) +
                    (nowhere ? "<font size =-1 color = \"Red\"><b>" : "<font size=-1 color = \"Green\"><b>") +
                    Trim(line) + ".</b></font>";
    if (nowhere)
      section.text += "<BR><BR>\r\n";
    else
      section.text +=
          "<BR>\r\n" + std::string(kIndent) +
          "<font size=-2>An alternate version was found in a folder named </font><font size=-1 color = "
          "\"Blue\"><b>" +
          folder + ".</b></font>\r\n<BR><BR>\r\n";
  }

  Section activities_, services_, consists_, locomotives_, wagons_;
  std::string PrevActivityRoute, PrevServiceRoute;
};

std::string PageStart(const std::string& refresh, const std::string& title, const std::string& headline) {
  return "<html>\r\n<head>\r\n<meta name=\"GENERATOR\" content=\"" + std::string(kApplicationTitle) +
         "\">\r\n" + refresh + "<title>" + title +
         "</title>\r\n</head>\r\n<body BGCOLOR=\"#FFFFFF\">\r\n<font face=\"Tahoma\" "
         "size =\"4\"><b>" +
         headline +
         "</b></font>\r\n<font BASEFONT SIZE=1 face=\"Arial\" SIZE=1><BR>\r\n<font size=2>If nothing is "
         "listed under "
         "any of the following sections, then no problems have been detected.<BR>\r\nIf there are any "
         "problems shown, "
         "the best way to solve them is by installing missing trains.</font>\r\n<BR><BR><table WIDTH=640 "
         "Cellpadding=4 Border=0>\r\n<TR><TD>\r\n\r\n\r\n";
}

std::string ReportFile(const Program& program) { return program.app.MiscInfo() + "\\report.html"; }

}  // namespace

std::string CheckupPage(const Program& program) { return program.app.MiscInfo() + "\\temp.html"; }

void WriteCheckupReport(Program& program) {
  program.Step("Writing the Checkup's report");
  const std::string result = program.app.TrainRecord("finalreport.ini");
  if (!program.files.FileExists(result)) {
    program.boxes.Tell("No list yet.", "No list yet.  Click 'Check Trains' to generate one.");
    return;
  }
  program.files.KillIfThere(ReportFile(program));
  ReportPage page;
  for (const auto& line : RecordLines(program.files.ReadAll(result))) page.Take(line);
  const auto [date, time] = Now();
  program.files.WriteAll(ReportFile(program),
                         PageStart("", "Quillon Analysis Report " + date + " at " + time,
                                   "Quillon Checkup Results for: &nbsp;" + date + "&nbsp; at&nbsp; " + time) +
                             page.Body() + Imprint() + std::string(kPageEnd));
  program.files.WriteAll(CheckupPage(program),
                         PageStart("<META HTTP-EQUIV=\"Refresh\" content=\"0;URL=report.html\">\r\n",
                                   "Quillon Analysis Report", "Quillon Checkup Results for " + date) +
                             std::string(kPageEnd));
  if (!program.shared.ShowReportWhenDone) return;
  program.shell.OpenInShell(CheckupPage(program));
  program.shared.ShowReportWhenDone = program.shared.CheckTrains = false;
}

}  // namespace quillon
