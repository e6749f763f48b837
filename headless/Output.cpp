#include "headless/Output.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>

#include "catalogue/RouteDetails.h"
#include "checkup/CauseRows.h"
#include "core/Installation.h"
#include "core/Ports.h"
#include "core/text/SizeText.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

constexpr std::size_t kDay = 10;  // characters of an ISO date

class JsonOutput : public Output {
 public:
  explicit JsonOutput(std::FILE* file) : file_(file) {}

  void Put(const Event& event) override {
    // Names of files need not be UTF-8.
    const std::string line = event.dump(-1, ' ', false, Event::error_handler_t::replace) + "\n";
    std::fwrite(line.data(), 1, line.size(), file_);
    Flush(file_);
  }

 private:
  std::FILE* file_;
};

class TextOutput : public Output {
 public:
  TextOutput(std::FILE* file, bool terminal) : file_(file), terminal_(terminal) {}
  ~TextOutput() override { ClearLive(); }

  void Put(const Event& event) override {
    const std::string kind = event["event"];
    if (kind == "caption") Caption(event["text"]);
    if (kind == "text") Text(event);
    if (kind == "box") Box(event);
    if (kind == "row") Row(event);
    if (kind == "main") Main(event);
    if (kind == "open") Line("To open: " + event["host"].get<std::string>());
    if (kind == "explore") Line("To open: " + event["path"].get<std::string>());
    if (kind == "cause") Cause(event);
    if (kind == "activity") Activity(event);
    if (kind == "help") Line("Help: " + event["file"].get<std::string>());
    if (kind == "error") Error(event);
    if (kind == "shelf") Shelf(event);
    if (kind == "finding") Finding(event);
    if (kind == "route") routes_.push_back(event);
    if (kind == "verdict")
      Line("  " + event["class"].get<std::string>() + "  " + event["zip"].get<std::string>() + ": " +
           event["reason"].get<std::string>());
  }

  /// Columns as wide as what stands in them.
  void EndRoutes() override {
    if (routes_.empty()) return Line("There are no routes yet.");
    std::vector<TableRow> rows = {kHead};
    for (const auto& route : routes_) rows.push_back(RowOf(route));
    std::array<std::size_t, kColumns> widths{};
    for (const auto& row : rows)
      for (std::size_t i = 0; i < kColumns; ++i) widths[i] = std::max(widths[i], CharacterCount(row[i]));
    for (const auto& row : rows) Line(InColumns(row, widths));
    routes_.clear();
  }

  void Detail(unsigned long long done, unsigned long long total, const std::string& unit) override {
    if (!terminal_ || total == 0) return;
    const bool bytes = unit == "bytes";
    const std::string measure = std::to_string(bytes ? done >> 20 : done) + " of " +
                                std::to_string(bytes ? total >> 20 : total) + " " + (bytes ? "MB" : unit);
    Live(caption_ + "  " + measure);
  }

 private:
  static constexpr std::size_t kColumns = 9, kFirstNumber = 2;
  using TableRow = std::array<std::string, kColumns>;
  inline static const TableRow kHead = {"Name",     "Zip",         "Packed",     "Unpacked", "Files",
                                        "Taken in", "Last loaded", "Activities", "Saves"};

  static TableRow RowOf(const Event& route) {
    const auto text = [&](const char* key) { return route[key].get<std::string>(); };
    const auto number = [&](const char* key) { return std::to_string(route[key].get<std::uint64_t>()); };
    const auto size = [&](const char* key) { return SizeText(route[key].get<std::uint64_t>()); };
    const bool known = !route["playable"].is_null();
    return {text("name") + (route["loaded"].get<bool>() ? std::string(kLoadedMark) : ""),
            text("zip"),
            size("packed"),
            size("bytes"),
            number("files"),
            text("added").substr(0, kDay),
            text("lastLoaded").empty() ? "never" : text("lastLoaded").substr(0, kDay),
            known ? number("playable") + " of " + number("judged") : number("activities"),
            number("saves")};
  }

  static std::string InColumns(const TableRow& row, const std::array<std::size_t, kColumns>& widths) {
    std::string line;
    for (std::size_t i = 0; i < kColumns; ++i) {
      const std::string gap(widths[i] - CharacterCount(row[i]), ' ');
      line += (i == 0 ? "  " : "   ") + (i < kFirstNumber ? row[i] + gap : gap + row[i]);
    }
    return line;
  }

  void Caption(const std::string& text) {
    caption_ = text;
    terminal_ ? Live(text) : Line(text);
  }

  void Text(const Event& event) {
    const std::string control = event["control"], text = event["text"];
    constexpr std::array<std::string_view, 6> kNews = {"lblMessage", "lblFirstMessage", "lblTerrainInfo",
                                                       "lblHint",    "lblRoom",         "lblWhere"};
    const bool news = std::find(kNews.begin(), kNews.end(), control) != kNews.end();
    if (!news || !event["visible"] || text.empty() || text == said_) return;
    Line(ReplaceAll(text, "\r\n", "\n"));
    said_ = text;
  }

  void Box(const Event& event) {
    const std::string title = event["title"], text = event["text"], answer = event["answer"];
    Line(std::string("[").append(title).append("] ").append(ReplaceAll(text, "\r\n", "\n")));
    if (event["buttons"] == "yesno") Line(std::string("  answered: ").append(answer));
  }

  void Shelf(const Event& event) {
    const bool dropped = event.contains("dropped");
    const auto number = [&](const char* key) { return std::to_string(event[key].get<std::uint64_t>()); };
    Line((dropped ? "Left the shelf for room: " : "On the shelf: ") + number("number") + "  " +
         event["zip"].get<std::string>() + "  " + event["date"].get<std::string>() + "  " + number("files") +
         " files, " + number("bytes") + " bytes\n    " + event["why"].get<std::string>() + "\n    " +
         event["path"].get<std::string>());
  }

  void Cause(const Event& event) {
    const auto count = [&](const char* key) { return std::to_string(event[key].size()); };
    const auto number = [&](const char* key) { return std::to_string(event[key].get<int>()); };
    Line("  " + event["kind"].get<std::string>() + ": " + event["name"].get<std::string>() + ": " +
         count("consists") + " consists need it, " + number("consistsHealed") + " heal by it alone; " +
         count("activities") + " activities need it, " + number("activitiesHealed") +
         " become playable\n    " + event["advice"].get<std::string>());
  }

  void Finding(const Event& event) {
    const bool repaired = event["repaired"].get<bool>();
    Line("  " + event["kind"].get<std::string>() + ": " + event["zip"].get<std::string>() + "  " +
         event["path"].get<std::string>() + "\n    " +
         (repaired ? std::string("Repaired.") : event["advice"].get<std::string>()));
  }

  void Activity(const Event& event) {
    std::string line = event["playable"].get<bool>() ? "  playable      " : "  not playable  ";
    line += event["route"].get<std::string>() + "\\" + event["file"].get<std::string>() + "  " +
            event["name"].get<std::string>();
    for (const auto& reason : event["reasons"]) line += "\n    " + reason.get<std::string>();
    Line(line);
  }

  void Row(const Event& event) { Line(std::string("  ").append(event["text"].get<std::string>())); }

  void Main(const Event& event) {
    const std::string loaded = event["lblLoaded"], name = event["lblRouteName"];
    std::string line = name;
    if (!loaded.empty()) line = loaded + ": " + name;
    if (!event["TrainExeFound"].get<bool>())
      line += "  (Train Simulator was not found in " + event["TrainSimPath"].get<std::string>() + ")";
    if (line != main_) Line(line);
    main_ = line;
  }

  void Error(const Event& event) {
    Line("Quillon has to end: error " + std::to_string(event["number"].get<int>()) + ", " +
         event["text"].get<std::string>() + ".");
  }

  void Line(const std::string& text) {
    ClearLive();
    std::fprintf(file_, "%s\n", text.c_str());
    Flush(file_);
  }

  void Live(const std::string& text) {
    std::fprintf(file_, "\r\033[K%s", text.c_str());
    Flush(file_);
    live_ = true;
  }

  void ClearLive() {
    if (live_) std::fputs("\r\033[K", file_);
    live_ = false;
  }

  std::FILE* file_;
  const bool terminal_;
  bool live_ = false;
  std::string caption_, main_, said_;
  std::vector<Event> routes_;
};

}  // namespace

void Output::Flush(std::FILE* file) {
  // The second is what one platform says of a pipe that nobody reads.
  if (std::fflush(file) != 0 && errno != EPIPE && errno != EINVAL) lost_ = true;
}

Event ShelfEvent(const ShelfEntry& entry) {
  return {{"event", "shelf"},     {"number", entry.number}, {"zip", entry.zip}, {"date", entry.date},
          {"files", entry.files}, {"bytes", entry.bytes},   {"why", entry.why}, {"path", entry.path}};
}

void PutRoutes(Output& output, const std::vector<RouteDetails>& routes) {
  for (const auto& route : routes)
    output.Put({{"event", "route"},
                {"zip", route.zip},
                {"name", route.name},
                {"files", route.files},
                {"bytes", route.bytes},
                {"packed", route.packed},
                {"added", route.added},
                {"lastLoaded", route.lastLoaded},
                {"loaded", route.loaded},
                {"activities", route.activities},
                {"playable", route.playable ? Event(route.playable->playable) : Event(nullptr)},
                {"judged", route.playable ? Event(route.playable->of) : Event(nullptr)},
                {"saves", route.saves},
                {"description", route.description}});
  output.EndRoutes();
}

void PutCauses(Output& output, const CauseList& list) {
  const auto put = [&](const char* kind, const Event& row) {
    Event event = {{"event", kind}};
    event.update(row);
    output.Put(event);
  };
  for (const auto& cause : list.causes) put("cause", RowOf(cause));
  for (const auto& activity : list.activities) put("activity", RowOf(activity));
}

std::unique_ptr<Output> MakeJsonOutput(std::FILE* file) { return std::make_unique<JsonOutput>(file); }

std::unique_ptr<Output> MakeTextOutput(std::FILE* file, bool terminal) {
  return std::make_unique<TextOutput>(file, terminal);
}

}  // namespace quillon
