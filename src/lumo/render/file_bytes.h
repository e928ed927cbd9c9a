// Whole files for the loader of pictures: out of the skin package, or from the disk when nothing is packaged.
#pragma once

#include "lumo/core/types.h"

#include <vector>

namespace lumo {

bool PictureFileExists(const String& path);
// Empty when it is not there, cannot be read, or holds more than 64 MiB.
std::vector<BYTE> ReadPictureFile(const String& path);
// As a narrow-character program opens it: a path that the system's code page cannot write is not found on the disk.
std::vector<BYTE> ReadVectorFile(const String& path);

}  // namespace lumo
