#include "report/makerlibs/crash_reporter.h"

#include <windows.h>

#include "base/paths.h"
#include "base/text.h"
#include "report/makerlibs/base_library.h"
#include "report/makerlibs/file_signature.h"
#include "base/late_function.h"
#include "report/makerlibs/maker_files.h"
#include "report/makerlibs/safe_loader.h"
#include "report/makerlibs/trusted_library.h"

namespace vanta {
namespace {

constexpr WCHAR kCrashReporter[] = TEXT("CrashReport.dll");

bool IsTrusted(HANDLE file, const String& path) {
  return LoadBaseLibrary() ? IsTrustedMakerFile(path) : CheckFileSignature(file, path).Accepted();
}

void CallExport(HMODULE module, const char* name) {
  if (const auto call = ExportOf<void(WINAPI*)()>(module, name)) call();
}

}  // namespace

void StartCrashReporter() {
  const String path = FindMakerFile(kCrashReporter);
  if (!IsFullDrivePath(path) || !FileExists(path)) return;
  const UniqueFile file = OpenForCheck(path);  // held until the loader has the file
  if (!file || !IsTrusted(file.Get(), path)) return;
  if (const HMODULE module = LoadLibraryW(path.c_str())) CallExport(module, "Initialize");  // stays until the end
}

void TellCrashReporterExiting() {
  const HMODULE module = GetModuleHandleW(kCrashReporter);
  if (!module) return;
  WCHAR path[MAX_PATH] = {};
  const DWORD length = GetModuleFileNameW(module, path, MAX_PATH);
  if (length == 0 || length >= MAX_PATH) return;
  const UniqueFile file = OpenForCheck(path);
  if (file && IsTrusted(file.Get(), path)) CallExport(module, "OnExiting");
}

}  // namespace vanta
