// The shell as automation sees it: a folder view and the application behind it.
//
// Promises: ShellExecute starts the program as the desktop's shell would: without the caller's elevation, journalled
// in "launches" as done by the desktop shell. It answers S_OK also when the program cannot be started, as the shell
// does, which then tells the user itself.
// To fail: the fault plan: "IShellFolderViewDual::get_Application", "IShellDispatch2::ShellExecute" (subject: the
// file).
#pragma once

#include <ole2.h>

struct IShellFolderViewDual : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE get_Application(IDispatch** application) = 0;
};
inline constexpr IID IID_IShellFolderViewDual = {
    0xe7a1af80, 0x4d96, 0x11cf, {0x96, 0x0c, 0x00, 0x80, 0xc7, 0xf4, 0xee, 0x85}};

struct IShellDispatch : IDispatch {};
inline constexpr IID IID_IShellDispatch = {
    0xd8f015c0, 0xc278, 0x11ce, {0xa4, 0x9e, 0x44, 0x45, 0x53, 0x54, 0x00, 0x00}};

struct IShellDispatch2 : IShellDispatch {
  virtual HRESULT STDMETHODCALLTYPE ShellExecute(BSTR file, VARIANT arguments, VARIANT directory, VARIANT operation,
                                                 VARIANT show) = 0;
};
inline constexpr IID IID_IShellDispatch2 = {
    0xa4c6892c, 0x3ba9, 0x11d2, {0x9d, 0xea, 0x00, 0xc0, 0x4f, 0xb1, 0x61, 0x62}};
