// One profile file in memory: sections, keys and values, found by hashed names and edited in place.
#pragma once

#include <cstddef>
#include <list>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace quillon {

/// The text of one profile file. A change touches only the lines it is about; all others keep their bytes.
/// Names match without regard to case and to blanks around them; of equal names the first one counts. Text is
/// bytes; in a UTF-16 file (little end first, with its mark) they are Windows-1252, and what that lacks is
/// read as "?".
class ProfileText {
 public:
  explicit ProfileText(std::string_view bytes = {});
  ProfileText(const ProfileText&) = delete;
  ProfileText& operator=(const ProfileText&) = delete;
  ProfileText(ProfileText&&) = default;
  ProfileText& operator=(ProfileText&&) = default;

  /// The file's bytes.
  std::string Bytes() const;

  /// The value without blanks around it and without one pair of equal quotes.
  std::optional<std::string> Value(std::string_view section, std::string_view key) const;
  /// The names of all sections in order, each ended by a NUL.
  std::string SectionNames() const;
  /// The keys of `section` in order, each ended by a NUL.
  std::string KeyNames(std::string_view section) const;
  /// The lines of `section` without comments and blanks, each ended by a NUL.
  std::string SectionLines(std::string_view section) const;

  /// False when nothing has changed; a value that differs in the blanks around it only is no change.
  bool SetValue(std::string_view section, std::string_view key, std::string_view value);
  /// False when nothing has changed.
  bool DeleteKey(std::string_view section, std::string_view key);
  /// False when nothing has changed.
  bool DeleteSection(std::string_view section);
  /// Puts `lines`, each ended by a NUL, in place of all lines of `section`.
  void ReplaceSection(std::string_view section, std::string_view lines);

 private:
  using Lines = std::list<std::string>;  // each with its line end
  template <class Place>
  struct Named {
    Place first;
    std::size_t count = 0;  // of this name: whether a deletion brings another one to light
  };
  struct Section {
    std::string header;  // empty: the lines in front of all sections
    Lines lines;
    std::unordered_map<std::string, Named<Lines::iterator>> keys;
  };
  using Sections = std::list<Section>;

  void Parse(std::string_view text);
  std::string Joined() const;
  Section* Find(std::string_view name) const;
  Section& FindOrAdd(std::string_view name);
  Section& AddSection(std::string header);
  void AddKeyLine(Section& section, std::string_view key, const std::string& value);
  std::string Inward(std::string_view text) const;
  std::string Outward(std::string_view text) const;
  std::string Fold(std::string_view name) const;

  bool wide_;
  Sections sections_;  // the first one has no header
  std::unordered_map<std::string, Named<Sections::iterator>> index_;
};

}  // namespace quillon
