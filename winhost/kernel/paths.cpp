#include "winhost/kernel/paths.h"

#include <windows.h>

#include <algorithm>

#include "winhost/kernel/file_system.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

std::u16string Backslashed(std::string_view path) {
  std::u16string wide = Wide(path);
  std::replace(wide.begin(), wide.end(), u'/', u'\\');
  return wide;
}

bool IsDriveName(std::string_view name) { return name.size() == 1 && name[0] >= 'A' && name[0] <= 'Z'; }

}  // namespace

std::optional<std::filesystem::path> LinuxPath(std::u16string_view windows_path) {
  Place place;
  if (FileSystem::Current().LocateText(windows_path, &place, {32767, ERROR_PATH_NOT_FOUND}) != 0) return std::nullopt;
  return place.LinuxPath();
}

std::u16string WindowsPath(const std::filesystem::path& linux_path) {
  std::error_code ignored;
  std::string absolute = std::filesystem::absolute(linux_path, ignored).lexically_normal().string();
  while (absolute.size() > 1 && absolute.back() == '/') absolute.pop_back();
  const std::string machine = Machine::Current().folder().string() + "/";
  if (absolute.compare(0, machine.size(), machine) == 0) {
    const std::string_view rest = std::string_view(absolute).substr(machine.size());
    const std::string_view first = rest.substr(0, rest.find('/'));
    const std::string_view below = rest.substr(std::min(rest.size(), first.size() + 1));
    if (IsDriveName(first)) return Wide(first) + u":\\" + Backslashed(below);
    if (first == "UNC") return u"\\\\" + Backslashed(below);
  }
  return u"Z:" + Backslashed(absolute);
}

std::u16string CurrentDirectory() { return FileSystem::Current().CurrentDirectory(); }

}  // namespace winhost
