#include "install/shortcuts.h"

#include "base/com_ptr.h"
#include "base/format.h"
#include "base/paths.h"
#include "install/product.h"
#include "setupui/string_table.h"

#include <shlobj.h>

namespace vanta {
namespace {

String SourceArgument(const WCHAR* place) { return Format(TEXT("/%s=%s"), TEXT("src"), place); }

bool Describe(IShellLinkW* link, const String& target, const WCHAR* arguments, const WCHAR* description, int icon) {
  return SUCCEEDED(link->SetPath(target.c_str())) && SUCCEEDED(link->SetWorkingDirectory(ParentPath(target).c_str())) &&
         SUCCEEDED(link->SetIconLocation(target.c_str(), icon)) &&
         (!arguments || SUCCEEDED(link->SetArguments(arguments))) &&
         (!description || SUCCEEDED(link->SetDescription(description)));
}

void CreateStartMenuShortcuts(const String& program_link, const String& uninstall_link) {
  const String programs = GetSpecialFolder(CSIDL_PROGRAMS, false);
  const String folder = programs.empty() ? String() : JoinPath(programs, kProductFolder);
  if (!PathExists(folder) && !MakeDirectories(folder)) return;
  CreateShortcut(JoinPath(folder, program_link), ChosenProgram(), SourceArgument(TEXT("start")).c_str(), nullptr, 0);
  CreateShortcut(JoinPath(folder, uninstall_link), InstalledFile(kUninstaller), nullptr, nullptr, 0);
}

void CreateDesktopShortcut(const String& program_link) {
  const String desktop = GetSpecialFolder(CSIDL_DESKTOP, false);
  if (desktop.empty()) return;
  const String arguments = SourceArgument(TEXT("desktop"));
  CreateShortcut(JoinPath(desktop, program_link), ChosenProgram(), arguments.c_str(), nullptr, 0);
}

}  // namespace

void CreateShortcut(const String& link, const String& target, const WCHAR* arguments, const WCHAR* description,
                    int icon) {
  ComPtr<IShellLinkW> shell_link;
  ComPtr<IPersistFile> file;
  if (link.empty()) return;
  if (FAILED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW, shell_link.PutVoid()))) {
    return;
  }
  if (FAILED(shell_link.As(IID_IPersistFile, file))) return;
  if (Describe(shell_link.Get(), target, arguments, description, icon)) file->Save(link.c_str(), TRUE);
}

void CreateShortcuts() {
  const String name = GetString(TEXT("STRID_PICTOR_NAME"));
  const String program_link = Format(TEXT("%s.lnk"), name);
  const String uninstall_link = Format(TEXT("%s%s.lnk"), GetString(TEXT("STRID_PICTOR_UNINST_ONLY")), name);
  CreateStartMenuShortcuts(program_link, uninstall_link);
  CreateDesktopShortcut(program_link);
}

}  // namespace vanta
