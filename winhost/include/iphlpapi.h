// The IP helper: the list of adapters.
//
// Promises: the adapters of the machine's fact "adapters" that the IP helper knows, in their order, with name,
// description, address and type; the size it needs with ERROR_BUFFER_OVERFLOW; ERROR_NO_DATA without adapters. An
// export of iphlpapi.dll. Simplifies: no IP addresses, gateways or leases. To fail: the fault plan, "GetAdaptersInfo".
#pragma once

#include <iptypes.h>

ULONG WINAPI GetAdaptersInfo(PIP_ADAPTER_INFO list, PULONG bytes);
