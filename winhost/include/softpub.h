// The verification actions of the software publishing policy.
#pragma once

#include <wintrust.h>

#define WINTRUST_ACTION_GENERIC_VERIFY_V2                                       \
  {                                                                             \
    0xaac56b, 0xcd44, 0x11d0, { 0x8c, 0xc2, 0x0, 0xc0, 0x4f, 0xc2, 0x95, 0xee } \
  }
