#include "report/identity/netbios_address.h"

#include <windows.h>

#include <nb30.h>

#include <cstring>

#include "base/unique.h"
#include "report/identity/ascii.h"
#include "base/late_function.h"
#include "report/makerlibs/safe_loader.h"

namespace vanta {
namespace {

using NetbiosCall = decltype(&Netbios);
constexpr size_t kNames = 30;

struct AdapterAnswer {
  ADAPTER_STATUS status;
  NAME_BUFFER names[kNames];
};

// Sends one command that completes before the call returns.
bool Send(NetbiosCall netbios, UCHAR command, UCHAR lana, const char* name, void* buffer, size_t size) {
  NCB block = {};
  block.ncb_command = command;
  block.ncb_lana_num = lana;
  std::memset(block.ncb_callname, ' ', sizeof block.ncb_callname);
  std::memcpy(block.ncb_callname, name, std::strlen(name));
  block.ncb_buffer = static_cast<UCHAR*>(buffer);
  block.ncb_length = static_cast<WORD>(size);
  return netbios(&block) == NRC_GOODRET && block.ncb_retcode == NRC_GOODRET;
}

std::string AskNetbios(NetbiosCall netbios) {
  LANA_ENUM adapters = {};
  if (!Send(netbios, NCBENUM, 0, "", &adapters, sizeof adapters) || adapters.length == 0) return {};
  const UCHAR first = adapters.lana[0];
  AdapterAnswer answer = {};
  if (!Send(netbios, NCBRESET, first, "", nullptr, 0)) return {};
  if (!Send(netbios, NCBASTAT, first, "*", &answer, sizeof answer)) return {};
  return AddressText(answer.status.adapter_address);
}

}  // namespace

std::string NetbiosAddress() {
  const UniqueModule library(LoadSystemLibrary(TEXT("netapi32.dll")));
  const auto netbios = library ? ExportOf<NetbiosCall>(library.Get(), "Netbios") : nullptr;
  return netbios ? AskNetbios(netbios) : std::string();
}

}  // namespace vanta
