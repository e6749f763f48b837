// Text rules of the system: UTF-8 inside, case by Unicode's simple mappings, paths with backslashes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// `text` with every letter in its simple upper case. Bytes that are no UTF-8 stay as they are.
std::string UpperCase(std::string_view text);

/// `text` with every letter in its simple lower case. Bytes that are no UTF-8 stay as they are, and so do
/// letters that would not come back from lower case: a name in lower case must still find its file.
std::string LowerCase(std::string_view text);

/// Each word with a capital and lower case behind it.
std::string ProperCase(std::string_view text);

/// `text` with letters and their marks as one character each, as files are named on the target. What is no
/// UTF-8 stays as it is.
std::string Composed(std::string_view text);

/// True when the two differ in case at most.
bool EqualNoCase(std::string_view a, std::string_view b);

/// Whether `a` comes first in the order of UTF-16 code units.
bool ComesBefore(std::string_view a, std::string_view b);

/// Characters, not bytes.
std::size_t CharacterCount(std::string_view text);
std::string_view FirstCharacters(std::string_view text, std::size_t count);

/// `text` without the blanks at both ends. Only blanks count, no tabs.
std::string Trim(std::string_view text);

/// `text` with every occurrence of `what` replaced. An empty `what` changes nothing.
std::string ReplaceAll(std::string_view text, std::string_view what, std::string_view with);

/// True when `what` stands anywhere in `text`.
bool Contains(std::string_view text, std::string_view what);

/// What stands in front of the last full stop; the whole name when it has none.
std::string CutAtLastDot(std::string_view name);

/// What follows the last backslash of `path`.
std::string_view FileNameOf(std::string_view path);

/// `path` up to and including its last backslash; empty when it has none.
std::string_view FolderOf(std::string_view path);

/// `path` without one closing backslash.
std::string CutBackslash(std::string_view path);

/// The number that leads `text`, as the classic `Val` reads it; 0 when there is none.
int NumericValue(std::string_view text);

/// A file of the game as UTF-8, with its line ends as they are. The file is UTF-16 with a byte-order mark,
/// UTF-8 with or without one, or Windows-1252.
std::string DecodeGameText(std::string_view bytes);

/// UTF-8 as UTF-16, little end first, with a byte-order mark, as the game writes its files.
std::string EncodeGameText(std::string_view text);

/// The lines of a text file, line ends CR, LF or CR LF taken off; a final line end opens no further line.
std::vector<std::string> Lines(std::string_view text);

}  // namespace quillon
