// How long painting takes: a scene of the setup window's size and contents, whole and one step of its progress bar.
//   paint_bench     prints {"full_us", "step_us"}: microseconds, the best of several rounds

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <unistd.h>

#include "lumo/core/global_resources.h"
#include "lumo/render/image_attribute.h"
#include "lumo/render/image_painter.h"
#include "lumo/render/render.h"
#include "lumo/render/text_style.h"
#include "lumo/render/vector_image.h"
#include "tests/bench/measure.h"

namespace {

using lumo::StringView;

constexpr RECT kWindow = {0, 0, 600, 400};
constexpr RECT kTrack = {40, 330, 560, 334};
constexpr RECT kStatus = {40, 340, 560, 360};
constexpr const char* kArt =
    "<svg width='340' height='128'><defs><linearGradient id='g' x2='100%'><stop offset='0' stop-color='#00bb96'/>"
    "<stop offset='1' stop-color='#2a7de1'/></linearGradient></defs><rect width='340' height='128' rx='12' "
    "fill='url(#g)'/><circle cx='170' cy='64' r='40' fill='#fff' fill-opacity='.8'/></svg>";
constexpr const char* kIcon =
    "<svg width='16' height='16'><circle cx='8' cy='8' r='7' fill='none' stroke='#555' stroke-width='1.5'/>"
    "<path d='M4 8l3 3 5-6' fill='none' stroke='#00bb96' stroke-width='2'/></svg>";

struct Picture {
  explicit Picture(const char* svg) {
    attribute.image = lumo::MakeVectorImage(svg, 100, StringView(), StringView());
    attribute.file = attribute.text = TEXT("drawn");
  }
  lumo::ImageAttribute attribute;
};

class Scene {
 public:
  Scene() : render_(lumo::MakeRender()), art_(kArt), icon_(kIcon) { render_->Resize(600, 400, true); }

  void Paint(const RECT& dirty, int percent) {
    const lumo::AutoClip clip(render_.get(), dirty);
    Fill(kWindow, {8, 8, 8, 8}, 0xFFF7F9FB, dirty);
    Image(art_, {130, 60, 470, 188}, dirty);
    for (int i = 0; i < 2; ++i) {
      const int left = 180 + i * 130;
      Fill({left, 260, left + 110, 300}, {20, 20, 20, 20}, i ? 0xFFE6EAEE : 0xFF00BB96, dirty);
      if (Meets({left, 260, left + 110, 300}, dirty)) {
        render_->DrawRoundRect({left, 260, left + 110, 300}, {20, 20, 20, 20}, 1, 0xFF009977);
      }
      Text({left, 260, left + 110, 300}, i ? TEXT("Cancel") : TEXT("\x7acb\x5373\x5b89\x88c5"), dirty);
      Image(icon_, {40 + i * 300, 370, 56 + i * 300, 386}, dirty);
      Text({60 + i * 300, 366, 330 + i * 300, 390}, TEXT("\x6211\x5df2\x9605\x8bfb\x5e76\x540c\x610f"), dirty);
    }
    Text({16, 8, 300, 32}, TEXT("VantaView"), dirty);
    Text({40, 200, 560, 230}, TEXT("C:\\Program Files\\VantaPictor"), dirty);
    Fill(kTrack, {2, 2, 2, 2}, 0xFFE0E4E8, dirty);
    const RECT done = {kTrack.left, kTrack.top, kTrack.left + 520 * percent / 100, kTrack.bottom};
    render_->FillGradient(done, {2, 2, 2, 2}, 0xFF2A7DE1, 0xFF00BB96, 0, 255);
    Text(kStatus, percent % 2 ? TEXT("Installing 37%") : TEXT("Installing 38%"), dirty);
  }

 private:
  static bool Meets(const RECT& a, const RECT& b) {
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
  }
  void Fill(const RECT& rect, const RECT& round, DWORD color, const RECT& dirty) {
    if (Meets(rect, dirty)) render_->FillRect(rect, round, color, 255);
  }
  void Text(const RECT& rect, StringView text, const RECT& dirty) {
    lumo::TextLook look;
    look.color = 0xFF223344;
    look.style = DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_END_ELLIPSIS;
    if (Meets(rect, dirty)) render_->DrawText(rect, text, look);
  }
  void Image(Picture& picture, const RECT& rect, const RECT& dirty) {
    if (!Meets(rect, dirty)) return;
    lumo::ImagePlace place;
    place.position = rect;
    place.paint = dirty;
    lumo::PaintImage(render_.get(), place, picture.attribute, nullptr, {});
  }

  std::unique_ptr<lumo::IRender> render_;
  Picture art_;
  Picture icon_;
};

double BestMicroseconds(Scene& scene, const RECT& dirty, int turns) {
  double best = 1e9;
  for (int round = 0; round < 7; ++round) {
    const double start = bench::Now();
    for (int i = 0; i < turns; ++i) scene.Paint(dirty, 37 + i % 2);
    best = std::min(best, (bench::Now() - start) * 1e6 / turns);
  }
  return best;
}

}  // namespace

int main() {
  const auto folder = std::filesystem::temp_directory_path() / ("vanta-paint-bench-" + std::to_string(getpid()));
  std::filesystem::create_directories(folder);
  setenv("VANTA_MACHINE", folder.c_str(), 1);
  ULONG_PTR token = 0;
  Gdiplus::GdiplusStartupInput input;
  Gdiplus::GdiplusStartup(&token, &input, nullptr);
  lumo::Globals().AddFont(TEXT("plain"), TEXT("system"), 14, false, false, false, false, true);
  {
    Scene scene;
    scene.Paint(kWindow, 37);
    const double full = BestMicroseconds(scene, kWindow, 100);
    const double step = BestMicroseconds(scene, {40, 330, 560, 360}, 500);
    std::printf("{\"full_us\": %.1f, \"step_us\": %.1f}\n", full, step);
  }
  lumo::ReleaseTextCaches();
  lumo::ReleaseFonts();
  Gdiplus::GdiplusShutdown(token);
  std::filesystem::remove_all(folder);
}
