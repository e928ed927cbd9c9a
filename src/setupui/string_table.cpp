#include "setupui/string_table.h"

#include "base/lock.h"
#include "base/unique.h"
#include "setupui/skin_package.h"

namespace vanta {
namespace {

constexpr const WCHAR* kTableFile = TEXT("gdstrings.ini");
constexpr size_t kDiskLineLimit = 4095;  // bytes

constinit Lazy<StringTable> process_table;
constinit Lazy<String> shared_text;

// Blanks, and the control characters up to 29.
bool IsTrimmed(WCHAR c) { return c == TEXT(' ') || c <= 29; }

StringView Trim(StringView text) {
  while (!text.empty() && IsTrimmed(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsTrimmed(text.back())) text.remove_suffix(1);
  return text;
}

void ReadLine(std::string_view utf8, StringTable& table) {
  if (utf8.ends_with('\r')) utf8.remove_suffix(1);
  const String line = FromUtf8(utf8);
  const size_t equals = line.find(TEXT('='));
  if (equals == String::npos || equals == 0 || equals + 1 == line.size()) return;
  if (line.find(TEXT('='), equals + 1) != String::npos) return;
  const StringView key = Trim(StringView(line).substr(0, equals));
  const StringView value = Trim(StringView(line).substr(equals + 1));
  if (key.find(TEXT(';')) == StringView::npos) table.insert_or_assign(String(key), String(value));
}

// The bytes up to and without the next line feed, at most `limit` of them.
std::string_view EatLine(std::string_view& rest, size_t limit) {
  const size_t end = rest.substr(0, limit).find('\n');
  const std::string_view line = rest.substr(0, end == std::string_view::npos ? limit : end);
  rest.remove_prefix(end == std::string_view::npos ? line.size() : end + 1);
  return line;
}

std::string ReadWholeFile(const String& path) {
  std::string bytes;
  const UniqueFile file(
      CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  char piece[4096];
  DWORD got = 0;
  while (file && ReadFile(file.Get(), piece, sizeof piece, &got, nullptr) && got) bytes.append(piece, got);
  return bytes;
}

StringTable ReadPackagedTable(const String& path) {
  DWORD size = 0;
  const UniqueGlobal block = ReadSkinFile(path, &size);
  const void* const bytes = block ? GlobalLock(block.Get()) : nullptr;
  if (!bytes) return {};
  StringTable table = ParseStringTable({static_cast<const char*>(bytes), size});
  GlobalUnlock(block.Get());
  return table;
}

}  // namespace

StringTable ParseStringTable(std::string_view utf8, size_t limit) {
  StringTable table;
  while (!utf8.empty()) ReadLine(EatLine(utf8, limit), table);
  return table;
}

StringTable ParseStringTable(std::string_view utf8) { return ParseStringTable(utf8, std::string_view::npos); }

String ExpandEscapes(StringView value) {
  return ReplaceAll(ReplaceAll(String(value), TEXT("\\r"), TEXT("\r")), TEXT("\\n"), TEXT("\n"));
}

void LoadStringTable(StringView language_folder) {
  const String path = String(language_folder) + kTableFile;
  process_table.Get() =
      IsSkinPackaged() ? ReadPackagedTable(path) : ParseStringTable(ReadWholeFile(path), kDiskLineLimit);
}

String GetString(StringView key) {
  const StringTable& table = process_table.Get();
  const auto found = table.find(key);
  return found == table.end() ? String() : ExpandEscapes(found->second);
}

const WCHAR* GetStringShared(StringView key) {
  String& text = shared_text.Get();
  text = GetString(key);
  return text.c_str();
}

}  // namespace vanta
