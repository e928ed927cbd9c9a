// The COM faces of a task definition. They share the definition that they edit.
#pragma once

#include <taskschd.h>

#include "winhost/com/object.h"
#include "winhost/tasks/task_definition.h"

namespace winhost {

template <>
inline constexpr std::array kIids<ITaskDefinition> = {&IID_ITaskDefinition, &IID_IDispatch};

class TaskDefinitionObject final : public ComObject<ITaskDefinition> {
 public:
  explicit TaskDefinitionObject(std::shared_ptr<TaskDefinition> task) : task_(std::move(task)) {}
  const TaskDefinition& task() const { return *task_; }

  HRESULT get_RegistrationInfo(IRegistrationInfo** value) override;
  HRESULT get_Triggers(ITriggerCollection** value) override;
  HRESULT get_Settings(ITaskSettings** value) override;
  HRESULT get_Principal(IPrincipal** value) override;
  HRESULT get_Actions(IActionCollection** value) override;
  HRESULT get_XmlText(BSTR* xml) override;

 private:
  std::shared_ptr<TaskDefinition> task_;
};

}  // namespace winhost
