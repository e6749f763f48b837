// One rescue while it is made: files on their way to the shelf.
#pragma once

#include <string>
#include <string_view>

#include "shelf/Shelf.h"

namespace quillon {

/// Nothing is made until the first file comes.
class Rescue {
 public:
  /// `zip` is the route that the files belong to, `why` one line.
  Rescue(Program& program, std::string zip, std::string why);

  /// Takes a file, or a folder with all it holds, to the shelf. From another disk, or while it is in use, it
  /// is copied, and the original is the caller's to delete after Flush or Close. Raises RunTimeErrors.
  void Keep(std::string_view path) { Keep(path, path); }
  /// The same for a file that lies at `path` only for a while: it is kept as what it was at `place`.
  void Keep(std::string_view path, std::string_view place);
  /// Goes on with a rescue that was cut short, if its folder is there.
  void Resume(const std::string& folder) {
    if (files_.IsPathAFolder(folder)) folder_ = folder;
  }
  /// A file or folder was renamed: to put the rescue back is to rename it back.
  void NoteRename(std::string_view from, std::string_view to);
  /// The names of a removed route.
  void NoteRoute(std::string_view name);

  bool IsEmpty() const { return folder_.empty(); }
  /// Makes the folder of the rescue ahead of its files, for those who note it first.
  const std::string& Open() {
    MakeFolder();
    return folder_;
  }
  /// The folder of the rescue; empty while there is none.
  const std::string& Folder() const { return folder_; }
  /// All files so far are safe on the disk when it returns.
  void Flush();
  /// All files are safe on the disk when it returns. Tells of the rescue, and makes room by the shelf's rule.
  void Close();

 private:
  void MakeFolder();
  std::string FreePlaceFor(std::string_view path);
  void Copy(const std::string& from, const std::string& to);

  Program& program_;
  Files& files_;
  const Shelf shelf_;
  const std::string zip_, why_, disk_;
  std::string folder_;
  bool copied_ = false;
};

}  // namespace quillon
