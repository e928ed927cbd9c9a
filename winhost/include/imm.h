// Input methods. The machine has none, so switching them off always succeeds.
// To fail: the fault plan, "ImmDisableIME".
#pragma once

#include <windef.h>

BOOL WINAPI ImmDisableIME(DWORD thread);
