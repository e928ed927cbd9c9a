#include "setupui/setup_window.h"

namespace vanta {

HWND CreateSetupWindow() { return nullptr; }

}  // namespace vanta
