// Run-time exports of the loader: SetDefaultDllDirectories, AddDllDirectory, RemoveDllDirectory, LoadLibraryExW.
#pragma once

#include "winhost/kernel/exports.h"

namespace winhost {

std::span<const BuiltInExport> LoaderExports();

}  // namespace winhost
