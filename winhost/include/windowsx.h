// The point that a mouse message carries.
#pragma once

#include <minwindef.h>

#define GET_X_LPARAM(lparam) ((int)(short)LOWORD(lparam))
#define GET_Y_LPARAM(lparam) ((int)(short)HIWORD(lparam))
