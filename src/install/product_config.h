// What the product keeps in the registry for its own later runs. Reads give "" where there is nothing; the writes'
// results say whether the value was stored.
#pragma once

#include "base/text.h"

namespace vanta {

inline constexpr const WCHAR* kUninstallKey =
    TEXT("Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\VantaView");
inline constexpr const WCHAR* kAppPathsKey =
    TEXT("Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\VantaPictor.exe");

// "channel": who first brought the product here. "newChannel": who brought the latest installation.
String ReadChannel();
String ReadNewChannel();
bool WriteChannel(const String& channel);
bool WriteNewChannel(const String& channel);

// "inst_time": now, as local time in 100 ns units since 1601.
bool WriteInstallTime();

// The uninstall entry's "DisplayVersion".
String ReadInstalledVersion();

}  // namespace vanta
