#include "winhost/tasks/task_files.h"

#include <unistd.h>

#include <algorithm>
#include <fstream>

#include "winhost/machine/text.h"

namespace winhost {
namespace {

namespace fs = std::filesystem;

fs::path Below(const fs::path& folder, std::u16string_view name) {
  std::error_code none;
  for (const auto& entry : fs::directory_iterator(folder, none)) {
    if (EqualNoCase(Wide(entry.path().filename().string()), name)) return entry.path();
  }
  return folder / Narrow(name);
}

std::vector<std::u16string_view> Components(std::u16string_view path) {
  std::vector<std::u16string_view> parts;
  for (;;) {
    const std::size_t slash = std::min(path.find(u'\\'), path.size());
    parts.push_back(path.substr(0, slash));
    if (slash == path.size()) return parts;
    path.remove_prefix(slash + 1);
  }
}

bool IsTaskName(std::u16string_view name) {
  constexpr std::size_t kLongest = 238;
  if (name.empty() || name.size() > kLongest || name.find_first_not_of(u'.') == name.npos) return false;
  return std::ranges::none_of(name, [](char16_t c) {
    return c < 0x20 || std::u16string_view(u"/:*?\"<>|").find(c) != std::u16string_view::npos;
  });
}

}  // namespace

fs::path TaskXmlFolder(const Machine& machine) {
  return Below(Below(Below(machine.folder() / "C", u"Windows"), u"System32"), u"Tasks");
}

fs::path JobFolder(const Machine& machine) { return Below(Below(machine.folder() / "C", u"Windows"), u"Tasks"); }

fs::path FindTaskFile(const fs::path& folder, std::u16string_view path) {
  fs::path found = folder;
  for (std::u16string_view part : Components(path)) found = Below(found, part);
  return found;
}

bool IsTaskPath(std::u16string_view path) { return std::ranges::all_of(Components(path), IsTaskName); }

HRESULT WriteTaskFile(const fs::path& file, const std::string& bytes) {
  std::error_code error;
  fs::create_directories(file.parent_path(), error);
  const fs::path beside = file.parent_path() / (".new-" + std::to_string(gettid()));
  {
    std::ofstream out(beside, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!out.flush()) return E_ACCESSDENIED;
  }
  fs::rename(beside, file, error);
  return error ? E_ACCESSDENIED : S_OK;
}

std::optional<std::string> ReadTaskFile(const fs::path& file) {
  std::error_code none;
  if (!fs::is_regular_file(file, none)) return std::nullopt;
  std::ifstream in(file, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

HRESULT DeleteTaskFile(const fs::path& file) {
  std::error_code error;
  if (!fs::is_regular_file(file, error)) return HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND);
  fs::remove(file, error);
  return error ? E_ACCESSDENIED : S_OK;
}

std::vector<fs::path> ListTaskFiles(const fs::path& folder) {
  std::vector<fs::path> files;
  std::error_code none;
  for (const auto& entry : fs::recursive_directory_iterator(folder, none)) {
    if (entry.is_regular_file(none)) files.push_back(entry.path());
  }
  std::ranges::sort(files);
  return files;
}

}  // namespace winhost
