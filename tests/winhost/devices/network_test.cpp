#include <windows.h>

#include <iphlpapi.h>
#include <nb30.h>
#include <ntddndis.h>

#include <cstring>
#include <nlohmann/json.hpp>
#include <vector>

#include "tests/support/machine_fixture.h"
#include "winhost/registry/dump.h"

namespace {

class NetworkTest : public testing_support::OnMachine {
 protected:
  // The answer's bytes in hex, or the error.
  std::string Ask(const WCHAR* path, DWORD oid, DWORD room = 16) {
    const HANDLE adapter = CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    BYTE answer[16];
    DWORD returned = 0;
    if (!DeviceIoControl(adapter, IOCTL_NDIS_QUERY_GLOBAL_STATS, &oid, sizeof oid, answer, room, &returned, nullptr)) {
      return "error " + std::to_string(GetLastError());
    }
    std::string hex;
    for (DWORD i = 0; i < returned; ++i) {
      char digits[3];
      std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned>(answer[i]));
      hex += digits;
    }
    return hex;
  }
  UCHAR Send(UCHAR command, UCHAR lana, void* buffer, WORD size) {
    NCB block = {};
    block.ncb_command = command;
    block.ncb_lana_num = lana;
    std::memset(block.ncb_callname, ' ', sizeof block.ncb_callname);
    block.ncb_callname[0] = '*';
    block.ncb_buffer = static_cast<UCHAR*>(buffer);
    block.ncb_length = size;
    const UCHAR code = Netbios(&block);
    EXPECT_EQ(code, block.ncb_retcode);
    return code;
  }
};

TEST_F(NetworkTest, DriversAnswerWhatTheFactTells) {
  Start(R"({"adapters": [{"id": "{A1}", "address": "00-11-22-33-44-55", "medium": 9},
                         {"id": "{B2}", "address": null, "medium": null, "media_in_use": null},
                         {"id": "{C3}", "device": false}]})");
  const WCHAR* first = TEXT("\\\\.\\{a1}");
  EXPECT_EQ(Ask(first, OID_802_3_PERMANENT_ADDRESS), "001122334455");
  EXPECT_EQ(Ask(first, OID_GEN_PHYSICAL_MEDIUM), "09000000");
  EXPECT_EQ(Ask(first, OID_GEN_MEDIA_IN_USE), "00000000");
  EXPECT_EQ(Ask(first, 0x00010101), "error 50");
  EXPECT_EQ(Ask(first, OID_802_3_PERMANENT_ADDRESS, 5), "error 122");
  for (const DWORD oid : {OID_802_3_PERMANENT_ADDRESS, OID_GEN_PHYSICAL_MEDIUM, OID_GEN_MEDIA_IN_USE}) {
    EXPECT_EQ(Ask(TEXT("\\\\.\\{B2}"), oid), "error 50");
  }
  EXPECT_EQ(Ask(TEXT("\\\\.\\{C3}"), OID_GEN_MEDIA_IN_USE), "error 6");
}

TEST_F(NetworkTest, IpHelperListsItsAdapters) {
  Start(R"({"adapters": [{"id": "{A}", "address": "001122334455", "description": "One"}, {"ip_helper": false},
                         {"id": "{B}", "kind": "wireless", "description": "Two"}]})");
  ULONG bytes = 0;
  EXPECT_EQ(GetAdaptersInfo(nullptr, &bytes), ULONG{ERROR_BUFFER_OVERFLOW});
  ASSERT_EQ(bytes, 2 * sizeof(IP_ADAPTER_INFO));
  std::vector<IP_ADAPTER_INFO> list(2);
  --bytes;
  EXPECT_EQ(GetAdaptersInfo(list.data(), &bytes), ULONG{ERROR_BUFFER_OVERFLOW});
  ASSERT_EQ(GetAdaptersInfo(list.data(), &bytes), ULONG{ERROR_SUCCESS});
  EXPECT_EQ(list[0].Next, &list[1]);
  EXPECT_EQ(list[1].Next, nullptr);
  EXPECT_STREQ(list[0].AdapterName, "{A}");
  EXPECT_STREQ(list[1].Description, "Two");
  EXPECT_EQ(list[0].AddressLength, 6u);
  EXPECT_EQ(list[0].Address[5], 0x55);
  EXPECT_EQ(list[1].Type, 71u);
  Start(R"({"adapters": []})");
  EXPECT_EQ(GetAdaptersInfo(list.data(), &bytes), ULONG{ERROR_NO_DATA});
}

TEST_F(NetworkTest, NetbiosAsksForAResetFirst) {
  Start(R"({"netbios": [{"lana": 7, "address": "001122334455"}, {"lana": 2, "status": 64}, {"lana": 3, "reset": 5}]})");
  LANA_ENUM lanas = {};
  ADAPTER_STATUS status = {};
  EXPECT_EQ(Send(NCBENUM, 0, &lanas, sizeof lanas), NRC_GOODRET);
  EXPECT_EQ(lanas.length, 3);
  EXPECT_EQ(lanas.lana[0], 7);
  EXPECT_EQ(Send(NCBENUM, 0, &lanas, sizeof lanas - 1), NRC_BUFLEN);
  EXPECT_EQ(Send(NCBASTAT, 7, &status, sizeof status), NRC_ENVNOTDEF);
  EXPECT_EQ(Send(NCBRESET, 7, nullptr, 0), NRC_GOODRET);
  EXPECT_EQ(Send(NCBASTAT, 7, &status, sizeof status), NRC_GOODRET);
  EXPECT_EQ(status.adapter_address[5], 0x55);
  EXPECT_EQ(Send(NCBRESET, 2, nullptr, 0), NRC_GOODRET);
  EXPECT_EQ(Send(NCBASTAT, 2, &status, sizeof status), 64);
  EXPECT_EQ(Send(NCBRESET, 3, nullptr, 0), 5);
  EXPECT_EQ(Send(NCBRESET, 9, nullptr, 0), NRC_BRIDGE);
  EXPECT_EQ(Send(0x10, 7, nullptr, 0), NRC_ILLCMD);
}

TEST_F(NetworkTest, NetbiosRunsOverTheAdaptersByDefaultAndCanBePlannedToFail) {
  Start(R"({"adapters": [{}, {"ip_helper": false}, {}], "faults": [{"operation": "Netbios", "nth": 2, "error": 9}]})");
  LANA_ENUM lanas = {};
  EXPECT_EQ(Send(NCBENUM, 0, &lanas, sizeof lanas), NRC_GOODRET);
  EXPECT_EQ(lanas.length, 2);
  EXPECT_EQ(Send(NCBENUM, 0, &lanas, sizeof lanas), 9);
}

TEST_F(NetworkTest, RegistryNamesTheAdaptersAndListingsDoNot) {
  Start(
      R"({"adapters": [{"id": "{A}"}, {"id": "{B}", "card": false, "bus_type": null}], "registry": {"HKLM\\X": {"y": "z"}}})");
  const WCHAR* card = TEXT("SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\NetworkCards\\2");
  const WCHAR* entry = TEXT("SYSTEM\\CurrentControlSet\\Control\\Class\\{4D36E972-E325-11CE-BFC1-08002BE10318}\\0001");
  HKEY key = nullptr;
  WCHAR text[64] = {};
  DWORD bytes = sizeof text;
  ASSERT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, card, 0, KEY_READ, &key), ERROR_SUCCESS);
  EXPECT_EQ(RegQueryValueExW(key, TEXT("ServiceName"), nullptr, nullptr, reinterpret_cast<BYTE*>(text), &bytes), 0);
  EXPECT_EQ(std::u16string(text), u"{A}");
  RegCloseKey(key);
  ASSERT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, entry, 0, KEY_READ, &key), ERROR_SUCCESS);
  bytes = sizeof text;
  EXPECT_EQ(RegQueryValueExW(key, TEXT("NetCfgInstanceId"), nullptr, nullptr, reinterpret_cast<BYTE*>(text), &bytes),
            0);
  EXPECT_EQ(std::u16string(text), u"{B}");
  EXPECT_EQ(RegQueryValueExW(key, TEXT("BusType"), nullptr, nullptr, nullptr, &bytes), ERROR_FILE_NOT_FOUND);
  RegCloseKey(key);
  const auto listed = winhost::RegistryAsJson(winhost::Machine::Current());
  EXPECT_EQ(listed.size(), 1u) << listed;
}

}  // namespace
