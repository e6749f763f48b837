#include "core/FolderWay.h"

#include <algorithm>

namespace quillon {

bool FolderWay::Enter(const std::string& folder, bool link) {
  // Before the first link no folder is met twice: only then is it worth the question.
  if (link || firstLink_ != kNone) {
    const std::string identity = IdentityOf(folder);
    if (identity.empty() || std::any_of(folders_.begin(), folders_.end(), [&](const std::string& above) {
          return IdentityOf(above) == identity;
        }))
      return false;
    if (firstLink_ == kNone) firstLink_ = folders_.size();
  }
  folders_.push_back(folder);
  return true;
}

void FolderWay::Leave() {
  folders_.pop_back();
  if (firstLink_ == folders_.size()) firstLink_ = kNone;
}

/// Empty when there is no such folder.
std::string FolderWay::IdentityOf(const std::string& folder) const {
  FileSystem::Stamp stamp;
  const std::string path = folder.substr(0, folder.size() - 1);
  if (host_.GetStamp(path, stamp) != FileCode::Ok) return {};
  return host_.DiskOf(path).name + "|" + std::to_string(stamp.inode);
}

}  // namespace quillon
