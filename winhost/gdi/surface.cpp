#include "winhost/gdi/surface.h"

#include <cstdlib>

namespace winhost {
namespace {

constexpr std::size_t kMostBytes = std::size_t{1} << 31;

}  // namespace

std::shared_ptr<Surface> Surface::Make(int width, int height, bool bottom_up) {
  if (width < 1 || height < 1) return nullptr;
  const std::size_t stride = static_cast<std::size_t>(width) * 4;
  const std::size_t bytes = stride * static_cast<std::size_t>(height);
  if (bytes > kMostBytes) return nullptr;
  auto* memory = static_cast<std::uint8_t*>(std::calloc(1, bytes));
  if (!memory) return nullptr;
  PixelBuffer pixels{memory, width, height, static_cast<int>(stride)};
  if (bottom_up) pixels = {memory + bytes - stride, width, height, -static_cast<int>(stride)};
  return Over(pixels, std::shared_ptr<void>(memory, std::free));
}

std::shared_ptr<Surface> Surface::Over(const PixelBuffer& pixels, std::shared_ptr<void> keep) {
  if (!pixels.bits || pixels.width < 1 || pixels.height < 1) return nullptr;
  auto surface = std::make_shared<Surface>();
  surface->pixels_ = pixels;
  surface->keep_ = std::move(keep);
  const bool upwards = pixels.stride < 0;
  std::uint8_t* lowest =
      upwards ? pixels.bits + (pixels.height - 1) * static_cast<std::ptrdiff_t>(pixels.stride) : pixels.bits;
  surface->cairo_.reset(cairo_image_surface_create_for_data(lowest, CAIRO_FORMAT_ARGB32, pixels.width, pixels.height,
                                                            std::abs(pixels.stride)));
  return cairo_surface_status(surface->cairo()) == CAIRO_STATUS_SUCCESS ? surface : nullptr;
}

cairo_matrix_t Surface::Orientation() const {
  cairo_matrix_t matrix;
  if (pixels_.stride < 0) {
    cairo_matrix_init(&matrix, 1, 0, 0, -1, 0, pixels_.height);
  } else {
    cairo_matrix_init_identity(&matrix);
  }
  return matrix;
}

}  // namespace winhost
