#include "report/identity/ip_helper_address.h"

#include <windows.h>

#include <iphlpapi.h>

#include <cstring>

#include "base/unique.h"
#include "report/identity/ascii.h"
#include "report/identity/lowest_address.h"
#include "base/late_function.h"
#include "report/makerlibs/safe_loader.h"

namespace vanta {
namespace {

using AdaptersCall = decltype(&GetAdaptersInfo);
constexpr UINT kEthernet = 6;  // IANA's interface types
constexpr UINT kWireless80211 = 71;
constexpr ULONG kMostBytes = 1 << 20;
constexpr int kTries = 3;  // adapters may come between asking for the size and for the list

std::vector<BYTE> AdapterList(AdaptersCall get_adapters) {
  std::vector<BYTE> list(16 * sizeof(IP_ADAPTER_INFO));
  for (int attempt = 0; attempt < kTries; ++attempt) {
    ULONG size = static_cast<ULONG>(list.size());
    const ULONG status = get_adapters(reinterpret_cast<IP_ADAPTER_INFO*>(list.data()), &size);
    if (status == ERROR_SUCCESS) return list;
    if (status != ERROR_BUFFER_OVERFLOW || size <= list.size() || size > kMostBytes) break;
    list.resize(size);
  }
  return {};
}

template <size_t N>
std::string_view TextOf(const char (&text)[N]) {
  return UpToZero({text, N});
}

String Widened(std::string_view ascii) {
  String text;
  for (const char c : ascii) text += static_cast<WCHAR>(static_cast<BYTE>(c));
  return text;
}

void Consider(const IP_ADAPTER_INFO& info, const std::vector<ClassAdapter>& known, LowestAddress* lowest) {
  BYTE address[6];
  if ((info.Type != kEthernet && info.Type != kWireless80211) || info.AddressLength != sizeof address) return;
  const ClassAdapter* adapter = FindAdapter(known, Widened(TextOf(info.AdapterName)));
  if (!adapter || !adapter->physical) return;
  const std::string_view description = TextOf(info.Description);
  const bool wireless =
      info.Type == kWireless80211 || ContainsNoCase(description, "wifi") || ContainsNoCase(description, "wireless");
  std::memcpy(address, info.Address, sizeof address);
  lowest->Add(AddressText(address), wireless);
}

}  // namespace

std::string IpHelperAddress(const std::vector<ClassAdapter>& known) {
  const UniqueModule library(LoadSystemLibrary(TEXT("iphlpapi.dll")));
  const auto get_adapters = library ? ExportOf<AdaptersCall>(library.Get(), "GetAdaptersInfo") : nullptr;
  if (!get_adapters) return {};
  const std::vector<BYTE> list = AdapterList(get_adapters);
  LowestAddress lowest;
  const auto* info = list.empty() ? nullptr : reinterpret_cast<const IP_ADAPTER_INFO*>(list.data());
  for (; info; info = info->Next) Consider(*info, known, &lowest);
  return lowest.Get();
}

}  // namespace vanta
