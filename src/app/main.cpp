#include "app/process.h"

#include <windows.h>

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) { return vanta::RunProcess(); }
