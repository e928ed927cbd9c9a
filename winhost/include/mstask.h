// The first task scheduler, of Windows before Vista; later ones still have it.
//
// Promises: a saved work item is a real .job file at <Windows>\Tasks\<name>.job. Triggers are checked when they are
// set (E_INVALIDARG), the name when the work item is made (E_INVALIDARG; ERROR_FILE_EXISTS when there is one).
// Simplifies: this machine only; the account is kept in a file beside the machine's drives, passwords nowhere; tasks
// are stored, never run.
// To fail: the facts "missing_classes" ("CLSID_CTaskScheduler"); the fault plan: every method as
// "ITaskScheduler::Delete", "ITask::SetParameters", "ITaskTrigger::SetTrigger", "IPersistFile::Save" (subject: the
// text given, if any).
#pragma once

#include <minwinbase.h>
#include <ole2.h>

inline constexpr CLSID CLSID_CTask = {0x148bd520, 0xa2ab, 0x11ce, {0xb1, 0x1f, 0x00, 0xaa, 0x00, 0x53, 0x05, 0x03}};
inline constexpr CLSID CLSID_CTaskScheduler = {
    0x148bd52a, 0xa2ab, 0x11ce, {0xb1, 0x1f, 0x00, 0xaa, 0x00, 0x53, 0x05, 0x03}};

#define TASK_FLAG_INTERACTIVE (0x1)
#define TASK_FLAG_DELETE_WHEN_DONE (0x2)
#define TASK_FLAG_DISABLED (0x4)
#define TASK_FLAG_START_ONLY_IF_IDLE (0x10)
#define TASK_FLAG_KILL_ON_IDLE_END (0x20)
#define TASK_FLAG_DONT_START_IF_ON_BATTERIES (0x40)
#define TASK_FLAG_KILL_IF_GOING_ON_BATTERIES (0x80)
#define TASK_FLAG_RUN_ONLY_IF_DOCKED (0x100)
#define TASK_FLAG_HIDDEN (0x200)
#define TASK_FLAG_RUN_IF_CONNECTED_TO_INTERNET (0x400)
#define TASK_FLAG_RESTART_ON_IDLE_RESUME (0x800)
#define TASK_FLAG_SYSTEM_REQUIRED (0x1000)
#define TASK_FLAG_RUN_ONLY_IF_LOGGED_ON (0x2000)
#define TASK_TRIGGER_FLAG_HAS_END_DATE (0x1)
#define TASK_TRIGGER_FLAG_KILL_AT_DURATION_END (0x2)
#define TASK_TRIGGER_FLAG_DISABLED (0x4)

enum TASK_TRIGGER_TYPE {
  TASK_TIME_TRIGGER_ONCE = 0,
  TASK_TIME_TRIGGER_DAILY = 1,
  TASK_TIME_TRIGGER_WEEKLY = 2,
  TASK_TIME_TRIGGER_MONTHLYDATE = 3,
  TASK_TIME_TRIGGER_MONTHLYDOW = 4,
  TASK_EVENT_TRIGGER_ON_IDLE = 5,
  TASK_EVENT_TRIGGER_AT_SYSTEMSTART = 6,
  TASK_EVENT_TRIGGER_AT_LOGON = 7,
};

struct DAILY {
  WORD DaysInterval;
};
struct WEEKLY {
  WORD WeeksInterval;
  WORD rgfDaysOfTheWeek;
};
struct MONTHLYDATE {
  DWORD rgfDays;
  WORD rgfMonths;
};
struct MONTHLYDOW {
  WORD wWhichWeek;
  WORD rgfDaysOfTheWeek;
  WORD rgfMonths;
};
union TRIGGER_TYPE_UNION {
  DAILY Daily;
  WEEKLY Weekly;
  MONTHLYDATE MonthlyDate;
  MONTHLYDOW MonthlyDOW;
};

struct TASK_TRIGGER {
  WORD cbTriggerSize;
  WORD Reserved1;
  WORD wBeginYear;
  WORD wBeginMonth;
  WORD wBeginDay;
  WORD wEndYear;
  WORD wEndMonth;
  WORD wEndDay;
  WORD wStartHour;
  WORD wStartMinute;
  DWORD MinutesDuration;
  DWORD MinutesInterval;
  DWORD rgFlags;
  TASK_TRIGGER_TYPE TriggerType;
  TRIGGER_TYPE_UNION Type;
  WORD Reserved2;
  WORD wRandomMinutesInterval;
};
using PTASK_TRIGGER = TASK_TRIGGER*;

// Texts that these interfaces hand out are freed by the caller with CoTaskMemFree.
struct ITaskTrigger : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE SetTrigger(const PTASK_TRIGGER trigger) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetTrigger(PTASK_TRIGGER trigger) = 0;
};
inline constexpr IID IID_ITaskTrigger = {0x148bd52b, 0xa2ab, 0x11ce, {0xb1, 0x1f, 0x00, 0xaa, 0x00, 0x53, 0x05, 0x03}};

struct IScheduledWorkItem : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE CreateTrigger(WORD* index, ITaskTrigger** trigger) = 0;
  virtual HRESULT STDMETHODCALLTYPE DeleteTrigger(WORD index) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetTriggerCount(WORD* count) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetTrigger(WORD index, ITaskTrigger** trigger) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetComment(LPCWSTR text) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetComment(LPWSTR* text) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetCreator(LPCWSTR text) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetCreator(LPWSTR* text) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetFlags(DWORD value) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetFlags(DWORD* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetAccountInformation(LPCWSTR account, LPCWSTR password) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetAccountInformation(LPWSTR* account) = 0;
};
inline constexpr IID IID_IScheduledWorkItem = {
    0xa6b952f0, 0xa4b1, 0x11d0, {0x99, 0x7d, 0x00, 0xaa, 0x00, 0x68, 0x87, 0xec}};

struct ITask : IScheduledWorkItem {
  virtual HRESULT STDMETHODCALLTYPE SetApplicationName(LPCWSTR text) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetApplicationName(LPWSTR* text) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetParameters(LPCWSTR text) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetParameters(LPWSTR* text) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetWorkingDirectory(LPCWSTR text) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetWorkingDirectory(LPWSTR* text) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetPriority(DWORD value) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetPriority(DWORD* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetMaxRunTime(DWORD value) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetMaxRunTime(DWORD* value) = 0;
};
inline constexpr IID IID_ITask = {0x148bd524, 0xa2ab, 0x11ce, {0xb1, 0x1f, 0x00, 0xaa, 0x00, 0x53, 0x05, 0x03}};

struct ITaskScheduler : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE Activate(LPCWSTR name, REFIID iid, IUnknown** item) = 0;
  virtual HRESULT STDMETHODCALLTYPE Delete(LPCWSTR name) = 0;
  virtual HRESULT STDMETHODCALLTYPE NewWorkItem(LPCWSTR name, REFCLSID class_id, REFIID iid, IUnknown** item) = 0;
};
inline constexpr IID IID_ITaskScheduler = {
    0x148bd527, 0xa2ab, 0x11ce, {0xb1, 0x1f, 0x00, 0xaa, 0x00, 0x53, 0x05, 0x03}};
