#include "winhost/kernel/system_programs.h"

#include <stdlib.h>
#include <unistd.h>

#include <array>
#include <string>

#include "winhost/kernel/paths.h"
#include "winhost/machine/machine.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

namespace fs = std::filesystem;

constexpr const char* kFile = "regsvr32.exe";
constexpr std::array<std::u16string_view, 2> kPaths = {u"C:\\Windows\\system32\\regsvr32.exe",
                                                       u"C:\\Windows\\SysWOW64\\regsvr32.exe"};

bool HoldsPrograms(const fs::path& folder) {
  std::error_code ignored;
  return fs::is_regular_file(folder / kFile, ignored);
}

// The folders above are not remembered apart from the machine: LinuxPath wants every folder but the last to be there.
fs::path PlaceOf(std::u16string_view path) {
  std::error_code ignored;
  const auto windows = LinuxPath(u"C:\\Windows");
  if (windows) fs::create_directories(*windows, ignored);
  const auto folder = LinuxPath(path.substr(0, path.rfind(u'\\')));
  if (!folder) return {};
  fs::create_directories(*folder, ignored);
  return LinuxPath(path).value_or(fs::path());
}

// Through a draft, as another process of the machine may be about to start it.
void Provide(std::u16string_view path) {
  const bool wow = path == kPaths[1];
  if (wow && Machine::Current().facts().windows_bits == 32) return;
  std::error_code ignored;
  const fs::path place = PlaceOf(path);
  if (place.empty() || fs::exists(place, ignored)) return;
  const auto programs = HostProgramsFolder();
  if (!programs) return;
  fs::path draft = place;
  draft += "." + std::to_string(getpid());
  std::error_code failed;
  fs::copy_file(*programs / kFile, draft, failed);
  if (!failed) fs::rename(draft, place, failed);
  if (failed) fs::remove(draft, ignored);
}

}  // namespace

std::optional<fs::path> HostProgramsFolder() {
  std::error_code ignored;
  const fs::path executable = fs::read_symlink("/proc/self/exe", ignored);
  if (HoldsPrograms(executable.parent_path())) return executable.parent_path();
  for (fs::path folder = executable.parent_path(); folder != folder.root_path(); folder = folder.parent_path()) {
    if (HoldsPrograms(folder / "winhost" / "programs")) return folder / "winhost" / "programs";
  }
  const char* named = getenv("VANTA_HOST_PROGRAMS");
  if (named && HoldsPrograms(named)) return fs::path(named);
  return std::nullopt;
}

void ProvideSystemPrograms() {
  for (const std::u16string_view path : kPaths) Provide(path);
}

void ProvideSystemProgram(std::u16string_view path) {
  for (const std::u16string_view known : kPaths) {
    if (EqualNoCase(path, known)) Provide(known);
  }
}

}  // namespace winhost
