// Text and fills through a DC; they live with the drawing library.
#pragma once

#include <winuser/structures.h>

#define DT_TOP 0x00000000
#define DT_LEFT 0x00000000
#define DT_CENTER 0x00000001
#define DT_RIGHT 0x00000002
#define DT_VCENTER 0x00000004
#define DT_BOTTOM 0x00000008
#define DT_WORDBREAK 0x00000010
#define DT_SINGLELINE 0x00000020
#define DT_EXPANDTABS 0x00000040
#define DT_NOCLIP 0x00000100
#define DT_EXTERNALLEADING 0x00000200
#define DT_CALCRECT 0x00000400
#define DT_NOPREFIX 0x00000800
#define DT_EDITCONTROL 0x00002000
#define DT_PATH_ELLIPSIS 0x00004000
#define DT_END_ELLIPSIS 0x00008000
#define DT_WORD_ELLIPSIS 0x00040000
#define DT_HIDEPREFIX 0x00100000

// -1 characters: up to the terminator. Answers the text's height, with DT_VCENTER and DT_BOTTOM the distance from the
// rectangle's top to the text's lower edge; 0 on failure. DT_CALCRECT draws nothing and makes the rectangle as wide as
// the widest line and as high as all lines. Vertical placement asks for DT_SINGLELINE. Ellipses are three dots and cut
// every line that is too wide; of several lines DT_END_ELLIPSIS also cuts the last that fits when text is left.
// DT_PATH_ELLIPSIS cuts in the middle, without regard to backslashes. The text is never changed.
int WINAPI DrawTextW(HDC dc, LPCWSTR text, int chars, LPRECT rect, UINT format);
// The brush may also be a system colour's number plus one.
int WINAPI FillRect(HDC dc, const RECT* rect, HBRUSH brush);
// A border of one pixel inside the rectangle.
int WINAPI FrameRect(HDC dc, const RECT* rect, HBRUSH brush);
// The system's own: never deleted, the same one each time. Null for an index that is no colour.
HBRUSH WINAPI GetSysColorBrush(int index);

#define DrawText DrawTextW
