#include "core/host/ProfileText.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "core/text/AnsiText.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

constexpr std::string_view kBlanks = " \t\v\f\x1A", kLineEnds = "\r\n", kNewLine = "\r\n";

std::string_view TrimBlanks(std::string_view text) {
  const auto first = text.find_first_not_of(kBlanks);
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/// Takes the first line off `text`, with its end: LF, CR, CR LF, or CR CR LF as careless programs write it.
std::string_view TakeLine(std::string_view& text) {
  const auto end = std::min(text.find_first_of(kLineEnds), text.size());
  std::size_t length = 0;
  for (const std::string_view form : {"\r\r\n", "\r\n", "\r", "\n"})
    if (length == 0 && text.substr(end).starts_with(form)) length = form.size();
  const auto line = text.substr(0, end + length);
  text.remove_prefix(line.size());
  return line;
}

bool IsOneLine(std::string_view text) {
  TakeLine(text);
  return text.empty();
}

std::string_view EndOf(std::string_view line) { return line.substr(line.find_last_not_of(kLineEnds) + 1); }

std::string_view WithoutEnd(std::string_view line) {
  return line.substr(0, line.size() - EndOf(line).size());
}

/// What counts of a line; a NUL ends it.
std::string_view Content(std::string_view line) {
  const auto text = WithoutEnd(line);
  return TrimBlanks(text.substr(0, text.find('\0')));
}

/// The name ends at the last bracket of its line, so that names with brackets in them are found again.
std::optional<std::string_view> HeaderName(std::string_view line) {
  const auto content = Content(line);
  const auto end = content.rfind(']');
  if (!content.starts_with('[') || end == content.npos) return std::nullopt;
  return TrimBlanks(content.substr(1, end - 1));
}

bool IsComment(std::string_view content) { return content.starts_with(';'); }

std::optional<std::string_view> KeyName(std::string_view line) {
  const auto content = Content(line);
  const auto end = content.find('=');
  if (IsComment(content) || end == content.npos) return std::nullopt;
  return TrimBlanks(content.substr(0, end));
}

std::string_view ValueOf(std::string_view keyLine) {
  const auto content = Content(keyLine);
  return TrimBlanks(content.substr(content.find('=') + 1));
}

std::string_view WithoutQuotes(std::string_view value) {
  const bool quoted = value.size() > 1 && value.front() == value.back();
  if (!quoted || (value.front() != '"' && value.front() != '\'')) return value;
  return value.substr(1, value.size() - 2);
}

/// What was written into the line of a key may make it more lines, or a header.
bool IsPlain(std::string_view line) { return IsOneLine(line) && !HeaderName(line); }

void EndLine(std::string& line) {
  if (!line.empty() && EndOf(line).empty()) line += kNewLine;
}

bool ChangeValue(std::string& keyLine, std::string_view value) {
  const auto start = keyLine.find('=') + 1;
  if (TrimBlanks(WithoutEnd(keyLine).substr(start)) == TrimBlanks(value)) return false;
  const std::string end(EndOf(keyLine));
  keyLine.erase(start).append(value).append(end.empty() ? kNewLine : end);
  return true;
}

/// Where new lines go: blank lines at the end of a section stay in front of the next one.
template <class Lines>
auto BehindLastLine(Lines& lines) {
  const auto last =
      std::find_if(lines.rbegin(), lines.rend(), [](const auto& line) { return !Content(line).empty(); });
  return last.base();
}

template <class Index, class Place>
void AddName(Index& index, std::string name, Place place) {
  auto& named = index[std::move(name)];
  if (named.count++ == 0) named.first = place;
}

/// Forgets the first bearer of a name; the next one between `begin` and `end` takes its place.
template <class Index, class Place, class IsNamed>
void RemoveName(Index& index, typename Index::iterator entry, Place begin, Place end, IsNamed isNamed) {
  if (--entry->second.count == 0)
    index.erase(entry);
  else
    entry->second.first = std::find_if(begin, end, isNamed);
}

}  // namespace

ProfileText::ProfileText(std::string_view bytes) : wide_(bytes.starts_with("\xFF\xFE")) {
  Parse(wide_ ? DecodeGameText(bytes) : bytes);
}

std::string ProfileText::Bytes() const { return wide_ ? EncodeGameText(Joined()) : Joined(); }

std::optional<std::string> ProfileText::Value(std::string_view section, std::string_view key) const {
  const auto* found = Find(section);
  if (found == nullptr) return std::nullopt;
  const auto entry = found->keys.find(Fold(Inward(key)));
  if (entry == found->keys.end()) return std::nullopt;
  return Outward(WithoutQuotes(ValueOf(*entry->second.first)));
}

std::string ProfileText::SectionNames() const {
  std::string names;
  for (const auto& section : sections_)
    if (const auto name = HeaderName(section.header)) names.append(Outward(*name)).push_back('\0');
  return names;
}

std::string ProfileText::KeyNames(std::string_view section) const {
  std::string names;
  if (const auto* found = Find(section))
    for (const auto& line : found->lines)
      if (const auto key = KeyName(line)) names.append(Outward(*key)).push_back('\0');
  return names;
}

std::string ProfileText::SectionLines(std::string_view section) const {
  std::string lines;
  const auto* found = Find(section);
  if (found == nullptr) return lines;
  for (const auto& line : found->lines) {
    const auto content = Content(line);
    if (content.empty() || IsComment(content)) continue;
    const auto key = KeyName(line);
    lines += key ? Outward(*key) + '=' + Outward(ValueOf(line)) : Outward(content);
    lines.push_back('\0');
  }
  return lines;
}

bool ProfileText::SetValue(std::string_view section, std::string_view key, std::string_view value) {
  auto& target = FindOrAdd(section);
  const auto found = target.keys.find(Fold(Inward(key)));
  if (found == target.keys.end()) {
    AddKeyLine(target, key, Inward(value));
    return true;
  }
  auto& line = *found->second.first;
  if (!ChangeValue(line, Inward(value))) return false;
  if (!IsPlain(line)) Parse(Joined());
  return true;
}

bool ProfileText::DeleteKey(std::string_view section, std::string_view key) {
  auto* found = Find(section);
  if (found == nullptr) return false;
  const auto entry = found->keys.find(Fold(Inward(key)));
  if (entry == found->keys.end()) return false;
  const auto next = found->lines.erase(entry->second.first);
  RemoveName(found->keys, entry, next, found->lines.end(), [&](const std::string& line) {
    const auto name = KeyName(line);
    return name && Fold(*name) == entry->first;
  });
  return true;
}

bool ProfileText::DeleteSection(std::string_view section) {
  const auto entry = index_.find(Fold(Inward(section)));
  if (entry == index_.end()) return false;
  const auto next = sections_.erase(entry->second.first);
  RemoveName(index_, entry, next, sections_.end(),
             [&](const Section& later) { return Fold(*HeaderName(later.header)) == entry->first; });
  return true;
}

void ProfileText::ReplaceSection(std::string_view section, std::string_view lines) {
  auto& target = FindOrAdd(section);
  target.lines.erase(target.lines.begin(), BehindLastLine(target.lines));
  EndLine(target.header);
  const auto behind = target.lines.begin();
  while (!lines.empty()) {
    const auto length = std::min(lines.find('\0'), lines.size());
    target.lines.insert(behind, Inward(lines.substr(0, length)).append(kNewLine));
    lines.remove_prefix(std::min(length + 1, lines.size()));
  }
  Parse(Joined());
}

void ProfileText::Parse(std::string_view text) {
  index_.clear();
  sections_.clear();
  sections_.emplace_back();
  while (!text.empty()) {
    const auto line = TakeLine(text);
    if (HeaderName(line)) {
      AddSection(std::string(line));
      continue;
    }
    auto& section = sections_.back();
    section.lines.emplace_back(line);
    if (const auto key = KeyName(line)) AddName(section.keys, Fold(*key), std::prev(section.lines.end()));
  }
}

std::string ProfileText::Joined() const {
  std::string text;
  for (const auto& section : sections_) {
    text += section.header;
    for (const auto& line : section.lines) text += line;
  }
  return text;
}

ProfileText::Section* ProfileText::Find(std::string_view name) const {
  const auto entry = index_.find(Fold(Inward(name)));
  return entry == index_.end() ? nullptr : &*entry->second.first;
}

ProfileText::Section& ProfileText::FindOrAdd(std::string_view name) {
  if (auto* found = Find(name)) return *found;
  auto& last = sections_.back();
  EndLine(last.lines.empty() ? last.header : last.lines.back());
  const auto inward = Inward(name);
  return AddSection(std::string("[").append(TrimBlanks(inward)).append("]").append(kNewLine));
}

ProfileText::Section& ProfileText::AddSection(std::string header) {
  auto& section = sections_.emplace_back();
  section.header = std::move(header);
  if (const auto name = HeaderName(section.header)) AddName(index_, Fold(*name), std::prev(sections_.end()));
  return section;
}

void ProfileText::AddKeyLine(Section& section, std::string_view key, const std::string& value) {
  const auto place = BehindLastLine(section.lines);
  EndLine(place == section.lines.begin() ? section.header : *std::prev(place));
  const auto inward = Inward(key);
  const auto line =
      section.lines.insert(place, std::string(TrimBlanks(inward)).append("=").append(value).append(kNewLine));
  if (!IsPlain(*line) || !IsOneLine(section.header)) return Parse(Joined());
  if (const auto name = KeyName(*line)) AddName(section.keys, Fold(*name), line);
}

std::string ProfileText::Inward(std::string_view text) const {
  return wide_ ? AnsiToUtf8(text) : std::string(text);
}

std::string ProfileText::Outward(std::string_view text) const {
  return wide_ ? Utf8ToAnsi(text) : std::string(text);
}

std::string ProfileText::Fold(std::string_view name) const { return UpperCase(TrimBlanks(name)); }

}  // namespace quillon
