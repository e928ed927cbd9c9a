#include "winhost/devices/adapter_device.h"

#include <windows.h>

#include <ntddndis.h>

#include <cstring>

#include "winhost/devices/hardware.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

template <class T>
std::optional<Bytes> BytesOf(const std::optional<T>& value) {
  if (!value) return std::nullopt;
  const auto* first = reinterpret_cast<const BYTE*>(&*value);
  return Bytes(first, first + sizeof(T));
}

class AdapterDevice final : public Device {
 public:
  explicit AdapterDevice(const AdapterFacts& adapter) : adapter_(adapter) {}

  DWORD Control(DWORD code, std::span<const BYTE> in, std::span<BYTE> out, DWORD* returned) override {
    if (code != IOCTL_NDIS_QUERY_GLOBAL_STATS) return ERROR_INVALID_FUNCTION;
    DWORD oid = 0;
    if (in.size() < sizeof oid) return ERROR_INVALID_PARAMETER;
    std::memcpy(&oid, in.data(), sizeof oid);
    switch (oid) {
      case OID_GEN_PHYSICAL_MEDIUM:
        return Send("physical_medium", BytesOf(adapter_.medium), out, returned);
      case OID_GEN_MEDIA_IN_USE:
        return Send("media_in_use", BytesOf(adapter_.media_in_use), out, returned);
      case OID_802_3_PERMANENT_ADDRESS:
        return Send("address", BytesOf(adapter_.address), out, returned);
      default:
        return ERROR_NOT_SUPPORTED;
    }
  }

 private:
  DWORD Send(const char* request, const std::optional<Bytes>& answer, std::span<BYTE> out, DWORD* returned) const {
    return answer ? adapter_.answers.Send(request, *answer, out, returned) : DWORD{ERROR_NOT_SUPPORTED};
  }

  const AdapterFacts adapter_;
};

}  // namespace

std::shared_ptr<Device> OpenAdapterDevice(std::u16string_view name, DWORD, DWORD*) {
  for (const AdapterFacts& adapter : Hardware::Current().adapters) {
    if (adapter.has_device && EqualNoCase(Wide(adapter.id), name)) return std::make_shared<AdapterDevice>(adapter);
  }
  return nullptr;
}

}  // namespace winhost
