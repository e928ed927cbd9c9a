#include "tools/vantakit/walk/shot.h"

#include <windows.h>

#include <algorithm>

#include "tools/vantakit/commands.h"
#include "tools/vantakit/walk/open_windows.h"
#include "winhost/window/screen.h"

namespace vantakit {
namespace {

constexpr DWORD kBackground = 0xE4E8ED;
constexpr LONG kMargin = 24;

RECT WholeOfWindows() {
  RECT whole = {};
  for (const OpenWindow& window : OpenWindows()) {
    RECT place = {};
    GetWindowRect(window.handle, &place);
    if (!IsIconic(window.handle)) UnionRect(&whole, &whole, &place);
  }
  return whole;
}

winhost::Picture Cut(const winhost::Picture& screen, const RECT& part) {
  winhost::Picture cut = *winhost::MakePicture(part.right - part.left, part.bottom - part.top);
  for (int y = 0; y < cut.height; ++y) {
    std::copy_n(screen.At(part.left, part.top + y), static_cast<std::size_t>(cut.width) * 4, cut.At(0, y));
  }
  return cut;
}

}  // namespace

void TakeShot(const std::filesystem::path& file) {
  const RECT whole = WholeOfWindows();
  if (IsRectEmpty(&whole)) throw Failure("no window is shown");
  const winhost::Picture screen = winhost::screen::Snapshot(kBackground);
  const RECT part{std::max<LONG>(whole.left - kMargin, 0), std::max<LONG>(whole.top - kMargin, 0),
                  std::min<LONG>(whole.right + kMargin, screen.width),
                  std::min<LONG>(whole.bottom + kMargin, screen.height)};
  if (part.left >= part.right || part.top >= part.bottom) throw Failure("the windows lie beyond the screen");
  if (!winhost::screen::SavePng(Cut(screen, part), file)) throw Failure(file.string() + ": cannot be written");
}

}  // namespace vantakit
