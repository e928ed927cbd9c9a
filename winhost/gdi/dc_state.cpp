// Saving and restoring a DC, its origin, colours and modes.
#include <utility>

#include "winhost/gdi/dc.h"
#include "winhost/machine/faults.h"

using winhost::DcState;
using winhost::FindDc;

namespace {

template <class T>
T Exchange(HDC handle, T DcState::*member, T value, T failure) {
  const auto dc = FindDc(handle);
  return dc ? std::exchange(dc->state.*member, value) : failure;
}

}  // namespace

int SaveDC(HDC handle) {
  if (const auto error = winhost::PlannedFault("SaveDC")) {
    SetLastError(*error);
    return 0;
  }
  const auto dc = FindDc(handle);
  if (!dc) return 0;
  dc->saved.push_back(dc->state);
  return static_cast<int>(dc->saved.size());
}

BOOL RestoreDC(HDC handle, int state) {
  const auto dc = FindDc(handle);
  if (!dc) return FALSE;
  const auto saved = static_cast<LONGLONG>(dc->saved.size());
  const LONGLONG number = state < 0 ? saved + 1 + state : state;
  if (number < 1 || number > saved) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  const DcState kept = dc->saved[static_cast<std::size_t>(number - 1)];
  dc->saved.resize(static_cast<std::size_t>(number - 1));
  if (kept.bitmap != dc->state.bitmap) winhost::SelectBitmap(*dc, kept.bitmap);
  const HBITMAP bitmap = dc->state.bitmap;  // stays where the former one is gone
  dc->state = kept;
  dc->state.bitmap = bitmap;
  return TRUE;
}

BOOL SetWindowOrgEx(HDC handle, int x, int y, LPPOINT former) {
  const auto dc = FindDc(handle);
  if (!dc) return FALSE;
  const POINT old = std::exchange(dc->state.window_origin, POINT{x, y});
  if (former) *former = old;
  return TRUE;
}

BOOL OffsetWindowOrgEx(HDC handle, int dx, int dy, LPPOINT former) {
  const auto dc = FindDc(handle);
  if (!dc) return FALSE;
  const POINT old = dc->state.window_origin;
  const auto sum = [](LONG a, int b) { return static_cast<LONG>(static_cast<DWORD>(a) + static_cast<DWORD>(b)); };
  return SetWindowOrgEx(handle, sum(old.x, dx), sum(old.y, dy), former);
}

BOOL GetWindowOrgEx(HDC handle, LPPOINT origin) {
  const auto dc = FindDc(handle);
  if (!dc || !origin) return FALSE;
  *origin = dc->state.window_origin;
  return TRUE;
}

COLORREF SetTextColor(HDC dc, COLORREF color) {
  return Exchange<COLORREF>(dc, &DcState::text_color, color, CLR_INVALID);
}
COLORREF SetBkColor(HDC dc, COLORREF color) { return Exchange<COLORREF>(dc, &DcState::background, color, CLR_INVALID); }
int SetBkMode(HDC dc, int mode) {
  return mode == OPAQUE || mode == TRANSPARENT ? Exchange(dc, &DcState::background_mode, mode, 0) : 0;
}
int SetStretchBltMode(HDC dc, int mode) {
  return mode >= BLACKONWHITE && mode <= HALFTONE ? Exchange(dc, &DcState::stretch_mode, mode, 0) : 0;
}
