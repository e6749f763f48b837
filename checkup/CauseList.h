// What a Checkup comes to: which activities can be played, and what is the one thing to install that heals
// most.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace quillon {

/// A rename below TRAINS\TRAINSET: both paths begin there and carry no closing backslash.
struct TrainMove {
  std::string from, to;
  bool operator==(const TrainMove&) const = default;
};

/// One thing that consists or activities lack. Names are spelled as they are asked for.
struct Cause {
  enum class Kind { MissingFolder, MisplacedFolder, MissingFile, MissingConsist, MissingService };

  Kind kind = Kind::MissingFolder;
  std::string name;  // of the train folder, the file, the consist or the service; these two without extension
  std::string place;  // the train folder of a missing file, the route's folder of a missing service
  std::vector<std::string> files;       // of trains that are asked for in it, with extension
  std::vector<std::string> consists;    // that need it, without extension
  std::vector<std::string> services;    // that need it, as ROUTE\file.srv
  std::vector<std::string> activities;  // that need it, as ROUTE\file.act
  int consistsHealed = 0;               // how many it heals by itself, with nothing else
  int activitiesHealed = 0;
  std::string advice;            // a sentence: what to do
  std::vector<TrainMove> moves;  // that would mend it, in this order; none where a rename can't
};

/// The words of the kind, such as "missing folder".
const char* NameOf(Cause::Kind kind);

struct JudgedActivity {
  std::string route;  // its folder
  std::string file;   // with extension
  std::string name;   // as the activity calls itself, without quotes
  bool playable = true;
  std::vector<std::string> reasons;  // why not, a sentence each: the chain down to what is missing
};

/// The causes of one game, or of one route that is not loaded.
struct CauseList {
  std::string made;   // local time, ISO 8601 with a blank
  std::string route;  // the zip name of the route in question; of a whole game the one that was loaded
  std::string upTo;   // what ended the Checkup before its end, a sentence; empty for a whole one

  int consistsWhole = 0, consistsFaulty = 0;
  int trainsMissing = 0, trainsMisplaced = 0;  // files that are asked for
  std::vector<Cause> causes;                   // what heals most comes first
  std::vector<JudgedActivity> activities;      // by route and file

  /// Since the Checkup before: activities as ROUTE\file.act, causes by their names.
  struct Changes {
    std::string since;  // when that was; empty for the first one
    std::vector<std::string> playableNow, brokenNow, causesGone, causesNew;
  } changes;

  struct Count {
    int playable = 0, all = 0;
  };
  /// How many activities can be played, of how many; of one route's folder, or of all.
  Count Playable(const std::string& routeFolder = {}) const;
  /// The same of each route that has any, by its folder in lower case.
  std::map<std::string, Count> PlayableByRoute() const;
};

}  // namespace quillon
