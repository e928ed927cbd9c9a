#include "winhost/kernel/exports.h"

#include <array>

#include "winhost/kernel/loader_exports.h"
#include "winhost/kernel/process_exports.h"
#include "winhost/kernel/system_exports.h"

namespace winhost {

std::span<const std::span<const BuiltInExport>> BuiltInExports() {
  static const std::array tables = {LoaderExports(), ProcessExports(), SystemExports()};
  return tables;
}

}  // namespace winhost
