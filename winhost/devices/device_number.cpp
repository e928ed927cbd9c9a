#include "winhost/devices/device_number.h"

#include "winhost/machine/text.h"

namespace winhost {

std::optional<unsigned> DeviceNumber(std::u16string_view name, std::u16string_view before, std::u16string_view after) {
  constexpr std::size_t kMostDigits = 4;
  if (name.size() <= before.size() + after.size()) return std::nullopt;
  const std::size_t digits = name.size() - before.size() - after.size();
  if (digits > kMostDigits || !EqualNoCase(name.substr(0, before.size()), before)) return std::nullopt;
  if (name.substr(before.size() + digits) != after) return std::nullopt;
  unsigned number = 0;
  for (const char16_t c : name.substr(before.size(), digits)) {
    if (c < u'0' || c > u'9') return std::nullopt;
    number = number * 10 + (c - u'0');
  }
  return number;
}

}  // namespace winhost
