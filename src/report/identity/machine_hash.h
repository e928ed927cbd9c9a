// The hash behind identifier 1 and its check, shared with the maker's other programs: MD5 (RFC 1321) that is finished
// twice. Identifiers stored since its first version depend on the second finish, so it is no MD5 and never becomes one.
#pragma once

#include <string>
#include <string_view>

namespace vanta {

// 32 lower-case hexadecimal digits.
std::string MachineHash(std::string_view bytes);

}  // namespace vanta
