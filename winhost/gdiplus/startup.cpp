#include <atomic>
#include <mutex>
#include <set>

#include "winhost/gdiplus/handles.h"
#include "winhost/machine/faults.h"

namespace winhost {
namespace {

struct Tokens {
  std::mutex lock;
  std::set<ULONG_PTR> live;
  ULONG_PTR last = 0;
};

Tokens& TheTokens() {
  static auto* tokens = new Tokens;
  return *tokens;
}

std::atomic<int> started{0};

}  // namespace

bool GdiplusStarted() { return started > 0; }

std::optional<Gdiplus::GpStatus> RefuseMaking(const char* operation) {
  if (!GdiplusStarted()) return Gdiplus::GdiplusNotInitialized;
  if (const auto status = PlannedFault(operation)) return static_cast<Gdiplus::GpStatus>(*status);
  return std::nullopt;
}

}  // namespace winhost

namespace Gdiplus {

GpStatus GdiplusStartup(ULONG_PTR* token, const GdiplusStartupInput* input, GdiplusStartupOutput* output) {
  if (!token || !input || (input->SuppressBackgroundThread && !output)) return InvalidParameter;
  if (input->GdiplusVersion != 1) return UnsupportedGdiplusVersion;
  if (const auto status = winhost::PlannedFault("GdiplusStartup")) return static_cast<GpStatus>(*status);
  auto& tokens = winhost::TheTokens();
  std::scoped_lock lock(tokens.lock);
  tokens.live.insert(++tokens.last);
  ++winhost::started;
  *token = tokens.last;
  return Ok;
}

VOID GdiplusShutdown(ULONG_PTR token) {
  auto& tokens = winhost::TheTokens();
  std::scoped_lock lock(tokens.lock);
  if (tokens.live.erase(token)) --winhost::started;
}

}  // namespace Gdiplus
