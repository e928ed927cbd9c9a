// GDI+: status codes, points, sizes, rectangles, pixel formats and the records that functions fill in.
#pragma once

#include <wingdi.h>
#include <objidl.h>

using PROPID = ULONG;

namespace Gdiplus {

using REAL = float;
using ARGB = DWORD;
using PixelFormat = INT;
using GraphicsState = DWORD;
using GraphicsContainer = DWORD;
using DrawImageAbort = void*;
using DebugEventProc = void*;

enum GpStatus {
  Ok = 0,
  GenericError = 1,
  InvalidParameter = 2,
  OutOfMemory = 3,
  ObjectBusy = 4,
  InsufficientBuffer = 5,
  NotImplemented = 6,
  Win32Error = 7,
  WrongState = 8,
  Aborted = 9,
  FileNotFound = 10,
  ValueOverflow = 11,
  AccessDenied = 12,
  UnknownImageFormat = 13,
  FontFamilyNotFound = 14,
  FontStyleNotFound = 15,
  NotTrueTypeFont = 16,
  UnsupportedGdiplusVersion = 17,
  GdiplusNotInitialized = 18,
  PropertyNotFound = 19,
  PropertyNotSupported = 20,
};
using Status = GpStatus;

struct Point {
  INT X = 0;
  INT Y = 0;
  Point() = default;
  Point(INT x, INT y) : X(x), Y(y) {}
};

struct PointF {
  REAL X = 0;
  REAL Y = 0;
  PointF() = default;
  PointF(REAL x, REAL y) : X(x), Y(y) {}
};

struct Rect {
  INT X = 0;
  INT Y = 0;
  INT Width = 0;
  INT Height = 0;
  Rect() = default;
  Rect(INT x, INT y, INT width, INT height) : X(x), Y(y), Width(width), Height(height) {}
};

struct RectF {
  REAL X = 0;
  REAL Y = 0;
  REAL Width = 0;
  REAL Height = 0;
  RectF() = default;
  RectF(REAL x, REAL y, REAL width, REAL height) : X(x), Y(y), Width(width), Height(height) {}
};

// m[row][column]: a colour (r, g, b, a, 1), each from 0 to 1 and straight, is the row vector on the left.
struct ColorMatrix {
  REAL m[5][5];
};

struct BitmapData {
  UINT Width;
  UINT Height;
  INT Stride;  // bytes from a row to the next one below
  INT PixelFormat;
  VOID* Scan0;
  UINT_PTR Reserved;
};

// `value` points into the block that GdipGetPropertyItem fills.
struct PropertyItem {
  PROPID id;
  ULONG length;  // bytes of the value
  WORD type;
  VOID* value;
};

// The low byte is an index, the next one the bits a pixel, the rest flags.
#define PixelFormatIndexed (static_cast<INT>(0x00010000))
#define PixelFormatGDI (static_cast<INT>(0x00020000))
#define PixelFormatAlpha (static_cast<INT>(0x00040000))
#define PixelFormatPAlpha (static_cast<INT>(0x00080000))
#define PixelFormatCanonical (static_cast<INT>(0x00200000))
#define PixelFormatUndefined (static_cast<INT>(0))
#define PixelFormat8bppIndexed (static_cast<INT>(3 | (8 << 8) | PixelFormatIndexed | PixelFormatGDI))
#define PixelFormat24bppRGB (static_cast<INT>(8 | (24 << 8) | PixelFormatGDI))
#define PixelFormat32bppRGB (static_cast<INT>(9 | (32 << 8) | PixelFormatGDI))
#define PixelFormat32bppARGB \
  (static_cast<INT>(10 | (32 << 8) | PixelFormatAlpha | PixelFormatGDI | PixelFormatCanonical))
#define PixelFormat32bppPARGB (static_cast<INT>(11 | (32 << 8) | PixelFormatAlpha | PixelFormatPAlpha | PixelFormatGDI))

#define PropertyTagFrameDelay (static_cast<PROPID>(0x5100))
#define PropertyTagLoopCount (static_cast<PROPID>(0x5101))
#define PropertyTagTypeShort (static_cast<WORD>(3))
#define PropertyTagTypeLong (static_cast<WORD>(4))

inline constexpr GUID FrameDimensionTime = {
    0x6aedbd6d, 0x3fb5, 0x418a, {0x83, 0xa6, 0x7f, 0x45, 0x22, 0x9d, 0xc8, 0x72}};
inline constexpr GUID FrameDimensionPage = {
    0x7462dc86, 0x6180, 0x4c7e, {0x8e, 0x3f, 0xee, 0x73, 0x33, 0xa7, 0xa4, 0x83}};

}  // namespace Gdiplus
