// The setup's own window, off-screen, from the skin that the build packs. One measurement a run, one JSON object.
//   window_bench paint SKIN    microseconds of a whole repaint and of a progress step, taking turns; medians
//   window_bench first SKIN    milliseconds from CreateSkinWindow to the end of the first paint: the process's first
//                              window, and the median of the later ones, whose pictures are decoded anew as well
//   window_bench leaks SKIN    what a thousand windows, created, painted and destroyed, leave behind
#include <malloc.h>

#include <cstdio>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "lumo/controls/control_base.h"
#include "lumo/controls/control_interfaces.h"
#include "lumo/core/window.h"
#include "lumo/render/image_cache.h"
#include "setupui/progress_text.h"
#include "setupui/string_table.h"
#include "tests/bench/measure.h"
#include "tools/vantakit/passing_machine.h"
#include "tools/vantakit/preview/stage.h"
#include "winhost/gdi/object_counts.h"

namespace {

constexpr int kWindows = 60, kWarmings = 50, kLives = 1000;

class SetupWindow {
 public:
  explicit SetupWindow(vantakit::Stage& stage) : handle_(stage.Open("SetupWnd.xml", nullptr)) {
    ShowWindow(handle_, SW_SHOWNA);
    UpdateWindow(handle_);
  }
  ~SetupWindow() {
    DestroyWindow(handle_);
    vantakit::Settle();
  }
  SetupWindow(const SetupWindow&) = delete;
  SetupWindow& operator=(const SetupWindow&) = delete;

  HWND handle() const { return handle_; }
  lumo::ControlBase& Named(const WCHAR* name) const { return *vantakit::WindowBehind(handle_)->FindControl(name); }

 private:
  HWND handle_;
};

void Paint(vantakit::Stage& stage) {
  const SetupWindow window(stage);
  lumo::ControlBase& page = window.Named(TEXT("vb_insting"));
  page.Parent()->AsTabBox()->SelectPage(&page);
  vantakit::Settle();
  lumo::IProgress* const bar = window.Named(TEXT("pg_insting")).AsProgress();
  lumo::ILabel* const label = window.Named(TEXT("lb_insting")).AsLabel();
  const vanta::String text = vanta::GetString(TEXT("STRID_PICTOR_INSTING"));
  const bench::Turns turns = bench::TakeTurns(
      [&](int) {
        InvalidateRect(window.handle(), nullptr, FALSE);
        UpdateWindow(window.handle());
      },
      [&](int i) {
        bar->SetValue(i % 100);
        label->SetText(vanta::ProgressText(text, i % 100));
        UpdateWindow(window.handle());
      });
  std::printf("{\"full_us\": %.2f, \"step_us\": %.2f}\n", turns.full_us, turns.step_us);
}

void First(vantakit::Stage& stage) {
  std::vector<double> times;
  for (int i = 0; i <= kWindows; ++i) {
    const double start = bench::Now();
    const SetupWindow window(stage);
    times.push_back((bench::Now() - start) * 1e3);
  }
  const double first = times.front();
  times.erase(times.begin());
  std::printf("{\"first_ms\": %.3f, \"later_ms\": %.3f}\n", first, bench::Median(times));
}

struct Holdings {
  size_t heap_bytes = mallinfo2().uordblks;
  long descriptors = std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
  int graphics_objects = winhost::CountAllObjects();
  int fonts = winhost::CountObjects(winhost::ObjectKind::Font);
  size_t pictures = lumo::CountCachedImages();
};

void Leaks(vantakit::Stage& stage) {
  for (int i = 0; i < kWarmings; ++i) const SetupWindow window(stage);  // fills what is kept for the process
  const Holdings before;
  for (int i = 0; i < kLives; ++i) const SetupWindow window(stage);
  const Holdings after;
  std::printf(
      "{\"heap_bytes\": %ld, \"descriptors\": %ld, \"graphics_objects\": %d, \"fonts\": %d, \"pictures\": %ld}\n",
      static_cast<long>(after.heap_bytes) - static_cast<long>(before.heap_bytes),
      after.descriptors - before.descriptors, after.graphics_objects - before.graphics_objects,
      after.fonts - before.fonts, static_cast<long>(after.pictures) - static_cast<long>(before.pictures));
}

struct Verb {
  const char* name;
  void (*run)(vantakit::Stage& stage);
};
constexpr Verb kVerbs[] = {{"paint", &Paint}, {"first", &First}, {"leaks", &Leaks}};

}  // namespace

int main(int argc, char** argv) {
  for (const Verb& verb : kVerbs) {
    if (argc != 3 || std::string(argv[1]) != verb.name) continue;
    const vantakit::PassingMachine machine;
    vantakit::Stage stage(argv[2]);
    verb.run(stage);
    return 0;
  }
  std::fprintf(stderr, "window_bench paint | first | leaks SKIN\n");
  return 1;
}
