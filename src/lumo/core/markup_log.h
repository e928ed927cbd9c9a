// The markup reader's log: a sequence of small elements, one a problem, in the order in which they were met.
#pragma once

#include "lumo/core/types.h"

#include <initializer_list>

namespace lumo {

struct LogDetail {
  LogDetail(StringView detail_name, StringView detail_text) : name(detail_name), text(detail_text) {}
  LogDetail(StringView detail_name, size_t detail_number) : name(detail_name), number(detail_number) {}

  StringView name;
  StringView text;  // null data: the number counts
  size_t number = 0;
};

class MarkupLog {
 public:
  // <problem name="detail" …/>, the details escaped. Once the log holds a million units it takes nothing more: a
  // text of nothing but mistakes must not need many times its own memory.
  void Add(StringView problem, std::initializer_list<LogDetail> details = {});
  void Clear() { text_.clear(); }
  const String& Text() const { return text_; }

 private:
  void AddEscaped(StringView text);

  String text_;
};

}  // namespace lumo
