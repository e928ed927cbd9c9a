#include "install/product_config.h"

#include "base/registry.h"

namespace vanta {
namespace {

constexpr const WCHAR* kProductKey = TEXT("Software\\VantaPictor");
constexpr const WCHAR* kConfigKey = TEXT("Software\\VantaPictor\\Config");
constexpr const WCHAR* kChannel = TEXT("channel");
constexpr const WCHAR* kNewChannel = TEXT("newChannel");

String Read(const WCHAR* key, const WCHAR* name) {
  String text;
  RegReadString(HKEY_LOCAL_MACHINE, key, name, &text);
  return text;
}

}  // namespace

String ReadChannel() { return Read(kConfigKey, kChannel); }

String ReadNewChannel() { return Read(kConfigKey, kNewChannel); }

bool WriteChannel(const String& channel) { return RegWriteString(HKEY_LOCAL_MACHINE, kConfigKey, kChannel, channel); }

bool WriteNewChannel(const String& channel) {
  return RegWriteString(HKEY_LOCAL_MACHINE, kConfigKey, kNewChannel, channel);
}

bool WriteInstallTime() {
  FILETIME now = {};
  FILETIME local = {};
  GetSystemTimeAsFileTime(&now);
  if (!FileTimeToLocalFileTime(&now, &local)) return false;
  const ULONGLONG ticks = ULONGLONG{local.dwHighDateTime} << 32 | local.dwLowDateTime;
  return RegWriteQword(HKEY_LOCAL_MACHINE, kProductKey, TEXT("inst_time"), ticks);
}

String ReadInstalledVersion() { return Read(kUninstallKey, TEXT("DisplayVersion")); }

}  // namespace vanta
