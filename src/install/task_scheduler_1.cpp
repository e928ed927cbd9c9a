// RegisterTask1: the interfaces of Windows XP.
#include "install/task_scheduler_1.h"

#include "base/com_ptr.h"
#include "install/first_start.h"
#include "install/updater_task.h"

namespace vanta {
namespace {

HRESULT NewTask(const String& name, ComPtr<ITask>& item) {
  ComPtr<ITaskScheduler> scheduler;
  HRESULT result =
      CoCreateInstance(CLSID_CTaskScheduler, nullptr, CLSCTX_INPROC_SERVER, IID_ITaskScheduler, scheduler.PutVoid());
  if (FAILED(result)) return result;
  scheduler->Delete(name.c_str());
  ComPtr<IUnknown> made;
  result = scheduler->NewWorkItem(name.c_str(), CLSID_CTask, IID_ITask, made.Put());
  return SUCCEEDED(result) ? made.As(IID_ITask, item) : result;
}

HRESULT Describe(const ComPtr<ITask>& item, const TaskText& task) {
  HRESULT result = item->SetAccountInformation(CurrentUserName().c_str(), nullptr);
  if (SUCCEEDED(result)) result = item->SetFlags(TASK_FLAG_RUN_ONLY_IF_LOGGED_ON);
  if (SUCCEEDED(result) && !task.description.empty()) result = item->SetComment(task.description.c_str());
  if (SUCCEEDED(result)) result = item->SetApplicationName(task.program.c_str());
  if (SUCCEEDED(result) && !task.arguments.empty()) result = item->SetParameters(task.arguments.c_str());
  return result;
}

HRESULT AddTrigger(const ComPtr<ITask>& item) {
  SYSTEMTIME now = {};
  GetLocalTime(&now);
  const std::optional<SYSTEMTIME> start = FirstStart(now, FirstStartDelay(GetTickCount()));
  if (!start) return E_FAIL;
  WORD index = 0;
  ComPtr<ITaskTrigger> trigger;
  HRESULT result = item->CreateTrigger(&index, trigger.Put());
  if (FAILED(result)) return result;
  TASK_TRIGGER daily = DailyTrigger(*start);
  return trigger->SetTrigger(&daily);
}

HRESULT Save(const ComPtr<ITask>& item) {
  ComPtr<IPersistFile> file;
  const HRESULT result = item.As(IID_IPersistFile, file);
  return SUCCEEDED(result) ? file->Save(nullptr, TRUE) : result;
}

}  // namespace

TASK_TRIGGER DailyTrigger(const SYSTEMTIME& start) {
  static_assert(sizeof(TASK_TRIGGER) == 0x30);
  TASK_TRIGGER trigger = {};
  trigger.cbTriggerSize = sizeof trigger;
  trigger.wBeginYear = start.wYear;
  trigger.wBeginMonth = start.wMonth;
  trigger.wBeginDay = start.wDay;
  trigger.wStartHour = start.wHour;
  trigger.wStartMinute = start.wMinute;
  trigger.MinutesDuration = 1200;
  trigger.MinutesInterval = 60;
  trigger.TriggerType = TASK_TIME_TRIGGER_DAILY;
  trigger.Type.Daily.DaysInterval = 1;
  return trigger;
}

void RegisterTask1(const TaskText& task) {
  if (task.name.empty() || task.program.empty()) return;
  ComPtr<ITask> item;
  HRESULT result = NewTask(task.name, item);
  if (SUCCEEDED(result)) result = Describe(item, task);
  if (SUCCEEDED(result)) result = AddTrigger(item);
  if (SUCCEEDED(result)) Save(item);
}

}  // namespace vanta
