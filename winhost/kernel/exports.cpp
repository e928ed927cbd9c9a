#include "winhost/kernel/exports.h"

#include <array>

#include "winhost/devices/device_exports.h"
#include "winhost/kernel/loader_exports.h"
#include "winhost/kernel/process_exports.h"
#include "winhost/kernel/system_exports.h"
#include "winhost/kernel/transacted_exports.h"
#include "winhost/shell/shell_exports.h"
#include "winhost/window/window_exports.h"

namespace winhost {

std::span<const std::span<const BuiltInExport>> BuiltInExports() {
  static const std::array tables = {DeviceExports(), LoaderExports(),     ProcessExports(), ShellExports(),
                                    SystemExports(), TransactedExports(), WindowExports()};
  return tables;
}

}  // namespace winhost
