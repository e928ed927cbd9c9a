#include "report/identity/mid2_form.h"

#include "base/sha1.h"
#include "report/identity/ascii.h"
#include "report/identity/crc8.h"

namespace vanta {
namespace {

constexpr size_t kHash = 40;
constexpr size_t kChecked = 42;
constexpr std::string_view kRandomMark = "ffffffff";
constexpr std::string_view kUnelevatedMark = "eeeeeeee";

std::string HexByte(BYTE byte) { return LowerHex(&byte, 1); }

std::string Finished(std::string hash, BYTE flags) {
  hash += HexByte(flags);
  return hash + HexByte(Crc8(hash));
}

BYTE FlagsOf(const Mid2Hardware& hardware) {
  unsigned flags = Mid2Hashed;
  if (!hardware.address.empty()) flags |= Mid2Address;
  if (!hardware.disk.empty()) flags |= Mid2Disk;
  if (!hardware.processor.empty()) flags |= Mid2Processor;
  return static_cast<BYTE>(flags);
}

Mid2Value WithoutHardware(const std::optional<GUID>& random) {
  std::string hash(kHash, '0');
  if (random) hash = std::string(kRandomMark) + LowerHex(reinterpret_cast<const BYTE*>(&*random), sizeof(GUID));
  return {Finished(std::move(hash), Mid2Random), true};
}

}  // namespace

Mid2Value ComputeMid2(const Mid2Hardware& hardware, const std::optional<GUID>& random, bool elevated) {
  if (hardware.Nothing()) return WithoutHardware(random);
  const std::string source = hardware.address + hardware.disk + hardware.processor;
  const Sha1Hash digest = Sha1(reinterpret_cast<const BYTE*>(source.data()), source.size());
  std::string hash = LowerHex(digest.data(), digest.size());
  if (!elevated && !hash.starts_with(kRandomMark)) hash.replace(0, kUnelevatedMark.size(), kUnelevatedMark);
  return {Finished(std::move(hash), FlagsOf(hardware)), false};
}

bool IsValidMid2(StringView text) {
  if (text.size() != kMid2Length) return false;
  std::string checked;
  for (const WCHAR c : text.substr(0, kChecked)) {
    if (c > 0x7F) return false;
    checked += static_cast<char>(c);
  }
  const int high = HexDigit(text[kChecked]);
  const int low = HexDigit(text[kChecked + 1]);
  return high >= 0 && low >= 0 && high * 16 + low == Crc8(checked);
}

bool IsRandomMid2(StringView text) { return text.starts_with(TEXT("ffffffff")); }

}  // namespace vanta
