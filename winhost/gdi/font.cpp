#include "winhost/gdi/font.h"

#include <algorithm>
#include <cmath>

#include "winhost/gdi/font_substitution.h"
#include "winhost/machine/faults.h"
#include "winhost/machine/machine.h"

namespace winhost {
namespace {

constexpr double kLargestEm = 4096;  // pixels

std::u16string_view FaceName(const LOGFONTW& logfont) {
  const auto* end = std::find(logfont.lfFaceName, logfont.lfFaceName + LF_FACESIZE, u'\0');
  return {logfont.lfFaceName, end};
}

TextFont ToTextFont(const LOGFONTW& logfont) {
  constexpr LONG kBoldFrom = 550;  // from here on a face without a bold cut is emboldened
  TextFont font;
  font.family = SubstituteFor(FaceName(logfont)).family;
  font.em = std::max(1.0, std::round(EmSize(logfont, font.family)));
  font.bold = logfont.lfWeight > kBoldFrom;
  font.italic = logfont.lfItalic != 0;
  font.underline = logfont.lfUnderline != 0;
  font.strikeout = logfont.lfStrikeOut != 0;
  return font;
}

LOGFONTW GuiFont() {
  LOGFONTW font{};
  font.lfHeight = -MulDiv(11, Machine::Current().facts().dpi, 96);
  font.lfWeight = FW_NORMAL;
  font.lfCharSet = GB2312_CHARSET;
  constexpr std::u16string_view kFace = u"MS Shell Dlg";
  std::ranges::copy(kFace, font.lfFaceName);
  return font;
}

}  // namespace

Font::Font(const LOGFONTW& values) : GraphicsObject(kKind), logfont(values), text(ToTextFont(values)) {}

double EmSize(const LOGFONTW& logfont, const std::string& family) {
  const double height = logfont.lfHeight;
  if (height < 0) return std::min(-height, kLargestEm);
  const auto& metrics = MetricsOf(family);
  constexpr int kDefaultPoints = 12;
  const double cell = height > 0 ? height : MulDiv(kDefaultPoints, Machine::Current().facts().dpi, 72);
  return std::min(cell / (metrics.ascent + metrics.descent), kLargestEm);
}

HFONT StockGuiFont() {
  static void* const handle = EnterObject(std::make_shared<Font>(GuiFont()), true);
  return static_cast<HFONT>(handle);
}

}  // namespace winhost

HFONT CreateFontIndirectW(const LOGFONTW* font) {
  if (!font) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return nullptr;
  }
  if (const auto error = winhost::PlannedFault("CreateFontIndirectW", winhost::FaceName(*font))) {
    SetLastError(*error);
    return nullptr;
  }
  return static_cast<HFONT>(winhost::EnterObject(std::make_shared<winhost::Font>(*font)));
}
