// Identifier 2 as text: 40 digits of hash, two of source flags, two of CRC-8 over the 42 before them. Pure.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "base/text.h"

namespace vanta {

inline constexpr size_t kMid2Length = 44;

// Where the hash comes from.
enum Mid2Flags : BYTE {
  Mid2Address = 0x01,
  Mid2Disk = 0x02,
  Mid2Processor = 0x08,
  Mid2Random = 0x10,  // neither address nor disk serial: a random value stands in, and is the only source
  Mid2Hashed = 0x20,
};

// What the machine says of itself; an empty text for what it does not say. Bytes as the devices gave them.
struct Mid2Hardware {
  std::string address;
  std::string disk;
  std::string processor;

  bool Complete() const { return !address.empty() && !disk.empty(); }
  bool Nothing() const { return address.empty() && disk.empty(); }
};

struct Mid2Value {
  std::string text;
  bool failed = false;  // no hash of hardware
};

// The hash of the hardware; of no hardware, the random value's form, and forty zeros when there is no random value
// either. In a process without elevation a hash shows that by its first eight digits.
Mid2Value ComputeMid2(const Mid2Hardware& hardware, const std::optional<GUID>& random, bool elevated);

// 44 characters of which the last two are the CRC-8 of the others.
bool IsValidMid2(StringView text);
// Whether the text is of the random value's form.
bool IsRandomMid2(StringView text);

}  // namespace vanta
