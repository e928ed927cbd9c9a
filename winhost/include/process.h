// The run-time's threads: as CreateThread and ExitThread, with the run-time's types.
#pragma once

#include <cstdint>

// 0 on failure. The caller owns the handle.
std::uintptr_t _beginthreadex(void* security, unsigned stack_bytes, unsigned (*start)(void*), void* argument,
                              unsigned flags, unsigned* thread_id);
[[noreturn]] void _endthreadex(unsigned code);
