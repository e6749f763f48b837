// A whole small game and route zips of every kind that intake tells apart: for a first try, tests and
// benchmarks.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace quillon {

/// What was made, by host paths.
struct SampleReport {
  std::string gameFolder, zipFolder;
  std::vector<std::pair<std::string, std::string>> zips;  // file name, and what kind it is in plain words
};

/// Makes `hostFolder`/game and `hostFolder`/zips; two runs of one `scale` give the same bytes. `hostFolder`
/// is made when it is missing. `scale`, from 1, multiplies the number of files of the plain route. Raises
/// RunTimeErrors: 75 when one of the two folders exists and is not empty, before anything is changed; 5 for a
/// scale below 1.
SampleReport MakeSample(const std::string& hostFolder, int scale);

/// Makes `hostFolder`/game, and refuses as MakeSample does; also when there is a `hostFolder`/app. Both host
/// paths in its report.
struct SampleInstallation {
  std::string gameFolder, appFolder;
};
SampleInstallation MakeGameForInstallation(const std::string& hostFolder);

}  // namespace quillon
