#include "lumo/render/scale_file.h"

#include "base/format.h"

namespace lumo {

String InsertScaleFolder(StringView path, int percent) {
  const size_t separator = path.find_last_of(TEXT("/\\"));
  const size_t name = separator == StringView::npos ? 0 : separator + 1;
  const WCHAR joint = separator == StringView::npos ? TEXT('/') : path[separator];
  String inserted(path.substr(0, name));
  inserted += vanta::Format(TEXT("%d%c"), percent, joint);
  return inserted.append(path.substr(name));
}

String ChooseScaleFile(StringView path, int scale_percent, const std::function<bool(const String&)>& exists) {
  if (scale_percent <= 100) return String(path);
  for (const int percent : {scale_percent, 200}) {
    String candidate = InsertScaleFolder(path, percent);
    if (exists(candidate)) return candidate;
    if (scale_percent == 200) break;
  }
  return String(path);
}

}  // namespace lumo
