#include "lumo/core/markup_log.h"

#include "base/format.h"

namespace lumo {
namespace {

constexpr size_t kLongestLog = 1000000;

StringView EscapeOf(WCHAR c) {
  switch (c) {
    case '<':
      return TEXT("&lt;");
    case '>':
      return TEXT("&gt;");
    case '&':
      return TEXT("&amp;");
    case '"':
      return TEXT("&quot;");
    default:
      return {};
  }
}

}  // namespace

void MarkupLog::Add(StringView problem, std::initializer_list<LogDetail> details) {
  if (text_.size() >= kLongestLog) return;
  text_.append(1, '<').append(problem);
  for (const LogDetail& detail : details) {
    text_.append(1, ' ').append(detail.name).append(TEXT("=\""));
    if (detail.text.data()) {
      AddEscaped(detail.text);
    } else {
      text_ += vanta::Format(TEXT("%u"), detail.number);
    }
    text_.append(1, '"');
  }
  text_.append(TEXT("/>"));
}

void MarkupLog::AddEscaped(StringView text) {
  for (const WCHAR c : text) {
    const StringView escape = EscapeOf(c);
    if (escape.empty()) {
      text_.append(1, c);
    } else {
      text_.append(escape);
    }
  }
}

}  // namespace lumo
