#include "winhost/machine/shared.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace winhost {

SharedMemory::SharedMemory(Machine& machine) {
  const auto path = machine.folder() / ".shared";
  const int file = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
  void* memory = MAP_FAILED;
  if (file >= 0 && ftruncate(file, sizeof(SharedBlock)) == 0) {
    memory = mmap(nullptr, sizeof(SharedBlock), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
  }
  if (file >= 0) close(file);
  if (memory == MAP_FAILED) {
    std::fprintf(stderr, "machine: cannot map %s\n", path.c_str());
    std::exit(3);
  }
  block_ = static_cast<SharedBlock*>(memory);
}

SharedMemory::~SharedMemory() { munmap(block_, sizeof(SharedBlock)); }

}  // namespace winhost
