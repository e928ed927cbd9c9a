// A stand-in for the maker's base library. MAKER_INIT: what InitLibs returns. MAKER_VERSION: the table's version.
// MAKER_DIRECT: the level of the direct entry. MAKER_CREATE and MAKER_OPEN: results of CreateObject and Open.
// MAKER_PROPERTY3/4/5: the trust object's properties. Every call is told.
#include <cstring>
#include <string>

#include "report/makerlibs/export_tables.h"
#include "report/makerlibs/trust_object.h"
#include "tests/support/maker_libs/settings.h"

namespace {

using maker_libs::Setting;
using maker_libs::Tell;

constexpr HRESULT kNoInterface = static_cast<HRESULT>(0x80004002);

class TrustObject final : public vanta::IVantaFileTrust {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(const IID&, void** object) override {
    *object = nullptr;
    return kNoInterface;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) {
      Tell("released");
      delete this;
    }
    return left;
  }
  HRESULT STDMETHODCALLTYPE Open(const WCHAR*, DWORD flags) override {
    Tell(("Open " + std::to_string(flags)).c_str());
    return static_cast<HRESULT>(Setting("MAKER_OPEN", 0));
  }
  HRESULT STDMETHODCALLTYPE GetProperty(DWORD number, DWORD* value) override {
    const std::string name = "MAKER_PROPERTY" + std::to_string(number);
    Tell(name.c_str());
    *value = static_cast<DWORD>(Setting(name.c_str(), 0));
    return 0;
  }

 private:
  ULONG references_ = 1;
};

[[maybe_unused]] BOOL WINAPI DirectTrustLevel(const WCHAR*, LONG* level) {
  Tell("direct");
  *level = static_cast<LONG>(Setting("MAKER_DIRECT", 0));
  return 1;
}

}  // namespace

extern "C" {

#ifndef MAKER_WITHOUT_EXPORTS
__attribute__((visibility("default"))) int WINAPI InitLibs(vanta::CVantaBaseExportFuncs* table) {
  Tell(table->size == 256 ? "InitLibs 256" : "InitLibs with a wrong size");
  table->version = static_cast<DWORD>(Setting("MAKER_VERSION", 10));
  if (std::getenv("MAKER_DIRECT")) table->file_trust_level = DirectTrustLevel;
  return static_cast<int>(Setting("MAKER_INIT", 0));
}

__attribute__((visibility("default"))) HRESULT WINAPI CreateObject(const GUID& id, void** object) {
  *object = nullptr;
  const auto result = static_cast<HRESULT>(Setting("MAKER_CREATE", 0));
  if (result < 0 || std::memcmp(&id, &vanta::kTrustObjectId, sizeof(id)) != 0)
    return result < 0 ? result : kNoInterface;
  *object = static_cast<vanta::IVantaFileTrust*>(new TrustObject);
  return 0;
}
#endif

}  // extern "C"
