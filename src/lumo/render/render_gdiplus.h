// RenderGdiplus: drawing with GDI+ and GDI on a memory context with a 32-bit DIB section.
#pragma once

#include "base/unique.h"
#include "lumo/render/gdi_clip.h"
#include "lumo/render/gdip.h"
#include "lumo/render/render.h"

#include <vector>

namespace lumo {

using UniqueMemoryDc = vanta::Unique<HDC, &::DeleteDC>;

class RenderGdiplus final : public IRender {
 public:
  RenderGdiplus();
  ~RenderGdiplus() override;

  HDC GetDC() override { return dc_.Get(); }
  bool Resize(int width, int height, bool top_down) override;
  void Clear() override;
  std::unique_ptr<IRender> Clone() override;
  HBITMAP DetachBitmap() override;
  BYTE* GetBits() override { return bits_; }
  int GetWidth() override { return width_; }
  int GetHeight() override { return height_; }
  void FillPixels(const RECT& rect, BYTE value) override;
  void SetOpaqueExceptCorners(const RECT& rect, const RECT& corners) override;
  void ClearAlphaExceptCorners(const RECT& rect, const RECT& corners, BYTE alpha) override;
  bool SaveState() override;
  void RestoreState() override;
  POINT OffsetOrigin(int dx, int dy) override;
  POINT SetOrigin(int x, int y) override;
  POINT GetOrigin() override;
  void PushClip(const RECT& rect) override { clip_.Push(dc_.Get(), rect); }
  void NoOperation(int, int, int) override {}
  void PopClip() override { clip_.Pop(dc_.Get()); }
  bool BitBlt(const RECT& dest, HDC source, const RECT& from, DWORD raster_op) override;
  bool StretchBlt(const RECT& dest, HDC source, const RECT& from, DWORD raster_op) override;
  bool AlphaBlend(const RECT& dest, HDC source, const RECT& from, BYTE alpha) override;
  void DrawImage(const ImageDrawing& drawing) override;
  void FillRectByName(const RECT& rect, const RECT& round, StringView color, BYTE alpha) override;
  void FillRect(const RECT& rect, const RECT& round, DWORD color, BYTE alpha) override;
  void FillGradientByName(const RECT& rect, const RECT& round, StringView color1, StringView color2, int mode,
                          BYTE alpha) override;
  void FillGradient(const RECT& rect, const RECT& round, DWORD color1, DWORD color2, int mode, BYTE alpha) override;
  void DrawLine(POINT from, POINT to, int width, DWORD color) override;
  void DrawRect(const RECT& rect, int width, DWORD color) override;
  void DrawRoundRect(const RECT& rect, const RECT& round, int width, DWORD color) override;
  void DrawRoundRectByName(const RECT& rect, const RECT& round, int width, StringView color) override;
  void DrawText(const RECT& rect, StringView text, const TextLook& look) override;
  void DrawCircleByName(const RECT& rect, int width, StringView color) override;
  void DrawCircle(const RECT& rect, int width, DWORD color) override;
  void FillCircle(const RECT& rect, DWORD color) override;
  RECT MeasureText(StringView text, const TextLook& look, int width_limit) override;

 private:
  void FillShape(const RECT& rect, const RECT& round, const UniqueGpBrush& brush);
  template <class Change>
  void ForPixelsOutsideCorners(const RECT& rect, const RECT& corners, Change change);
  BYTE* Row(int y) const;  // counted from the top

  UniqueMemoryDc dc_;
  HBITMAP bitmap_ = nullptr;  // selected into dc_; owned
  HGDIOBJ previous_ = nullptr;
  BYTE* bits_ = nullptr;
  int width_ = 0;
  int height_ = 0;
  bool top_down_ = true;
  std::vector<int> saved_;  // tokens of SaveState
  GdiClip clip_;
};

}  // namespace lumo
