#include "winhost/tasks/definition_objects.h"

#include "winhost/tasks/property.h"

namespace winhost {

template <>
inline constexpr std::array kIids<IRegistrationInfo> = {&IID_IRegistrationInfo, &IID_IDispatch};
template <>
inline constexpr std::array kIids<IRepetitionPattern> = {&IID_IRepetitionPattern, &IID_IDispatch};
template <>
inline constexpr std::array kIids<ITimeTrigger> = {&IID_ITimeTrigger, &IID_ITrigger, &IID_IDispatch};
template <>
inline constexpr std::array kIids<ITriggerCollection> = {&IID_ITriggerCollection, &IID_IDispatch};
template <>
inline constexpr std::array kIids<IExecAction> = {&IID_IExecAction, &IID_IAction, &IID_IDispatch};
template <>
inline constexpr std::array kIids<IActionCollection> = {&IID_IActionCollection, &IID_IDispatch};
template <>
inline constexpr std::array kIids<IPrincipal> = {&IID_IPrincipal, &IID_IDispatch};
template <>
inline constexpr std::array kIids<ITaskSettings> = {&IID_ITaskSettings, &IID_IDispatch};

namespace {

using Task = std::shared_ptr<TaskDefinition>;

class RegistrationInfo final : public ComObject<IRegistrationInfo> {
 public:
  explicit RegistrationInfo(Task task) : task_(std::move(task)) {}
  VANTA_TEXT_PROPERTY(IRegistrationInfo, Description, task_->description)
  VANTA_TEXT_PROPERTY(IRegistrationInfo, Author, task_->author)
  VANTA_TEXT_PROPERTY(IRegistrationInfo, Version, task_->version)
  VANTA_TEXT_PROPERTY(IRegistrationInfo, Date, task_->date)
  VANTA_TEXT_PROPERTY(IRegistrationInfo, Documentation, task_->documentation)
  VANTA_TEXT_PROPERTY(IRegistrationInfo, URI, task_->uri)
  VANTA_TEXT_PROPERTY(IRegistrationInfo, Source, task_->source)

 private:
  Task task_;
};

class RepetitionPattern final : public ComObject<IRepetitionPattern> {
 public:
  explicit RepetitionPattern(std::shared_ptr<TaskTrigger> trigger) : trigger_(std::move(trigger)) {}
  VANTA_TEXT_PROPERTY(IRepetitionPattern, Interval, trigger_->interval)
  VANTA_TEXT_PROPERTY(IRepetitionPattern, Duration, trigger_->duration)
  VANTA_VALUE_PROPERTY(IRepetitionPattern, VARIANT_BOOL, StopAtDurationEnd, trigger_->stop_at_duration_end)

 private:
  std::shared_ptr<TaskTrigger> trigger_;
};

class TimeTrigger final : public ComObject<ITimeTrigger> {
 public:
  explicit TimeTrigger(std::shared_ptr<TaskTrigger> trigger) : trigger_(std::move(trigger)) {}
  HRESULT get_Type(TASK_TRIGGER_TYPE2* type) override {
    if (!type) return E_POINTER;
    *type = TASK_TRIGGER_TIME;
    return S_OK;
  }
  HRESULT get_Repetition(IRepetitionPattern** value) override {
    if (auto failed = PlannedFailure("ITrigger::get_Repetition")) return *failed;
    return MakeObject<RepetitionPattern>(value, trigger_);
  }
  VANTA_TEXT_PROPERTY(ITrigger, Id, trigger_->id)
  VANTA_TEXT_PROPERTY(ITrigger, ExecutionTimeLimit, trigger_->execution_time_limit)
  VANTA_TEXT_PROPERTY(ITrigger, StartBoundary, trigger_->start_boundary)
  VANTA_TEXT_PROPERTY(ITrigger, EndBoundary, trigger_->end_boundary)
  VANTA_VALUE_PROPERTY(ITrigger, VARIANT_BOOL, Enabled, trigger_->enabled)
  VANTA_TEXT_PROPERTY(ITimeTrigger, RandomDelay, trigger_->random_delay)

 private:
  std::shared_ptr<TaskTrigger> trigger_;
};

class ExecAction final : public ComObject<IExecAction> {
 public:
  explicit ExecAction(std::shared_ptr<TaskAction> action) : action_(std::move(action)) {}
  HRESULT get_Type(TASK_ACTION_TYPE* type) override {
    if (!type) return E_POINTER;
    *type = TASK_ACTION_EXEC;
    return S_OK;
  }
  VANTA_TEXT_PROPERTY(IAction, Id, action_->id)
  VANTA_TEXT_PROPERTY(IExecAction, Path, action_->path)
  VANTA_TEXT_PROPERTY(IExecAction, Arguments, action_->arguments)
  VANTA_TEXT_PROPERTY(IExecAction, WorkingDirectory, action_->working_directory)

 private:
  std::shared_ptr<TaskAction> action_;
};

// The item at a position counted from 1, as these collections count.
template <class Object, class Item, class Interface>
HRESULT ItemAt(const std::vector<std::shared_ptr<Item>>& items, LONG index, Interface** out) {
  if (!out) return E_POINTER;
  *out = nullptr;
  if (index < 1 || static_cast<std::size_t>(index) > items.size()) return E_INVALIDARG;
  *out = new Object(items[static_cast<std::size_t>(index) - 1]);
  return S_OK;
}

template <class Item>
HRESULT CountOf(const std::vector<std::shared_ptr<Item>>& items, LONG* count) {
  if (!count) return E_POINTER;
  *count = static_cast<LONG>(items.size());
  return S_OK;
}

class TriggerCollection final : public ComObject<ITriggerCollection> {
 public:
  explicit TriggerCollection(Task task) : task_(std::move(task)) {}
  HRESULT get_Count(LONG* count) override { return CountOf(task_->triggers, count); }
  HRESULT get_Item(LONG index, ITrigger** trigger) override {
    return ItemAt<TimeTrigger>(task_->triggers, index, trigger);
  }
  HRESULT Create(TASK_TRIGGER_TYPE2 type, ITrigger** trigger) override {
    if (!trigger) return E_POINTER;
    *trigger = nullptr;
    if (auto failed = PlannedFailure("ITriggerCollection::Create")) return *failed;
    if (type != TASK_TRIGGER_TIME) return E_NOTIMPL;
    *trigger = new TimeTrigger(task_->triggers.emplace_back(std::make_shared<TaskTrigger>()));
    return S_OK;
  }
  HRESULT Clear() override {
    task_->triggers.clear();
    return S_OK;
  }

 private:
  Task task_;
};

class ActionCollection final : public ComObject<IActionCollection> {
 public:
  explicit ActionCollection(Task task) : task_(std::move(task)) {}
  HRESULT get_Count(LONG* count) override { return CountOf(task_->actions, count); }
  HRESULT get_Item(LONG index, IAction** action) override { return ItemAt<ExecAction>(task_->actions, index, action); }
  HRESULT Create(TASK_ACTION_TYPE type, IAction** action) override {
    if (!action) return E_POINTER;
    *action = nullptr;
    if (auto failed = PlannedFailure("IActionCollection::Create")) return *failed;
    if (type != TASK_ACTION_EXEC) return E_NOTIMPL;
    *action = new ExecAction(task_->actions.emplace_back(std::make_shared<TaskAction>()));
    return S_OK;
  }
  HRESULT Clear() override {
    task_->actions.clear();
    return S_OK;
  }
  VANTA_TEXT_PROPERTY(IActionCollection, Context, task_->action_context)

 private:
  Task task_;
};

class Principal final : public ComObject<IPrincipal> {
 public:
  explicit Principal(Task task) : task_(std::move(task)) {}
  VANTA_TEXT_PROPERTY(IPrincipal, Id, task_->principal_id)
  VANTA_TEXT_PROPERTY(IPrincipal, DisplayName, task_->display_name)
  VANTA_TEXT_PROPERTY(IPrincipal, UserId, task_->user_id)
  VANTA_TEXT_PROPERTY(IPrincipal, GroupId, task_->group_id)
  VANTA_VALUE_PROPERTY(IPrincipal, TASK_LOGON_TYPE, LogonType, task_->logon_type)
  VANTA_VALUE_PROPERTY(IPrincipal, TASK_RUNLEVEL_TYPE, RunLevel, task_->run_level)

 private:
  Task task_;
};

class Settings final : public ComObject<ITaskSettings> {
 public:
  explicit Settings(Task task) : task_(std::move(task)), settings_(task_->settings) {}
  VANTA_VALUE_PROPERTY(ITaskSettings, VARIANT_BOOL, AllowDemandStart, settings_.allow_demand_start)
  VANTA_VALUE_PROPERTY(ITaskSettings, VARIANT_BOOL, StopIfGoingOnBatteries, settings_.stop_if_going_on_batteries)
  VANTA_VALUE_PROPERTY(ITaskSettings, VARIANT_BOOL, DisallowStartIfOnBatteries,
                       settings_.disallow_start_if_on_batteries)
  VANTA_VALUE_PROPERTY(ITaskSettings, VARIANT_BOOL, AllowHardTerminate, settings_.allow_hard_terminate)
  VANTA_VALUE_PROPERTY(ITaskSettings, VARIANT_BOOL, StartWhenAvailable, settings_.start_when_available)
  VANTA_VALUE_PROPERTY(ITaskSettings, VARIANT_BOOL, RunOnlyIfNetworkAvailable, settings_.run_only_if_network_available)
  VANTA_VALUE_PROPERTY(ITaskSettings, VARIANT_BOOL, Enabled, settings_.enabled)
  VANTA_VALUE_PROPERTY(ITaskSettings, VARIANT_BOOL, Hidden, settings_.hidden)
  VANTA_VALUE_PROPERTY(ITaskSettings, VARIANT_BOOL, RunOnlyIfIdle, settings_.run_only_if_idle)
  VANTA_VALUE_PROPERTY(ITaskSettings, VARIANT_BOOL, WakeToRun, settings_.wake_to_run)
  VANTA_VALUE_PROPERTY(ITaskSettings, TASK_INSTANCES_POLICY, MultipleInstances, settings_.multiple_instances)
  VANTA_TEXT_PROPERTY(ITaskSettings, ExecutionTimeLimit, settings_.execution_time_limit)
  VANTA_VALUE_PROPERTY(ITaskSettings, INT, Priority, settings_.priority)

 private:
  Task task_;
  TaskSettings& settings_;
};

}  // namespace

HRESULT TaskDefinitionObject::get_RegistrationInfo(IRegistrationInfo** value) {
  if (auto failed = PlannedFailure("ITaskDefinition::get_RegistrationInfo")) return *failed;
  return MakeObject<RegistrationInfo>(value, task_);
}

HRESULT TaskDefinitionObject::get_Triggers(ITriggerCollection** value) {
  if (auto failed = PlannedFailure("ITaskDefinition::get_Triggers")) return *failed;
  return MakeObject<TriggerCollection>(value, task_);
}

HRESULT TaskDefinitionObject::get_Settings(ITaskSettings** value) {
  if (auto failed = PlannedFailure("ITaskDefinition::get_Settings")) return *failed;
  return MakeObject<Settings>(value, task_);
}

HRESULT TaskDefinitionObject::get_Principal(IPrincipal** value) {
  if (auto failed = PlannedFailure("ITaskDefinition::get_Principal")) return *failed;
  return MakeObject<Principal>(value, task_);
}

HRESULT TaskDefinitionObject::get_Actions(IActionCollection** value) {
  if (auto failed = PlannedFailure("ITaskDefinition::get_Actions")) return *failed;
  return MakeObject<ActionCollection>(value, task_);
}

HRESULT TaskDefinitionObject::get_XmlText(BSTR* xml) { return ReturnBstr(TaskXmlText(*task_), xml); }

}  // namespace winhost
