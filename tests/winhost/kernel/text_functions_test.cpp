#include <cerrno>

#include "tests/support/machine_fixture.h"

namespace {

using namespace testing_support;
using String = std::u16string;

class TextFunctionsTest : public OnMachine {
 protected:
  static String Wide(UINT page, DWORD flags, std::string_view bytes) {
    WCHAR buffer[32];
    const int length = MultiByteToWideChar(page, flags, bytes.data(), static_cast<int>(bytes.size()), buffer, 32);
    return length == 0 ? u"<error>" : String(buffer, static_cast<size_t>(length));
  }
  static std::string Bytes(UINT page, DWORD flags, const String& text, const char* replacement = nullptr) {
    char buffer[64];
    const int length =
        WideCharToMultiByte(page, flags, text.data(), static_cast<int>(text.size()), buffer, 64, replacement, nullptr);
    return length == 0 ? "<error>" : std::string(buffer, static_cast<size_t>(length));
  }
};

TEST_F(TextFunctionsTest, IllFormedBytesBecomeReplacementCharactersOrAnError) {
  EXPECT_EQ(Wide(CP_UTF8, 0, "a\xC3\xA9\xF0\x9F\x98\x80"), u"a\u00e9\U0001F600");
  EXPECT_EQ(Wide(CP_UTF8, 0, "a\xC3z"), u"a\uFFFDz");
  EXPECT_EQ(Wide(CP_UTF8, MB_ERR_INVALID_CHARS, "a\xC3z"), u"<error>");
  EXPECT_EQ(GetLastError(), DWORD{ERROR_NO_UNICODE_TRANSLATION});
  EXPECT_EQ(Wide(CP_UTF8, MB_ERR_INVALID_CHARS, "\xEF\xBF\xBD"), u"\uFFFD") << "spelt out, it is a character like any";
  EXPECT_EQ(Wide(1252, 0, "\x80\xE9"), u"\u20ac\u00e9");
  EXPECT_EQ(Bytes(CP_UTF8, 0, String(1, 0xD800)), "\xEF\xBF\xBD");
  EXPECT_EQ(Bytes(CP_UTF8, WC_ERR_INVALID_CHARS, String(1, 0xD800)), "<error>");
  EXPECT_EQ(Bytes(1252, 0, u"\u20ac\u4e2d", "#"), "\x80#");
}

TEST_F(TextFunctionsTest, ConversionTellsTheRoomItNeeds) {
  EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "abc", -1, nullptr, 0), 4);
  WCHAR two[2];
  EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "abc", 3, two, 2), 0);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
  EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "abc", 0, nullptr, 0), 0);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
  EXPECT_EQ(MultiByteToWideChar(932, 0, "abc", 3, nullptr, 0), 0);
}

TEST_F(TextFunctionsTest, NumbersAreReadAsTheRunTimeDoes) {
  struct Row {
    const char16_t* text;
    int base;
    LONG value;
    int eaten, error;
  } rows[] = {{u" -12x", 10, -12, 4, 0},
              {u"0x1F", 0, 31, 4, 0},
              {u"0x", 16, 0, 1, 0},
              {u"010", 0, 8, 3, 0},
              {u"x4", 10, 0, 0, 0},
              {u"", 10, 0, 0, 0},
              {u"2147483648", 10, 2147483647, 10, ERANGE},
              {u"-2147483649", 10, -2147483647 - 1, 11, ERANGE},
              {u"99999999999999999999", 10, 2147483647, 20, ERANGE},
              {u"-2147483648", 10, -2147483647 - 1, 11, 0},
              {u"zz", 36, 1295, 2, 0},
              {u"1", 1, 0, 0, EINVAL}};
  for (const Row& row : rows) {
    errno = 0;
    WCHAR* end = const_cast<WCHAR*>(row.text);
    EXPECT_EQ(wcstol(row.text, &end, row.base), row.value) << winhost::Narrow(row.text);
    EXPECT_EQ(end - row.text, row.eaten) << winhost::Narrow(row.text);
    EXPECT_EQ(errno, row.error) << winhost::Narrow(row.text);
  }
  EXPECT_EQ(wcstoul(u"-1", nullptr, 10), 0xFFFFFFFFu);
  EXPECT_EQ(_wtoi64(u"-9223372036854775808"), -9223372036854775807ll - 1);
}

TEST_F(TextFunctionsTest, ComparisonWithoutCaseOrdersBySmallLetters) {
  EXPECT_EQ(_wcsicmp(u"ABC", u"abc"), 0);
  EXPECT_LT(_wcsicmp(u"a_", u"AB"), 0);
  EXPECT_EQ(_wcsnicmp(u"abcX", u"ABCy", 3), 0);
  EXPECT_EQ(_wcsicmp(u"\u00c9", u"\u00e9"), 0);
  EXPECT_LT(lstrcmpW(u"a", u"A"), 0);
  EXPECT_LT(lstrcmpW(u"A", u"b"), 0);
  EXPECT_EQ(lstrcmpiW(u"Straw", u"sTRAW"), 0);
  EXPECT_EQ(CompareStringW(LOCALE_INVARIANT, NORM_IGNORECASE, u"ABC", 2, u"abd", 2), CSTR_EQUAL);
}

TEST_F(TextFunctionsTest, CopiesAreBounded) {
  WCHAR small[4];
  EXPECT_EQ(String(lstrcpynW(small, u"abcdef", 4)), u"abc");
  EXPECT_EQ(lstrcpynW(small, nullptr, 4), nullptr);
  EXPECT_EQ(lstrlenW(nullptr), 0);
  EXPECT_EQ(String(wcsrchr(u"a\\b\\c", u'\\')), u"\\c");
  EXPECT_EQ(wcsstr(u"abc", u"x"), nullptr);
}

TEST_F(TextFunctionsTest, MulDivRoundsHalfAwayFromZero) {
  struct Row {
    int a, b, c, result;
  } rows[] = {{10, 150, 100, 15},  {7, 125, 100, 9},
              {-7, 150, 100, -11}, {1, 1, 2, 1},
              {-1, 1, 2, -1},      {1, 1, -2, -1},
              {1, 1, 0, -1},       {2147483647, 2, 1, -1},
              {5, 1, 3, 2},        {2147483647, 2147483647, 2147483647, 2147483647}};
  for (const Row& row : rows)
    EXPECT_EQ(MulDiv(row.a, row.b, row.c), row.result) << row.a << "*" << row.b << "/" << row.c;
}

TEST_F(TextFunctionsTest, EnvironmentComesFromTheMachineFirst) {
  setenv("VANTA_TEST_VARIABLE", "linux", 1);
  Start(R"({"user": "ann", "environment": {"Posixly_Correct": "1", "Empty": ""}})");
  const auto get = [](const char16_t* name) {
    WCHAR text[100];
    SetLastError(0xDEAD);
    return String(text, GetEnvironmentVariableW(name, text, 100));
  };
  EXPECT_EQ(get(u"POSIXLY_CORRECT"), u"1");
  EXPECT_EQ(get(u"temp"), u"C:\\Users\\ann\\AppData\\Local\\Temp");
  EXPECT_EQ(get(u"vanta_test_variable"), u"linux");
  EXPECT_EQ(get(u"HOME"), u"");
  EXPECT_EQ(GetLastError(), DWORD{ERROR_ENVVAR_NOT_FOUND});
  EXPECT_EQ(get(u"EMPTY"), u"");
  EXPECT_EQ(GetLastError(), DWORD{NO_ERROR});
  SetEnvironmentVariableW(u"USERNAME", u"bob");
  EXPECT_EQ(get(u"username"), u"bob");
  WCHAR text[40];
  EXPECT_EQ(ExpandEnvironmentStringsW(u"%USERNAME%-%none%%", text, 40), 12u);
  EXPECT_EQ(String(text), u"bob-%none%%");
}

}  // namespace
