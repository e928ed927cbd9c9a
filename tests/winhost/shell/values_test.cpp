#include <shlwapi.h>
#include <windows.h>

#include "tests/support/machine_fixture.h"

namespace {

using String = std::u16string;
constexpr const WCHAR* kKey = u"Software\\V";

class ValuesTest : public testing_support::OnMachine {
 protected:
  static DWORD SetText(const WCHAR* name, const String& text, DWORD type = REG_SZ) {
    return SHSetValueW(HKEY_LOCAL_MACHINE, kKey, name, type, text.data(), static_cast<DWORD>(text.size() * 2));
  }
  // What a reader with room for `bytes` gets; the status in status_.
  String Text(const WCHAR* name, DWORD bytes = 1024) {
    std::vector<WCHAR> buffer(bytes / 2 + 1, u'?');
    size_ = bytes;
    status_ = SHGetValueW(HKEY_LOCAL_MACHINE, kKey, name, &type_, buffer.data(), &size_);
    return status_ == ERROR_SUCCESS ? String(buffer.data()) : String();
  }
  DWORD status_ = 0, type_ = 0, size_ = 0;
};

TEST_F(ValuesTest, WritingMakesTheKeyAndStoresExactlyTheBytesGiven) {
  Start();
  ASSERT_EQ(SetText(u"s", u"abc"), DWORD{ERROR_SUCCESS});
  HKEY key = nullptr;
  ASSERT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, kKey, 0, KEY_READ, &key), ERROR_SUCCESS);
  DWORD size = 0;
  EXPECT_EQ(RegQueryValueExW(key, u"s", nullptr, nullptr, nullptr, &size), ERROR_SUCCESS);
  EXPECT_EQ(size, 6u);
  RegCloseKey(key);
}

TEST_F(ValuesTest, ReadTextAlwaysEndsWithItsTerminator) {
  Start();
  SetText(u"bare", u"abc");
  EXPECT_EQ(Text(u"bare"), u"abc");
  EXPECT_EQ(size_, 8u);
  EXPECT_EQ(Text(u"bare", 8), u"abc");
  Text(u"bare", 6);
  EXPECT_EQ(status_, DWORD{ERROR_MORE_DATA}) << "no room for the terminator";
  EXPECT_EQ(size_, 8u);
  SetText(u"full", String(u"abc\0", 4));
  EXPECT_EQ(Text(u"full"), u"abc");
  EXPECT_EQ(size_, 8u);
  SHSetValueW(HKEY_LOCAL_MACHINE, kKey, u"odd", REG_SZ, "a\0b", 3);
  EXPECT_EQ(Text(u"odd"), u"ab");
  SetText(u"empty", u"");
  EXPECT_EQ(Text(u"empty"), u"");
  EXPECT_EQ(size_, 2u);
}

TEST_F(ValuesTest, VariablesAreExpandedAndTheTypeBecomesPlain) {
  Start(R"({"environment": {"Where": "C:\\Tools"}})");
  SetText(u"x", u"%where%\\a %none% 50%", REG_EXPAND_SZ);
  EXPECT_EQ(Text(u"x"), u"C:\\Tools\\a %none% 50%");
  EXPECT_EQ(type_, DWORD{REG_SZ});
}

TEST_F(ValuesTest, OtherTypesComeAsTheyAre) {
  Start();
  const DWORD number = 7;
  SHSetValueW(HKEY_LOCAL_MACHINE, kKey, u"n", REG_DWORD, &number, 4);
  DWORD read = 0, size = 4;
  EXPECT_EQ(SHGetValueW(HKEY_LOCAL_MACHINE, kKey, u"n", &type_, &read, &size), DWORD{ERROR_SUCCESS});
  EXPECT_EQ(read, 7u);
  EXPECT_EQ(type_, DWORD{REG_DWORD});
  EXPECT_EQ(SHGetValueW(HKEY_LOCAL_MACHINE, kKey, u"n", nullptr, &read, &(size = 3)), DWORD{ERROR_MORE_DATA});
  EXPECT_EQ(SHGetValueW(HKEY_LOCAL_MACHINE, kKey, u"n", nullptr, &read, nullptr), DWORD{ERROR_INVALID_PARAMETER});
  EXPECT_EQ(SHGetValueW(HKEY_LOCAL_MACHINE, kKey, u"n", nullptr, nullptr, nullptr), DWORD{ERROR_SUCCESS});
}

TEST_F(ValuesTest, MissingKeysAndValuesAreNotFound) {
  Start();
  Text(u"x");
  EXPECT_EQ(status_, DWORD{ERROR_FILE_NOT_FOUND});
  SetText(u"x", u"1");
  EXPECT_EQ(SHDeleteValueW(HKEY_LOCAL_MACHINE, kKey, u"X"), DWORD{ERROR_SUCCESS});
  EXPECT_EQ(SHDeleteValueW(HKEY_LOCAL_MACHINE, kKey, u"X"), DWORD{ERROR_FILE_NOT_FOUND});
  SHSetValueW(HKEY_LOCAL_MACHINE, u"Software\\V\\a\\b", u"x", REG_SZ, nullptr, 0);
  EXPECT_EQ(SHDeleteKeyW(HKEY_LOCAL_MACHINE, kKey), DWORD{ERROR_SUCCESS});
  SetText(u"x", u"1");
  EXPECT_EQ(SHDeleteKeyW(HKEY_LOCAL_MACHINE, u"Software\\V\\a"), DWORD{ERROR_FILE_NOT_FOUND});
}

TEST_F(ValuesTest, FaultsOfTheShortFormsAndOfTheirPartsBothApply) {
  Start(R"({"faults": [{"operation": "SHSetValueW", "subject": "V\\first", "error": 8},
                       {"operation": "RegSetValueExW", "subject": "V\\second", "error": 112},
                       {"operation": "SHGetValueW", "subject": "V\\third", "error": 87}]})");
  EXPECT_EQ(SetText(u"first", u"1"), 8u);
  EXPECT_EQ(SetText(u"second", u"1"), 112u);
  EXPECT_EQ(SetText(u"third", u"1"), DWORD{ERROR_SUCCESS});
  Text(u"third");
  EXPECT_EQ(status_, 87u);
}

}  // namespace
