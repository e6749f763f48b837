// The game's text files: UTF-16 with nested parentheses.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "sample/Numbers.h"

namespace quillon {

/// Writes nested parentheses with tabs, one item a line, as the game's own editors lay them out.
class BlockText {
 public:
  /// `signature` is the format's mark in the first line, such as "r1t".
  explicit BlockText(std::string_view signature);

  /// `head` ( ... up to the matching Close, with `rest` behind the parenthesis.
  BlockText& Open(std::string_view head, std::string_view rest = {});
  /// `head` ( `rest` )
  BlockText& Line(std::string_view head, std::string_view rest);
  BlockText& Close();
  std::size_t Length() const { return text_.size(); }
  /// The file's bytes.
  std::string Bytes() const;

 private:
  std::string text_;  // UTF-8
  std::size_t depth_ = 0;
};

/// `text` between double quotes.
std::string Quoted(std::string_view text);
/// A name as the game writes it: with quotes only when it has a blank.
std::string NameWord(std::string_view name);

/// .trk
std::string TrackFileText(const std::string& routeId, const std::string& displayName,
                          const std::string& description);
/// .env
std::string EnvironmentText(Numbers numbers);
/// .w of about `size` bytes
std::string WorldText(Numbers numbers, std::size_t size);
/// .tdb, .rdb, .tit, .rit: track, road and their items, of about `size` bytes
std::string TrackDatabaseText(Numbers numbers, std::size_t size);
/// .ref: the objects that an editor offers
std::string ObjectListText(Numbers numbers, std::size_t size);
/// .sd
std::string ShapeDescriptionText(const std::string& shape);
/// .sms
std::string SoundScriptText(const std::string& wave);

/// Plain text with CR LF: readme.txt and readme.htm of a route.
std::string ReadmeText(const std::string& displayName, const std::string& description);
std::string ReadmePage(const std::string& displayName, const std::string& description,
                       const std::vector<std::string>& pictures);

}  // namespace quillon
