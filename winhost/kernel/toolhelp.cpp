#include <tlhelp32.h>
#include <windows.h>

#include <algorithm>

#include "winhost/kernel/process_table.h"
#include "winhost/kernel/object.h"
#include "winhost/machine/faults.h"

namespace winhost {
namespace {

class Snapshot final : public KernelObject {
 public:
  explicit Snapshot(std::vector<ProcessEntry> processes) : processes_(std::move(processes)) {}
  void Rewind() { next_ = 0; }
  const ProcessEntry* Next() { return next_ < processes_.size() ? &processes_[next_++] : nullptr; }

 private:
  const std::vector<ProcessEntry> processes_;
  std::size_t next_ = 0;
};

std::u16string FileName(const ProcessEntry& process) {
  if (process.id == 0) return u"[System Process]";
  if (process.id == 4) return u"System";
  return process.image.substr(process.image.rfind(u'\\') + 1);
}

void Fill(const ProcessEntry& process, PROCESSENTRY32W& entry) {
  const DWORD size = entry.dwSize;
  entry = {};
  entry.dwSize = size;
  entry.th32ProcessID = process.id;
  entry.th32ParentProcessID = process.parent;
  entry.cntThreads = 1;
  entry.pcPriClassBase = 8;
  const std::u16string name = FileName(process);
  std::copy_n(name.data(), std::min<std::size_t>(name.size(), MAX_PATH - 1), entry.szExeFile);
}

BOOL Step(const char* call, HANDLE handle, bool rewind, LPPROCESSENTRY32W entry) {
  const auto snapshot = ObjectAs<Snapshot>(handle);
  DWORD error = snapshot ? PlannedFault(call).value_or(ERROR_SUCCESS) : ERROR_INVALID_HANDLE;
  if (!error && (!entry || entry->dwSize < sizeof *entry)) error = ERROR_BAD_LENGTH;
  if (!error && rewind) snapshot->Rewind();
  const ProcessEntry* process = error ? nullptr : snapshot->Next();
  if (process) {
    Fill(*process, *entry);
  } else {
    SetLastError(error ? error : ERROR_NO_MORE_FILES);
  }
  return process != nullptr;
}

}  // namespace
}  // namespace winhost

using namespace winhost;

HANDLE CreateToolhelp32Snapshot(DWORD flags, DWORD) {
  DWORD error = PlannedFault("CreateToolhelp32Snapshot").value_or(ERROR_SUCCESS);
  if (!error && flags != TH32CS_SNAPPROCESS) error = ERROR_INVALID_PARAMETER;
  if (error) {
    SetLastError(error);
    return INVALID_HANDLE_VALUE;
  }
  return MakeHandle(std::make_shared<Snapshot>(Machine::Current().Get<ProcessTable>().Running()));
}

BOOL Process32FirstW(HANDLE snapshot, LPPROCESSENTRY32W entry) {
  return Step("Process32FirstW", snapshot, true, entry);
}
BOOL Process32NextW(HANDLE snapshot, LPPROCESSENTRY32W entry) { return Step("Process32NextW", snapshot, false, entry); }
