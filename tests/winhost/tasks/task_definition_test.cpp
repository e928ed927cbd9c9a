#include "winhost/tasks/task_definition.h"

#include "tests/support/machine_fixture.h"

namespace {

using namespace winhost;
using testing_support::OnMachine;

TEST(TaskTextTest, Boundaries) {
  for (const char16_t* good :
       {u"2024-02-29T23:59:59", u"2024-03-05T14:07:09.123", u"2024-03-05T14:07:09Z", u"2024-03-05T14:07:09.5+08:00"}) {
    EXPECT_TRUE(IsBoundary(good)) << Narrow(good);
  }
  for (const char16_t* bad :
       {u"", u"2023-02-29T00:00:00", u"2024-13-01T00:00:00", u"2024-03-05 14:07:09", u"2024-3-5T14:07:09",
        u"2024-03-05T24:00:00", u"2024-03-05T14:07", u"2024-03-05T14:07:09x", u"2024-03-05T14:07:09."}) {
    EXPECT_FALSE(IsBoundary(bad)) << Narrow(bad);
  }
}

TEST(TaskTextTest, Durations) {
  EXPECT_EQ(DurationSeconds(u"PT1H"), 3600u);
  EXPECT_EQ(DurationSeconds(u"P1DT12H30M5S"), 86400u + 12 * 3600 + 30 * 60 + 5);
  EXPECT_EQ(DurationSeconds(u"P2M"), 60u * 86400);
  EXPECT_EQ(DurationSeconds(u"PT2M"), 120u);
  for (const char16_t* bad :
       {u"", u"P", u"PT", u"1H", u"PT1", u"P1H", u"PT1H1H", u"PT1M1H", u"PT-1H", u"PT99999999999H"}) {
    EXPECT_FALSE(DurationSeconds(bad)) << Narrow(bad);
  }
}

class TaskDefinitionTest : public OnMachine {
 protected:
  void SetUp() override {
    Start();
    task_.actions.push_back(std::make_shared<TaskAction>(TaskAction{u"", u"C:\\a.exe", u"--x", u""}));
    task_.triggers.push_back(std::make_shared<TaskTrigger>());
    trigger().start_boundary = u"2024-03-05T14:07:09";
  }
  TaskTrigger& trigger() { return *task_.triggers[0]; }
  HRESULT Check() { return CheckDefinition(task_); }
  TaskDefinition task_;
};

TEST_F(TaskDefinitionTest, IsChecked) {
  EXPECT_EQ(Check(), S_OK);
  trigger().interval = u"PT30S";
  EXPECT_EQ(Check(), SCHED_E_INVALIDVALUE);  // less than a minute
  trigger().interval = u"PT1H";
  EXPECT_EQ(Check(), S_OK);
  trigger().duration = u"PT30M";
  EXPECT_EQ(Check(), SCHED_E_INVALIDVALUE);  // shorter than its interval
  trigger().duration.clear();
  trigger().start_boundary = u"tomorrow";
  EXPECT_EQ(Check(), SCHED_E_INVALIDVALUE);
  trigger().start_boundary.clear();
  EXPECT_EQ(Check(), SCHED_E_MISSINGNODE);
  task_.triggers.clear();
  task_.group_id = u"Builtin\\Nobody";
  EXPECT_EQ(Check(), HRESULT_FROM_WIN32(ERROR_NONE_MAPPED));
  task_.group_id = u"S-1-5-32-544";
  EXPECT_EQ(Check(), S_OK);
  task_.actions[0]->path.clear();
  EXPECT_EQ(Check(), SCHED_E_MISSINGNODE);
}

TEST_F(TaskDefinitionTest, SurvivesItsFile) {
  task_.description = u"a <b> & \"c\" 升级程序";
  task_.author = u"user";
  task_.group_id = u"Builtin\\Administrators";
  task_.run_level = TASK_RUNLEVEL_HIGHEST;
  task_.settings.start_when_available = VARIANT_TRUE;
  task_.settings.wake_to_run = VARIANT_TRUE;
  trigger().interval = u"PT1H";
  const std::string bytes = WriteTaskXml(task_);
  EXPECT_EQ(bytes.substr(0, 4), std::string("\xFF\xFE<\0", 4));
  const auto read = ReadTaskXml(bytes);
  ASSERT_TRUE(read);
  EXPECT_EQ(TaskXmlText(*read), TaskXmlText(task_));
  EXPECT_EQ(read->description, task_.description);
  EXPECT_EQ(read->logon_type, TASK_LOGON_GROUP);
  EXPECT_EQ(read->triggers[0]->interval, u"PT1H");
  EXPECT_EQ(read->actions[0]->arguments, u"--x");
}

TEST_F(TaskDefinitionTest, OtherBytesAreNoTask) {
  for (const char* bytes : {"", "<?xml?>", "<Other/>", "\xFF\xFE", "<Task"}) EXPECT_FALSE(ReadTaskXml(bytes)) << bytes;
}

}  // namespace
