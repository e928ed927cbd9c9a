#include "winhost/trust/der.h"

namespace winhost {

std::optional<DerValue> EatDer(DerBytes& rest) {
  if (rest.size() < 2 || (rest[0] & 0x1F) == 0x1F) return std::nullopt;  // tags of several bytes occur nowhere here
  std::uint64_t length = rest[1];
  std::size_t header = 2;
  if (length >= 0x80) {
    const std::size_t length_bytes = length & 0x7F;
    if (length_bytes == 0 || length_bytes > 4 || rest.size() < header + length_bytes) return std::nullopt;
    length = 0;
    for (std::size_t i = 0; i < length_bytes; ++i) length = length << 8 | rest[header + i];
    header += length_bytes;
  }
  if (length > rest.size() - header) return std::nullopt;
  const auto size = static_cast<std::size_t>(length);
  const DerValue value{rest[0], rest.subspan(header, size), rest.first(header + size)};
  rest = rest.subspan(header + size);
  return value;
}

std::optional<DerValue> EatDer(DerBytes& rest, std::uint8_t tag) {
  if (rest.empty() || rest[0] != tag) return std::nullopt;
  return EatDer(rest);
}

std::vector<std::uint8_t> WriteDer(std::uint8_t tag, DerBytes content) {
  std::vector<std::uint8_t> out{tag};
  const std::size_t size = content.size();
  if (size < 0x80) {
    out.push_back(static_cast<std::uint8_t>(size));
  } else {
    int length_bytes = 1;
    while (size >> (8 * length_bytes)) ++length_bytes;
    out.push_back(static_cast<std::uint8_t>(0x80 | length_bytes));
    for (int i = length_bytes - 1; i >= 0; --i) out.push_back(static_cast<std::uint8_t>(size >> (8 * i)));
  }
  out.insert(out.end(), content.begin(), content.end());
  return out;
}

}  // namespace winhost
