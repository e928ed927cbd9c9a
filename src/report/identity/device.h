// A device of the system, asked by control codes. A device whose driver has once run into its time-out is not asked
// again by this process, so that a dying disk costs the installation one such wait and not one a question.
#pragma once

#include <windows.h>

#include "base/text.h"
#include "base/unique.h"

namespace vanta {

class Device {
 public:
  // `path` is "\\.\Name". Nothing is told apart of a device that is missing, refused or given up: it answers nothing.
  Device(const String& path, DWORD access, DWORD share);

  explicit operator bool() const { return static_cast<bool>(handle_); }

  // Sends one request; `out` is zeroed first and `*returned` is how many of its bytes the device filled, at most
  // `out_size`. False: no device, or it refuses. Blocks as long as the driver takes.
  bool Ask(DWORD code, const void* in, size_t in_size, void* out, size_t out_size, size_t* returned);

 private:
  String path_;
  UniqueFile handle_;
};

}  // namespace vanta
