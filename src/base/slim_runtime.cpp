// What the C++ run-time library would bring for exceptions, written as what this program does instead: it ends. Linked
// into the Windows executables only, whose size it more than halves. There is no unwinding, so running out of memory
// and a broken contract of a container both end the process at once, with a code that tells them apart.
#include <windows.h>

#include <cstdlib>
#include <memory>
#include <new>

namespace {

enum EndCode : UINT { kOutOfMemory = 0xE0000001, kBrokenContract = 0xE0000002 };

[[noreturn]] void End(EndCode code) {
  TerminateProcess(GetCurrentProcess(), code);
  for (;;) {
  }
}

void* AllocateOrNone(std::size_t size) noexcept { return std::malloc(size ? size : 1); }

void* Allocate(std::size_t size) noexcept {
  void* const block = AllocateOrNone(size);
  if (!block) End(kOutOfMemory);
  return block;
}

}  // namespace

void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return AllocateOrNone(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return AllocateOrNone(size); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t) noexcept { std::free(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { std::free(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { std::free(block); }

extern "C" void __cxa_pure_virtual() { End(kBrokenContract); }

namespace std {

// Asked when two descriptions of a type lie at different addresses; without run-time types there is one.
bool _Sp_make_shared_tag::_S_eq(const type_info&) noexcept { return false; }

[[noreturn]] void __throw_bad_alloc() { End(kOutOfMemory); }
[[noreturn]] void __throw_bad_array_new_length() { End(kOutOfMemory); }
[[noreturn]] void __throw_length_error(const char*) { End(kOutOfMemory); }
[[noreturn]] void __throw_logic_error(const char*) { End(kBrokenContract); }
[[noreturn]] void __throw_invalid_argument(const char*) { End(kBrokenContract); }
[[noreturn]] void __throw_out_of_range(const char*) { End(kBrokenContract); }
[[noreturn]] void __throw_out_of_range_fmt(const char*, ...) { End(kBrokenContract); }
[[noreturn]] void __throw_bad_cast() { End(kBrokenContract); }
[[noreturn]] void __throw_bad_function_call() { End(kBrokenContract); }
[[noreturn]] void __throw_bad_optional_access() { End(kBrokenContract); }
[[noreturn]] void __throw_bad_variant_access(const char*) { End(kBrokenContract); }
[[noreturn]] void __throw_system_error(int) { End(kBrokenContract); }

}  // namespace std
