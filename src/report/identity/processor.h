// How the processor identifies itself (CPUID), in the two ways that the identifiers write it.
#pragma once

#include <windows.h>

#include <string>

namespace vanta {

struct ProcessorFacts {
  std::string vendor;   // leaf 0: 12 characters; empty when the processor does not tell
  DWORD signature = 0;  // leaf 1, EAX; 0 without that leaf
  DWORD features = 0;   // leaf 1, EDX
  std::string brand;    // leaves 0x80000002 to 0x80000004: at most 48 characters; empty without them
};

ProcessorFacts ReadProcessor();

// "%s:%08x" of vendor and features, "%s,%x,%s" of vendor, signature and brand; empty for a processor without a vendor.
// A vendor that was misspelt in hardware is put right. Pure.
std::string ProcessorTextOfMid1(const ProcessorFacts& facts);
std::string ProcessorTextOfMid2(const ProcessorFacts& facts);

// The same of this machine, read once a process. Any thread.
const std::string& ProcessorOfMid1();
const std::string& ProcessorOfMid2();

}  // namespace vanta
