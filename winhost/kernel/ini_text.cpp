#include "winhost/kernel/ini_text.h"

#include <windows.h>

#include "winhost/machine/text.h"

namespace winhost {
namespace {

using View = std::u16string_view;

View Trim(View text) {
  constexpr View kBlanks = u" \t\r\v\f";
  const std::size_t begin = text.find_first_not_of(kBlanks);
  return begin == text.npos ? View() : text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

std::optional<View> SectionName(View line) {
  line = Trim(line);
  if (line.empty() || line[0] != u'[') return std::nullopt;
  const std::size_t close = line.find(u']');
  return Trim(line.substr(1, close == line.npos ? line.npos : close - 1));
}

std::optional<View> KeyName(View line) {
  line = Trim(line);
  if (line.empty() || line[0] == u';') return std::nullopt;
  const std::size_t equals = line.find(u'=');
  if (equals == line.npos) return std::nullopt;
  return Trim(line.substr(0, equals));
}

View Unquote(View value) {
  const bool quoted = value.size() >= 2 && value.front() == value.back() && (value[0] == u'"' || value[0] == u'\'');
  return quoted ? value.substr(1, value.size() - 2) : value;
}

std::u16string Decode(std::string_view bytes, UINT code_page) {
  const int size = static_cast<int>(bytes.size());
  std::u16string text(static_cast<std::size_t>(MultiByteToWideChar(code_page, 0, bytes.data(), size, nullptr, 0)),
                      u'\0');
  MultiByteToWideChar(code_page, 0, bytes.data(), size, text.data(), static_cast<int>(text.size()));
  return text;
}

bool IsUtf8(std::string_view bytes) {
  const int size = static_cast<int>(bytes.size());
  return MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(), size, nullptr, 0) != 0;
}

std::vector<std::u16string> SplitLines(View text) {
  std::vector<std::u16string> lines;
  while (!text.empty()) {
    const std::size_t end = text.find(u'\n');
    View line = text.substr(0, end);
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
    if (!line.empty() && line.back() == u'\r') line.remove_suffix(1);
    lines.emplace_back(line);
  }
  return lines;
}

}  // namespace

IniText IniText::FromBytes(std::string_view bytes) {
  IniText ini;
  if (bytes.substr(0, 2) == "\xFF\xFE") {
    ini.form_ = Form::Utf16;
    std::u16string text;
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
      text +=
          static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) | (static_cast<unsigned char>(bytes[i + 1]) << 8));
    }
    ini.lines_ = SplitLines(text);
  } else if (bytes.substr(0, 3) == "\xEF\xBB\xBF") {
    ini.form_ = Form::Utf8;
    ini.lines_ = SplitLines(Wide(bytes.substr(3)));
  } else if (!bytes.empty()) {
    ini.lines_ = SplitLines(Decode(bytes, IsUtf8(bytes) ? CP_UTF8 : 1252));
  }
  return ini;
}

std::string IniText::ToBytes() const {
  std::u16string text;
  for (const std::u16string& line : lines_) text += line + u"\r\n";
  if (form_ == Form::Utf8) return "\xEF\xBB\xBF" + Narrow(text);
  if (form_ == Form::Ansi) return Narrow(text);
  std::string bytes = "\xFF\xFE";
  for (char16_t c : text) {
    bytes += static_cast<char>(c & 0xFF);
    bytes += static_cast<char>(c >> 8);
  }
  return bytes;
}

std::optional<IniText::Span> IniText::Find(View section) const {
  section = Trim(section);
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    const auto name = SectionName(lines_[i]);
    if (!name || !EqualNoCase(*name, section)) continue;
    std::size_t end = i + 1;
    while (end < lines_.size() && !SectionName(lines_[end])) ++end;
    return Span{i + 1, end};
  }
  return std::nullopt;
}

std::optional<std::size_t> IniText::FindKey(const Span& span, View key) const {
  key = Trim(key);
  for (std::size_t i = span.begin; i < span.end; ++i) {
    const auto name = KeyName(lines_[i]);
    if (name && EqualNoCase(*name, key)) return i;
  }
  return std::nullopt;
}

std::optional<std::u16string> IniText::Value(View section, View key) const {
  const auto span = Find(section);
  const auto line = span ? FindKey(*span, key) : std::nullopt;
  if (!line) return std::nullopt;
  const View text = lines_[*line];
  return std::u16string(Unquote(Trim(text.substr(text.find(u'=') + 1))));
}

std::vector<std::u16string> IniText::Sections() const {
  std::vector<std::u16string> names;
  for (const std::u16string& line : lines_) {
    if (const auto name = SectionName(line)) names.emplace_back(*name);
  }
  return names;
}

std::vector<std::u16string> IniText::Keys(View section) const {
  std::vector<std::u16string> names;
  const auto span = Find(section);
  for (std::size_t i = span ? span->begin : 0; span && i < span->end; ++i) {
    if (const auto name = KeyName(lines_[i])) names.emplace_back(*name);
  }
  return names;
}

bool IniText::HasSection(View section) const { return Find(section).has_value(); }

void IniText::Set(View section, View key, View value) {
  const std::u16string line = std::u16string(Trim(key)) + u"=" + std::u16string(value);
  auto span = Find(section);
  if (!span) {
    lines_.push_back(u"[" + std::u16string(Trim(section)) + u"]");
    lines_.push_back(line);
    return;
  }
  if (const auto at = FindKey(*span, key)) {
    lines_[*at] = line;
    return;
  }
  // Behind the section's last line that says something, so that blank lines stay between sections.
  std::size_t end = span->end;
  while (end > span->begin && Trim(lines_[end - 1]).empty()) --end;
  lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(end), line);
}

void IniText::RemoveKey(View section, View key) {
  const auto span = Find(section);
  const auto line = span ? FindKey(*span, key) : std::nullopt;
  if (line) lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(*line));
}

void IniText::RemoveSection(View section) {
  const auto span = Find(section);
  if (!span) return;
  lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(span->begin) - 1,
               lines_.begin() + static_cast<std::ptrdiff_t>(span->end));
}

}  // namespace winhost
