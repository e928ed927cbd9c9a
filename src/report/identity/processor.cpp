#include "report/identity/processor.h"

#include <intrin.h>

#include <cstring>

#include "base/lock.h"
#include "report/identity/ascii.h"

namespace vanta {
namespace {

constexpr DWORD kExtended = 0x80000000;
constexpr DWORD kFirstBrandLeaf = 0x80000002;
constexpr DWORD kLastBrandLeaf = 0x80000004;

struct Registers {
  int eax, ebx, ecx, edx;
};

Registers Leaf(DWORD number) {
  int values[4] = {};
  __cpuid(values, static_cast<int>(number));
  return {values[0], values[1], values[2], values[3]};
}

// The registers' bytes, one register behind the other, up to the first zero.
template <size_t N>
std::string TextOf(const int (&registers)[N]) {
  char bytes[sizeof registers];
  std::memcpy(bytes, registers, sizeof bytes);
  return std::string(UpToZero({bytes, sizeof bytes}));
}

std::string ReadBrand() {
  if (static_cast<DWORD>(Leaf(kExtended).eax) < kLastBrandLeaf) return {};
  int registers[12] = {};
  size_t at = 0;
  for (DWORD number = kFirstBrandLeaf; number <= kLastBrandLeaf; ++number) {
    const Registers leaf = Leaf(number);
    for (const int value : {leaf.eax, leaf.ebx, leaf.ecx, leaf.edx}) registers[at++] = value;
  }
  return TextOf(registers);
}

std::string HexNumber(DWORD number, size_t least_digits) {
  const BYTE bytes[] = {static_cast<BYTE>(number >> 24), static_cast<BYTE>(number >> 16),
                        static_cast<BYTE>(number >> 8), static_cast<BYTE>(number)};
  std::string digits = LowerHex(bytes, sizeof bytes);
  while (digits.size() > least_digits && digits.front() == '0') digits.erase(0, 1);
  return digits;
}

std::string VendorOf(const ProcessorFacts& facts) {
  return facts.vendor == "GenuineIotel" ? std::string("GenuineIntel") : facts.vendor;
}

struct Mid1Processor {
  const std::string text = ProcessorTextOfMid1(ReadProcessor());
};
struct Mid2Processor {
  const std::string text = ProcessorTextOfMid2(ReadProcessor());
};
constinit Lazy<Mid1Processor> g_mid1_processor;
constinit Lazy<Mid2Processor> g_mid2_processor;

}  // namespace

ProcessorFacts ReadProcessor() {
  ProcessorFacts facts;
  const Registers first = Leaf(0);
  const int vendor[] = {first.ebx, first.edx, first.ecx};
  facts.vendor = TextOf(vendor);
  if (static_cast<DWORD>(first.eax) >= 1) {
    const Registers second = Leaf(1);
    facts.signature = static_cast<DWORD>(second.eax);
    facts.features = static_cast<DWORD>(second.edx);
  }
  facts.brand = ReadBrand();
  return facts;
}

std::string ProcessorTextOfMid1(const ProcessorFacts& facts) {
  return facts.vendor.empty() ? std::string() : VendorOf(facts) + ":" + HexNumber(facts.features, 8);
}

std::string ProcessorTextOfMid2(const ProcessorFacts& facts) {
  if (facts.vendor.empty()) return {};
  return VendorOf(facts) + "," + HexNumber(facts.signature, 1) + "," + facts.brand;
}

const std::string& ProcessorOfMid1() { return g_mid1_processor.Get().text; }
const std::string& ProcessorOfMid2() { return g_mid2_processor.Get().text; }

}  // namespace vanta
