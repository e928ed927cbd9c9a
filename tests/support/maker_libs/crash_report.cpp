// A stand-in for the maker's crash reporter: tells that it was called.
#include <windows.h>

#include "tests/support/maker_libs/settings.h"

extern "C" {
__attribute__((visibility("default"))) void WINAPI Initialize() { maker_libs::Tell("Initialize"); }
__attribute__((visibility("default"))) void WINAPI OnExiting() { maker_libs::Tell("OnExiting"); }
}
