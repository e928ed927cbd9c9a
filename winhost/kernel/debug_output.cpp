#include <windows.h>

#include <nlohmann/json.hpp>

#include "winhost/machine/journal.h"
#include "winhost/machine/text.h"

void OutputDebugStringW(LPCWSTR text) {
  winhost::WriteJournal("debugger", {{"text", winhost::Narrow(text ? text : u"")}});
}
