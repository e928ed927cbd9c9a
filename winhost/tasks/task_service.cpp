#include <windows.h>
#include <taskschd.h>

#include "winhost/com/class_table.h"
#include "winhost/machine/machine.h"
#include "winhost/machine/text.h"
#include "winhost/tasks/definition_objects.h"
#include "winhost/tasks/task_files.h"

namespace winhost {

template <>
inline constexpr std::array kIids<IRegisteredTask> = {&IID_IRegisteredTask, &IID_IDispatch};
template <>
inline constexpr std::array kIids<ITaskFolder> = {&IID_ITaskFolder, &IID_IDispatch};
template <>
inline constexpr std::array kIids<ITaskService> = {&IID_ITaskService, &IID_IDispatch};

namespace {

const HRESULT kNotFound = HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND);
const HRESULT kBadName = HRESULT_FROM_WIN32(ERROR_INVALID_NAME);

bool SchedulerRuns() {
  const SC_HANDLE manager = OpenSCManagerW(nullptr, nullptr, SC_MANAGER_CONNECT);
  if (!manager) return false;
  const SC_HANDLE service = OpenServiceW(manager, TEXT("Schedule"), SERVICE_QUERY_STATUS);
  SERVICE_STATUS status{};
  const bool running = service && QueryServiceStatus(service, &status) && status.dwCurrentState == SERVICE_RUNNING;
  if (service) CloseServiceHandle(service);
  CloseServiceHandle(manager);
  return running;
}

HRESULT OptionalText(const VARIANT& value, std::u16string* text) {
  text->clear();
  if (value.vt == VT_BSTR) *text = BstrText(value.bstrVal);
  return value.vt == VT_BSTR || value.vt == VT_EMPTY || value.vt == VT_NULL ? S_OK : DISP_E_TYPEMISMATCH;
}

// "\a\b", "a\b" and "\" below a folder ("" or "\x") give "\x\a\b" and so on.
std::u16string FullPath(const std::u16string& folder, std::u16string_view path) {
  while (path.starts_with(u'\\')) path.remove_prefix(1);
  while (path.ends_with(u'\\')) path.remove_suffix(1);
  return path.empty() ? folder : folder + u'\\' + std::u16string(path);
}

std::u16string LastName(const std::u16string& path) { return path.substr(path.rfind(u'\\') + 1); }

std::filesystem::path FileOf(const std::u16string& path) {
  return FindTaskFile(TaskXmlFolder(Machine::Current()), std::u16string_view(path).substr(1));
}

// The account that the caller names for the registration takes the place of the definition's.
void UseAccount(TaskDefinition* task, const std::u16string& account, TASK_LOGON_TYPE logon) {
  if (logon != TASK_LOGON_NONE) task->logon_type = logon;
  if (!account.empty()) {
    const bool group = task->logon_type == TASK_LOGON_GROUP;
    (group ? task->group_id : task->user_id) = account;
    (group ? task->user_id : task->group_id).clear();
  } else if (task->user_id.empty() && task->group_id.empty()) {
    task->user_id = Wide(Machine::Current().facts().computer + "\\" + Machine::Current().facts().user);
    if (task->logon_type == TASK_LOGON_NONE) task->logon_type = TASK_LOGON_INTERACTIVE_TOKEN;
  }
}

bool NeedsElevation(const TaskDefinition& task) {
  return task.run_level == TASK_RUNLEVEL_HIGHEST || !task.group_id.empty();
}

class RegisteredTask final : public ComObject<IRegisteredTask> {
 public:
  RegisteredTask(std::u16string path, const TaskDefinition& task) : path_(std::move(path)), task_(task) {}
  HRESULT get_Name(BSTR* name) override { return ReturnBstr(LastName(path_), name); }
  HRESULT get_Path(BSTR* path) override { return ReturnBstr(path_, path); }
  HRESULT get_State(TASK_STATE* state) override {
    if (!state) return E_POINTER;
    *state = task_.settings.enabled ? TASK_STATE_READY : TASK_STATE_DISABLED;
    return S_OK;
  }
  HRESULT get_Enabled(VARIANT_BOOL* enabled) override {
    if (!enabled) return E_POINTER;
    *enabled = task_.settings.enabled;
    return S_OK;
  }
  HRESULT get_Xml(BSTR* xml) override { return ReturnBstr(TaskXmlText(task_), xml); }

 private:
  std::u16string path_;
  TaskDefinition task_;
};

class TaskFolder final : public ComObject<ITaskFolder> {
 public:
  // `path` is "" for the root.
  explicit TaskFolder(std::u16string path) : path_(std::move(path)) {}

  HRESULT get_Name(BSTR* name) override { return ReturnBstr(path_.empty() ? u"\\" : LastName(path_), name); }
  HRESULT get_Path(BSTR* path) override { return ReturnBstr(path_.empty() ? u"\\" : path_, path); }

  HRESULT GetFolder(BSTR path, ITaskFolder** folder) override {
    if (!folder) return E_POINTER;
    *folder = nullptr;
    if (auto failed = PlannedFailure("ITaskFolder::GetFolder", path)) return *failed;
    return Open(FullPath(path_, BstrText(path)), folder);
  }

  HRESULT GetTask(BSTR path, IRegisteredTask** task) override {
    if (!task) return E_POINTER;
    *task = nullptr;
    if (auto failed = PlannedFailure("ITaskFolder::GetTask", path)) return *failed;
    const std::u16string full = FullPath(path_, BstrText(path));
    if (full == path_ || !IsTaskPath(full.substr(1))) return kBadName;
    const auto bytes = ReadTaskFile(FileOf(full));
    if (!bytes) return kNotFound;
    const auto read = ReadTaskXml(*bytes);
    return read ? MakeObject<RegisteredTask>(task, full, *read) : SCHED_E_INVALID_TASK;
  }

  HRESULT DeleteTask(BSTR name, LONG flags) override {
    if (auto failed = PlannedFailure("ITaskFolder::DeleteTask", name)) return *failed;
    if (flags != 0) return E_INVALIDARG;
    const std::u16string full = FullPath(path_, BstrText(name));
    if (full == path_ || !IsTaskPath(full.substr(1))) return kBadName;
    const auto file = FileOf(full);
    const auto bytes = ReadTaskFile(file);
    if (!bytes) return kNotFound;
    const auto task = ReadTaskXml(*bytes);
    if (task && NeedsElevation(*task) && !Machine::Current().facts().elevated) return E_ACCESSDENIED;
    return DeleteTaskFile(file);
  }

  HRESULT RegisterTaskDefinition(BSTR path, ITaskDefinition* definition, LONG flags, VARIANT user, VARIANT password,
                                 TASK_LOGON_TYPE logon, VARIANT sddl, IRegisteredTask** task) override {
    if (task) *task = nullptr;
    if (auto failed = PlannedFailure("ITaskFolder::RegisterTaskDefinition", path)) return *failed;
    auto* object = dynamic_cast<TaskDefinitionObject*>(definition);
    if (!object || BstrText(path).empty()) return E_INVALIDARG;
    std::u16string account, ignored;
    for (const auto& [from, to] : {std::pair{&user, &account}, {&password, &ignored}, {&sddl, &ignored}}) {
      if (const HRESULT read = OptionalText(*from, to); FAILED(read)) return read;
    }
    TaskDefinition registered(object->task());
    UseAccount(&registered, account, logon);
    const std::u16string full = FullPath(path_, BstrText(path));
    if (const HRESULT stored = Store(full, flags, &registered); FAILED(stored)) return stored;
    return task ? MakeObject<RegisteredTask>(task, full, registered) : S_OK;
  }

  static HRESULT Open(std::u16string path, ITaskFolder** folder) {
    if (!path.empty()) {
      if (!IsTaskPath(path.substr(1))) return kBadName;
      std::error_code none;
      if (!std::filesystem::is_directory(FileOf(path), none)) return kNotFound;
    }
    return MakeObject<TaskFolder>(folder, std::move(path));
  }

 private:
  HRESULT Store(const std::u16string& path, LONG flags, TaskDefinition* task) {
    if (path == path_ || !IsTaskPath(path.substr(1))) return kBadName;
    if (const HRESULT checked = CheckDefinition(*task); FAILED(checked)) return checked;
    const Facts& facts = Machine::Current().facts();
    if (NeedsElevation(*task) && !facts.elevated) return E_ACCESSDENIED;
    if (flags & TASK_VALIDATE_ONLY) return S_OK;
    if (!(flags & TASK_CREATE_OR_UPDATE)) return E_INVALIDARG;
    const auto file = FileOf(path);
    const bool exists = ReadTaskFile(file).has_value();
    if (exists && !(flags & TASK_UPDATE)) return HRESULT_FROM_WIN32(ERROR_ALREADY_EXISTS);
    if (!exists && !(flags & TASK_CREATE)) return kNotFound;
    if (flags & TASK_DISABLE) task->settings.enabled = VARIANT_FALSE;
    if (facts.AtLeast(6, 2)) task->uri = path;  // the service of Windows 8 began to note where the task lies
    return WriteTaskFile(file, WriteTaskXml(*task));
  }

  std::u16string path_;
};

class TaskService final : public ComObject<ITaskService> {
 public:
  HRESULT Connect(VARIANT server, VARIANT user, VARIANT domain, VARIANT password) override {
    if (auto failed = PlannedFailure("ITaskService::Connect")) return *failed;
    std::u16string text;
    for (const VARIANT* value : {&user, &domain, &password, &server}) {
      if (const HRESULT read = OptionalText(*value, &text); FAILED(read)) return read;
    }
    constexpr HRESULT kNoSuchHost = static_cast<HRESULT>(0x80070035U);  // ERROR_BAD_NETPATH
    if (!text.empty() && !EqualNoCase(text, Wide(Machine::Current().facts().computer))) return kNoSuchHost;
    if (!SchedulerRuns()) return HRESULT_FROM_WIN32(ERROR_SERVICE_NOT_ACTIVE);
    connected_ = true;
    return S_OK;
  }
  HRESULT GetFolder(BSTR path, ITaskFolder** folder) override {
    if (!folder) return E_POINTER;
    *folder = nullptr;
    if (auto failed = PlannedFailure("ITaskService::GetFolder", path)) return *failed;
    return connected_ ? TaskFolder::Open(FullPath(u"", BstrText(path)), folder) : NotConnected();
  }
  HRESULT NewTask(DWORD flags, ITaskDefinition** definition) override {
    if (!definition) return E_POINTER;
    *definition = nullptr;
    if (auto failed = PlannedFailure("ITaskService::NewTask")) return *failed;
    if (flags != 0) return E_INVALIDARG;
    if (!connected_) return NotConnected();
    return MakeObject<TaskDefinitionObject>(definition, std::make_shared<TaskDefinition>());
  }
  HRESULT get_Connected(VARIANT_BOOL* connected) override {
    if (!connected) return E_POINTER;
    *connected = connected_ ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
  }
  HRESULT get_ConnectedUser(BSTR* user) override {
    return connected_ ? ReturnBstr(Wide(Machine::Current().facts().user), user) : NotConnected();
  }

 private:
  static HRESULT NotConnected() { return HRESULT_FROM_WIN32(ERROR_ONLY_IF_CONNECTED); }
  bool connected_ = false;
};

}  // namespace

HRESULT MakeTaskService(REFIID iid, void** object) { return MakeObject<TaskService>(iid, object); }

}  // namespace winhost
