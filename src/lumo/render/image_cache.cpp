#include "lumo/render/image_cache.h"

#include <shlwapi.h>

#include <map>

#include "base/format.h"
#include "base/lock.h"
#include "lumo/core/name_hash.h"
#include "lumo/core/resource_source.h"
#include "lumo/render/file_bytes.h"
#include "lumo/render/image_attribute.h"
#include "lumo/render/picture_decoder.h"
#include "lumo/render/scale_file.h"
#include "lumo/render/vector_image.h"

namespace lumo {
namespace {

constinit vanta::Lazy<std::map<DWORD, std::weak_ptr<ImageInfo>>> cache;

constexpr bool IsSeparator(WCHAR c) { return c == TEXT('/') || c == TEXT('\\'); }

// "." and ".." segments resolved, "\\" between segments. What climbs above the start stays written so.
String NormalisePath(StringView path) {
  std::vector<StringView> segments;  // each with the separator after it
  while (!path.empty()) {
    const size_t separator = path.find_first_of(TEXT("/\\"));
    const StringView segment = path.substr(0, separator == StringView::npos ? separator : separator + 1);
    path.remove_prefix(segment.size());
    const StringView name = IsSeparator(segment.back()) ? segment.substr(0, segment.size() - 1) : segment;
    if (name == TEXT(".") && name.size() != segment.size()) continue;
    const bool climbs = name == TEXT("..") && !segments.empty() && !IsSeparator(segments.back().front()) &&
                        !segments.back().starts_with(TEXT("..")) && segments.back().find(TEXT(':')) == StringView::npos;
    if (climbs) {
      segments.pop_back();
    } else {
      segments.push_back(segment);
    }
  }
  String normal;
  for (const StringView segment : segments) normal += segment;
  for (WCHAR& c : normal) {
    if (c == TEXT('/')) c = TEXT('\\');
  }
  return normal;
}

bool IsVectorFile(const String& path) {
  const size_t dot = path.rfind(TEXT('.'));
  return dot != String::npos && vanta::EqualAsciiNoCase(StringView(path).substr(dot), TEXT(".svg"));
}

std::shared_ptr<ImageInfo> Decode(const String& path, int scale_percent, const ImageAttribute& attribute) {
  if (!IsVectorFile(path)) return DecodePicture(ReadPictureFile(path));
  const std::vector<BYTE> bytes = ReadVectorFile(path);
  return MakeVectorImage({reinterpret_cast<const char*>(bytes.data()), bytes.size()}, scale_percent, attribute.color,
                         attribute.scale);
}

std::shared_ptr<ImageInfo> FindOrDecode(StringView unscaled, int scale_percent, const ImageAttribute& attribute) {
  const String path = ChooseScaleFile(unscaled, scale_percent, PictureFileExists);
  const DWORD key = ImageCacheKey(path, scale_percent, attribute.color, attribute.scale);
  if (std::shared_ptr<ImageInfo> found = image_cache_detail::Find(key)) return found;
  std::shared_ptr<ImageInfo> image = Decode(path, scale_percent, attribute);
  if (!image) return image;
  image->path = path;
  image_cache_detail::Enter(key, image);
  return image;
}

}  // namespace

String ResolveImagePath(StringView file, StringView window_folder) {
  String path(file);
  if (PathIsRelativeW(path.c_str())) path = Resources().ThemeFolder() + String(window_folder) + path;
  return NormalisePath(path);
}

DWORD ImageCacheKey(StringView path, int scale_percent, StringView color, StringView scale) {
  return HashName(vanta::Format(TEXT("%s_factor_%d_color_%s_scale_%s"), path, scale_percent, color, scale));
}

bool LoadImage(ImageAttribute& attribute, StringView window_folder, int scale_percent) {
  if (attribute.image) return true;
  if (attribute.file.empty()) return false;
  attribute.image = FindOrDecode(ResolveImagePath(attribute.file, window_folder), scale_percent, attribute);
  if (!attribute.image) attribute.Reset();
  return attribute.image != nullptr;
}

size_t CountCachedImages() { return cache.Get().size(); }

namespace image_cache_detail {

std::shared_ptr<ImageInfo> Find(DWORD key) {
  const auto found = cache.Get().find(key);
  return found == cache.Get().end() ? nullptr : found->second.lock();
}

void Enter(DWORD key, const std::shared_ptr<ImageInfo>& image) {
  image->cache_key = key;
  image->cached = true;
  cache.Get()[key] = image;
}

void Forget(DWORD key) { cache.Get().erase(key); }

}  // namespace image_cache_detail
}  // namespace lumo
