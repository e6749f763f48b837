// What the Checkup takes from the files of the game, whatever is installed.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "checkup/GameText.h"
#include "checkup/TrainDatabase.h"

namespace quillon {

/// An "EngineData (" or "WagonData (" item.
struct TrainItem {
  TrainKind kind;
  std::string text;                      // between the parentheses, as it stands
  bool splits = true;                    // into a name and a folder
  std::string wantedFile, wantedFolder;  // as asked for; the file with its extension
  std::string file, folder;              // the same in lower case
  std::uint32_t lowerText = 0;           // a number for the text in lower case
};

/// Each item once: a game asks for the same trains thousands of times.
class ItemTable {
 public:
  /// The number of the item, which is new or not. `text` is trimmed.
  std::uint32_t Add(TrainKind kind, std::string_view text);
  const TrainItem& operator[](std::uint32_t item) const { return items_[item]; }
  std::size_t size() const { return items_.size(); }

  /// The number of a text in lower case, whatever item has it.
  std::uint32_t LowerText(const std::string& text);
  const std::string& LowerTextOf(std::uint32_t number) const { return *lowerTexts_[number]; }
  std::size_t LowerTextCount() const { return lowerTexts_.size(); }

 private:
  std::vector<TrainItem> items_;
  std::unordered_map<std::string, std::uint32_t> numbers_;  // by kind and text
  std::unordered_map<std::string, std::uint32_t> lowerNumbers_;
  std::vector<const std::string*> lowerTexts_;
};

/// A service that an activity calls for. Positions are in bytes of the decoded text.
struct ServiceCall {
  std::string service;
  std::uint32_t at = 0, end = 0;
};

enum class FileKind : std::uint8_t { Consist, Service, Activity };

/// The facts of one file.
struct FileFacts {
  /// What can't be read or taken apart, and where in the order of reading. What stands in front is there.
  enum class Broken : std::uint8_t { Nowhere, Reading, Name, Consist, PlayersServices, OtherServices, Items };

  Broken broken = Broken::Nowhere;
  std::shared_ptr<const RunTimeError> error;

  /// A consist's last "TrainCfg (" name, a service's first "Name (", an activity's, in quotes or "unknown".
  std::optional<std::string> name;
  /// The last one that a service calls for.
  std::optional<std::string> consist;
  std::vector<ServiceCall> playersServices, otherServices;
  std::vector<std::uint32_t> items;
  /// Of items that don't split: their places among the items, and their lines.
  std::vector<std::pair<std::uint32_t, std::uint32_t>> unsplit;

  /// Throws the error when the file can't be taken apart there.
  void Require(Broken place) const {
    if (broken == place) throw RunTimeError(*error);
  }
};

/// An item of a file before it has a number.
struct FoundItem {
  TrainKind kind;
  std::string text;
  std::uint32_t line = 0;  // of one that does not split
};

/// Takes a file apart. The items go into `items`, to be numbered by the caller.
FileFacts TakeFacts(FileKind kind, const GameText& text, std::vector<FoundItem>& items);

}  // namespace quillon
