// Shortcuts in the start menu and on the desktop. Best effort: nothing is reported.
#pragma once

#include "base/text.h"

namespace vanta {

// The program and the uninstaller in the start menu, the program on the desktop; earlier ones are replaced. The calling
// thread has initialised COM.
void CreateShortcuts();

// One shell link: `target`'s folder as working directory, `icon` of `target` as icon. `arguments` and `description` may
// be null.
void CreateShortcut(const String& link, const String& target, const WCHAR* arguments, const WCHAR* description,
                    int icon);

}  // namespace vanta
