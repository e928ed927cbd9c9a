#include "lumo/core/resource_source.h"

#include "base/lock.h"

namespace lumo {
namespace {

// What the library works with before a source is set: nothing packaged, no texts.
class NoResources final : public ResourceSource {
 public:
  bool IsPackaged() const override { return false; }
  const String& ThemeFolder() const override { return none_; }
  bool Read(StringView, std::vector<BYTE>* bytes) const override {
    bytes->clear();
    return false;
  }
  bool Exists(StringView) const override { return false; }
  String GetString(StringView) const override { return {}; }

 private:
  String none_;
};

constinit vanta::Lazy<NoResources> no_resources;
constinit const ResourceSource* current_source = nullptr;

}  // namespace

void SetResourceSource(const ResourceSource* source) { current_source = source; }

const ResourceSource& Resources() { return current_source ? *current_source : no_resources.Get(); }

}  // namespace lumo
