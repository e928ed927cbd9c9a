#include "winhost/shell/shell_exports.h"

#include <shobjidl.h>
#include <windows.h>

namespace winhost {
namespace {

bool HasVista(const Facts& facts) { return facts.AtLeast(6, 0); }

const BuiltInExport kRows[] = {
    {"shell32.dll", "SHCreateItemFromParsingName", AsExport(SHCreateItemFromParsingName), HasVista},
};

}  // namespace

std::span<const BuiltInExport> ShellExports() { return kRows; }

}  // namespace winhost
