// STORAGE_DEVICE_DESCRIPTOR of a drive: the header, its raw properties, and its strings with their terminators.
#pragma once

#include "winhost/devices/hardware.h"

namespace winhost {

Bytes MakeDescriptor(const DiskFacts& disk);

}  // namespace winhost
