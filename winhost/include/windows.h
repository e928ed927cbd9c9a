// The umbrella header, as the SDK has it. Each area is a header of its own beside this one; every one holds what the
// setup calls and nothing else, so a call that is missing here is missing at compile time.
#pragma once

#include <windef.h>
#include <winbase.h>
#include <winerror.h>
#include <wingdi.h>
#include <winnls.h>
#include <winreg.h>
#include <winsvc.h>
#include <winuser.h>
#include <winver.h>

#ifndef WIN32_LEAN_AND_MEAN
#include <ole2.h>
#include <shellapi.h>
#include <wincrypt.h>
#endif
