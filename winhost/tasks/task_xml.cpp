#include <pugixml.hpp>

#include <cstring>

#include "winhost/machine/machine.h"
#include "winhost/machine/text.h"
#include "winhost/tasks/task_definition.h"

namespace winhost {
namespace {

constexpr char16_t kNamespace[] = u"http://schemas.microsoft.com/windows/2004/02/mit/task";

struct LogonName {
  TASK_LOGON_TYPE type;
  const char16_t* name;
};
constexpr LogonName kLogons[] = {{TASK_LOGON_PASSWORD, u"Password"},
                                 {TASK_LOGON_S4U, u"S4U"},
                                 {TASK_LOGON_INTERACTIVE_TOKEN, u"InteractiveToken"},
                                 {TASK_LOGON_INTERACTIVE_TOKEN_OR_PASSWORD, u"InteractiveTokenOrPassword"}};

struct PolicyName {
  TASK_INSTANCES_POLICY policy;
  const char16_t* name;
};
constexpr PolicyName kPolicies[] = {{TASK_INSTANCES_PARALLEL, u"Parallel"},
                                    {TASK_INSTANCES_QUEUE, u"Queue"},
                                    {TASK_INSTANCES_IGNORE_NEW, u"IgnoreNew"},
                                    {TASK_INSTANCES_STOP_EXISTING, u"StopExisting"}};

// Settings that are yes or no, by element, in the order of the file, before and after the idle settings.
struct Switch {
  const char16_t* element;
  VARIANT_BOOL TaskSettings::*member;
};
constexpr Switch kBeforeIdle[] = {{u"DisallowStartIfOnBatteries", &TaskSettings::disallow_start_if_on_batteries},
                                  {u"StopIfGoingOnBatteries", &TaskSettings::stop_if_going_on_batteries},
                                  {u"AllowHardTerminate", &TaskSettings::allow_hard_terminate},
                                  {u"StartWhenAvailable", &TaskSettings::start_when_available},
                                  {u"RunOnlyIfNetworkAvailable", &TaskSettings::run_only_if_network_available}};
constexpr Switch kAfterIdle[] = {{u"AllowStartOnDemand", &TaskSettings::allow_demand_start},
                                 {u"Enabled", &TaskSettings::enabled},
                                 {u"Hidden", &TaskSettings::hidden},
                                 {u"RunOnlyIfIdle", &TaskSettings::run_only_if_idle},
                                 {u"WakeToRun", &TaskSettings::wake_to_run}};

class XmlWriter {
 public:
  void Open(std::u16string_view name, std::u16string_view attribute = {}, std::u16string_view value = {}) {
    Line(u"<" + std::u16string(name) + Attribute(attribute, value) + u">");
    open_.emplace_back(name);
  }
  void Close() {
    const std::u16string name = open_.back();
    open_.pop_back();
    Line(u"</" + name + u">");
  }
  void Element(const std::u16string& name, std::u16string_view text) {
    Line(u"<" + name + u">" + Escaped(text) + u"</" + name + u">");
  }
  void Optional(const std::u16string& name, std::u16string_view text) {
    if (!text.empty()) Element(name, text);
  }
  void Bool(const std::u16string& name, VARIANT_BOOL value) { Element(name, value ? u"true" : u"false"); }
  void Line(std::u16string_view text) { text_.append(2 * open_.size(), u' ').append(text).append(u"\r\n"); }
  std::u16string Take() { return std::move(text_); }

 private:
  static std::u16string Escaped(std::u16string_view text) {
    std::u16string safe;
    for (char16_t c : text) {
      if (c == u'<') {
        safe += u"&lt;";
      } else if (c == u'>') {
        safe += u"&gt;";
      } else if (c == u'&') {
        safe += u"&amp;";
      } else if (c == u'"') {
        safe += u"&quot;";
      } else if (c >= 0x20 || c == u'\t' || c == u'\n' || c == u'\r') {  // XML has no way to write the others
        safe += c;
      }
    }
    return safe;
  }
  static std::u16string Attribute(std::u16string_view name, std::u16string_view value) {
    return name.empty() ? std::u16string() : u" " + std::u16string(name) + u"=\"" + Escaped(value) + u"\"";
  }

  std::u16string text_;
  std::vector<std::u16string> open_;
};

void WriteRegistrationInfo(XmlWriter& xml, const TaskDefinition& task) {
  xml.Open(u"RegistrationInfo");
  xml.Optional(u"Date", task.date);
  xml.Optional(u"Author", task.author);
  xml.Optional(u"Version", task.version);
  xml.Optional(u"Description", task.description);
  xml.Optional(u"Documentation", task.documentation);
  xml.Optional(u"URI", task.uri);
  xml.Optional(u"Source", task.source);
  xml.Close();
}

void WriteActions(XmlWriter& xml, const TaskDefinition& task) {
  xml.Open(u"Actions", u"Context", task.action_context);
  for (const auto& action : task.actions) {
    xml.Open(u"Exec", action->id.empty() ? u"" : u"id", action->id);
    xml.Element(u"Command", action->path);
    xml.Optional(u"Arguments", action->arguments);
    xml.Optional(u"WorkingDirectory", action->working_directory);
    xml.Close();
  }
  xml.Close();
}

void WriteTrigger(XmlWriter& xml, const TaskTrigger& trigger) {
  xml.Open(u"TimeTrigger", trigger.id.empty() ? u"" : u"id", trigger.id);
  if (!trigger.interval.empty()) {
    xml.Open(u"Repetition");
    xml.Element(u"Interval", trigger.interval);
    xml.Optional(u"Duration", trigger.duration);
    xml.Bool(u"StopAtDurationEnd", trigger.stop_at_duration_end);
    xml.Close();
  }
  xml.Element(u"StartBoundary", trigger.start_boundary);
  xml.Optional(u"EndBoundary", trigger.end_boundary);
  xml.Optional(u"ExecutionTimeLimit", trigger.execution_time_limit);
  xml.Bool(u"Enabled", trigger.enabled);
  xml.Optional(u"RandomDelay", trigger.random_delay);
  xml.Close();
}

void WritePrincipal(XmlWriter& xml, const TaskDefinition& task) {
  xml.Open(u"Principals");
  xml.Open(u"Principal", u"id", task.principal_id);
  xml.Optional(u"DisplayName", task.display_name);
  xml.Optional(u"GroupId", task.group_id);
  xml.Optional(u"UserId", task.user_id);
  for (const LogonName& row : kLogons) {
    if (row.type == task.logon_type) xml.Element(u"LogonType", row.name);
  }
  xml.Element(u"RunLevel", task.run_level == TASK_RUNLEVEL_HIGHEST ? u"HighestAvailable" : u"LeastPrivilege");
  xml.Close();
  xml.Close();
}

void WriteSettings(XmlWriter& xml, const TaskSettings& settings) {
  xml.Open(u"Settings");
  for (const PolicyName& row : kPolicies) {
    if (row.policy == settings.multiple_instances) xml.Element(u"MultipleInstancesPolicy", row.name);
  }
  for (const Switch& row : kBeforeIdle) xml.Bool(row.element, settings.*row.member);
  xml.Open(u"IdleSettings");
  xml.Element(u"Duration", u"PT10M");
  xml.Element(u"WaitTimeout", u"PT1H");
  xml.Bool(u"StopOnIdleEnd", VARIANT_TRUE);
  xml.Bool(u"RestartOnIdle", VARIANT_FALSE);
  xml.Close();
  for (const Switch& row : kAfterIdle) xml.Bool(row.element, settings.*row.member);
  xml.Optional(u"ExecutionTimeLimit", settings.execution_time_limit);
  xml.Element(u"Priority", Wide(std::to_string(settings.priority)));
  xml.Close();
}

std::u16string Child(const pugi::xml_node& node, const char* name) { return Wide(node.child(name).child_value()); }

void ReadBool(const pugi::xml_node& node, const char16_t* name, VARIANT_BOOL* value) {
  const pugi::xml_node child = node.child(Narrow(name).c_str());
  if (child) *value = child.text().as_bool() ? VARIANT_TRUE : VARIANT_FALSE;
}

void ReadTrigger(const pugi::xml_node& node, TaskTrigger* trigger) {
  const pugi::xml_node repetition = node.child("Repetition");
  trigger->id = Wide(node.attribute("id").value());
  trigger->interval = Child(repetition, "Interval");
  trigger->duration = Child(repetition, "Duration");
  ReadBool(repetition, u"StopAtDurationEnd", &trigger->stop_at_duration_end);
  trigger->start_boundary = Child(node, "StartBoundary");
  trigger->end_boundary = Child(node, "EndBoundary");
  trigger->execution_time_limit = Child(node, "ExecutionTimeLimit");
  trigger->random_delay = Child(node, "RandomDelay");
  ReadBool(node, u"Enabled", &trigger->enabled);
}

void ReadPrincipal(const pugi::xml_node& node, TaskDefinition* task) {
  task->principal_id = Wide(node.attribute("id").value());
  task->display_name = Child(node, "DisplayName");
  task->user_id = Child(node, "UserId");
  task->group_id = Child(node, "GroupId");
  if (!task->group_id.empty()) task->logon_type = TASK_LOGON_GROUP;
  const std::u16string logon = Child(node, "LogonType");
  for (const LogonName& row : kLogons) {
    if (logon == row.name) task->logon_type = row.type;
  }
  if (Child(node, "RunLevel") == u"HighestAvailable") task->run_level = TASK_RUNLEVEL_HIGHEST;
}

void ReadSettings(const pugi::xml_node& node, TaskSettings* settings) {
  const std::u16string policy = Child(node, "MultipleInstancesPolicy");
  for (const PolicyName& row : kPolicies) {
    if (policy == row.name) settings->multiple_instances = row.policy;
  }
  for (const Switch& row : kBeforeIdle) ReadBool(node, row.element, &(settings->*row.member));
  for (const Switch& row : kAfterIdle) ReadBool(node, row.element, &(settings->*row.member));
  if (const auto limit = node.child("ExecutionTimeLimit")) settings->execution_time_limit = Wide(limit.child_value());
  settings->priority = node.child("Priority").text().as_int(settings->priority);
}

}  // namespace

std::u16string TaskXmlText(const TaskDefinition& task) {
  XmlWriter xml;
  xml.Line(u"<?xml version=\"1.0\" encoding=\"UTF-16\"?>");
  xml.Open(u"Task", u"version=\"1.2\" xmlns", kNamespace);
  WriteRegistrationInfo(xml, task);
  xml.Open(u"Triggers");
  for (const auto& trigger : task.triggers) WriteTrigger(xml, *trigger);
  xml.Close();
  WritePrincipal(xml, task);
  WriteSettings(xml, task.settings);
  WriteActions(xml, task);
  xml.Close();
  std::u16string text = xml.Take();
  text.resize(text.size() - 2);  // the file ends with its last tag
  return text;
}

std::string WriteTaskXml(const TaskDefinition& task) {
  const std::u16string text = u'\uFEFF' + TaskXmlText(task);
  std::string bytes(text.size() * sizeof(char16_t), '\0');
  std::memcpy(bytes.data(), text.data(), bytes.size());
  return bytes;
}

std::optional<TaskDefinition> ReadTaskXml(std::string_view bytes) {
  pugi::xml_document document;
  if (!document.load_buffer(bytes.data(), bytes.size())) return std::nullopt;
  const pugi::xml_node root = document.child("Task");
  if (!root) return std::nullopt;
  std::optional<TaskDefinition> task(std::in_place);
  const pugi::xml_node info = root.child("RegistrationInfo");
  task->description = Child(info, "Description");
  task->author = Child(info, "Author");
  task->version = Child(info, "Version");
  task->date = Child(info, "Date");
  task->documentation = Child(info, "Documentation");
  task->uri = Child(info, "URI");
  task->source = Child(info, "Source");
  for (const pugi::xml_node& node : root.child("Triggers").children("TimeTrigger")) {
    ReadTrigger(node, task->triggers.emplace_back(std::make_shared<TaskTrigger>()).get());
  }
  ReadPrincipal(root.child("Principals").child("Principal"), &*task);
  ReadSettings(root.child("Settings"), &task->settings);
  const pugi::xml_node actions = root.child("Actions");
  task->action_context = Wide(actions.attribute("Context").value());
  for (const pugi::xml_node& node : actions.children("Exec")) {
    *task->actions.emplace_back(std::make_shared<TaskAction>()) = {Wide(node.attribute("id").value()),
                                                                   Child(node, "Command"), Child(node, "Arguments"),
                                                                   Child(node, "WorkingDirectory")};
  }
  return task;
}

}  // namespace winhost
