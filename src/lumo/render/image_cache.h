// Loading pictures, each once: a process-wide table from key to picture that keeps none of them alive.
//
// UI thread only.
#pragma once

#include "lumo/render/image_info.h"

#include <memory>

namespace lumo {

class Window;
struct ImageAttribute;

// Makes sure that the attribute's picture is there, decoding it on first use. False when it has no file or the file
// cannot be read or decoded; the attribute is then reset. `window` may be null: scale 100, no folder of its own.
bool LoadImage(ImageAttribute& attribute, const Window* window);
// The same with what it asks of the window.
bool LoadImage(ImageAttribute& attribute, StringView window_folder, int scale_percent);

// Where a picture is looked for: absolute files as they are, others below the theme folder and the window's folder;
// "." and ".." segments are resolved. Pure but for the theme folder.
String ResolveImagePath(StringView file, StringView window_folder);

// The hash under which a picture is shared. Pure.
DWORD ImageCacheKey(StringView path, int scale_percent, StringView color, StringView scale);

// Live pictures: for leak checks.
size_t CountCachedImages();

namespace image_cache_detail {
std::shared_ptr<ImageInfo> Find(DWORD key);
void Enter(DWORD key, const std::shared_ptr<ImageInfo>& image);
void Forget(DWORD key);
}  // namespace image_cache_detail

}  // namespace lumo
