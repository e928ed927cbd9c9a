// The hourly task that runs the product's updater. Best effort: nothing is reported.
#pragma once

#include "base/text.h"

namespace vanta {

// Registers the task with the scheduler that fits the system, in place of an earlier one. The calling thread has
// initialised COM.
void ScheduleUpdater();

struct TaskText {
  String name;
  String program;
  String arguments;    // "": none
  String description;  // "": none
};

// The scheduler of Vista and later, and the one before it. Both do nothing without a name or a program.
void RegisterTask2(const TaskText& task);
void RegisterTask1(const TaskText& task);

// The name that this process's user signed in with; "" when the system does not tell.
String CurrentUserName();

}  // namespace vanta
