// Text between Linux (UTF-8) and the machine (UTF-16). Ill-formed input becomes U+FFFD, as the system's own conversion
// does it.
#pragma once

#include <string>
#include <string_view>

namespace winhost {

std::u16string Wide(std::string_view utf8);
std::string Narrow(std::u16string_view text);
// Upper-casing as the file system and the registry compare names: simple one-to-one mapping of the basic plane.
char16_t Upcase(char16_t c);
std::u16string Upcase(std::u16string_view text);
bool EqualNoCase(std::u16string_view a, std::u16string_view b);

}  // namespace winhost
