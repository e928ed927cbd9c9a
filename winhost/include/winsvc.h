// The service control manager, over the machine's fact "services" and what programs have changed since, which
// <machine>/services.json keeps for all processes.
//
// Promises: access rights as asked for at opening, enforced call by call; start types and states; refusal of a disabled
// service and of one that runs already; security descriptors kept byte for byte. A service named "Schedule" is there
// and runs unless the facts say otherwise. Access that needs elevation is refused to a program without it.
// Simplifies: starting takes no time and runs no program; dependencies, groups and accounts are not kept.
// To fail: the facts "full_access_error" (opening with every right) and "start_error", or the fault plan by function
// name with the service's name as subject.
#pragma once

#include <winnt.h>

DECLARE_HANDLE(SC_HANDLE);
using LPSC_HANDLE = SC_HANDLE*;

#define SERVICE_NO_CHANGE 0xffffffff
#define SERVICE_ACTIVE 0x00000001
#define SERVICE_INACTIVE 0x00000002
#define SERVICE_STATE_ALL (SERVICE_ACTIVE | SERVICE_INACTIVE)

#define SERVICE_STOPPED 0x00000001
#define SERVICE_START_PENDING 0x00000002
#define SERVICE_STOP_PENDING 0x00000003
#define SERVICE_RUNNING 0x00000004
#define SERVICE_CONTINUE_PENDING 0x00000005
#define SERVICE_PAUSE_PENDING 0x00000006
#define SERVICE_PAUSED 0x00000007

#define SERVICE_ACCEPT_STOP 0x00000001

#define SC_MANAGER_CONNECT 0x0001
#define SC_MANAGER_CREATE_SERVICE 0x0002
#define SC_MANAGER_ENUMERATE_SERVICE 0x0004
#define SC_MANAGER_LOCK 0x0008
#define SC_MANAGER_QUERY_LOCK_STATUS 0x0010
#define SC_MANAGER_MODIFY_BOOT_CONFIG 0x0020
#define SC_MANAGER_ALL_ACCESS                                                                                 \
  (STANDARD_RIGHTS_REQUIRED | SC_MANAGER_CONNECT | SC_MANAGER_CREATE_SERVICE | SC_MANAGER_ENUMERATE_SERVICE | \
   SC_MANAGER_LOCK | SC_MANAGER_QUERY_LOCK_STATUS | SC_MANAGER_MODIFY_BOOT_CONFIG)

#define SERVICE_QUERY_CONFIG 0x0001
#define SERVICE_CHANGE_CONFIG 0x0002
#define SERVICE_QUERY_STATUS 0x0004
#define SERVICE_ENUMERATE_DEPENDENTS 0x0008
#define SERVICE_START 0x0010
#define SERVICE_STOP 0x0020
#define SERVICE_PAUSE_CONTINUE 0x0040
#define SERVICE_INTERROGATE 0x0080
#define SERVICE_USER_DEFINED_CONTROL 0x0100
#define SERVICE_ALL_ACCESS                                                                                      \
  (STANDARD_RIGHTS_REQUIRED | SERVICE_QUERY_CONFIG | SERVICE_CHANGE_CONFIG | SERVICE_QUERY_STATUS |             \
   SERVICE_ENUMERATE_DEPENDENTS | SERVICE_START | SERVICE_STOP | SERVICE_PAUSE_CONTINUE | SERVICE_INTERROGATE | \
   SERVICE_USER_DEFINED_CONTROL)

#define SERVICE_KERNEL_DRIVER 0x00000001
#define SERVICE_FILE_SYSTEM_DRIVER 0x00000002
#define SERVICE_WIN32_OWN_PROCESS 0x00000010
#define SERVICE_WIN32_SHARE_PROCESS 0x00000020
#define SERVICE_WIN32 (SERVICE_WIN32_OWN_PROCESS | SERVICE_WIN32_SHARE_PROCESS)

#define SERVICE_BOOT_START 0x00000000
#define SERVICE_SYSTEM_START 0x00000001
#define SERVICE_AUTO_START 0x00000002
#define SERVICE_DEMAND_START 0x00000003
#define SERVICE_DISABLED 0x00000004

using SECURITY_INFORMATION = DWORD;
using PSECURITY_DESCRIPTOR = PVOID;
#define OWNER_SECURITY_INFORMATION 0x00000001
#define GROUP_SECURITY_INFORMATION 0x00000002
#define DACL_SECURITY_INFORMATION 0x00000004
#define SACL_SECURITY_INFORMATION 0x00000008

struct SERVICE_STATUS {
  DWORD dwServiceType;
  DWORD dwCurrentState;
  DWORD dwControlsAccepted;
  DWORD dwWin32ExitCode;
  DWORD dwServiceSpecificExitCode;
  DWORD dwCheckPoint;
  DWORD dwWaitHint;
};
using LPSERVICE_STATUS = SERVICE_STATUS*;

struct SERVICE_STATUS_PROCESS {
  DWORD dwServiceType;
  DWORD dwCurrentState;
  DWORD dwControlsAccepted;
  DWORD dwWin32ExitCode;
  DWORD dwServiceSpecificExitCode;
  DWORD dwCheckPoint;
  DWORD dwWaitHint;
  DWORD dwProcessId;
  DWORD dwServiceFlags;
};

struct ENUM_SERVICE_STATUSW {
  LPWSTR lpServiceName;
  LPWSTR lpDisplayName;
  SERVICE_STATUS ServiceStatus;
};
using LPENUM_SERVICE_STATUSW = ENUM_SERVICE_STATUSW*;

struct ENUM_SERVICE_STATUS_PROCESSW {
  LPWSTR lpServiceName;
  LPWSTR lpDisplayName;
  SERVICE_STATUS_PROCESS ServiceStatusProcess;
};
using LPENUM_SERVICE_STATUS_PROCESSW = ENUM_SERVICE_STATUS_PROCESSW*;

enum SC_ENUM_TYPE { SC_ENUM_PROCESS_INFO = 0 };

struct QUERY_SERVICE_CONFIGW {
  DWORD dwServiceType;
  DWORD dwStartType;
  DWORD dwErrorControl;
  LPWSTR lpBinaryPathName;
  LPWSTR lpLoadOrderGroup;
  DWORD dwTagId;
  LPWSTR lpDependencies;
  LPWSTR lpServiceStartName;
  LPWSTR lpDisplayName;
};
using LPQUERY_SERVICE_CONFIGW = QUERY_SERVICE_CONFIGW*;

SC_HANDLE WINAPI OpenSCManagerW(LPCWSTR machine, LPCWSTR database, DWORD access);
SC_HANDLE WINAPI OpenServiceW(SC_HANDLE manager, LPCWSTR name, DWORD access);
BOOL WINAPI CloseServiceHandle(SC_HANDLE handle);
BOOL WINAPI QueryServiceStatus(SC_HANDLE service, LPSERVICE_STATUS status);
BOOL WINAPI QueryServiceConfigW(SC_HANDLE service, LPQUERY_SERVICE_CONFIGW config, DWORD bytes, LPDWORD needed);
BOOL WINAPI ChangeServiceConfigW(SC_HANDLE service, DWORD type, DWORD start_type, DWORD error_control, LPCWSTR binary,
                                 LPCWSTR group, LPDWORD tag, LPCWSTR dependencies, LPCWSTR account, LPCWSTR password,
                                 LPCWSTR display_name);
BOOL WINAPI StartServiceW(SC_HANDLE service, DWORD count, LPCWSTR* arguments);
BOOL WINAPI EnumServicesStatusW(SC_HANDLE manager, DWORD type, DWORD state, LPENUM_SERVICE_STATUSW services,
                                DWORD bytes, LPDWORD needed, LPDWORD count, LPDWORD resume);
BOOL WINAPI EnumServicesStatusExW(SC_HANDLE manager, SC_ENUM_TYPE level, DWORD type, DWORD state, LPBYTE services,
                                  DWORD bytes, LPDWORD needed, LPDWORD count, LPDWORD resume, LPCWSTR group);
BOOL WINAPI QueryServiceObjectSecurity(SC_HANDLE service, SECURITY_INFORMATION parts, PSECURITY_DESCRIPTOR descriptor,
                                       DWORD bytes, LPDWORD needed);
BOOL WINAPI SetServiceObjectSecurity(SC_HANDLE service, SECURITY_INFORMATION parts, PSECURITY_DESCRIPTOR descriptor);
