// OLE: an apartment of a single thread with the clipboard and drag-and-drop in it.
#pragma once

#include <objbase.h>
#include <oleauto.h>

// RPC_E_CHANGED_MODE on a thread of the multithreaded apartment; S_FALSE when the thread had OLE already.
HRESULT WINAPI OleInitialize(LPVOID reserved);
void WINAPI OleUninitialize();
