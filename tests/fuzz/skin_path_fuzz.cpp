// Paths into the skin package and out of archives: any text, normalised and sanitised.

#include <string_view>

#include "install/zip/entry_name.h"
#include "setupui/skin_path.h"
#include "tests/fuzz/fuzz.h"

namespace {

void CheckNormalised(const vanta::String& path) {
  const std::optional<vanta::String> found = vanta::NormaliseSkinPath(path);
  if (!found) return;
  FUZZ_EXPECT(found->size() <= path.size());
  FUZZ_EXPECT(found->find(TEXT('\\')) == vanta::String::npos);
  FUZZ_EXPECT(found->find(TEXT("//")) == vanta::String::npos);
  const vanta::String anchored = TEXT("/") + *found;
  FUZZ_EXPECT(anchored.find(TEXT("/../")) == vanta::String::npos);
  FUZZ_EXPECT(anchored.find(TEXT("/./")) == vanta::String::npos);
}

void CheckSanitised(const vanta::String& name) {
  const vanta::StringView kept = vanta::SanitiseName(name);
  FUZZ_EXPECT(vanta::SanitiseName(kept) == kept);
  FUZZ_EXPECT(kept.empty() || (kept[0] != TEXT('/') && kept[0] != TEXT('\\')));
  vanta::IsExtractableName(kept);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const vanta::String text = vanta::FromUtf8({reinterpret_cast<const char*>(data), size});
  CheckNormalised(text);
  CheckSanitised(text);
  return 0;
}
