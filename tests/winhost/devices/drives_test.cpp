#include <windows.h>

#include <ntddscsi.h>
#include <winioctl.h>

#include <array>
#include <cstring>

#include "tests/support/machine_fixture.h"

namespace {

class DrivesTest : public testing_support::OnMachine {
 protected:
  HANDLE Open(const WCHAR* path, DWORD access) {
    return CreateFileW(path, access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
  }
  // 0 or the error; `out_` holds the answer.
  DWORD Ask(HANDLE device, DWORD code, void* in, DWORD in_size, DWORD room) {
    out_.fill(0);
    const BOOL fine = DeviceIoControl(device, code, in, in_size, out_.data(), room, &returned_, nullptr);
    return fine ? 0 : GetLastError();
  }
  DWORD Identify(HANDLE device, BYTE command, DWORD room = 528) {
    SENDCMDINPARAMS request = {};
    request.irDriveRegs.bCommandReg = command;
    return Ask(device, SMART_RCV_DRIVE_DATA, &request, sizeof request - 1, room);
  }
  DWORD Describe(HANDLE device, DWORD room) {
    STORAGE_PROPERTY_QUERY query = {};
    return Ask(device, IOCTL_STORAGE_QUERY_PROPERTY, &query, sizeof query, room);
  }
  std::string Text(DWORD offset) { return offset ? reinterpret_cast<const char*>(out_.data() + offset) : "none"; }
  template <class T>
  T As() {
    T record;
    std::memcpy(&record, out_.data(), sizeof record);
    return record;
  }

  static constexpr DWORD kBoth = GENERIC_READ | GENERIC_WRITE;
  std::array<BYTE, 1100> out_;
  DWORD returned_ = 0;
};

TEST_F(DrivesTest, DrivesAreThereByTheirNumbers) {
  Start(R"({"disks": [null, {}, {"bus": "usb"}]})");
  for (const WCHAR* name : {TEXT("\\\\.\\PhysicalDrive1"), TEXT("\\\\.\\PHYSICALDRIVE2")}) {
    EXPECT_NE(Open(name, kBoth), INVALID_HANDLE_VALUE);
  }
  for (const WCHAR* name :
       {TEXT("\\\\.\\PhysicalDrive0"), TEXT("\\\\.\\PhysicalDrive3"), TEXT("\\\\.\\PhysicalDrive"),
        TEXT("\\\\.\\PhysicalDrive1x"), TEXT("\\\\.\\Scsi0:"), TEXT("\\\\.\\PhysicalDrive99999999999")}) {
    EXPECT_EQ(Open(name, 0), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_FILE_NOT_FOUND});
  }
}

TEST_F(DrivesTest, RightsAreNeededForData) {
  Start(R"({"elevated": false, "disks": [{"scsi": {"port": 0}}]})");
  const HANDLE drive = Open(TEXT("\\\\.\\PhysicalDrive0"), 0);
  ASSERT_NE(drive, INVALID_HANDLE_VALUE);
  EXPECT_EQ(Describe(drive, 1000), 0u);
  EXPECT_EQ(Identify(drive, ID_CMD), DWORD{ERROR_ACCESS_DENIED});
  EXPECT_EQ(Ask(drive, SMART_GET_VERSION, nullptr, 0, 24), DWORD{ERROR_ACCESS_DENIED});
  for (const WCHAR* name : {TEXT("\\\\.\\PhysicalDrive0"), TEXT("\\\\.\\Scsi0:")}) {
    EXPECT_EQ(Open(name, GENERIC_READ), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_ACCESS_DENIED});
  }
}

TEST_F(DrivesTest, EachKindUnderstandsItsOwnCommand) {
  Start(R"({"disks": [{"serial": "SERIAL", "model": "MODEL"}, {"bus": "atapi", "atapi": true}, {"bus": "usb"}]})");
  const HANDLE ata = Open(TEXT("\\\\.\\PhysicalDrive0"), kBoth);
  ASSERT_EQ(Ask(ata, SMART_GET_VERSION, nullptr, 0, 24), 0u);
  EXPECT_EQ(As<GETVERSIONINPARAMS>().bIDEDeviceMap, 0x01);
  ASSERT_EQ(Identify(ata, ID_CMD), 0u);
  EXPECT_EQ(returned_, 528u);
  EXPECT_EQ(std::memcmp(out_.data() + 16 + 20, "ESIRLA  ", 8), 0);
  EXPECT_EQ(std::memcmp(out_.data() + 16 + 54, "OMED L", 6), 0);
  EXPECT_EQ(Identify(ata, ATAPI_ID_CMD), DWORD{ERROR_IO_DEVICE});
  EXPECT_EQ(Identify(ata, ID_CMD, 527), DWORD{ERROR_INSUFFICIENT_BUFFER});
  const HANDLE atapi = Open(TEXT("\\\\.\\PhysicalDrive1"), kBoth);
  ASSERT_EQ(Ask(atapi, SMART_GET_VERSION, nullptr, 0, 24), 0u);
  EXPECT_EQ(As<GETVERSIONINPARAMS>().bIDEDeviceMap, 0x20);
  EXPECT_EQ(Identify(atapi, ATAPI_ID_CMD), 0u);
  EXPECT_EQ(Identify(atapi, ID_CMD), DWORD{ERROR_IO_DEVICE});
  const HANDLE usb = Open(TEXT("\\\\.\\PhysicalDrive2"), kBoth);
  EXPECT_EQ(Ask(usb, SMART_GET_VERSION, nullptr, 0, 24), DWORD{ERROR_INVALID_FUNCTION});
}

TEST_F(DrivesTest, DescriptorHoldsTheTextsOfTheFact) {
  Start(R"({"disks": [{"bus": "usb", "removable": true, "vendor": "V", "product": "P", "revision": "",
                       "descriptor_serial": "S"}, {"descriptor_serial": null}]})");
  ASSERT_EQ(Describe(Open(TEXT("\\\\.\\PhysicalDrive0"), 0), 1000), 0u);
  const auto header = As<STORAGE_DEVICE_DESCRIPTOR>();
  EXPECT_EQ(header.Size, returned_);
  EXPECT_EQ(header.BusType, BusTypeUsb);
  EXPECT_TRUE(header.RemovableMedia);
  EXPECT_EQ(Text(header.VendorIdOffset) + Text(header.ProductIdOffset) + Text(header.SerialNumberOffset), "VPS");
  EXPECT_EQ(header.ProductRevisionOffset, 0u);
  const HANDLE second = Open(TEXT("\\\\.\\PhysicalDrive1"), 0);
  ASSERT_EQ(Describe(second, 8), 0u);  // cut, with the size that there is
  EXPECT_EQ(returned_, 8u);
  EXPECT_GT(As<STORAGE_DEVICE_DESCRIPTOR>().Size, 36u);
  ASSERT_EQ(Describe(second, 1000), 0u);
  EXPECT_EQ(As<STORAGE_DEVICE_DESCRIPTOR>().SerialNumberOffset, 0u);
}

TEST_F(DrivesTest, SerialInTheDescriptorIsWrittenAsTheWindowsVersionWritesIt) {
  const std::pair<const char*, const char*> rows[] = {
      {"xp", "4142434420202020202020202020202020202020"}, {"7", "ABCD                "}, {"10", "BADC"}};
  for (const auto& [version, serial] : rows) {
    Start(std::string("{\"version\": \"") + version + R"(", "disks": [{"serial": "BADC"}]})");
    ASSERT_EQ(Describe(Open(TEXT("\\\\.\\PhysicalDrive0"), 0), 1000), 0u);
    EXPECT_EQ(Text(As<STORAGE_DEVICE_DESCRIPTOR>().SerialNumberOffset), serial);
  }
}

TEST_F(DrivesTest, ScsiPortAnswersForItsTargets) {
  Start(R"({"disks": [{"bus": "scsi", "serial": "SCSI", "scsi": {"port": 3, "target": 1}}]})");
  const HANDLE port = Open(TEXT("\\\\.\\Scsi3:"), kBoth);
  ASSERT_NE(port, INVALID_HANDLE_VALUE);
  struct {
    SRB_IO_CONTROL control = {sizeof(SRB_IO_CONTROL), {'S', 'C', 'S', 'I', 'D', 'I', 'S', 'K'}, 10, 0x1B0501, 0, 528};
    SENDCMDINPARAMS command = {};
  } request;
  request.command.irDriveRegs.bCommandReg = ID_CMD;
  EXPECT_EQ(Ask(port, IOCTL_SCSI_MINIPORT, &request, 60, 556), DWORD{ERROR_IO_DEVICE});
  request.command.bDriveNumber = 1;
  ASSERT_EQ(Ask(port, IOCTL_SCSI_MINIPORT, &request, 60, 556), 0u);
  EXPECT_EQ(std::memcmp(out_.data() + 44 + 20, "CSIS", 4), 0);
  EXPECT_EQ(Ask(port, IOCTL_SCSI_MINIPORT, &request, 59, 556), DWORD{ERROR_INVALID_PARAMETER});
  request.control.Signature[0] = 'X';
  EXPECT_EQ(Ask(port, IOCTL_SCSI_MINIPORT, &request, 60, 556), DWORD{ERROR_INVALID_FUNCTION});
}

TEST_F(DrivesTest, AnswersFailAsTheFactSays) {
  Start(R"({"clock": {"at": "2024-03-05T14:07:09", "stands": true}, "disks": [
      {"answers": {"version": 87, "identify": "short", "descriptor": "long"}},
      {"answers": {"version": "fails", "identify": {"hex": "0102"}, "descriptor": "never"}}]})");
  const HANDLE first = Open(TEXT("\\\\.\\PhysicalDrive0"), kBoth);
  EXPECT_EQ(Ask(first, SMART_GET_VERSION, nullptr, 0, 24), 87u);
  EXPECT_EQ(Identify(first, ID_CMD), 0u);
  EXPECT_EQ(returned_, 264u);
  EXPECT_EQ(Describe(first, 1000), 0u);
  EXPECT_EQ(returned_, 1000u);
  EXPECT_EQ(out_[999], 0xA5);
  const HANDLE second = Open(TEXT("\\\\.\\PhysicalDrive1"), kBoth);
  EXPECT_EQ(Ask(second, SMART_GET_VERSION, nullptr, 0, 24), DWORD{ERROR_GEN_FAILURE});
  EXPECT_EQ(Identify(second, ID_CMD), 0u);
  EXPECT_EQ(returned_, 2u);
  const DWORD before = GetTickCount();
  EXPECT_EQ(Describe(second, 1000), DWORD{ERROR_SEM_TIMEOUT});
  EXPECT_EQ(GetTickCount() - before, 10'000u);
}

}  // namespace
