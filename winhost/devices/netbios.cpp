#include <windows.h>

#include <nb30.h>

#include <algorithm>
#include <cstring>
#include <mutex>
#include <set>

#include "winhost/devices/hardware.h"
#include "winhost/machine/faults.h"

namespace {

using winhost::Hardware;
using winhost::NetbiosFacts;

// The adapters that this process has reset.
struct Resets {
  explicit Resets(winhost::Machine&) {}
  std::mutex lock;
  std::set<UCHAR> lanas;
};

Resets& TheResets() { return winhost::Machine::Current().Get<Resets>(); }

const NetbiosFacts* AdapterAt(UCHAR lana) {
  const auto& adapters = Hardware::Current().netbios;
  const auto found = std::ranges::find(adapters, lana, &NetbiosFacts::lana);
  return found == adapters.end() ? nullptr : &*found;
}

UCHAR Enumerate(const NCB& block) {
  LANA_ENUM list = {};
  for (const NetbiosFacts& adapter : Hardware::Current().netbios) list.lana[list.length++] = adapter.lana;
  if (!block.ncb_buffer || block.ncb_length < sizeof list) return NRC_BUFLEN;
  std::memcpy(block.ncb_buffer, &list, sizeof list);
  return NRC_GOODRET;
}

UCHAR Reset(const NCB& block) {
  const NetbiosFacts* adapter = AdapterAt(block.ncb_lana_num);
  if (!adapter) return NRC_BRIDGE;
  if (adapter->reset != NRC_GOODRET) return adapter->reset;
  std::scoped_lock lock(TheResets().lock);
  TheResets().lanas.insert(block.ncb_lana_num);
  return NRC_GOODRET;
}

bool NamesTheAdapterItself(const NCB& block) {
  return block.ncb_callname[0] == '*' &&
         std::ranges::all_of(block.ncb_callname + 1, std::end(block.ncb_callname), [](UCHAR c) { return c == ' '; });
}

UCHAR Status(NCB* block) {
  const NetbiosFacts* adapter = AdapterAt(block->ncb_lana_num);
  if (!adapter) return NRC_BRIDGE;
  {
    std::scoped_lock lock(TheResets().lock);
    if (!TheResets().lanas.contains(block->ncb_lana_num)) return NRC_ENVNOTDEF;
  }
  if (adapter->status != NRC_GOODRET) return adapter->status;
  if (!NamesTheAdapterItself(*block)) return NRC_ILLCMD;
  ADAPTER_STATUS status = {};
  std::ranges::copy(adapter->address, status.adapter_address);
  if (!block->ncb_buffer || block->ncb_length < sizeof status) return NRC_BUFLEN;
  std::memcpy(block->ncb_buffer, &status, sizeof status);
  block->ncb_length = sizeof status;
  return NRC_GOODRET;
}

UCHAR Carry(NCB* block) {
  switch (block->ncb_command) {
    case NCBENUM:
      return Enumerate(*block);
    case NCBRESET:
      return Reset(*block);
    case NCBASTAT:
      return Status(block);
    default:
      return NRC_ILLCMD;
  }
}

std::u16string_view NameOf(UCHAR command) {
  if (command == NCBENUM) return u"NCBENUM";
  if (command == NCBRESET) return u"NCBRESET";
  return command == NCBASTAT ? u"NCBASTAT" : u"";
}

}  // namespace

UCHAR Netbios(PNCB block) {
  if (!block) return NRC_ILLCMD;
  const auto planned = winhost::PlannedFault("Netbios", NameOf(block->ncb_command));
  block->ncb_retcode = planned ? static_cast<UCHAR>(*planned) : Carry(block);
  block->ncb_cmd_cplt = block->ncb_retcode;
  return block->ncb_retcode;
}
