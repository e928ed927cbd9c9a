// NanoSVG lives in its headers; this is the one place where they become code. As C, since in C++ mingw brings a scanf
// of its own into the executable, 35 KB of it, in place of the system's.
#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#define NANOSVG_IMPLEMENTATION
#define NANOSVGRAST_IMPLEMENTATION
#include <nanosvg.h>

#include <nanosvgrast.h>
