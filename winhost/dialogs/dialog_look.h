// What the dialogs look like: colours, the font, lengths at the screen's scale, and a brush to paint with.
#pragma once

#include <windows.h>

#include <string>

namespace winhost {

namespace ink {
constexpr COLORREF kPaper = RGB(255, 255, 255);
constexpr COLORREF kFooter = RGB(243, 243, 243);
constexpr COLORREF kText = RGB(26, 26, 26);
constexpr COLORREF kFaint = RGB(109, 109, 109);
constexpr COLORREF kWarning = RGB(196, 43, 28);
constexpr COLORREF kLine = RGB(217, 217, 217);
constexpr COLORREF kEdge = RGB(141, 141, 141);
constexpr COLORREF kAccent = RGB(0, 103, 192);
constexpr COLORREF kHot = RGB(229, 243, 255);
constexpr COLORREF kChosen = RGB(204, 232, 255);
constexpr COLORREF kMarked = RGB(0, 120, 215);
}  // namespace ink

// One a dialog; its parts keep a reference.
class DialogLook {
 public:
  DialogLook() = default;
  ~DialogLook() {
    if (font_) DeleteObject(font_);
  }
  DialogLook(const DialogLook&) = delete;
  DialogLook& operator=(const DialogLook&) = delete;

  // Takes the font that goes with this scale.
  void Follow(int dpi);
  // Device pixels of a length at 96 dpi.
  int Px(int length) const { return MulDiv(length, dpi_, 96); }
  HFONT font() const { return font_; }

 private:
  int dpi_ = 96;
  HFONT font_ = nullptr;
};

// Paints with the look's font into a context that somebody else ends.
class Painter {
 public:
  Painter(const DialogLook& look, HDC context);
  ~Painter();
  Painter(const Painter&) = delete;
  Painter& operator=(const Painter&) = delete;

  explicit operator bool() const { return context_ != nullptr; }
  HDC context() const { return context_; }
  void Fill(const RECT& area, COLORREF color) const;
  void Frame(const RECT& area, COLORREF color) const;
  // On one line, in the middle of the area's height; `format` as DrawTextW takes it.
  void Text(const std::u16string& text, RECT area, COLORREF color, UINT format) const;
  int WidthOf(std::u16string_view text) const;

 private:
  HDC context_;
  HGDIOBJ former_ = nullptr;
};

// BeginPaint and EndPaint.
class PaintScope {
 public:
  explicit PaintScope(HWND window) : window_(window), context_(BeginPaint(window, &paint_)) {}
  ~PaintScope() {
    if (context_) EndPaint(window_, &paint_);
  }
  PaintScope(const PaintScope&) = delete;
  PaintScope& operator=(const PaintScope&) = delete;
  HDC context() const { return context_; }

 private:
  HWND window_;
  PAINTSTRUCT paint_{};
  HDC context_;
};

// The screen's context, to measure with.
class MeasureScope {
 public:
  MeasureScope() : context_(GetDC(nullptr)) {}
  ~MeasureScope() {
    if (context_) ReleaseDC(nullptr, context_);
  }
  MeasureScope(const MeasureScope&) = delete;
  MeasureScope& operator=(const MeasureScope&) = delete;
  HDC context() const { return context_; }

 private:
  HDC context_;
};

}  // namespace winhost
