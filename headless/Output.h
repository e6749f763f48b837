// Where events go: JSON lines for programs, readable text for people.
#pragma once

#include <nlohmann/json.hpp>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace quillon {

/// Keys in the order in which they were put in, "event" first.
using Event = nlohmann::ordered_json;

class Output {
 public:
  virtual ~Output() = default;
  virtual void Put(const Event& event) = 0;
  /// Whether something could not be written. A reader that has left wants nothing more.
  bool Lost() const { return lost_; }
  /// All rows of the routes' details have been put.
  virtual void EndRoutes() {}
  /// The true measure of long work, for a live progress line; JSON has none.
  virtual void Detail(unsigned long long, unsigned long long, const std::string&) {}

 protected:
  void Flush(std::FILE* file);

 private:
  bool lost_ = false;
};

/// A row of the shelf.
Event ShelfEvent(const struct ShelfEntry& entry);

/// A row each; readable text is a table with a head.
void PutRoutes(Output& output, const std::vector<struct RouteDetails>& routes);

/// The rows of the causes, and then those of the activities.
void PutCauses(Output& output, const struct CauseList& list);

/// One object a line, flushed as it happens.
std::unique_ptr<Output> MakeJsonOutput(std::FILE* file);
/// Plain text, with a live progress line when `terminal` is set.
std::unique_ptr<Output> MakeTextOutput(std::FILE* file, bool terminal);

}  // namespace quillon
