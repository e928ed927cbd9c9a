#include <shellapi.h>
#include <windows.h>

#include <algorithm>
#include <string>

#include "winhost/kernel/launch.h"
#include "winhost/kernel/paths.h"
#include "winhost/machine/faults.h"
#include "winhost/machine/machine.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

constexpr std::u16string_view kSeparators = u"\\/:";
constexpr DWORD kOpened = 42;  // any number above 32

std::u16string Text(LPCWSTR text) { return text ? text : u""; }

std::u16string Unquoted(std::u16string file) {
  if (file.size() >= 2 && file.starts_with(u'"') && file.ends_with(u'"')) return file.substr(1, file.size() - 2);
  return file;
}

// "https:…", "mailto:…": a scheme of two letters or more, so no drive.
bool IsAddress(const std::u16string& file) {
  const std::size_t colon = file.find(u':');
  if (colon == std::u16string::npos || colon < 2) return false;
  return std::ranges::all_of(file.substr(0, colon), [](char16_t c) { return Upcase(c) >= u'A' && Upcase(c) <= u'Z'; });
}

bool IsOnDisk(const std::u16string& file, bool (*test)(const std::filesystem::path&, std::error_code&) noexcept) {
  const auto path = LinuxPath(file);
  std::error_code ignored;
  return path && test(*path, ignored);
}

bool IsFolder(const std::u16string& file) {
  return IsOnDisk(file, [](const std::filesystem::path& path, std::error_code& error) noexcept {
    return std::filesystem::is_directory(path, error);
  });
}

bool IsThere(const std::u16string& file) {
  return IsOnDisk(file, [](const std::filesystem::path& path, std::error_code& error) noexcept {
    return std::filesystem::exists(path, error);
  });
}

std::u16string FindBareName(const std::u16string& file, const std::u16string& directory) {
  if (file.empty() || file.find_first_of(kSeparators) != std::u16string::npos) return file;
  const std::u16string folders[] = {directory, CurrentDirectory(), u"C:\\Windows\\system32", u"C:\\Windows"};
  for (const std::u16string& folder : folders) {
    for (const std::u16string& name : {file, file + u".exe"}) {
      const std::u16string path = folder + u'\\' + name;
      if (!folder.empty() && IsThere(path)) return path;
    }
  }
  return file;
}

bool IsProgram(const std::u16string& file) {
  const std::size_t dot = file.rfind(u'.');
  return dot != std::u16string::npos && EqualNoCase(std::u16string_view(file).substr(dot), u".exe");
}

bool KnowsVerb(const std::u16string& verb) {
  return verb.empty() || EqualNoCase(verb, u"open") || EqualNoCase(verb, u"runas");
}

DWORD WithoutProgram(const LaunchRequest& request, DWORD result) {
  JournalLaunch(request, result);
  return result;
}

DWORD Open(LaunchRequest request) {
  if (const auto planned = PlannedFault("ShellExecuteW", request.file)) return WithoutProgram(request, *planned);
  if (IsAddress(request.file) || IsFolder(request.file)) return WithoutProgram(request, ERROR_SUCCESS);
  request.file = FindBareName(request.file, request.directory);
  const bool document = IsThere(request.file) && !IsProgram(request.file);
  if (document || !KnowsVerb(request.verb)) return WithoutProgram(request, ERROR_NO_ASSOCIATION);
  DWORD error = ERROR_SUCCESS;
  LaunchProgram(request, &error);
  return error;
}

// What ShellExecute returns for a system error; its numbers are those of 16-bit days.
DWORD ShellCode(DWORD error) {
  switch (error) {
    case ERROR_SUCCESS:
      return kOpened;
    case ERROR_FILE_NOT_FOUND:
      return SE_ERR_FNF;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_DIRECTORY:
      return SE_ERR_PNF;
    case ERROR_NOT_ENOUGH_MEMORY:
      return SE_ERR_OOM;
    case ERROR_SHARING_VIOLATION:
      return SE_ERR_SHARE;
    case ERROR_BAD_EXE_FORMAT:
      return ERROR_BAD_FORMAT;
    case ERROR_NO_ASSOCIATION:
      return SE_ERR_NOASSOC;
    default:
      return SE_ERR_ACCESSDENIED;
  }
}

}  // namespace
}  // namespace winhost

using namespace winhost;

HINSTANCE ShellExecuteW(HWND, LPCWSTR verb, LPCWSTR file, LPCWSTR parameters, LPCWSTR directory, int show) {
  LaunchRequest request;
  request.file = Unquoted(Text(file));
  request.parameters = Text(parameters);
  request.directory = Text(directory);
  request.verb = Text(verb);
  request.show = show;
  // The user is never asked; what asks for rights gets them, and everybody else has this process's.
  request.elevated = Machine::Current().facts().elevated || EqualNoCase(request.verb, u"runas");
  request.by = "ShellExecuteW";
  const DWORD error = Open(std::move(request));
  SetLastError(error);
  return reinterpret_cast<HINSTANCE>(static_cast<UINT_PTR>(ShellCode(error)));
}
