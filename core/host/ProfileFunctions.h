// The target platform's profile functions: settings files of sections, keys and values.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "core/host/FileSystem.h"

namespace quillon {

/// Reads and writes profile files, by full paths. Text is bytes, unchanged in both directions. A change by
/// someone else is seen at the next call; a write is on the disk when its call returns. One thread uses an
/// object at a time.
class ProfileFunctions {
 public:
  virtual ~ProfileFunctions() = default;

  /// An absent section, key or text.
  using Name = std::optional<std::string_view>;

  /// What the caller's buffer of `size` characters would hold: the value, or `defaultText` without the blanks
  /// at its end. Without `section` the names of all sections, without `key` the keys of the section, each
  /// ended by a NUL. A text is cut to `size` - 1 characters, a list to `size` - 2. A file that cannot be read
  /// is an empty one.
  virtual std::string GetString(Name section, Name key, Name defaultText, std::size_t size,
                                std::string_view file) = 0;
  /// Writes one value; without `value` deletes the key, without `key` the section. A missing file is made, by
  /// a deletion too. FileNotFound without `section`, or when `file` has no folder.
  virtual FileCode WriteString(Name section, Name key, Name value, std::string_view file) = 0;

  /// For passes that write tens of thousands of values: while one lives writes stay in memory, where this
  /// object's reads see them. A changed file is written at the end, and before that at the first call that
  /// comes 2 seconds after its change, so that a crash leaves nearly all that was done. What can be foreseen
  /// is refused by WriteString as ever; a later failure loses the changes. What others do to a changed file
  /// meanwhile is overwritten. They nest: the outermost one counts.
  class Batch {
   public:
    explicit Batch(ProfileFunctions& profiles) : profiles_(profiles) { profiles_.BeginBatch(); }
    ~Batch() { profiles_.EndBatch(); }
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;

   private:
    ProfileFunctions& profiles_;
  };

 private:
  virtual void BeginBatch() = 0;
  virtual void EndBatch() = 0;
};

/// The profile functions of this machine: real ones where the platform has them, a stand-in over `files`
/// elsewhere. `files` outlives the result.
std::unique_ptr<ProfileFunctions> MakeProfileFunctions(FileSystem& files);

}  // namespace quillon
