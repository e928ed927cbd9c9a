#include <windows.h>
#include <mstask.h>

#include <memory>

#include "winhost/com/class_table.h"
#include "winhost/com/object.h"
#include "winhost/machine/machine.h"
#include "winhost/machine/text.h"
#include "winhost/tasks/job_accounts.h"
#include "winhost/tasks/job_file.h"
#include "winhost/tasks/task_definition.h"
#include "winhost/tasks/task_files.h"

namespace winhost {

template <>
inline constexpr std::array kIids<ITaskTrigger> = {&IID_ITaskTrigger};
template <>
inline constexpr std::array kIids<ITask> = {&IID_ITask, &IID_IScheduledWorkItem};
template <>
inline constexpr std::array kIids<IPersistFile> = {&IID_IPersistFile, &IID_IPersist};
template <>
inline constexpr std::array kIids<ITaskScheduler> = {&IID_ITaskScheduler};

namespace {

constexpr std::u16string_view kExtension = u".job";

// The name without extension, which may be given or not; empty when it cannot name a task.
std::u16string TaskName(LPCWSTR name) {
  std::u16string_view text = name ? name : TEXT("");
  if (text.size() > kExtension.size() && EqualNoCase(text.substr(text.size() - kExtension.size()), kExtension)) {
    text.remove_suffix(kExtension.size());
  }
  const bool one_component = text.find(u'\\') == text.npos;
  return one_component && IsTaskPath(text) ? std::u16string(text) : std::u16string();
}

std::filesystem::path JobPath(const std::u16string& name) {
  return FindTaskFile(JobFolder(Machine::Current()), name + std::u16string(kExtension));
}

bool IsDate(int year, int month, int day) {
  char text[32];
  std::snprintf(text, sizeof text, "%04d-%02d-%02dT00:00:00", year, month, day);
  return IsBoundary(Wide(text));
}

bool IsTrigger(const TASK_TRIGGER& trigger) {
  const bool timed = trigger.TriggerType <= TASK_TIME_TRIGGER_MONTHLYDOW;
  if (trigger.cbTriggerSize != sizeof(TASK_TRIGGER) || trigger.TriggerType > TASK_EVENT_TRIGGER_AT_LOGON) return false;
  if (timed && !IsDate(trigger.wBeginYear, trigger.wBeginMonth, trigger.wBeginDay)) return false;
  if (trigger.wStartHour > 23 || trigger.wStartMinute > 59) return false;
  const bool ends = (trigger.rgFlags & TASK_TRIGGER_FLAG_HAS_END_DATE) != 0;
  if (ends && !IsDate(trigger.wEndYear, trigger.wEndMonth, trigger.wEndDay)) return false;
  return trigger.MinutesInterval == 0 ? trigger.MinutesDuration == 0
                                      : trigger.MinutesInterval < trigger.MinutesDuration;
}

struct Job {
  std::u16string name;
  std::u16string account;
  bool account_set = false;
  bool dirty = true;
  JobFile file;
};

class JobTrigger final : public ComObject<ITaskTrigger> {
 public:
  JobTrigger(std::shared_ptr<Job> job, std::size_t index) : job_(std::move(job)), index_(index) {}
  HRESULT SetTrigger(const PTASK_TRIGGER trigger) override {
    if (auto failed = PlannedFailure("ITaskTrigger::SetTrigger")) return *failed;
    if (!trigger || !IsTrigger(*trigger)) return E_INVALIDARG;
    if (index_ >= job_->file.triggers.size()) return SCHED_E_TRIGGER_NOT_FOUND;
    job_->file.triggers[index_] = *trigger;
    job_->dirty = true;
    return S_OK;
  }
  HRESULT GetTrigger(PTASK_TRIGGER trigger) override {
    if (!trigger) return E_INVALIDARG;
    if (index_ >= job_->file.triggers.size()) return SCHED_E_TRIGGER_NOT_FOUND;
    *trigger = job_->file.triggers[index_];
    return S_OK;
  }

 private:
  std::shared_ptr<Job> job_;
  std::size_t index_;
};

#define VANTA_JOB_TEXT(Interface, Name, member)                                       \
  HRESULT Set##Name(LPCWSTR text) override {                                          \
    if (auto failed = PlannedFailure(#Interface "::Set" #Name, text)) return *failed; \
    if (!text) return E_INVALIDARG;                                                   \
    job_->file.member = text;                                                         \
    job_->dirty = true;                                                               \
    return S_OK;                                                                      \
  }                                                                                   \
  HRESULT Get##Name(LPWSTR* text) override { return ReturnTaskText(job_->file.member, text); }

#define VANTA_JOB_NUMBER(Interface, Name, member)                               \
  HRESULT Set##Name(DWORD value) override {                                     \
    if (auto failed = PlannedFailure(#Interface "::Set" #Name)) return *failed; \
    job_->file.member = value;                                                  \
    job_->dirty = true;                                                         \
    return S_OK;                                                                \
  }                                                                             \
  HRESULT Get##Name(DWORD* value) override {                                    \
    if (!value) return E_POINTER;                                               \
    *value = job_->file.member;                                                 \
    return S_OK;                                                                \
  }

class JobTask final : public ComObject<ITask, IPersistFile> {
 public:
  explicit JobTask(std::shared_ptr<Job> job) : job_(std::move(job)) {}

  HRESULT CreateTrigger(WORD* index, ITaskTrigger** trigger) override {
    if (!index || !trigger) return E_POINTER;
    *trigger = nullptr;
    if (auto failed = PlannedFailure("IScheduledWorkItem::CreateTrigger")) return *failed;
    auto& triggers = job_->file.triggers;
    if (triggers.size() >= 0xFFFF) return E_FAIL;
    *index = static_cast<WORD>(triggers.size());
    triggers.push_back(TodayOnce());
    job_->dirty = true;
    return MakeObject<JobTrigger>(trigger, job_, std::size_t{*index});
  }
  HRESULT DeleteTrigger(WORD index) override {
    auto& triggers = job_->file.triggers;
    if (index >= triggers.size()) return SCHED_E_TRIGGER_NOT_FOUND;
    triggers.erase(triggers.begin() + index);
    job_->dirty = true;
    return S_OK;
  }
  HRESULT GetTriggerCount(WORD* count) override {
    if (!count) return E_POINTER;
    *count = static_cast<WORD>(job_->file.triggers.size());
    return S_OK;
  }
  HRESULT GetTrigger(WORD index, ITaskTrigger** trigger) override {
    if (!trigger) return E_POINTER;
    *trigger = nullptr;
    if (index >= job_->file.triggers.size()) return SCHED_E_TRIGGER_NOT_FOUND;
    return MakeObject<JobTrigger>(trigger, job_, std::size_t{index});
  }

  VANTA_JOB_TEXT(IScheduledWorkItem, Comment, comment)
  VANTA_JOB_TEXT(IScheduledWorkItem, Creator, author)
  VANTA_JOB_NUMBER(IScheduledWorkItem, Flags, flags)
  VANTA_JOB_TEXT(ITask, ApplicationName, program)
  VANTA_JOB_TEXT(ITask, Parameters, arguments)
  VANTA_JOB_TEXT(ITask, WorkingDirectory, working_directory)
  VANTA_JOB_NUMBER(ITask, Priority, priority)
  VANTA_JOB_NUMBER(ITask, MaxRunTime, max_run_ms)

  HRESULT SetAccountInformation(LPCWSTR account, LPCWSTR) override {
    if (auto failed = PlannedFailure("IScheduledWorkItem::SetAccountInformation", account)) return *failed;
    if (!account) return E_INVALIDARG;
    if (*account && !AccountExists(account)) return SCHED_E_ACCOUNT_NAME_NOT_FOUND;
    job_->account = account;  // the empty name is the system's own account
    job_->account_set = true;
    job_->dirty = true;
    return S_OK;
  }
  HRESULT GetAccountInformation(LPWSTR* account) override {
    if (!account) return E_POINTER;
    *account = nullptr;
    return job_->account_set ? ReturnTaskText(job_->account, account) : SCHED_E_ACCOUNT_INFORMATION_NOT_SET;
  }

  HRESULT GetClassID(CLSID* class_id) override {
    if (!class_id) return E_POINTER;
    *class_id = CLSID_CTask;
    return S_OK;
  }
  HRESULT IsDirty() override { return job_->dirty ? S_OK : S_FALSE; }
  // A work item is known by its task name; what it is loaded from and saved to follows from that.
  HRESULT Load(LPCOLESTR, DWORD) override { return E_NOTIMPL; }
  HRESULT Save(LPCOLESTR file, BOOL) override {
    if (auto failed = PlannedFailure("IPersistFile::Save", job_->name.c_str())) return *failed;
    if (file || job_->name.empty()) return E_INVALIDARG;
    const Machine& machine = Machine::Current();
    if (const HRESULT written = WriteTaskFile(JobPath(job_->name), WriteJob(job_->file)); FAILED(written))
      return written;
    SetJobAccount(machine, job_->name, job_->account);
    job_->dirty = false;
    return S_OK;
  }
  HRESULT SaveCompleted(LPCOLESTR) override { return E_NOTIMPL; }
  HRESULT GetCurFile(LPOLESTR* file) override {
    if (!file) return E_POINTER;
    return ReturnTaskText(u"C:\\Windows\\Tasks\\" + job_->name + std::u16string(kExtension), file);
  }

 private:
  // A new trigger fires once, now.
  static TASK_TRIGGER TodayOnce() {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    TASK_TRIGGER trigger{};
    trigger.cbTriggerSize = sizeof trigger;
    trigger.wBeginYear = now.wYear;
    trigger.wBeginMonth = now.wMonth;
    trigger.wBeginDay = now.wDay;
    trigger.wStartHour = now.wHour;
    trigger.wStartMinute = now.wMinute;
    trigger.rgFlags = TASK_TRIGGER_FLAG_DISABLED;
    return trigger;
  }

  std::shared_ptr<Job> job_;
};

class TaskScheduler final : public ComObject<ITaskScheduler> {
 public:
  HRESULT Activate(LPCWSTR name, REFIID iid, IUnknown** item) override {
    if (!item) return E_POINTER;
    *item = nullptr;
    if (auto failed = PlannedFailure("ITaskScheduler::Activate", name)) return *failed;
    auto job = std::make_shared<Job>();
    job->name = TaskName(name);
    if (job->name.empty()) return E_INVALIDARG;
    const auto bytes = ReadTaskFile(JobPath(job->name));
    if (!bytes) return HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND);
    auto read = ReadJob(*bytes);
    if (!read) return SCHED_E_INVALID_TASK;
    job->file = std::move(*read);
    job->account = JobAccount(Machine::Current(), job->name);
    job->account_set = !job->account.empty();
    job->dirty = false;
    return MakeObject<JobTask>(iid, reinterpret_cast<void**>(item), std::move(job));
  }

  HRESULT Delete(LPCWSTR name) override {
    if (auto failed = PlannedFailure("ITaskScheduler::Delete", name)) return *failed;
    const std::u16string task = TaskName(name);
    if (task.empty()) return E_INVALIDARG;
    const HRESULT deleted = DeleteTaskFile(JobPath(task));
    if (SUCCEEDED(deleted)) SetJobAccount(Machine::Current(), task, u"");
    return deleted;
  }

  HRESULT NewWorkItem(LPCWSTR name, REFCLSID class_id, REFIID iid, IUnknown** item) override {
    if (!item) return E_POINTER;
    *item = nullptr;
    if (auto failed = PlannedFailure("ITaskScheduler::NewWorkItem", name)) return *failed;
    const std::u16string task = TaskName(name);
    if (task.empty()) return E_INVALIDARG;
    if (class_id != CLSID_CTask) return CLASS_E_CLASSNOTAVAILABLE;
    if (ReadTaskFile(JobPath(task))) return HRESULT_FROM_WIN32(ERROR_FILE_EXISTS);
    return MakeObject<JobTask>(iid, reinterpret_cast<void**>(item), NewJob(task));
  }

 private:
  static std::shared_ptr<Job> NewJob(const std::u16string& name) {
    const Facts& facts = Machine::Current().facts();
    auto job = std::make_shared<Job>();
    job->name = name;
    job->file.windows_version = static_cast<std::uint16_t>(facts.version.major << 8 | facts.version.minor);
    job->file.author = Wide(facts.user);
    CoCreateGuid(&job->file.id);
    return job;
  }
};

}  // namespace

HRESULT MakeTaskScheduler1(REFIID iid, void** object) { return MakeObject<TaskScheduler>(iid, object); }
HRESULT MakeTask1(REFIID iid, void** object) { return MakeObject<JobTask>(iid, object, std::make_shared<Job>()); }

}  // namespace winhost
