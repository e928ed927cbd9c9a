// GDI: device contexts, bitmaps, regions, blits, fonts and text.
//
// Promises: a memory DC draws into the 32-bit DIB section that is selected into it, which the caller may read and write
// at any time: top-down or bottom-up rows of blue, green, red, alpha bytes. Blits of equal size are exact, alpha
// included; blending takes premultiplied sources. All drawing obeys the clip region and the window origin. Text is
// real: shaped, with Chinese glyphs, antialiased in grey, its glyphs at whole pixels as GDI sets them; like every solid
// fill it leaves alpha 0 where it draws. Handles are never reused at once: a stale or wrong one answers as Windows does
// (FALSE, null, 0, RGN_ERROR) and sets ERROR_INVALID_HANDLE. A font deleted while it is selected goes when it is
// deselected; a bitmap that is selected cannot be deleted, nor selected into a second DC.
// Simplifies: mapping is MM_TEXT; one logical unit is one pixel. DIB sections have 32 bits a pixel and no file behind
// them. Raster operations: the constants below. HALFTONE averages or interpolates linearly. Brushes are solid. Every
// face name stands for one font file (see winhost/gdi/font_substitution.h). There are no pens.
// To fail: the fault plan: "CreateCompatibleDC", "CreateDIBSection", "CreateFontIndirectW" (subject: the face name),
// "CreateRectRgn" (all makers of regions), "SaveDC", "GetDC" (window and screen DCs), "BitBlt", "StretchBlt",
// "AlphaBlend".
#pragma once

#include <windef.h>

#define LF_FACESIZE 32
#define FW_NORMAL 400
#define FW_BOLD 700
#define ANSI_CHARSET 0
#define DEFAULT_CHARSET 1
#define GB2312_CHARSET 134
#define DEFAULT_QUALITY 0
#define NONANTIALIASED_QUALITY 3
#define ANTIALIASED_QUALITY 4
#define CLEARTYPE_QUALITY 5
#define VARIABLE_PITCH 2
#define FF_SWISS 0x20

#define WHITE_BRUSH 0
#define BLACK_BRUSH 4
#define NULL_BRUSH 5
#define SYSTEM_FONT 13
#define DEFAULT_GUI_FONT 17

#define TRANSPARENT 1
#define OPAQUE 2
#define CLR_INVALID 0xFFFFFFFF
#define RGB(r, g, b)                                                                               \
  (static_cast<COLORREF>((static_cast<BYTE>(r) | (static_cast<WORD>(static_cast<BYTE>(g)) << 8)) | \
                         (static_cast<DWORD>(static_cast<BYTE>(b)) << 16)))
#define GetRValue(rgb) (static_cast<BYTE>(rgb))
#define GetGValue(rgb) (static_cast<BYTE>(static_cast<WORD>(rgb) >> 8))
#define GetBValue(rgb) (static_cast<BYTE>((rgb) >> 16))

#define RGN_AND 1
#define RGN_OR 2
#define RGN_XOR 3
#define RGN_DIFF 4
#define RGN_COPY 5
#define RGN_ERROR 0
#define NULLREGION 1
#define SIMPLEREGION 2
#define COMPLEXREGION 3

#define BI_RGB 0
#define DIB_RGB_COLORS 0

#define SRCCOPY (static_cast<DWORD>(0x00CC0020))
#define SRCPAINT (static_cast<DWORD>(0x00EE0086))
#define SRCAND (static_cast<DWORD>(0x008800C6))
#define SRCINVERT (static_cast<DWORD>(0x00660046))
#define NOTSRCCOPY (static_cast<DWORD>(0x00330008))
#define BLACKNESS (static_cast<DWORD>(0x00000042))
#define WHITENESS (static_cast<DWORD>(0x00FF0062))
#define CAPTUREBLT (static_cast<DWORD>(0x40000000))
#define BLACKONWHITE 1
#define WHITEONBLACK 2
#define COLORONCOLOR 3
#define HALFTONE 4
#define AC_SRC_OVER 0x00
#define AC_SRC_ALPHA 0x01

#define HORZRES 8
#define VERTRES 10
#define BITSPIXEL 12
#define PLANES 14
#define LOGPIXELSX 88
#define LOGPIXELSY 90

struct BITMAPINFOHEADER {
  DWORD biSize;
  LONG biWidth;
  LONG biHeight;  // negative: top-down
  WORD biPlanes;
  WORD biBitCount;
  DWORD biCompression;
  DWORD biSizeImage;
  LONG biXPelsPerMeter;
  LONG biYPelsPerMeter;
  DWORD biClrUsed;
  DWORD biClrImportant;
};
using PBITMAPINFOHEADER = BITMAPINFOHEADER*;

struct RGBQUAD {
  BYTE rgbBlue;
  BYTE rgbGreen;
  BYTE rgbRed;
  BYTE rgbReserved;
};

struct BITMAPINFO {
  BITMAPINFOHEADER bmiHeader;
  RGBQUAD bmiColors[1];
};
using PBITMAPINFO = BITMAPINFO*;

struct BITMAP {
  LONG bmType;
  LONG bmWidth;
  LONG bmHeight;
  LONG bmWidthBytes;
  WORD bmPlanes;
  WORD bmBitsPixel;
  LPVOID bmBits;  // null unless it is a DIB section
};

struct DIBSECTION {
  BITMAP dsBm;
  BITMAPINFOHEADER dsBmih;
  DWORD dsBitfields[3];
  HANDLE dshSection;
  DWORD dsOffset;
};

struct LOGFONTW {
  LONG lfHeight;  // negative: pixels of the em square; positive: of the cell; 0: a default
  LONG lfWidth;
  LONG lfEscapement;
  LONG lfOrientation;
  LONG lfWeight;
  BYTE lfItalic;
  BYTE lfUnderline;
  BYTE lfStrikeOut;
  BYTE lfCharSet;
  BYTE lfOutPrecision;
  BYTE lfClipPrecision;
  BYTE lfQuality;
  BYTE lfPitchAndFamily;
  WCHAR lfFaceName[LF_FACESIZE];
};
using LOGFONT = LOGFONTW;

struct TEXTMETRICW {
  LONG tmHeight;
  LONG tmAscent;
  LONG tmDescent;
  LONG tmInternalLeading;
  LONG tmExternalLeading;
  LONG tmAveCharWidth;
  LONG tmMaxCharWidth;
  LONG tmWeight;
  LONG tmOverhang;
  LONG tmDigitizedAspectX;
  LONG tmDigitizedAspectY;
  WCHAR tmFirstChar;
  WCHAR tmLastChar;
  WCHAR tmDefaultChar;
  WCHAR tmBreakChar;
  BYTE tmItalic;
  BYTE tmUnderlined;
  BYTE tmStruckOut;
  BYTE tmPitchAndFamily;
  BYTE tmCharSet;
};
using TEXTMETRIC = TEXTMETRICW;

struct BLENDFUNCTION {
  BYTE BlendOp;
  BYTE BlendFlags;
  BYTE SourceConstantAlpha;
  BYTE AlphaFormat;
};

// A null `like` means the screen. The new DC has a picture of one pixel until a bitmap is selected.
HDC WINAPI CreateCompatibleDC(HDC like);
BOOL WINAPI DeleteDC(HDC dc);
// Answers the state's number, from 1; 0 on failure.
int WINAPI SaveDC(HDC dc);
// Positive: that state; negative: so many states back. Later states are dropped.
BOOL WINAPI RestoreDC(HDC dc, int state);
int WINAPI GetDeviceCaps(HDC dc, int index);

// `bits` gets the first row in memory, which lives as long as the bitmap.
HBITMAP WINAPI CreateDIBSection(HDC dc, const BITMAPINFO* info, UINT usage, LPVOID* bits, HANDLE section, DWORD offset);
HFONT WINAPI CreateFontIndirectW(const LOGFONTW* font);
HBRUSH WINAPI CreateSolidBrush(COLORREF color);

// Answers the object of that kind that was selected before. Regions: the complexity, the region is copied.
HGDIOBJ WINAPI SelectObject(HDC dc, HGDIOBJ object);
HGDIOBJ WINAPI GetStockObject(int index);
// Bitmaps give a BITMAP or, if there is room, a DIBSECTION; fonts a LOGFONTW. A null buffer asks for the size.
int WINAPI GetObjectW(HANDLE object, int bytes, LPVOID buffer);
BOOL WINAPI DeleteObject(HGDIOBJ object);

BOOL WINAPI SetWindowOrgEx(HDC dc, int x, int y, LPPOINT former);
BOOL WINAPI OffsetWindowOrgEx(HDC dc, int dx, int dy, LPPOINT former);
BOOL WINAPI GetWindowOrgEx(HDC dc, LPPOINT origin);

HRGN WINAPI CreateRectRgn(int left, int top, int right, int bottom);
// Width and height of the ellipse whose quarters round the corners. The region ends a pixel before right and bottom,
// which are themselves outside: this one call leaves out a row and a column more than the others.
HRGN WINAPI CreateRoundRectRgn(int left, int top, int right, int bottom, int width, int height);
int WINAPI CombineRgn(HRGN result, HRGN first, HRGN second, int mode);
int WINAPI GetRgnBox(HRGN region, LPRECT box);

// Clip regions are in device coordinates; a null region with RGN_COPY removes the clip. The rectangles of the others
// are logical.
int WINAPI ExtSelectClipRgn(HDC dc, HRGN region, int mode);
int WINAPI GetClipBox(HDC dc, LPRECT box);
// 1: copied; 0: there is none; -1: failure.

// What of the source lies outside its picture is not copied.
BOOL WINAPI BitBlt(HDC to, int x, int y, int width, int height, HDC from, int from_x, int from_y, DWORD operation);
// Negative sizes mirror. SRCCOPY only.
BOOL WINAPI StretchBlt(HDC to, int x, int y, int width, int height, HDC from, int from_x, int from_y, int from_width,
                       int from_height, DWORD operation);
int WINAPI SetStretchBltMode(HDC dc, int mode);
// Refuses negative sizes and a source rectangle that leaves the source's picture, with ERROR_INVALID_PARAMETER.
BOOL WINAPI AlphaBlend(HDC to, int x, int y, int width, int height, HDC from, int from_x, int from_y, int from_width,
                       int from_height, BLENDFUNCTION blend);
// Nothing is kept back here; always TRUE.
BOOL WINAPI GdiFlush();

COLORREF WINAPI SetTextColor(HDC dc, COLORREF color);
COLORREF WINAPI SetBkColor(HDC dc, COLORREF color);
int WINAPI SetBkMode(HDC dc, int mode);
BOOL WINAPI GetTextMetricsW(HDC dc, TEXTMETRICW* metrics);

#define CreateFontIndirect CreateFontIndirectW
#define GetObject GetObjectW
#define GetTextMetrics GetTextMetricsW
#define GetTextExtentPoint32 GetTextExtentPoint32W
