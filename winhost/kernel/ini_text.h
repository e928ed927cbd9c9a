// The text of an INI file, as the private-profile calls read and change it.
//
// A line is "[section]", "key=value", a comment (";") or something else, which is kept and means nothing. Names are
// compared without case and without the blanks around them; the first section of a name and the first key in it count.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace winhost {

class IniText {
 public:
  // Any bytes: UTF-16LE or UTF-8 by their marks, else UTF-8 if they are well formed, else Windows-1252.
  static IniText FromBytes(std::string_view bytes);
  // In the form it was read in.
  std::string ToBytes() const;

  // A value with the blanks around it and one pair of quotes gone.
  std::optional<std::u16string> Value(std::u16string_view section, std::u16string_view key) const;
  std::vector<std::u16string> Sections() const;
  std::vector<std::u16string> Keys(std::u16string_view section) const;
  bool HasSection(std::u16string_view section) const;

  void Set(std::u16string_view section, std::u16string_view key, std::u16string_view value);
  void RemoveKey(std::u16string_view section, std::u16string_view key);
  void RemoveSection(std::u16string_view section);

 private:
  enum class Form { Ansi, Utf8, Utf16 };
  struct Span {
    std::size_t begin, end;  // the lines after "[section]" up to the next section
  };
  std::optional<Span> Find(std::u16string_view section) const;
  std::optional<std::size_t> FindKey(const Span& span, std::u16string_view key) const;

  Form form_ = Form::Ansi;
  std::vector<std::u16string> lines_;
};

}  // namespace winhost
