#include "base/registry.h"

#include "base/unique.h"
#include "tests/support/machine_fixture.h"

namespace {

using vanta::String;

const HKEY kRoot = HKEY_LOCAL_MACHINE;
const String kKey = TEXT("Software\\Maker\\Product");
const String kName = TEXT("value");

class RegistryTest : public testing_support::OnMachine {
 protected:
  // The value's bytes as they are stored.
  std::string Stored(DWORD* type) {
    vanta::UniqueKey key;
    RegOpenKeyExW(kRoot, kKey.c_str(), 0, KEY_READ, key.Put());
    char bytes[4096];
    DWORD size = sizeof bytes;
    const LONG result =
        RegQueryValueExW(key.Get(), kName.c_str(), nullptr, type, reinterpret_cast<BYTE*>(bytes), &size);
    return result == ERROR_SUCCESS ? std::string(bytes, size) : "none";
  }
  void Store(DWORD type, const std::string& bytes) {
    vanta::UniqueKey key;
    RegCreateKeyExW(kRoot, kKey.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, key.Put(), nullptr);
    RegSetValueExW(key.Get(), kName.c_str(), 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                   static_cast<DWORD>(bytes.size()));
  }
  String Read() {
    String text = TEXT("left over");
    read_ = vanta::RegReadString(kRoot, kKey, kName, &text);
    return text;
  }
  bool read_ = false;
};

TEST_F(RegistryTest, TextIsStoredWithoutItsTerminator) {
  DWORD type = 0;
  EXPECT_TRUE(vanta::RegWriteString(kRoot, kKey, kName, TEXT("abc")));
  EXPECT_EQ(Stored(&type), std::string("a\0b\0c\0", 6));
  EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
  EXPECT_TRUE(vanta::RegWriteString(kRoot, kKey, kName, TEXT("")));
  EXPECT_EQ(Stored(&type), "");
}

TEST_F(RegistryTest, NumbersAreStoredWithTheirSize) {
  DWORD type = 0;
  EXPECT_TRUE(vanta::RegWriteDword(kRoot, kKey, kName, 0x01020304));
  EXPECT_EQ(Stored(&type), "\x04\x03\x02\x01");
  EXPECT_EQ(type, static_cast<DWORD>(REG_DWORD));
  EXPECT_TRUE(vanta::RegWriteQword(kRoot, kKey, kName, 0x0102030405060708));
  EXPECT_EQ(Stored(&type), "\x08\x07\x06\x05\x04\x03\x02\x01");
  EXPECT_EQ(type, static_cast<DWORD>(REG_QWORD));
}

TEST_F(RegistryTest, NothingIsWrittenWithoutRootOrKey) {
  EXPECT_FALSE(vanta::RegWriteString(nullptr, kKey, kName, TEXT("a")));
  EXPECT_FALSE(vanta::RegWriteDword(kRoot, String(), kName, 1));
}

TEST_F(RegistryTest, TextIsReadWithAndWithoutTerminator) {
  Store(REG_SZ, std::string("a\0b\0", 4));
  EXPECT_EQ(Read(), String(TEXT("ab")));
  Store(REG_SZ, std::string("a\0b\0\0\0x\0", 8));
  EXPECT_EQ(Read(), String(TEXT("ab")));
  EXPECT_TRUE(read_);
}

TEST_F(RegistryTest, OtherTypesAndLongTextsAreNotRead) {
  const struct {
    DWORD type;
    size_t bytes;
  } rows[] = {{REG_DWORD, 4}, {REG_BINARY, 6}, {REG_SZ, 1026}, {REG_SZ, 4000}};
  for (const auto& row : rows) {
    Store(row.type, std::string(row.bytes, 'a'));
    EXPECT_EQ(Read(), String()) << row.type << " " << row.bytes;
    EXPECT_FALSE(read_);
  }
}

TEST_F(RegistryTest, OddLengthsAreReadWithoutStrayingFurther) {
  Store(REG_SZ, std::string("a\0b", 3));
  EXPECT_EQ(Read().substr(0, 1), String(TEXT("a")));
}

TEST_F(RegistryTest, MissingValueReadsAsNothing) {
  EXPECT_EQ(Read(), String());
  EXPECT_FALSE(read_);
  EXPECT_FALSE(vanta::RegKeyExists(kRoot, kKey, 0));
  Store(REG_SZ, "");
  EXPECT_TRUE(vanta::RegKeyExists(kRoot, kKey, 0));
}

}  // namespace
