// The classes that CoCreateInstance makes. A new one is a row of class_table.cpp and a maker in its own folder.
#pragma once

#include <objbase.h>

#include "winhost/machine/facts.h"

namespace winhost {

struct ComClass {
  const CLSID& id;
  const char* name;               // as the fact "missing_classes" and the fault plan name it
  DWORD contexts;                 // CLSCTX_… in which it can be had
  bool (*present)(const Facts&);  // null: on every Windows
  HRESULT (*make)(REFIID iid, void** object);
};

HRESULT MakeShellLink(REFIID iid, void** object);
HRESULT MakeShellWindows(REFIID iid, void** object);
HRESULT MakeFileOpenDialog(REFIID iid, void** object);
HRESULT MakeTaskService(REFIID iid, void** object);
HRESULT MakeTaskScheduler1(REFIID iid, void** object);
HRESULT MakeTask1(REFIID iid, void** object);

}  // namespace winhost
