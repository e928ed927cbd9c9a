// The frames of animations are asked for by times of a type that GLib calls outdated and gdk-pixbuf still takes.
#define GLIB_DISABLE_DEPRECATION_WARNINGS

#include "winhost/gdiplus/decode.h"

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <algorithm>
#include <cstring>
#include <string_view>

#include "winhost/gdiplus/gif_blocks.h"

namespace winhost {
namespace {

using Bytes = std::span<const std::uint8_t>;

struct Unreferenced {
  void operator()(void* object) const { g_object_unref(object); }
};
template <class T>
using Owned = std::unique_ptr<T, Unreferenced>;

struct Format {
  const char* loader;
  std::string_view signature;
};
constexpr Format kFormats[] = {
    {"png", "\x89PNG\r\n\x1A\n"}, {"jpeg", "\xFF\xD8\xFF"}, {"gif", "GIF87a"}, {"gif", "GIF89a"}, {"bmp", "BM"}};

const char* LoaderFor(Bytes file) {
  for (const auto& [loader, signature] : kFormats) {
    if (file.size() >= signature.size() && std::memcmp(file.data(), signature.data(), signature.size()) == 0)
      return loader;
  }
  return nullptr;
}

bool Acceptable(int width, int height) {
  return width > 0 && height > 0 && width <= kMostPictureSide && height <= kMostPictureSide &&
         std::int64_t{width} * height <= kMostPicturePixels;
}

// No size at all makes the loaders give up before they allocate anything.
void RefuseHuge(GdkPixbufLoader* loader, int width, int height, void*) {
  if (!Acceptable(width, height)) gdk_pixbuf_loader_set_size(loader, 0, 0);
}

Owned<GdkPixbufAnimation> Load(const char* type, Bytes file) {
  const Owned<GdkPixbufLoader> loader(gdk_pixbuf_loader_new_with_type(type, nullptr));
  if (!loader) return nullptr;
  g_signal_connect(loader.get(), "size-prepared", G_CALLBACK(RefuseHuge), nullptr);
  constexpr std::size_t kChunk = 64 << 10;
  bool good = true;
  while (good && !file.empty()) {
    const Bytes chunk = file.first(std::min(kChunk, file.size()));
    good = gdk_pixbuf_loader_write(loader.get(), chunk.data(), chunk.size(), nullptr) != 0;
    file = file.subspan(chunk.size());
  }
  good = gdk_pixbuf_loader_close(loader.get(), nullptr) && good;
  GdkPixbufAnimation* animation = good ? gdk_pixbuf_loader_get_animation(loader.get()) : nullptr;
  if (animation) g_object_ref(animation);
  return Owned<GdkPixbufAnimation>(animation);
}

std::vector<std::uint32_t> PixelsOf(const GdkPixbuf* pixbuf) {
  const int width = gdk_pixbuf_get_width(pixbuf), height = gdk_pixbuf_get_height(pixbuf);
  const int channels = gdk_pixbuf_get_n_channels(pixbuf), stride = gdk_pixbuf_get_rowstride(pixbuf);
  const guint8* rows = gdk_pixbuf_read_pixels(pixbuf);
  std::vector<std::uint32_t> pixels;
  pixels.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  for (int y = 0; y < height; ++y) {
    const guint8* p = rows + static_cast<std::ptrdiff_t>(y) * stride;
    for (int x = 0; x < width; ++x, p += channels) {
      const std::uint32_t alpha = channels == 4 ? p[3] : 255;
      pixels.push_back(alpha << 24 | std::uint32_t{p[0]} << 16 | std::uint32_t{p[1]} << 8 | p[2]);
    }
  }
  return pixels;
}

std::shared_ptr<PictureObject> Still(const GdkPixbuf* pixbuf) {
  const int width = gdk_pixbuf_get_width(pixbuf), height = gdk_pixbuf_get_height(pixbuf);
  if (!Acceptable(width, height)) return nullptr;
  const bool alpha = gdk_pixbuf_get_has_alpha(pixbuf) != 0;
  auto picture = std::make_shared<PictureObject>(width, height, alpha ? PixelFormat32bppARGB : PixelFormat24bppRGB);
  picture->frames.emplace_back().pixels = PixelsOf(pixbuf);
  return picture;
}

// Steps through the frames by their own delays, which the loader does not take shorter than it pleases.
bool TakeFrames(GdkPixbufAnimation* animation, std::size_t count, PictureObject& picture) {
  GTimeVal time{0, 0};
  const Owned<GdkPixbufAnimationIter> step(gdk_pixbuf_animation_get_iter(animation, &time));
  for (std::size_t i = 0; i < count; ++i) {
    const GdkPixbuf* pixbuf = gdk_pixbuf_animation_iter_get_pixbuf(step.get());
    if (!pixbuf || gdk_pixbuf_get_width(pixbuf) != picture.width || gdk_pixbuf_get_height(pixbuf) != picture.height) {
      return false;
    }
    picture.frames.emplace_back().pixels = PixelsOf(pixbuf);
    const int delay = gdk_pixbuf_animation_iter_get_delay_time(step.get());
    if (delay < 0) return i + 1 == count;
    g_time_val_add(&time, glong{delay} * 1000);
    gdk_pixbuf_animation_iter_advance(step.get(), &time);
  }
  return true;
}

std::shared_ptr<PictureObject> Animated(GdkPixbufAnimation* animation, Bytes file) {
  const GifFrames frames = ReadGifFrames(file);
  const int width = gdk_pixbuf_animation_get_width(animation), height = gdk_pixbuf_animation_get_height(animation);
  const auto count = static_cast<std::int64_t>(frames.delays.size());
  if (!Acceptable(width, height) || count < 1 || count > kMostPicturePixels / (std::int64_t{width} * height))
    return nullptr;
  auto picture = std::make_shared<PictureObject>(width, height, PixelFormat8bppIndexed);
  picture->timed = true;
  picture->delays.assign(frames.delays.begin(), frames.delays.end());
  picture->repetitions = frames.repetitions;
  return TakeFrames(animation, frames.delays.size(), *picture) ? picture : nullptr;
}

}  // namespace

std::shared_ptr<PictureObject> DecodePicture(Bytes file) {
  const char* type = LoaderFor(file);
  const auto animation = type ? Load(type, file) : nullptr;
  if (!animation) return nullptr;
  if (std::string_view(type) == "gif") {
    if (!gdk_pixbuf_animation_is_static_image(animation.get())) return Animated(animation.get(), file);
  }
  const GdkPixbuf* pixbuf = gdk_pixbuf_animation_get_static_image(animation.get());
  auto picture = pixbuf ? Still(pixbuf) : nullptr;
  if (picture && std::string_view(type) == "gif") {
    picture->timed = true;
    picture->format = PixelFormat8bppIndexed;
  }
  return picture;
}

}  // namespace winhost
