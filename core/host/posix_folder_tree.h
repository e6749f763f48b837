// What is known of the host's folders: finds names without regard to case, and asks the host as seldom as can
// be.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/host/FileSystem.h"
#include "core/host/Wildcards.h"
#include "core/host/posix_paths.h"

namespace quillon {

struct FolderNode;

/// One name in a folder.
struct FolderChild {
  std::string name;        // as it is spelled on the disk
  unsigned char type = 0;  // DT_REG, DT_DIR, DT_LNK ..., DT_UNKNOWN until someone needs it

  std::shared_ptr<FolderNode> folder;  // of a folder that was entered
  std::weak_ptr<FolderNode>
      target;  // of a link to a folder that was entered; the tree has it at its own place
};

/// One folder. Until it is listed it knows some of its names, and of no name that it is missing.
struct FolderNode {
  std::unordered_multimap<std::string, FolderChild> children;  // by upper-cased name, with stand-ins
  enum class State { Unlisted, Listed, Unlistable } state = State::Unlisted;
  int error = 0;  // why it is unlistable
};

/// The host's names that match, in the target platform's order: by upper case, in UTF-16 code units. They
/// live as long as nothing changes in the folder.
std::vector<std::string_view> MatchingNames(const FolderNode& folder, Wildcard& wildcard);

/// What a path text names on the host.
struct Place {
  FileCode code = FileCode::Ok;  // FileNotFound: the folder is there, the last name isn't
  std::string host;     // the host's path; what is missing has the text's spelling; empty for a text that
                        // names nothing on any disk
  std::string name;     // the last name in it; empty for the root
  std::string wanted;   // the last name as the text spells it
  bool closed = false;  // a separator ended the text
  unsigned char type = 0;
  std::shared_ptr<FolderNode> folder;  // that holds the name; null when missing, and for the root

  bool Exists() const { return code == FileCode::Ok; }
};

/// The tree of known folders. Everything that it remembers stays true as long as all changes are told by Add
/// and Remove.
class FolderTree {
 public:
  FolderTree() { Clear(); }

  /// Forgets everything.
  void Clear();

  /// A name is looked for as it is spelled, then without regard to case, then both again without its tail.
  Place Locate(const PathText& text);
  /// The same for a path text, with a memory of the folders last asked for: passes ask for thousands of names
  /// of few.
  Place LocateAgain(std::string_view path);
  /// The folder that `text` names, listed. `host` becomes its host path. Null, and `code` says why, when
  /// there is none.
  std::shared_ptr<const FolderNode> List(const PathText& text, std::string& host, FileCode& code);

  /// A name was made at `place`, or removed from it, with all that is below.
  void Add(const Place& place, unsigned char type);
  void Remove(const Place& place);
  /// A library has made or removed the file at `path`, and maybe folders on the way to it.
  void Touched(std::string_view path, bool exists);

 private:
  FolderChild* Find(FolderNode& node, const std::string& host, std::string_view name, int& error);
  FolderChild* FindSpelled(FolderNode& node, const std::string& host, std::string_view text, int& error);
  void FillPlace(Place& place, FolderNode& folder, const std::string& host, std::string_view wanted);
  std::shared_ptr<FolderNode> Enter(FolderChild& child, const std::string& host);
  std::shared_ptr<FolderNode> EnterLink(FolderChild& child, const std::string& host);

  /// A folder by the text that led to it.
  struct Remembered {
    std::shared_ptr<FolderNode> folder;
    std::string host;
  };

  struct HashText {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
  };

  std::shared_ptr<FolderNode> root_;
  std::unordered_map<std::string, Remembered, HashText, std::equal_to<>> remembered_;
};

}  // namespace quillon
