// Small DER: an eater of one value after the other over a view, and a writer of one value.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace winhost {

using DerBytes = std::span<const std::uint8_t>;

struct DerValue {
  std::uint8_t tag = 0;
  DerBytes content;
  DerBytes whole;  // tag and length included
};

inline constexpr std::uint8_t kDerBitString = 0x03;
inline constexpr std::uint8_t kDerOctetString = 0x04;
inline constexpr std::uint8_t kDerObjectId = 0x06;
inline constexpr std::uint8_t kDerSequence = 0x30;

// Takes the first value off `rest`. Nothing, and `rest` unchanged, when it is cut short or of indefinite length.
std::optional<DerValue> EatDer(DerBytes& rest);
// The same where only one tag will do.
std::optional<DerValue> EatDer(DerBytes& rest, std::uint8_t tag);

std::vector<std::uint8_t> WriteDer(std::uint8_t tag, DerBytes content);

}  // namespace winhost
