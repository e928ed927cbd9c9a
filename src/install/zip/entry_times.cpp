#include "install/zip/entry_times.h"

#include <algorithm>

#include "install/zip/records.h"

namespace vanta {
namespace {

constexpr LONGLONG kTicksPerSecond = 10'000'000;
constexpr LONGLONG kTicksPerMinute = 60 * kTicksPerSecond;
constexpr LONGLONG kUnixEpoch = 116'444'736'000'000'000;  // in ticks of 100 ns since 1601

LONGLONG TicksOf(const FILETIME& time) {
  return static_cast<LONGLONG>(static_cast<ULONGLONG>(time.dwHighDateTime) << 32 | time.dwLowDateTime);
}

FILETIME FileTimeOf(LONGLONG ticks) {
  const auto bits = static_cast<ULONGLONG>(ticks);
  return {static_cast<DWORD>(bits), static_cast<DWORD>(bits >> 32)};
}

FILETIME FromDos(WORD date, WORD time, LONG bias_minutes) {
  SYSTEMTIME parts = {};
  parts.wYear = static_cast<WORD>(1980 + (date >> 9));
  parts.wMonth = date >> 5 & 15;
  parts.wDay = date & 31;
  parts.wHour = static_cast<WORD>(time >> 11);
  parts.wMinute = time >> 5 & 63;
  parts.wSecond = static_cast<WORD>((time & 31) * 2);
  FILETIME local = {};
  if (!SystemTimeToFileTime(&parts, &local)) return {};
  return FileTimeOf(TicksOf(local) + bias_minutes * kTicksPerMinute);
}

// The content of the first "UT" block, or nothing. A block that claims more than is there ends with what is there.
ByteSpan FindUnixTimes(ByteSpan extra) {
  while (extra.size() >= 4) {
    const bool is_times = extra[0] == 'U' && extra[1] == 'T';
    const size_t size = std::min<size_t>(ReadWord(extra.data() + 2), extra.size() - 4);
    if (is_times) return extra.subspan(4, size);
    extra = extra.subspan(4 + size);
  }
  return {};
}

}  // namespace

EntryTimes TimesFrom(WORD dos_date, WORD dos_time, LONG bias_minutes, std::span<const BYTE> local_extra) {
  const FILETIME dos = FromDos(dos_date, dos_time, bias_minutes);
  EntryTimes times = {dos, dos, dos};
  ByteSpan block = FindUnixTimes(local_extra);
  if (block.empty()) return times;
  const BYTE flags = block[0];
  block = block.subspan(1);
  FILETIME* const in_order[] = {&times.modification, &times.access, &times.creation};
  for (int i = 0; i < 3 && block.size() >= 4; ++i) {
    if (!(flags >> i & 1)) continue;
    const auto seconds = static_cast<LONG>(ReadDword(block.data()));
    *in_order[i] = FileTimeOf(seconds * kTicksPerSecond + kUnixEpoch);
    block = block.subspan(4);
  }
  return times;
}

LONG LocalBiasMinutes() {
  // The system converts every local time with the bias of the present, so any time shows it.
  const FILETIME local = FileTimeOf(kUnixEpoch);
  FILETIME utc = {};
  if (!LocalFileTimeToFileTime(&local, &utc)) return 0;
  return static_cast<LONG>((TicksOf(utc) - kUnixEpoch) / kTicksPerMinute);
}

}  // namespace vanta
