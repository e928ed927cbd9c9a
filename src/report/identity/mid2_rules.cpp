#include "report/identity/mid2_rules.h"

#include "report/identity/ascii.h"

namespace vanta {
namespace {

struct Cache {
  String text;
  bool valid = false;
  bool random = false;  // valid, and of the random value's form
};

Cache ReadCache(Mid2Surroundings& surroundings) {
  Cache cache;
  cache.text = surroundings.ReadCached();
  cache.valid = IsValidMid2(cache.text);
  cache.random = cache.valid && IsRandomMid2(cache.text);
  return cache;
}

std::string Narrowed(const String& text) {
  std::string bytes;
  for (const WCHAR c : text) bytes += static_cast<char>(c);
  return bytes;
}

String Widened(const std::string& bytes) {
  String text;
  for (const char c : bytes) text += static_cast<WCHAR>(static_cast<BYTE>(c));
  return text;
}

bool SameButForCase(const std::string& value, const String& cached) {
  return EqualAsciiBytesNoCase(value, Narrowed(cached));
}

class Refresh {
 public:
  Refresh(Mid2Surroundings& surroundings, const Cache& cache, bool elevated)
      : surroundings_(surroundings), cache_(cache), elevated_(elevated) {}

  std::string Run() {
    surroundings_.Collect(&hardware_);
    hardware_.processor = surroundings_.Processor();
    return cache_.valid && !hardware_.Nothing() ? Compare() : MakeAnew();
  }

 private:
  std::string Cached() const { return Narrowed(cache_.text); }

  // Devices that have only just started may answer the second time. False: nothing new was found.
  bool CollectMissing() {
    const Mid2Hardware before = hardware_;
    surroundings_.Wait();
    surroundings_.Collect(&hardware_);
    return hardware_.address != before.address || hardware_.disk != before.disk;
  }

  Mid2Value Compute() {
    const auto random = hardware_.Nothing() ? surroundings_.RandomValue() : std::nullopt;
    return ComputeMid2(hardware_, random, elevated_);
  }

  std::string MakeAnew() {
    // A random value that other programs have been reporting is as good as a fresh one, and steadier.
    if (cache_.random) return Cached();
    if (!hardware_.Complete()) CollectMissing();
    return Store(Compute());
  }

  std::string Compare() {
    Mid2Value value = Compute();
    if (value.failed) return Cached();
    if (SameButForCase(value.text, cache_.text)) return value.text;
    if (!hardware_.Complete() && CollectMissing()) value = Compute();
    return Store(value);
  }

  std::string Store(const Mid2Value& value) {
    const String text = Widened(value.text);
    if (!cache_.text.empty() && cache_.text != text) surroundings_.Write(TEXT("m2_old"), cache_.text);
    surroundings_.Write(TEXT("m2"), text);
    return value.text;
  }

  Mid2Surroundings& surroundings_;
  const Cache& cache_;
  const bool elevated_;
  Mid2Hardware hardware_;
};

// Whether the cached value is to be used as it stands.
bool CacheStands(Mid2Surroundings& surroundings, const Cache& cache, bool elevated) {
  if (!cache.valid) return false;
  return !elevated || surroundings.AskProtection() == SelfProtection::No;
}

}  // namespace

std::string Identifier2(Mid2Surroundings& surroundings) {
  const bool elevated = surroundings.IsElevated();
  const Cache cache = ReadCache(surroundings);
  if (CacheStands(surroundings, cache, elevated)) return Narrowed(cache.text);
  return Refresh(surroundings, cache, elevated).Run();
}

}  // namespace vanta
