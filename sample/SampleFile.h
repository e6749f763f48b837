// A file of the sample that is made when its turn comes, and the two ways to put many of them on the disk.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace quillon {

struct SampleFile {
  std::string name;  // with backslashes, below a folder or a zip's top
  std::function<std::string()> make;
};
using SampleFiles = std::vector<SampleFile>;

/// Each file below `hostFolder`, with its folders. Raises RunTimeErrors.
void WriteTree(const std::string& hostFolder, const SampleFiles& files);

/// A zip with all files in their order; one file's bytes are in memory at a time. Raises RunTimeErrors.
void WriteZip(const std::string& hostPath, const SampleFiles& files);

/// All files with `folder`, which has a closing backslash, in front of their names.
SampleFiles Below(const std::string& folder, SampleFiles files);

/// Takes those files out whose names begin with `folder`, and returns them without it.
SampleFiles TakeOut(SampleFiles& files, const std::string& folder);

}  // namespace quillon
