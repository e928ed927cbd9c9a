// Run-time export about file-system transactions, from Vista on: CreateFileTransactedW.
//
// Simplifies: the file is created as by CreateFileW (whose faults hold), seen by everybody at once and kept whatever
// becomes of the transaction; any handle counts as one.
#pragma once

#include "winhost/kernel/exports.h"

namespace winhost {

std::span<const BuiltInExport> TransactedExports();

}  // namespace winhost
