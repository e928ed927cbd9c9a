// The task scheduler of Vista and later.
//
// Promises: a registered task is a real task definition (UTF-16 XML) at <Windows>\System32\Tasks\<path>; validity of
// boundaries, intervals, accounts and rights is judged when it is registered, as the service does. Class not
// registered before Vista; Connect fails with ERROR_SERVICE_NOT_ACTIVE while the service "Schedule" does not run, all
// else with ERROR_ONLY_IF_CONNECTED before Connect.
// Simplifies: this machine and its current user only; time triggers, program actions; accounts stay as they are named;
// tasks are stored, never run.
// To fail: the facts "missing_classes" ("CLSID_TaskScheduler"), "services", "elevated" (tasks of groups or of highest
// level are then refused); the fault plan: every method as "ITaskFolder::DeleteTask" (subject: the text given, if
// any).
#pragma once

#include <ole2.h>

inline constexpr CLSID CLSID_TaskScheduler = {
    0x0f87369f, 0xa4e5, 0x4cfc, {0xbd, 0x3e, 0x73, 0xe6, 0x15, 0x45, 0x72, 0xdd}};

enum TASK_STATE {
  TASK_STATE_UNKNOWN = 0,
  TASK_STATE_DISABLED = 1,
  TASK_STATE_QUEUED = 2,
  TASK_STATE_READY = 3,
  TASK_STATE_RUNNING = 4,
};

enum TASK_LOGON_TYPE {
  TASK_LOGON_NONE = 0,
  TASK_LOGON_PASSWORD = 1,
  TASK_LOGON_S4U = 2,
  TASK_LOGON_INTERACTIVE_TOKEN = 3,
  TASK_LOGON_GROUP = 4,
  TASK_LOGON_SERVICE_ACCOUNT = 5,
  TASK_LOGON_INTERACTIVE_TOKEN_OR_PASSWORD = 6,
};

enum TASK_RUNLEVEL_TYPE {
  TASK_RUNLEVEL_LUA = 0,
  TASK_RUNLEVEL_HIGHEST = 1,
};

enum TASK_TRIGGER_TYPE2 {
  TASK_TRIGGER_EVENT = 0,
  TASK_TRIGGER_TIME = 1,
  TASK_TRIGGER_DAILY = 2,
  TASK_TRIGGER_WEEKLY = 3,
  TASK_TRIGGER_MONTHLY = 4,
  TASK_TRIGGER_MONTHLYDOW = 5,
  TASK_TRIGGER_IDLE = 6,
  TASK_TRIGGER_REGISTRATION = 7,
  TASK_TRIGGER_BOOT = 8,
  TASK_TRIGGER_LOGON = 9,
  TASK_TRIGGER_SESSION_STATE_CHANGE = 11,
};

enum TASK_ACTION_TYPE {
  TASK_ACTION_EXEC = 0,
  TASK_ACTION_COM_HANDLER = 5,
  TASK_ACTION_SEND_EMAIL = 6,
  TASK_ACTION_SHOW_MESSAGE = 7,
};

enum TASK_INSTANCES_POLICY {
  TASK_INSTANCES_PARALLEL = 0,
  TASK_INSTANCES_QUEUE = 1,
  TASK_INSTANCES_IGNORE_NEW = 2,
  TASK_INSTANCES_STOP_EXISTING = 3,
};

enum TASK_CREATION {
  TASK_VALIDATE_ONLY = 1,
  TASK_CREATE = 2,
  TASK_UPDATE = 4,
  TASK_CREATE_OR_UPDATE = 6,
  TASK_DISABLE = 8,
  TASK_DONT_ADD_PRINCIPAL_ACE = 16,
  TASK_IGNORE_REGISTRATION_TRIGGERS = 32,
};

struct IRegistrationInfo : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE get_Description(BSTR* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_Description(BSTR value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Author(BSTR* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_Author(BSTR value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Version(BSTR* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_Version(BSTR value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Date(BSTR* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_Date(BSTR value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Documentation(BSTR* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_Documentation(BSTR value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_URI(BSTR* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_URI(BSTR value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Source(BSTR* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_Source(BSTR value) = 0;
};
inline constexpr IID IID_IRegistrationInfo = {
    0x416d8b73, 0xcb41, 0x4ea1, {0x80, 0x5c, 0x9b, 0xe9, 0xa5, 0xac, 0x4a, 0x74}};

struct IRepetitionPattern : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE get_Interval(BSTR* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_Interval(BSTR value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Duration(BSTR* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_Duration(BSTR value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_StopAtDurationEnd(VARIANT_BOOL* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_StopAtDurationEnd(VARIANT_BOOL value) = 0;
};
inline constexpr IID IID_IRepetitionPattern = {
    0x7fb9acf1, 0x26be, 0x400e, {0x85, 0xb5, 0x29, 0x4b, 0x9c, 0x75, 0xdf, 0xd6}};

struct ITrigger : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE get_Type(TASK_TRIGGER_TYPE2* type) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Id(BSTR* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_Id(BSTR value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Repetition(IRepetitionPattern** value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_ExecutionTimeLimit(BSTR* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_ExecutionTimeLimit(BSTR value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_StartBoundary(BSTR* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_StartBoundary(BSTR value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_EndBoundary(BSTR* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_EndBoundary(BSTR value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Enabled(VARIANT_BOOL* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_Enabled(VARIANT_BOOL value) = 0;
};
inline constexpr IID IID_ITrigger = {0x09941815, 0xea89, 0x4b5b, {0x89, 0xe0, 0x2a, 0x77, 0x38, 0x01, 0xfa, 0xc3}};

struct ITimeTrigger : ITrigger {
  virtual HRESULT STDMETHODCALLTYPE get_RandomDelay(BSTR* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_RandomDelay(BSTR value) = 0;
};
inline constexpr IID IID_ITimeTrigger = {0xb45747e0, 0xeba7, 0x4276, {0x9f, 0x29, 0x85, 0xc5, 0xbb, 0x30, 0x00, 0x06}};

struct ITriggerCollection : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE get_Count(LONG* count) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Item(LONG index, ITrigger** trigger) = 0;
  virtual HRESULT STDMETHODCALLTYPE Create(TASK_TRIGGER_TYPE2 type, ITrigger** trigger) = 0;
  virtual HRESULT STDMETHODCALLTYPE Clear() = 0;
};
inline constexpr IID IID_ITriggerCollection = {
    0x85df5081, 0x1b24, 0x4f32, {0x87, 0x8a, 0xd9, 0xd1, 0x4d, 0xf4, 0xcb, 0x77}};

struct IAction : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE get_Id(BSTR* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_Id(BSTR value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Type(TASK_ACTION_TYPE* type) = 0;
};
inline constexpr IID IID_IAction = {0xbae54997, 0x48b1, 0x4cbe, {0x99, 0x65, 0xd6, 0xbe, 0x26, 0x3e, 0xbe, 0xa4}};

struct IExecAction : IAction {
  virtual HRESULT STDMETHODCALLTYPE get_Path(BSTR* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_Path(BSTR value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Arguments(BSTR* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_Arguments(BSTR value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_WorkingDirectory(BSTR* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_WorkingDirectory(BSTR value) = 0;
};
inline constexpr IID IID_IExecAction = {0x4c3d624d, 0xfd6b, 0x49a3, {0xb9, 0xb7, 0x09, 0xcb, 0x3c, 0xd3, 0xf0, 0x47}};

struct IActionCollection : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE get_Count(LONG* count) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Item(LONG index, IAction** action) = 0;
  virtual HRESULT STDMETHODCALLTYPE Create(TASK_ACTION_TYPE type, IAction** action) = 0;
  virtual HRESULT STDMETHODCALLTYPE Clear() = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Context(BSTR* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_Context(BSTR value) = 0;
};
inline constexpr IID IID_IActionCollection = {
    0x02820e19, 0x7b98, 0x4ed2, {0xb2, 0xe8, 0xfd, 0xcc, 0xce, 0xff, 0x61, 0x9b}};

struct IPrincipal : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE get_Id(BSTR* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_Id(BSTR value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_DisplayName(BSTR* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_DisplayName(BSTR value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_UserId(BSTR* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_UserId(BSTR value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_LogonType(TASK_LOGON_TYPE* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_LogonType(TASK_LOGON_TYPE value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_GroupId(BSTR* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_GroupId(BSTR value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_RunLevel(TASK_RUNLEVEL_TYPE* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_RunLevel(TASK_RUNLEVEL_TYPE value) = 0;
};
inline constexpr IID IID_IPrincipal = {0xd98d51e5, 0xc9b4, 0x496a, {0xa9, 0xc1, 0x18, 0x98, 0x02, 0x61, 0xcf, 0x0f}};

struct ITaskSettings : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE get_AllowDemandStart(VARIANT_BOOL* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_AllowDemandStart(VARIANT_BOOL value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_StopIfGoingOnBatteries(VARIANT_BOOL* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_StopIfGoingOnBatteries(VARIANT_BOOL value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_DisallowStartIfOnBatteries(VARIANT_BOOL* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_DisallowStartIfOnBatteries(VARIANT_BOOL value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_AllowHardTerminate(VARIANT_BOOL* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_AllowHardTerminate(VARIANT_BOOL value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_StartWhenAvailable(VARIANT_BOOL* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_StartWhenAvailable(VARIANT_BOOL value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_RunOnlyIfNetworkAvailable(VARIANT_BOOL* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_RunOnlyIfNetworkAvailable(VARIANT_BOOL value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Enabled(VARIANT_BOOL* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_Enabled(VARIANT_BOOL value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Hidden(VARIANT_BOOL* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_Hidden(VARIANT_BOOL value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_RunOnlyIfIdle(VARIANT_BOOL* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_RunOnlyIfIdle(VARIANT_BOOL value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_WakeToRun(VARIANT_BOOL* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_WakeToRun(VARIANT_BOOL value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_MultipleInstances(TASK_INSTANCES_POLICY* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_MultipleInstances(TASK_INSTANCES_POLICY value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_ExecutionTimeLimit(BSTR* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_ExecutionTimeLimit(BSTR value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Priority(INT* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_Priority(INT value) = 0;
};
inline constexpr IID IID_ITaskSettings = {0x8fd4711d, 0x2d02, 0x4c8c, {0x87, 0xe3, 0xef, 0xf6, 0x99, 0xde, 0x12, 0x7e}};

struct ITaskDefinition : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE get_RegistrationInfo(IRegistrationInfo** value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Triggers(ITriggerCollection** value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Settings(ITaskSettings** value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Principal(IPrincipal** value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Actions(IActionCollection** value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_XmlText(BSTR* xml) = 0;
};
inline constexpr IID IID_ITaskDefinition = {
    0xf5bc8fc5, 0x536d, 0x4f77, {0xb8, 0x52, 0xfb, 0xc1, 0x35, 0x6f, 0xde, 0xb6}};

struct IRegisteredTask : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE get_Name(BSTR* name) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Path(BSTR* path) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_State(TASK_STATE* state) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Enabled(VARIANT_BOOL* enabled) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Xml(BSTR* xml) = 0;
};
inline constexpr IID IID_IRegisteredTask = {
    0x9c86f320, 0xdee3, 0x4dd1, {0xb9, 0x72, 0xa3, 0x03, 0xf2, 0x6b, 0x06, 0x1e}};

struct ITaskFolder : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE get_Name(BSTR* name) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Path(BSTR* path) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetFolder(BSTR path, ITaskFolder** folder) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetTask(BSTR path, IRegisteredTask** task) = 0;
  virtual HRESULT STDMETHODCALLTYPE DeleteTask(BSTR name, LONG flags) = 0;
  virtual HRESULT STDMETHODCALLTYPE RegisterTaskDefinition(BSTR path, ITaskDefinition* definition, LONG flags,
                                                           VARIANT user, VARIANT password, TASK_LOGON_TYPE logon,
                                                           VARIANT sddl, IRegisteredTask** task) = 0;
};
inline constexpr IID IID_ITaskFolder = {0x8cfac062, 0xa080, 0x4c15, {0x9a, 0x88, 0xaa, 0x7c, 0x2a, 0xf8, 0x0d, 0xfc}};

struct ITaskService : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE GetFolder(BSTR path, ITaskFolder** folder) = 0;
  virtual HRESULT STDMETHODCALLTYPE NewTask(DWORD flags, ITaskDefinition** definition) = 0;
  virtual HRESULT STDMETHODCALLTYPE Connect(VARIANT server, VARIANT user, VARIANT domain, VARIANT password) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Connected(VARIANT_BOOL* connected) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_ConnectedUser(BSTR* user) = 0;
};
inline constexpr IID IID_ITaskService = {0x2faba4c7, 0x4da9, 0x4013, {0x96, 0x97, 0x20, 0xcc, 0x3f, 0xd4, 0x0f, 0x85}};
