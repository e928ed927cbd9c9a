#include <mstask.h>

#include "tests/support/machine_fixture.h"
#include "winhost/tasks/job_file.h"
#include "winhost/tasks/task_store.h"

namespace {

using testing_support::OnMachine;

TASK_TRIGGER Daily() {
  TASK_TRIGGER trigger{};
  trigger.cbTriggerSize = sizeof trigger;
  trigger.wBeginYear = 2024;
  trigger.wBeginMonth = 2;
  trigger.wBeginDay = 29;
  trigger.wStartHour = 15;
  trigger.wStartMinute = 5;
  trigger.MinutesDuration = 1200;
  trigger.MinutesInterval = 60;
  trigger.TriggerType = TASK_TIME_TRIGGER_DAILY;
  trigger.Type.Daily.DaysInterval = 1;
  return trigger;
}

TEST(JobFileTest, LiesInTheFormatsPlaces) {
  winhost::JobFile job;
  job.program = TEXT("C:\\a.exe");
  job.flags = 0x2000;
  job.triggers.push_back(Daily());
  const std::string bytes = winhost::WriteJob(job);
  const auto at = [&](std::size_t offset) {
    return static_cast<unsigned char>(bytes[offset]) | static_cast<unsigned char>(bytes[offset + 1]) << 8;
  };
  EXPECT_EQ(at(0), 0x0501);
  EXPECT_EQ(at(2), 1);
  EXPECT_EQ(at(20), 70);      // the program's name
  EXPECT_EQ(at(70), 9);       // its characters with terminator
  EXPECT_EQ(at(48), 0x2000);  // flags
  const auto triggers = static_cast<std::size_t>(at(22));
  EXPECT_EQ(at(triggers), 1);
  EXPECT_EQ(at(triggers + 2), 48);
  EXPECT_EQ(triggers + 2 + 48, bytes.size());
}

TEST(JobFileTest, CutsAreRefused) {
  winhost::JobFile job;
  job.program = TEXT("C:\\a.exe");
  job.comment = TEXT("c");
  job.triggers.push_back(Daily());
  const std::string bytes = winhost::WriteJob(job);
  ASSERT_TRUE(winhost::ReadJob(bytes));
  for (std::size_t size = 0; size < bytes.size(); ++size) EXPECT_FALSE(winhost::ReadJob(bytes.substr(0, size))) << size;
}

class TaskScheduler1Test : public OnMachine {
 protected:
  void SetUp() override {
    Start(R"({"version": "xp", "windows_bits": 32, "user": "anna"})");
    CoInitialize(nullptr);
    ASSERT_EQ(CoCreateInstance(CLSID_CTaskScheduler, nullptr, CLSCTX_INPROC_SERVER, IID_ITaskScheduler,
                               reinterpret_cast<void**>(&scheduler_)),
              S_OK);
  }
  void TearDown() override {
    if (task_) task_->Release();
    scheduler_->Release();
    CoUninitialize();
  }
  HRESULT New(LPCWSTR name) {
    if (task_) task_->Release();
    return scheduler_->NewWorkItem(name, CLSID_CTask, IID_ITask, reinterpret_cast<IUnknown**>(&task_));
  }
  HRESULT SetTrigger(TASK_TRIGGER trigger) {
    WORD index = 99;
    ITaskTrigger* object = nullptr;
    if (const HRESULT made = task_->CreateTrigger(&index, &object); FAILED(made)) return made;
    const HRESULT set = object->SetTrigger(&trigger);
    object->Release();
    return set;
  }
  HRESULT Save() {
    IPersistFile* file = nullptr;
    task_->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(&file));
    const HRESULT saved = file->Save(nullptr, TRUE);
    file->Release();
    return saved;
  }
  static std::vector<winhost::StoredTask> Tasks() { return winhost::ListTasks(winhost::Machine::Current()); }

  ITaskScheduler* scheduler_ = nullptr;
  ITask* task_ = nullptr;
};

TEST_F(TaskScheduler1Test, ASavedTaskIsAJobFile) {
  ASSERT_EQ(New(TEXT("Update")), S_OK);
  EXPECT_EQ(task_->SetAccountInformation(TEXT("anna"), nullptr), S_OK);
  EXPECT_EQ(task_->SetFlags(TASK_FLAG_RUN_ONLY_IF_LOGGED_ON), S_OK);
  EXPECT_EQ(task_->SetComment(TEXT("升级程序")), S_OK);
  EXPECT_EQ(task_->SetApplicationName(TEXT("C:\\u.exe")), S_OK);
  EXPECT_EQ(task_->SetParameters(TEXT("--silent")), S_OK);
  EXPECT_EQ(SetTrigger(Daily()), S_OK);
  EXPECT_TRUE(Tasks().empty());
  EXPECT_EQ(Save(), S_OK);
  ASSERT_EQ(Tasks().size(), 1u);
  const auto task = Tasks()[0];
  EXPECT_EQ(task.version, 1);
  EXPECT_EQ(task.file, folder_ / "C/Windows/Tasks/Update.job");
  EXPECT_EQ(task.program, TEXT("C:\\u.exe"));
  EXPECT_EQ(task.arguments, TEXT("--silent"));
  EXPECT_EQ(task.description, TEXT("升级程序"));
  EXPECT_EQ(task.author, TEXT("anna"));
  EXPECT_EQ(task.principal, TEXT("anna"));
  EXPECT_EQ(task.flags, 0x2000u);
  EXPECT_EQ(task.trigger_type, TEXT("daily"));
  EXPECT_EQ(task.start_boundary, TEXT("2024-02-29T15:05:00"));
  EXPECT_EQ(task.interval, TEXT("PT60M"));
  EXPECT_EQ(task.duration, TEXT("PT1200M"));
  EXPECT_EQ(task.days_interval, 1u);
}

TEST_F(TaskScheduler1Test, NamesAreUniqueUntilDeleted) {
  ASSERT_EQ(New(TEXT("Update")), S_OK);
  ASSERT_EQ(Save(), S_OK);
  EXPECT_EQ(New(TEXT("update.job")), HRESULT_FROM_WIN32(ERROR_FILE_EXISTS));
  ITask* again = nullptr;
  ASSERT_EQ(scheduler_->Activate(TEXT("UPDATE"), IID_ITask, reinterpret_cast<IUnknown**>(&again)), S_OK);
  LPWSTR creator = nullptr;
  EXPECT_EQ(again->GetCreator(&creator), S_OK);
  EXPECT_EQ(std::u16string(creator), TEXT("anna"));
  CoTaskMemFree(creator);
  again->Release();
  EXPECT_EQ(scheduler_->Delete(TEXT("update")), S_OK);
  EXPECT_EQ(scheduler_->Delete(TEXT("update")), HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
  EXPECT_EQ(scheduler_->Delete(TEXT("..\\x")), E_INVALIDARG);
}

TEST_F(TaskScheduler1Test, TriggersAndAccountsAreChecked) {
  ASSERT_EQ(New(TEXT("Update")), S_OK);
  struct Row {
    void (*spoil)(TASK_TRIGGER&);
  };
  const Row rows[] = {{[](TASK_TRIGGER& t) { t.cbTriggerSize = 47; }},
                      {[](TASK_TRIGGER& t) { t.wBeginMonth = 13; }},
                      {[](TASK_TRIGGER& t) { t.wBeginYear = 2023; }},  // no 29 February
                      {[](TASK_TRIGGER& t) { t.wStartHour = 24; }},
                      {[](TASK_TRIGGER& t) { t.MinutesInterval = 1200; }},
                      {[](TASK_TRIGGER& t) { t.rgFlags = TASK_TRIGGER_FLAG_HAS_END_DATE; }}};
  for (const Row& row : rows) {
    TASK_TRIGGER trigger = Daily();
    row.spoil(trigger);
    EXPECT_EQ(SetTrigger(trigger), E_INVALIDARG) << &row - rows;
  }
  EXPECT_EQ(task_->SetAccountInformation(TEXT("nobody"), nullptr), SCHED_E_ACCOUNT_NAME_NOT_FOUND);
  LPWSTR account = nullptr;
  EXPECT_EQ(task_->GetAccountInformation(&account), SCHED_E_ACCOUNT_INFORMATION_NOT_SET);
}

}  // namespace
