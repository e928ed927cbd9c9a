#include "winhost/com/class_table.h"

#include <windows.h>
#include <exdisp.h>
#include <mstask.h>
#include <servprov.h>
#include <shlwapi.h>
#include <shobjidl.h>
#include <taskschd.h>

#include <algorithm>

#include "winhost/com/apartment.h"
#include "winhost/com/object.h"
#include "winhost/machine/machine.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

bool SinceVista(const Facts& facts) { return facts.AtLeast(6, 0); }

const ComClass kClasses[] = {
    {CLSID_ShellLink, "CLSID_ShellLink", CLSCTX_INPROC_SERVER, nullptr, MakeShellLink},
    {CLSID_ShellWindows, "CLSID_ShellWindows", CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, nullptr, MakeShellWindows},
    {CLSID_FileOpenDialog, "CLSID_FileOpenDialog", CLSCTX_INPROC_SERVER, SinceVista, MakeFileOpenDialog},
    {CLSID_TaskScheduler, "CLSID_TaskScheduler", CLSCTX_INPROC_SERVER, SinceVista, MakeTaskService},
    {CLSID_CTaskScheduler, "CLSID_CTaskScheduler", CLSCTX_INPROC_SERVER, nullptr, MakeTaskScheduler1},
    {CLSID_CTask, "CLSID_CTask", CLSCTX_INPROC_SERVER, nullptr, MakeTask1},
};

const ComClass* FindClass(REFCLSID id, DWORD context, const Facts& facts) {
  const auto found = std::ranges::find_if(kClasses, [&](const ComClass& row) { return row.id == id; });
  if (found == std::end(kClasses) || !(found->contexts & context)) return nullptr;
  if (found->present && !found->present(facts)) return nullptr;
  const auto& missing = facts.missing_classes;
  return std::ranges::find(missing, found->name) == missing.end() ? found : nullptr;
}

}  // namespace
}  // namespace winhost

HRESULT CoCreateInstance(REFCLSID class_id, IUnknown* outer, DWORD context, REFIID iid, LPVOID* object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  if (!winhost::ThreadHasCom()) return CO_E_NOTINITIALIZED;
  const winhost::ComClass* row = winhost::FindClass(class_id, context, winhost::Machine::Current().facts());
  if (!row) return REGDB_E_CLASSNOTREG;
  if (auto failed = winhost::PlannedFailure("CoCreateInstance", winhost::Wide(row->name).c_str())) return *failed;
  if (outer) return CLASS_E_NOAGGREGATION;
  return row->make(iid, object);
}

HRESULT IUnknown_QueryService(IUnknown* object, REFGUID service, REFIID iid, void** result) {
  if (!result) return E_POINTER;
  *result = nullptr;
  if (!object) return E_FAIL;
  IServiceProvider* provider = nullptr;
  HRESULT answer = object->QueryInterface(IID_IServiceProvider, reinterpret_cast<void**>(&provider));
  if (FAILED(answer)) return answer;
  answer = provider->QueryService(service, iid, result);
  provider->Release();
  return answer;
}
