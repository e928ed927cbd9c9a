// Whether the calling thread may use COM: it has an apartment, or the process has a multithreaded one.
#pragma once

namespace winhost {

bool ThreadHasCom();

}  // namespace winhost
