// RegisterTask2: the interfaces of Vista and later.
#include "install/updater_task.h"

#include "base/com_ptr.h"
#include "base/com_values.h"
#include "install/first_start.h"

#include <taskschd.h>

namespace vanta {
namespace {

constexpr const WCHAR* kAdministrators = TEXT("Builtin\\Administrators");

HRESULT OpenRootFolder(ComPtr<ITaskService>& service, ComPtr<ITaskFolder>& folder) {
  const Variant none;
  HRESULT result =
      CoCreateInstance(CLSID_TaskScheduler, nullptr, CLSCTX_INPROC_SERVER, IID_ITaskService, service.PutVoid());
  if (SUCCEEDED(result)) result = service->Connect(none.Get(), none.Get(), none.Get(), none.Get());
  if (SUCCEEDED(result)) result = service->GetFolder(Bstr(TEXT("\\")).Get(), folder.Put());
  return result;
}

HRESULT Describe(const ComPtr<ITaskDefinition>& definition, const TaskText& task) {
  ComPtr<IRegistrationInfo> info;
  HRESULT result = definition->get_RegistrationInfo(info.Put());
  if (SUCCEEDED(result) && !task.description.empty()) result = info->put_Description(Bstr(task.description).Get());
  if (SUCCEEDED(result)) result = info->put_Author(Bstr(CurrentUserName()).Get());
  return result;
}

HRESULT StartWhenAvailable(const ComPtr<ITaskDefinition>& definition) {
  ComPtr<ITaskSettings> settings;
  HRESULT result = definition->get_Settings(settings.Put());
  if (SUCCEEDED(result)) result = settings->put_StartWhenAvailable(VARIANT_TRUE);
  return result;
}

HRESULT RunAsAdministrators(const ComPtr<ITaskDefinition>& definition) {
  ComPtr<IPrincipal> principal;
  HRESULT result = definition->get_Principal(principal.Put());
  if (SUCCEEDED(result)) result = principal->put_GroupId(Bstr(kAdministrators).Get());
  if (SUCCEEDED(result)) result = principal->put_RunLevel(TASK_RUNLEVEL_HIGHEST);
  if (SUCCEEDED(result)) result = principal->put_LogonType(TASK_LOGON_GROUP);
  return result;
}

HRESULT RepeatHourly(const ComPtr<ITimeTrigger>& trigger) {
  ComPtr<IRepetitionPattern> repetition;
  HRESULT result = trigger->get_Repetition(repetition.Put());
  if (SUCCEEDED(result)) result = repetition->put_Interval(Bstr(TEXT("PT1H")).Get());
  return result;
}

HRESULT AddTrigger(const ComPtr<ITaskDefinition>& definition) {
  ComPtr<ITriggerCollection> triggers;
  ComPtr<ITrigger> trigger;
  ComPtr<ITimeTrigger> time_trigger;
  HRESULT result = definition->get_Triggers(triggers.Put());
  if (SUCCEEDED(result)) result = triggers->Create(TASK_TRIGGER_TIME, trigger.Put());
  if (SUCCEEDED(result)) result = trigger.As(IID_ITimeTrigger, time_trigger);
  if (FAILED(result)) return result;
  SYSTEMTIME now = {};
  GetLocalTime(&now);
  const std::optional<SYSTEMTIME> start = FirstStart(now, FirstStartDelay(GetTickCount()));
  if (!start) return E_FAIL;
  result = time_trigger->put_StartBoundary(Bstr(StartBoundary(*start)).Get());
  return SUCCEEDED(result) ? RepeatHourly(time_trigger) : result;
}

HRESULT AddAction(const ComPtr<ITaskDefinition>& definition, const TaskText& task) {
  ComPtr<IActionCollection> actions;
  ComPtr<IAction> action;
  ComPtr<IExecAction> program;
  HRESULT result = definition->get_Actions(actions.Put());
  if (SUCCEEDED(result)) result = actions->Create(TASK_ACTION_EXEC, action.Put());
  if (SUCCEEDED(result)) result = action.As(IID_IExecAction, program);
  if (SUCCEEDED(result)) result = program->put_Path(Bstr(task.program).Get());
  if (SUCCEEDED(result) && !task.arguments.empty()) result = program->put_Arguments(Bstr(task.arguments).Get());
  return result;
}

HRESULT Register(const ComPtr<ITaskFolder>& folder, const ComPtr<ITaskDefinition>& definition, const TaskText& task) {
  const Variant group{StringView(kAdministrators)};
  const Variant no_password;
  const Variant no_descriptor{StringView(TEXT(""))};
  ComPtr<IRegisteredTask> registered;
  return folder->RegisterTaskDefinition(Bstr(task.name).Get(), definition.Get(), TASK_CREATE_OR_UPDATE, group.Get(),
                                        no_password.Get(), TASK_LOGON_GROUP, no_descriptor.Get(), registered.Put());
}

}  // namespace

void RegisterTask2(const TaskText& task) {
  if (task.name.empty() || task.program.empty()) return;
  ComPtr<ITaskService> service;
  ComPtr<ITaskFolder> folder;
  ComPtr<ITaskDefinition> definition;
  if (FAILED(OpenRootFolder(service, folder))) return;
  folder->DeleteTask(Bstr(task.name).Get(), 0);
  HRESULT result = service->NewTask(0, definition.Put());
  if (SUCCEEDED(result)) result = Describe(definition, task);
  if (SUCCEEDED(result)) result = StartWhenAvailable(definition);
  if (SUCCEEDED(result)) result = RunAsAdministrators(definition);
  if (SUCCEEDED(result)) result = AddTrigger(definition);
  if (SUCCEEDED(result)) result = AddAction(definition, task);
  if (SUCCEEDED(result)) Register(folder, definition, task);
}

}  // namespace vanta
