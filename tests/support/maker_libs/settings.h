// How a stand-in maker library is told to behave: numbers in the environment, so that a test sets them before the
// library is loaded.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace maker_libs {

inline unsigned long Setting(const char* name, unsigned long otherwise) {
  const char* text = std::getenv(name);
  return text ? std::strtoul(text, nullptr, 0) : otherwise;
}

// Adds a line to the file that MAKER_CALLS names.
inline void Tell(const char* line) {
  const char* path = std::getenv("MAKER_CALLS");
  std::FILE* file = path ? std::fopen(path, "a") : nullptr;
  if (!file) return;
  std::fprintf(file, "%s\n", line);
  std::fclose(file);
}

}  // namespace maker_libs
