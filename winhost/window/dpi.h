// Dots per inch, as this process may know them.
#pragma once

namespace winhost {

// The screen's: the fact "dpi", or what a test has set since (see screen.h).
int ScreenDpi();
void SetScreenDpi(int dpi);
// ScreenDpi once the process has said that it is aware of it, else 96: to others the system lies.
int SystemDpi();
// SetProcessDPIAware or SetProcessDpiAwareness has succeeded; false when it was so before.
bool BecomeDpiAware();

}  // namespace winhost
