// NanoSVG lives in its headers; this is the one place where they become code.
#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#define NANOSVG_IMPLEMENTATION
#define NANOSVGRAST_IMPLEMENTATION
#include <nanosvg.h>

#include <nanosvgrast.h>
