// Little-endian fields in a byte range whose content nobody vouches for: every read is bounds-checked.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <vector>

namespace winhost {

using Bytes = std::span<const std::byte>;

template <std::unsigned_integral T>
std::optional<T> ReadField(Bytes bytes, std::uint64_t offset) {
  if (offset > bytes.size() || bytes.size() - offset < sizeof(T)) return std::nullopt;
  T value;
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

// Zero where there is nothing: for headers whose presence a size check has already settled.
template <std::unsigned_integral T>
T FieldOr0(Bytes bytes, std::uint64_t offset) {
  return ReadField<T>(bytes, offset).value_or(T{0});
}

// The part [offset, offset + size), or nothing when it does not lie inside.
inline std::optional<Bytes> Part(Bytes bytes, std::uint64_t offset, std::uint64_t size) {
  if (offset > bytes.size() || bytes.size() - offset < size) return std::nullopt;
  return bytes.subspan(offset, size);
}

template <std::unsigned_integral T>
void PutField(std::vector<std::byte>& out, std::size_t offset, T value) {
  if (out.size() < offset + sizeof value) out.resize(offset + sizeof value);
  std::memcpy(out.data() + offset, &value, sizeof value);
}

template <std::unsigned_integral T>
void AppendField(std::vector<std::byte>& out, T value) {
  PutField(out, out.size(), value);
}

constexpr std::uint64_t AlignUp(std::uint64_t value, std::uint64_t alignment) {
  return (value + alignment - 1) / alignment * alignment;
}

}  // namespace winhost
