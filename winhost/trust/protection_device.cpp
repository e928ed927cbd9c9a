#include "winhost/trust/protection_device.h"

#include <windows.h>

#include <cstring>
#include <nlohmann/json.hpp>

#include "winhost/machine/machine.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

constexpr DWORD kAskAboutProcess = 0x22204C;

class ProtectionDevice final : public Device {
 public:
  explicit ProtectionDevice(std::string answer) : answer_(std::move(answer)) {}

  DWORD Control(DWORD code, std::span<const BYTE> in, std::span<BYTE> out, DWORD* returned) override {
    *returned = 0;
    if (code != kAskAboutProcess) return ERROR_INVALID_FUNCTION;
    if (answer_ == "fails") return ERROR_GEN_FAILURE;
    DWORD process = 0;
    if (in.size() != sizeof(process) || out.size() < sizeof(process)) return ERROR_INVALID_PARAMETER;
    std::memcpy(&process, in.data(), sizeof(process));
    const DWORD vouches = answer_ == "vouches" && process == GetCurrentProcessId() ? 1 : 0;
    std::memcpy(out.data(), &vouches, sizeof(vouches));
    *returned = sizeof(vouches);
    return ERROR_SUCCESS;
  }

 private:
  std::string answer_;
};

}  // namespace

std::shared_ptr<Device> OpenProtectionDevice(std::u16string_view name, DWORD, DWORD*) {
  if (!EqualNoCase(name, u"VantaSelfProtection")) return nullptr;
  const auto& raw = Machine::Current().facts().raw;
  if (!raw || !raw->contains("protection_device")) return nullptr;
  const auto& answer = (*raw)["protection_device"];
  return std::make_shared<ProtectionDevice>(answer.is_string() ? answer.get<std::string>() : "fails");
}

}  // namespace winhost
