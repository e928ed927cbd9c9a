#include "winhost/window/window_exports.h"

#include <shellscalingapi.h>
#include <windows.h>

namespace winhost {
namespace {

bool HasVista(const Facts& facts) { return facts.AtLeast(6, 0); }
bool Has7(const Facts& facts) { return facts.AtLeast(6, 1); }
bool Has8(const Facts& facts) { return facts.AtLeast(6, 2); }
bool Has81(const Facts& facts) { return facts.AtLeast(6, 3); }

const BuiltInExport kRows[] = {
    {"user32.dll", "SetProcessDPIAware", AsExport(SetProcessDPIAware), HasVista},
    {"user32.dll", "RegisterTouchWindow", AsExport(RegisterTouchWindow), Has7},
    {"user32.dll", "UnregisterTouchWindow", AsExport(UnregisterTouchWindow), Has7},
    {"user32.dll", "IsTouchWindow", AsExport(IsTouchWindow), Has7},
    {"user32.dll", "GetTouchInputInfo", AsExport(GetTouchInputInfo), Has7},
    {"user32.dll", "CloseTouchInputHandle", AsExport(CloseTouchInputHandle), Has7},
    {"user32.dll", "GetPointerType", AsExport(GetPointerType), Has8},
    {"user32.dll", "GetPointerInfo", AsExport(GetPointerInfo), Has8},
    {"shcore.dll", "SetProcessDpiAwareness", AsExport(SetProcessDpiAwareness), Has81},
    {"shcore.dll", "GetDpiForMonitor", AsExport(GetDpiForMonitor), Has81},
};

}  // namespace

std::span<const BuiltInExport> WindowExports() { return kRows; }

}  // namespace winhost
