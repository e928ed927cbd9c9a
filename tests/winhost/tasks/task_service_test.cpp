#include <taskschd.h>

#include "tests/support/machine_fixture.h"
#include "winhost/tasks/task_store.h"

namespace {

using testing_support::OnMachine;

struct Bstr {
  explicit Bstr(const OLECHAR* from) : text(SysAllocString(from)) {}
  ~Bstr() { SysFreeString(text); }
  operator BSTR() const { return text; }
  BSTR text;
};

class TaskServiceTest : public OnMachine {
 protected:
  void SetUp() override {
    CoInitialize(nullptr);
    VariantInit(&none_);
  }
  void TearDown() override {
    for (IUnknown* object :
         {static_cast<IUnknown*>(task_), static_cast<IUnknown*>(folder_object_), static_cast<IUnknown*>(service_)}) {
      if (object) object->Release();
    }
    CoUninitialize();
  }
  HRESULT Connect() {
    const HRESULT made = CoCreateInstance(CLSID_TaskScheduler, nullptr, CLSCTX_INPROC_SERVER, IID_ITaskService,
                                          reinterpret_cast<void**>(&service_));
    return FAILED(made) ? made : service_->Connect(none_, none_, none_, none_);
  }
  // A task of the administrators that starts at `start` and repeats hourly.
  void Define(const OLECHAR* start = TEXT("2024-03-05T15:12:09")) {
    ASSERT_EQ(Connect(), S_OK);
    ASSERT_EQ(service_->GetFolder(Bstr(TEXT("\\")), &folder_object_), S_OK);
    ASSERT_EQ(service_->NewTask(0, &task_), S_OK);
    DefineTrigger(start);
    DefineRest();
  }
  HRESULT Register(const OLECHAR* name, LONG flags = TASK_CREATE_OR_UPDATE) {
    Bstr account(TEXT("Builtin\\Administrators"));
    VARIANT user;
    VariantInit(&user);
    user.vt = VT_BSTR;
    user.bstrVal = account;
    IRegisteredTask* registered = nullptr;
    const HRESULT result = folder_object_->RegisterTaskDefinition(Bstr(name), task_, flags, user, none_,
                                                                  TASK_LOGON_GROUP, none_, &registered);
    if (registered) registered->Release();
    EXPECT_EQ(registered != nullptr, SUCCEEDED(result));
    return result;
  }
  static std::vector<winhost::StoredTask> Tasks() { return winhost::ListTasks(winhost::Machine::Current()); }

  ITaskService* service_ = nullptr;
  ITaskFolder* folder_object_ = nullptr;
  ITaskDefinition* task_ = nullptr;
  VARIANT none_;

 private:
  void DefineTrigger(const OLECHAR* start) {
    ITriggerCollection* triggers = nullptr;
    ITrigger* trigger = nullptr;
    ITimeTrigger* time = nullptr;
    IRepetitionPattern* repetition = nullptr;
    ASSERT_EQ(task_->get_Triggers(&triggers), S_OK);
    EXPECT_EQ(triggers->Create(TASK_TRIGGER_BOOT, &trigger), E_NOTIMPL);
    ASSERT_EQ(triggers->Create(TASK_TRIGGER_TIME, &trigger), S_OK);
    ASSERT_EQ(trigger->QueryInterface(IID_ITimeTrigger, reinterpret_cast<void**>(&time)), S_OK);
    time->put_StartBoundary(Bstr(start));
    time->get_Repetition(&repetition);
    repetition->put_Interval(Bstr(TEXT("PT1H")));
    for (IUnknown* object : {static_cast<IUnknown*>(repetition), static_cast<IUnknown*>(time),
                             static_cast<IUnknown*>(trigger), static_cast<IUnknown*>(triggers)}) {
      object->Release();
    }
  }
  void DefineRest() {
    IActionCollection* actions = nullptr;
    IAction* action = nullptr;
    IExecAction* exec = nullptr;
    IPrincipal* principal = nullptr;
    ITaskSettings* settings = nullptr;
    IRegistrationInfo* info = nullptr;
    task_->get_Actions(&actions);
    ASSERT_EQ(actions->Create(TASK_ACTION_EXEC, &action), S_OK);
    ASSERT_EQ(action->QueryInterface(IID_IExecAction, reinterpret_cast<void**>(&exec)), S_OK);
    exec->put_Path(Bstr(TEXT("C:\\v\\update.exe")));
    exec->put_Arguments(Bstr(TEXT("--silent")));
    task_->get_Principal(&principal);
    principal->put_RunLevel(TASK_RUNLEVEL_HIGHEST);
    task_->get_Settings(&settings);
    settings->put_StartWhenAvailable(VARIANT_TRUE);
    task_->get_RegistrationInfo(&info);
    info->put_Description(Bstr(TEXT("升级程序")));
    info->put_Author(nullptr);
    for (IUnknown* object :
         {static_cast<IUnknown*>(info), static_cast<IUnknown*>(settings), static_cast<IUnknown*>(principal),
          static_cast<IUnknown*>(exec), static_cast<IUnknown*>(action), static_cast<IUnknown*>(actions)}) {
      object->Release();
    }
  }
};

TEST_F(TaskServiceTest, ARegisteredTaskLiesAmongTheSystemsFiles) {
  Start();
  Define();
  ASSERT_EQ(Register(TEXT("Update")), S_OK);
  ASSERT_EQ(Tasks().size(), 1u);
  const auto task = Tasks()[0];
  EXPECT_EQ(task.file, folder_ / "C/Windows/System32/Tasks/Update");
  EXPECT_EQ(task.name, TEXT("Update"));
  EXPECT_EQ(task.program, TEXT("C:\\v\\update.exe"));
  EXPECT_EQ(task.arguments, TEXT("--silent"));
  EXPECT_EQ(task.description, TEXT("升级程序"));
  EXPECT_EQ(task.principal, TEXT("Builtin\\Administrators"));
  EXPECT_EQ(task.run_level, TEXT("highest"));
  EXPECT_EQ(task.logon_type, TEXT("group"));
  EXPECT_TRUE(task.start_when_available);
  EXPECT_EQ(task.start_boundary, TEXT("2024-03-05T15:12:09"));
  EXPECT_EQ(task.interval, TEXT("PT1H"));
  EXPECT_EQ(task.duration, TEXT(""));
}

TEST_F(TaskServiceTest, TasksAreReplacedAndDeletedByName) {
  Start();
  Define();
  EXPECT_EQ(Register(TEXT("Update"), TASK_UPDATE), HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
  EXPECT_EQ(Register(TEXT("Update"), TASK_CREATE), S_OK);
  EXPECT_EQ(Register(TEXT("UPDATE"), TASK_CREATE), HRESULT_FROM_WIN32(ERROR_ALREADY_EXISTS));
  EXPECT_EQ(Register(TEXT("update")), S_OK);
  EXPECT_EQ(Register(TEXT("Folder\\Other")), S_OK);
  EXPECT_EQ(Tasks().size(), 2u);
  IRegisteredTask* found = nullptr;
  ASSERT_EQ(folder_object_->GetTask(Bstr(TEXT("\\folder\\other")), &found), S_OK);
  EXPECT_EQ(found->Release(), 0u);
  EXPECT_EQ(folder_object_->DeleteTask(Bstr(TEXT("update")), 0), S_OK);
  EXPECT_EQ(folder_object_->DeleteTask(Bstr(TEXT("update")), 0), HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
  EXPECT_EQ(folder_object_->DeleteTask(Bstr(TEXT("..\\..\\x")), 0), HRESULT_FROM_WIN32(ERROR_INVALID_NAME));
  EXPECT_EQ(Tasks().size(), 1u);
}

TEST_F(TaskServiceTest, BadDefinitionsAreRefusedAtRegistration) {
  Start();
  Define(TEXT("2024-03-05"));
  EXPECT_EQ(Register(TEXT("Update")), SCHED_E_INVALIDVALUE);
  EXPECT_TRUE(Tasks().empty());
}

TEST_F(TaskServiceTest, RightsAndServiceAreAskedFor) {
  Start(R"({"elevated": false})");
  Define();
  EXPECT_EQ(Register(TEXT("Update")), E_ACCESSDENIED);
}

TEST_F(TaskServiceTest, AStoppedServiceCannotBeConnected) {
  Start(R"({"services": {"Schedule": {"state": "stopped", "start_type": "manual"}}})");
  EXPECT_EQ(Connect(), HRESULT_FROM_WIN32(ERROR_SERVICE_NOT_ACTIVE));
  ITaskDefinition* task = nullptr;
  EXPECT_EQ(service_->NewTask(0, &task), HRESULT_FROM_WIN32(ERROR_ONLY_IF_CONNECTED));
}

TEST_F(TaskServiceTest, AnyCallCanFail) {
  Start(R"({"faults": [{"operation": "ITaskFolder::RegisterTaskDefinition", "subject": "update", "error": 5}]})");
  Define();
  EXPECT_EQ(Register(TEXT("Update")), E_ACCESSDENIED);
  EXPECT_EQ(Register(TEXT("Update")), S_OK);
}

}  // namespace
