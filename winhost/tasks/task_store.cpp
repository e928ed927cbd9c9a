#include "winhost/tasks/task_store.h"

#include <algorithm>
#include <cstdio>

#include "winhost/machine/text.h"
#include "winhost/tasks/job_accounts.h"
#include "winhost/tasks/job_file.h"
#include "winhost/tasks/task_definition.h"
#include "winhost/tasks/task_files.h"

namespace winhost {
namespace {

std::u16string LogonName(TASK_LOGON_TYPE type) {
  switch (type) {
    case TASK_LOGON_PASSWORD:
      return u"password";
    case TASK_LOGON_S4U:
      return u"S4U";
    case TASK_LOGON_INTERACTIVE_TOKEN:
      return u"interactive token";
    case TASK_LOGON_GROUP:
      return u"group";
    case TASK_LOGON_SERVICE_ACCOUNT:
      return u"service account";
    case TASK_LOGON_INTERACTIVE_TOKEN_OR_PASSWORD:
      return u"interactive token or password";
    case TASK_LOGON_NONE:
      break;
  }
  return u"none";
}

std::u16string TriggerName(TASK_TRIGGER_TYPE type) {
  constexpr const char16_t* kNames[] = {u"once",        u"daily", u"weekly",       u"monthly date",
                                        u"monthly day", u"idle",  u"system start", u"logon"};
  const auto index = static_cast<std::size_t>(type);
  return index < std::size(kNames) ? kNames[index] : u"unknown";
}

std::u16string NameOf(const std::filesystem::path& file, const std::filesystem::path& folder) {
  std::string name = file.lexically_relative(folder).string();
  std::ranges::replace(name, '/', '\\');
  return Wide(name);
}

void FillFromXml(const TaskDefinition& task, StoredTask* stored) {
  stored->description = task.description;
  stored->author = task.author;
  stored->principal = task.group_id.empty() ? task.user_id : task.group_id;
  stored->run_level = task.run_level == TASK_RUNLEVEL_HIGHEST ? u"highest" : u"least";
  stored->logon_type = LogonName(task.logon_type);
  stored->start_when_available = task.settings.start_when_available != VARIANT_FALSE;
  if (!task.actions.empty()) {
    stored->program = task.actions[0]->path;
    stored->arguments = task.actions[0]->arguments;
    stored->working_directory = task.actions[0]->working_directory;
  }
  stored->triggers = task.triggers.size();
  if (task.triggers.empty()) return;
  stored->trigger_type = u"time";
  stored->start_boundary = task.triggers[0]->start_boundary;
  stored->interval = task.triggers[0]->interval;
  stored->duration = task.triggers[0]->duration;
}

std::u16string Minutes(std::uint32_t minutes) {
  return minutes ? u"PT" + Wide(std::to_string(minutes)) + u"M" : std::u16string();
}

void FillFromTrigger(const TASK_TRIGGER& trigger, StoredTask* stored) {
  char start[48];
  std::snprintf(start, sizeof start, "%04u-%02u-%02uT%02u:%02u:00", trigger.wBeginYear, trigger.wBeginMonth,
                trigger.wBeginDay, trigger.wStartHour, trigger.wStartMinute);
  stored->start_boundary = Wide(start);
  stored->trigger_type = TriggerName(trigger.TriggerType);
  stored->interval = Minutes(trigger.MinutesInterval);
  stored->duration = Minutes(trigger.MinutesDuration);
  if (trigger.TriggerType == TASK_TIME_TRIGGER_DAILY) stored->days_interval = trigger.Type.Daily.DaysInterval;
}

void FillFromJob(const JobFile& job, StoredTask* stored) {
  stored->program = job.program;
  stored->arguments = job.arguments;
  stored->working_directory = job.working_directory;
  stored->description = job.comment;
  stored->author = job.author;
  stored->flags = job.flags;
  stored->triggers = job.triggers.size();
  if (!job.triggers.empty()) FillFromTrigger(job.triggers[0], stored);
}

}  // namespace

std::vector<StoredTask> ListTasks(const Machine& machine) {
  std::vector<StoredTask> tasks;
  for (const auto& file : ListTaskFiles(TaskXmlFolder(machine))) {
    StoredTask& stored = tasks.emplace_back();
    stored.name = NameOf(file, TaskXmlFolder(machine));
    stored.file = file;
    const auto task = ReadTaskXml(ReadTaskFile(file).value_or(""));
    stored.readable = task.has_value();
    if (task) FillFromXml(*task, &stored);
  }
  for (const auto& file : ListTaskFiles(JobFolder(machine))) {
    if (!EqualNoCase(Wide(file.extension().string()), u".job")) continue;  // the folder holds other files too
    StoredTask& stored = tasks.emplace_back();
    stored.version = 1;
    stored.name = Wide(file.stem().string());
    stored.file = file;
    const auto job = ReadJob(ReadTaskFile(file).value_or(""));
    stored.readable = job.has_value();
    if (job) FillFromJob(*job, &stored);
    stored.principal = JobAccount(machine, stored.name);
  }
  return tasks;
}

}  // namespace winhost
