// Vector pictures: any bytes as SVG, drawn at a scale that the first byte chooses.

#include "lumo/render/vector_image.h"

#include "tests/fuzz/fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  static constexpr int kScales[] = {100, 125, 150, 200};
  const DWORD color = 0xFF123456;
  const auto pixels = lumo::DrawVector({reinterpret_cast<const char*>(data) + 1, size - 1}, kScales[data[0] % 4],
                                       TEXT(""), data[0] & 4 ? &color : nullptr);
  if (!pixels) return 0;
  FUZZ_EXPECT(pixels->width > 0 && pixels->height > 0);
  FUZZ_EXPECT(pixels->bgra.size() ==
              static_cast<std::size_t>(pixels->width) * static_cast<std::size_t>(pixels->height) * 4);
  return 0;
}
