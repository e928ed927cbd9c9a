#include <intrin.h>
#include <windows.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "winhost/devices/hardware.h"

namespace {

using winhost::ProcessorFacts;
using Registers = std::array<int, 4>;  // EAX, EBX, ECX, EDX
constexpr DWORD kExtended = 0x80000000;
constexpr DWORD kFirstBrandLeaf = 0x80000002;
constexpr DWORD kLastBrandLeaf = 0x80000004;

Registers Basic(const ProcessorFacts& facts) {
  int vendor[3] = {};
  std::memcpy(vendor, facts.vendor.data(), std::min(facts.vendor.size(), sizeof vendor));
  return {static_cast<int>(facts.highest), vendor[0], vendor[2], vendor[1]};
}

Registers Brand(const ProcessorFacts& facts, DWORD leaf) {
  char brand[48] = {};
  facts.brand.copy(brand, sizeof brand);
  Registers part;
  std::memcpy(part.data(), brand + sizeof part * (leaf - kFirstBrandLeaf), sizeof part);
  return part;
}

Registers Answer(const ProcessorFacts& facts, DWORD leaf) {
  if (leaf == 0) return Basic(facts);
  if (leaf == 1 && facts.highest >= 1) {
    return {static_cast<int>(facts.signature), 0, 0, static_cast<int>(facts.features)};
  }
  if (leaf == kExtended) return {static_cast<int>(facts.highest_extended), 0, 0, 0};
  const bool brand = leaf >= kFirstBrandLeaf && leaf <= kLastBrandLeaf && leaf <= facts.highest_extended;
  return brand ? Brand(facts, leaf) : Registers{};
}

}  // namespace

void __cpuid(int info[4], int leaf) {
  const auto& processor = winhost::Hardware::Current().processor;
  const Registers registers = processor ? Answer(*processor, static_cast<DWORD>(leaf)) : Registers{};
  std::ranges::copy(registers, info);
}
