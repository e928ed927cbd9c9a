// How long painting takes: a scene of the setup window's size and contents, whole and one step of its progress bar.
//   paint_bench                 prints {"full_us", "step_us"}: microseconds, the medians of rounds that take turns
//   paint_bench pictures DIR    writes the scene's pictures for paint_peer: art.bgra and icon.bgra, straight alpha
//   paint_bench look FILE       writes the scene as it was painted: premultiplied BGRA, to be looked at

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "lumo/core/global_resources.h"
#include "lumo/render/image_attribute.h"
#include "lumo/render/image_painter.h"
#include "lumo/render/render.h"
#include "lumo/render/text_style.h"
#include "lumo/render/vector_image.h"
#include "tests/bench/measure.h"
#include "tests/bench/scene.h"

namespace {

using lumo::StringView;

RECT RectOf(const scene::Box& box) { return {box.left, box.top, box.right, box.bottom}; }

struct Picture {
  explicit Picture(const char* svg) {
    attribute.image = lumo::MakeVectorImage(svg, 100, StringView(), StringView());
    attribute.file = attribute.text = TEXT("drawn");
  }
  lumo::ImageAttribute attribute;
};

class Scene {
 public:
  Scene() : render_(lumo::MakeRender()), art_(scene::kArtDrawing), icon_(scene::kIconDrawing) {
    render_->Resize(scene::kWidth, scene::kHeight, true);
  }

  void Paint(const scene::Box& dirty, int percent) {
    dirty_ = dirty;
    const lumo::AutoClip clip(render_.get(), RectOf(dirty));
    Fill(scene::kGround);
    Image(art_, scene::kArt);
    for (const scene::Filling& button : scene::kButtons) Fill(button);
    for (const scene::Box& place : scene::kIcons) Image(icon_, place);
    for (const scene::Writing& writing : scene::kTexts) Text(writing);
    Fill(scene::kTrack);
    const RECT done = RectOf(scene::BarAt(percent));
    if (scene::Meet(scene::kStep, dirty)) {
      render_->FillGradient(done, {2, 2, 2, 2}, scene::kBarFrom, scene::kBarTo, 0, 255);
    }
    Text(scene::StatusAt(percent));
  }

  const char* Pixels() { return reinterpret_cast<const char*>(render_->GetBits()); }

 private:
  void Fill(const scene::Filling& filling) {
    if (!scene::Meet(filling.box, dirty_)) return;
    const int r = filling.radius;
    render_->FillRect(RectOf(filling.box), {r, r, r, r}, filling.color, 255);
    if (filling.outline) render_->DrawRoundRect(RectOf(filling.box), {r, r, r, r}, 1, filling.outline);
  }
  void Text(const scene::Writing& writing) {
    if (!scene::Meet(writing.box, dirty_)) return;
    lumo::TextLook look;
    look.color = scene::kTextColor;
    look.style = DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_END_ELLIPSIS;
    render_->DrawText(RectOf(writing.box), writing.text, look);
  }
  void Image(Picture& picture, const scene::Box& box) {
    if (!scene::Meet(box, dirty_)) return;
    lumo::ImagePlace place;
    place.position = RectOf(box);
    place.paint = RectOf(dirty_);
    lumo::PaintImage(render_.get(), place, picture.attribute, nullptr, {});
  }

  std::unique_ptr<lumo::IRender> render_;
  Picture art_;
  Picture icon_;
  scene::Box dirty_ = scene::kAll;
};

// Of the machine, GDI+ and the one font.
class Surroundings {
 public:
  Surroundings() : folder_(std::filesystem::temp_directory_path() / ("vanta-paint-bench-" + std::to_string(getpid()))) {
    std::filesystem::create_directories(folder_);
    setenv("VANTA_MACHINE", folder_.c_str(), 1);
    const Gdiplus::GdiplusStartupInput input;
    Gdiplus::GdiplusStartup(&token_, &input, nullptr);
    lumo::Globals().AddFont(TEXT("plain"), TEXT("system"), scene::kFontPixels, false, false, false, false, true);
  }
  ~Surroundings() {
    lumo::ReleaseTextCaches();
    lumo::ReleaseFonts();
    Gdiplus::GdiplusShutdown(token_);
    std::filesystem::remove_all(folder_);
  }
  Surroundings(const Surroundings&) = delete;
  Surroundings& operator=(const Surroundings&) = delete;

 private:
  std::filesystem::path folder_;
  ULONG_PTR token_ = 0;
};

void MeasurePaints() {
  Scene scene;
  scene.Paint(scene::kAll, 37);
  const bench::Turns turns = bench::TakeTurns([&](int i) { scene.Paint(scene::kAll, 37 + i % 2); },
                                              [&](int i) { scene.Paint(scene::kStep, 37 + i % 2); });
  std::printf("{\"full_us\": %.2f, \"step_us\": %.2f}\n", turns.full_us, turns.step_us);
}

bool WritePictures(const std::filesystem::path& folder) {
  const std::pair<const char*, const char*> pictures[] = {{"art.bgra", scene::kArtDrawing},
                                                          {"icon.bgra", scene::kIconDrawing}};
  for (const auto& [name, drawing] : pictures) {
    const auto pixels = lumo::DrawVector(drawing, 100, StringView(), nullptr);
    if (!pixels) return false;
    std::ofstream file(folder / name, std::ios::binary);
    file.write(reinterpret_cast<const char*>(pixels->bgra.data()), static_cast<std::streamsize>(pixels->bgra.size()));
    if (!file.flush()) return false;
  }
  return true;
}

bool WriteLook(const std::filesystem::path& path) {
  Scene scene;
  scene.Paint(scene::kAll, 37);
  std::ofstream file(path, std::ios::binary);
  file.write(scene.Pixels(), scene::kWidth * scene::kHeight * 4);
  return static_cast<bool>(file.flush());
}

}  // namespace

int main(int argc, char** argv) {
  const std::string verb = argc > 1 ? argv[1] : "";
  const Surroundings surroundings;
  if (verb == "pictures" && argc == 3) return WritePictures(argv[2]) ? 0 : 1;
  if (verb == "look" && argc == 3) return WriteLook(argv[2]) ? 0 : 1;
  if (argc != 1) return std::fprintf(stderr, "paint_bench | paint_bench pictures DIR | paint_bench look FILE\n"), 1;
  MeasurePaints();
  return 0;
}
