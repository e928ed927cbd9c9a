// The two identifiers of the machine that every report carries. Each is found at most once a process, on first use, and
// served from memory afterwards; the registry keeps both for the maker's other programs.
//
// Any thread. The first call of each blocks while disks and network adapters are asked: milliseconds as a rule, half a
// second more where an address or a disk serial is missing, a driver's own time-out where a device does not answer.
#pragma once

#include <windows.h>

#include "base/text.h"

namespace vanta {

inline constexpr DWORD kMachineIdRoom = 260;  // the rooms that reports offer, in characters with terminator
inline constexpr DWORD kMachineId2Room = 50;

// Identifier 1: 32 characters. `size` is in characters with terminator. False for a null buffer and for one that is too
// small; the latter is left empty.
bool GetMachineId(WCHAR* buffer, DWORD size);

// Identifier 2: 44 characters. E_INVALIDARG for a null buffer or a `size` below 50.
HRESULT GetMachineId2(WCHAR* buffer, DWORD size);

// The same as texts; empty on failure.
String MachineIdText();
String MachineId2Text();

}  // namespace vanta
