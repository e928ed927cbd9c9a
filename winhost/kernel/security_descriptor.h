// Self-relative security descriptors as bytes: made, and measured before they are trusted.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace winhost {

// Owner and group SYSTEM, every right for SYSTEM, and for the administrators either every right or all but WRITE_OWNER.
std::vector<std::byte> PlainDescriptor(bool full_for_administrators);
// The length of a self-relative descriptor in memory that the caller vouches for; none: not one.
std::optional<std::size_t> DescriptorLength(const void* descriptor);

}  // namespace winhost
