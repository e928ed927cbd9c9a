// Drawing on a fresh machine: GDI+ started, a skin made of what the test puts into it, pixels to look at.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "lumo/core/global_resources.h"
#include "lumo/core/resource_source.h"
#include "lumo/render/gdip.h"
#include "lumo/render/render.h"
#include "lumo/render/text_style.h"
#include "tests/support/machine_fixture.h"
#include "tests/src/lumo/render/png.h"

namespace lumo {

// A packaged skin in memory; looks up paths as they come, separators aside.
class SkinInMemory final : public ResourceSource {
 public:
  void Put(const std::string& path, const std::string& bytes) { files_[path] = bytes; }
  bool IsPackaged() const override { return packaged; }
  const String& ThemeFolder() const override { return theme; }
  bool Read(StringView path, std::vector<BYTE>* bytes) const override {
    const auto found = files_.find(Name(path));
    bytes->clear();
    if (found == files_.end()) return false;
    ++reads;
    bytes->assign(found->second.begin(), found->second.end());
    return true;
  }
  bool Exists(StringView path) const override { return files_.count(Name(path)) != 0; }
  String GetString(StringView) const override { return {}; }

  bool packaged = true;
  String theme = TEXT("skin\\theme\\");
  mutable int reads = 0;

 private:
  static std::string Name(StringView path) {
    return vanta::ToUtf8(vanta::ReplaceAll(String(path), TEXT("\\"), TEXT("/")));
  }

  std::map<std::string, std::string> files_;
};

class RenderTest : public testing_support::OnMachine {
 protected:
  RenderTest() {
    Gdiplus::GdiplusStartupInput input;
    Gdiplus::GdiplusStartup(&token_, &input, nullptr);
    SetResourceSource(&skin_);
    render_ = MakeRender();
  }
  ~RenderTest() override {
    render_.reset();
    ReleaseTextCaches();
    ReleaseFonts();
    Gdiplus::GdiplusShutdown(token_);
    SetResourceSource(nullptr);
  }

  // Premultiplied, as 0xAARRGGBB; 0 outside.
  static DWORD At(IRender& render, int x, int y) {
    if (x < 0 || y < 0 || x >= render.GetWidth() || y >= render.GetHeight()) return 0;
    const BYTE* const p =
        render.GetBits() +
        (static_cast<size_t>(y) * static_cast<size_t>(render.GetWidth()) + static_cast<size_t>(x)) * 4;
    return static_cast<DWORD>(p[3]) << 24 | static_cast<DWORD>(p[2]) << 16 | static_cast<DWORD>(p[1]) << 8 | p[0];
  }
  DWORD At(int x, int y) const { return At(*render_, x, y); }
  int Alpha(int x, int y) const { return static_cast<int>(At(x, y) >> 24); }
  // Every channel within the tolerance.
  static testing::AssertionResult Near(DWORD pixel, DWORD wanted, int tolerance = 2) {
    for (int shift = 0; shift < 32; shift += 8) {
      const int difference = static_cast<int>((pixel >> shift) & 0xFF) - static_cast<int>((wanted >> shift) & 0xFF);
      if (difference < -tolerance || difference > tolerance) {
        return testing::AssertionFailure() << std::hex << pixel << " is not near " << wanted;
      }
    }
    return testing::AssertionSuccess();
  }
  // Where pixels with some alpha lie.
  static RECT Touched(IRender& render, int at_least = 1) {
    RECT touched = {render.GetWidth(), render.GetHeight(), 0, 0};
    for (int y = 0; y < render.GetHeight(); ++y) {
      for (int x = 0; x < render.GetWidth(); ++x) {
        if (static_cast<int>(At(render, x, y) >> 24) < at_least) continue;
        touched = {std::min<LONG>(touched.left, x), std::min<LONG>(touched.top, y),
                   std::max<LONG>(touched.right, x + 1), std::max<LONG>(touched.bottom, y + 1)};
      }
    }
    return touched;
  }
  static std::string Text(const RECT& r) {
    return std::to_string(r.left) + "," + std::to_string(r.top) + "," + std::to_string(r.right) + "," +
           std::to_string(r.bottom);
  }
  // With VANTA_PICTURES naming a folder, what was drawn is left there to be looked at.
  void Show(const std::string& name, IRender& render) {
    if (const char* const folder = getenv("VANTA_PICTURES")) {
      WritePng(std::string(folder) + "/" + name + ".png", render.GetWidth(), render.GetHeight(),
               [&](int x, int y) { return At(render, x, y); });
    }
  }
  void Show(const std::string& name) { Show(name, *render_); }

  SkinInMemory skin_;
  std::unique_ptr<IRender> render_;

 private:
  ULONG_PTR token_ = 0;
};

}  // namespace lumo
