#include "winhost/dialogs/dialog_look.h"

#include <algorithm>

namespace winhost {
namespace {

constexpr int kFontHeight = 12;  // pixels of the em square at 96 dpi: 9 points
constexpr std::u16string_view kFace = u"Microsoft YaHei UI";

}  // namespace

void DialogLook::Follow(int dpi) {
  dpi_ = dpi;
  LOGFONTW wanted{};
  wanted.lfHeight = -Px(kFontHeight);
  wanted.lfWeight = FW_NORMAL;
  wanted.lfCharSet = DEFAULT_CHARSET;
  kFace.copy(wanted.lfFaceName, LF_FACESIZE - 1);
  const HFONT font = CreateFontIndirectW(&wanted);
  if (!font) return;
  if (font_) DeleteObject(font_);
  font_ = font;
}

Painter::Painter(const DialogLook& look, HDC context) : context_(context) {
  if (!context) return;
  former_ = SelectObject(context, look.font() ? look.font() : GetStockObject(DEFAULT_GUI_FONT));
  SetBkMode(context, TRANSPARENT);
}

Painter::~Painter() {
  if (former_) SelectObject(context_, former_);
}

void Painter::Fill(const RECT& area, COLORREF color) const {
  const HBRUSH brush = CreateSolidBrush(color);
  FillRect(context_, &area, brush);
  DeleteObject(brush);
}

void Painter::Frame(const RECT& area, COLORREF color) const {
  const HBRUSH brush = CreateSolidBrush(color);
  FrameRect(context_, &area, brush);
  DeleteObject(brush);
}

void Painter::Text(const std::u16string& text, RECT area, COLORREF color, UINT format) const {
  SetTextColor(context_, color);
  DrawTextW(context_, text.c_str(), static_cast<int>(text.size()), &area,
            format | DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
}

int Painter::WidthOf(std::u16string_view text) const {
  RECT area{};
  DrawTextW(context_, text.data(), static_cast<int>(text.size()), &area, DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX);
  return text.empty() ? 0 : static_cast<int>(area.right);
}

}  // namespace winhost
