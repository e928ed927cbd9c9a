#include "setupui/progress_text.h"

#include "base/format.h"

namespace vanta {

String ProgressText(StringView text_template, int percent) {
  String text;
  for (size_t i = 0; i < text_template.size(); ++i) {
    const WCHAR next = i + 1 < text_template.size() ? text_template[i + 1] : TEXT('\0');
    if (text_template[i] != TEXT('%') || (next != TEXT('d') && next != TEXT('%'))) {
      text += text_template[i];
      continue;
    }
    text += next == TEXT('d') ? Format(TEXT("%d"), percent) : String(TEXT("%"));
    ++i;
  }
  return text;
}

}  // namespace vanta
