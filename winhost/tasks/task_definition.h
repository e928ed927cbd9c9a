// What a task of the second scheduler says, as plain data. The COM objects edit it, its XML stores it.
#pragma once

#include <windows.h>
#include <taskschd.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace winhost {

struct TaskTrigger {
  std::u16string id, start_boundary, end_boundary, execution_time_limit, random_delay;
  std::u16string interval, duration;  // of the repetition
  VARIANT_BOOL stop_at_duration_end = VARIANT_FALSE;
  VARIANT_BOOL enabled = VARIANT_TRUE;
};

struct TaskAction {
  std::u16string id, path, arguments, working_directory;
};

struct TaskSettings {
  VARIANT_BOOL allow_demand_start = VARIANT_TRUE;
  VARIANT_BOOL stop_if_going_on_batteries = VARIANT_TRUE;
  VARIANT_BOOL disallow_start_if_on_batteries = VARIANT_TRUE;
  VARIANT_BOOL allow_hard_terminate = VARIANT_TRUE;
  VARIANT_BOOL start_when_available = VARIANT_FALSE;
  VARIANT_BOOL run_only_if_network_available = VARIANT_FALSE;
  VARIANT_BOOL enabled = VARIANT_TRUE;
  VARIANT_BOOL hidden = VARIANT_FALSE;
  VARIANT_BOOL run_only_if_idle = VARIANT_FALSE;
  VARIANT_BOOL wake_to_run = VARIANT_FALSE;
  TASK_INSTANCES_POLICY multiple_instances = TASK_INSTANCES_IGNORE_NEW;
  std::u16string execution_time_limit = u"PT72H";
  INT priority = 7;
};

struct TaskDefinition {
  std::u16string description, author, version, date, documentation, uri, source;
  std::vector<std::shared_ptr<TaskTrigger>> triggers;
  std::vector<std::shared_ptr<TaskAction>> actions;
  std::u16string action_context = u"Author";
  std::u16string principal_id = u"Author", display_name, user_id, group_id;
  TASK_LOGON_TYPE logon_type = TASK_LOGON_NONE;
  TASK_RUNLEVEL_TYPE run_level = TASK_RUNLEVEL_LUA;
  TaskSettings settings;

  TaskDefinition() = default;
  // A copy shares no trigger and no action.
  TaskDefinition(const TaskDefinition& other);
  TaskDefinition& operator=(const TaskDefinition&) = delete;
};

// S_OK; SCHED_E_MISSINGNODE when something is left out that a task needs; SCHED_E_INVALIDVALUE for a malformed
// boundary, interval or number; ERROR_NONE_MAPPED as an HRESULT for an account that nobody has.
HRESULT CheckDefinition(const TaskDefinition& definition);

// "2024-03-05T14:07:09", with a fraction and a zone if need be; a date and a time that exist.
bool IsBoundary(std::u16string_view text);
// "PT1H", "P1DT12H30M" …: its length in seconds (a month counts 30 days, a year 365); none when malformed.
std::optional<std::uint64_t> DurationSeconds(std::u16string_view text);
// Whether an account of this name or security identifier ("S-1-…") is on the machine.
bool AccountExists(std::u16string_view name);

// The task's file: UTF-16 with byte-order mark, CR LF.
std::string WriteTaskXml(const TaskDefinition& definition);
std::u16string TaskXmlText(const TaskDefinition& definition);
// None when the bytes are no task definition. Elements that this system does not know are passed over.
std::optional<TaskDefinition> ReadTaskXml(std::string_view bytes);

}  // namespace winhost
