// The class CLSID_FileOpenDialog.
#pragma once

#include <windows.h>
#include <objbase.h>

namespace winhost {

HRESULT MakeDrawnFileOpenDialog(REFIID iid, void** object);

}  // namespace winhost
