// The choice among pictures drawn for different scales.
#pragma once

#include "lumo/core/types.h"

#include <functional>

namespace lumo {

// `path` with a folder named after the number before the file name: icon/150/logo.png for icon/logo.png.
String InsertScaleFolder(StringView path, int percent);

// Above 100 percent the file of the folder named after the scale, else that of the folder 200, where `exists` says that
// it is there; otherwise `path`. Asks about at most two files.
String ChooseScaleFile(StringView path, int scale_percent, const std::function<bool(const String&)>& exists);

}  // namespace lumo
