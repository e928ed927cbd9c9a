// The fault plan: machine.json's "faults" asks that certain calls fail. A subsystem asks here at the top of every call
// that can be planned to fail, before it does anything.
//
//   if (auto error = PlannedFault("CreateFileW", path)) { SetLastError(*error); return INVALID_HANDLE_VALUE; }
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace winhost {

// The error with which this call of `operation` on `subject` (a path, key, class … as the caller gave it) is to fail;
// none: go on. Costs a load or two when the machine plans no faults and traces no calls (the fact "trace_calls", which
// journals every question in "calls"). Any thread; calls are counted a process.
std::optional<std::uint32_t> PlannedFault(const char* operation, std::u16string_view subject = {});

}  // namespace winhost
