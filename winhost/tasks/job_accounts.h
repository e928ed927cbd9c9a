// The accounts under which .job tasks run. The file itself does not hold them; the service keeps them apart, here in
// <machine>/task_accounts.json: task name → account name.
#pragma once

#include <string>

#include "winhost/machine/machine.h"

namespace winhost {

// Empty when none was set.
std::u16string JobAccount(const Machine& machine, const std::u16string& task);
// An empty account removes the entry.
void SetJobAccount(const Machine& machine, const std::u16string& task, const std::u16string& account);

}  // namespace winhost
