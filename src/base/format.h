// Format(TEXT("%s %04hu"), …): printf's look with the arguments' own types. A conversion that does not fit its
// argument, or a wrong count, does not compile; nothing depends on a platform's printf.
//
// Conversions: %s (String, StringView or a terminated text; null prints nothing), %d %u %x %X with the length words h,
// l, I64 (unsigned conversions of h arguments are cut to 16 bits), %c (one UTF-16 unit), %%. Flags: 0 and a width for
// numbers.
#pragma once

#include "base/text.h"

#include <cstddef>
#include <type_traits>

namespace vanta {
namespace format_detail {

enum class Kind : unsigned char { Text, Signed, Unsigned };

struct Argument {
  Kind kind;
  StringView text;
  LONGLONG number = 0;
};

template <class T>
constexpr Kind KindOf() {
  using D = std::decay_t<T>;
  if constexpr (std::is_integral_v<D> || std::is_enum_v<D>) {
    return std::is_signed_v<D> ? Kind::Signed : Kind::Unsigned;
  } else {
    static_assert(std::is_convertible_v<const T&, StringView>, "Format takes numbers and UTF-16 text");
    return Kind::Text;
  }
}

template <class T>
Argument Wrap(const T& value) {
  using D = std::decay_t<T>;
  if constexpr (std::is_integral_v<D> || std::is_enum_v<D>) {
    return {KindOf<T>(), {}, static_cast<LONGLONG>(value)};
  } else if constexpr (std::is_pointer_v<T>) {
    return {Kind::Text, value ? StringView(value) : StringView()};
  } else {
    return {Kind::Text, StringView(value)};
  }
}

void ConversionDoesNotFitItsArgument();
void WrongNumberOfArguments();

String Run(StringView format, const Argument* arguments);

}  // namespace format_detail

template <class... Args>
class FormatText {
 public:
  template <size_t N>
  consteval FormatText(const WCHAR (&text)[N]) : text_(text, N - 1) {
    constexpr format_detail::Kind kinds[] = {format_detail::KindOf<Args>()..., format_detail::Kind::Text};
    size_t used = 0;
    for (size_t i = 0; i < text_.size(); ++i) {
      if (text_[i] != '%') continue;
      ++i;
      if (i < text_.size() && text_[i] == '%') continue;
      while (i < text_.size() && text_[i] >= '0' && text_[i] <= '9') ++i;
      if (i < text_.size() && (text_[i] == 'h' || text_[i] == 'l')) ++i;
      if (i + 2 < text_.size() && text_[i] == 'I' && text_[i + 1] == '6' && text_[i + 2] == '4') i += 3;
      if (used >= sizeof...(Args) || i >= text_.size()) format_detail::WrongNumberOfArguments();
      const bool wants_text = text_[i] == 's';
      if (!wants_text && text_[i] != 'd' && text_[i] != 'u' && text_[i] != 'x' && text_[i] != 'X' && text_[i] != 'c') {
        format_detail::ConversionDoesNotFitItsArgument();
      }
      if (wants_text != (kinds[used] == format_detail::Kind::Text)) format_detail::ConversionDoesNotFitItsArgument();
      ++used;
    }
    if (used != sizeof...(Args)) format_detail::WrongNumberOfArguments();
  }
  constexpr StringView Get() const { return text_; }

 private:
  StringView text_;
};

template <class... Args>
String Format(FormatText<std::type_identity_t<Args>...> format, const Args&... args) {
  const format_detail::Argument arguments[] = {format_detail::Wrap(args)..., {format_detail::Kind::Text, {}}};
  return format_detail::Run(format.Get(), arguments);
}

}  // namespace vanta
