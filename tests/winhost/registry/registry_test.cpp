#include <windows.h>

#include <sys/wait.h>
#include <unistd.h>

#include <nlohmann/json.hpp>
#include <thread>

#include "tests/support/machine_fixture.h"
#include "winhost/registry/dump.h"

namespace {

using String = std::u16string;
using Bytes = std::vector<BYTE>;

class RegistryTest : public testing_support::OnMachine {
 protected:
  ~RegistryTest() override {
    for (HKEY key : keys_) RegCloseKey(key);
  }
  HKEY Open(HKEY root, const WCHAR* path, REGSAM access = KEY_ALL_ACCESS) {
    HKEY key = nullptr;
    status_ = RegOpenKeyExW(root, path, 0, access, &key);
    return Keep(key);
  }
  HKEY Create(HKEY root, const WCHAR* path, REGSAM access = KEY_ALL_ACCESS) {
    HKEY key = nullptr;
    status_ = RegCreateKeyExW(root, path, 0, nullptr, 0, access, nullptr, &key, &disposition_);
    return Keep(key);
  }
  static LSTATUS Set(HKEY key, const WCHAR* name, DWORD type, const Bytes& data) {
    return RegSetValueExW(key, name, 0, type, data.data(), static_cast<DWORD>(data.size()));
  }
  // The value's bytes; none where the call fails.
  std::optional<Bytes> Get(HKEY key, const WCHAR* name) {
    Bytes data(4096);
    DWORD size = 4096;
    status_ = RegQueryValueExW(key, name, nullptr, &type_, data.data(), &size);
    if (status_ != ERROR_SUCCESS) return std::nullopt;
    data.resize(size);
    return data;
  }
  std::vector<String> SubKeys(HKEY key) {
    std::vector<String> names;
    WCHAR name[256];
    for (DWORD i = 0, chars = 256; !RegEnumKeyExW(key, i, name, &chars, nullptr, nullptr, nullptr, nullptr); ++i) {
      names.emplace_back(name, chars);
      chars = 256;
    }
    return names;
  }
  LSTATUS status_ = 0;
  DWORD type_ = 0, disposition_ = 0;

 private:
  HKEY Keep(HKEY key) {
    if (key) keys_.push_back(key);
    return key;
  }
  std::vector<HKEY> keys_;
};

TEST_F(RegistryTest, ValuesKeepTypeAndExactLength) {
  Start();
  const HKEY key = Create(HKEY_CURRENT_USER, u"Software\\V");
  const std::pair<DWORD, Bytes> values[] = {
      {REG_SZ, {'a', 0, 'b', 0}}, {REG_SZ, {'a', 0, 0, 0}}, {REG_SZ, {'a'}},  {REG_DWORD, {1, 2, 3, 4}},
      {REG_DWORD, {1}},           {REG_QWORD, Bytes(8, 9)}, {REG_BINARY, {}}, {0x12345678, {7, 0, 7}}};
  for (const auto& [type, data] : values) {
    EXPECT_EQ(Set(key, u"x", type, data), ERROR_SUCCESS);
    EXPECT_EQ(Get(key, u"X"), data);
    EXPECT_EQ(type_, type);
  }
  EXPECT_EQ(Set(key, nullptr, REG_SZ, {'d', 0}), ERROR_SUCCESS);
  EXPECT_EQ(Get(key, u""), (Bytes{'d', 0})) << "no name and the empty name are the key's default value";
}

TEST_F(RegistryTest, AskingForTheSizeAndTooSmallBuffersTellIt) {
  Start();
  const HKEY key = Create(HKEY_CURRENT_USER, u"Software\\V");
  Set(key, u"x", REG_BINARY, Bytes(10, 1));
  DWORD size = 0;
  EXPECT_EQ(RegQueryValueExW(key, u"x", nullptr, nullptr, nullptr, &size), ERROR_SUCCESS);
  EXPECT_EQ(size, 10u);
  BYTE small[9];
  size = 9;
  EXPECT_EQ(RegQueryValueExW(key, u"x", nullptr, nullptr, small, &size), ERROR_MORE_DATA);
  EXPECT_EQ(size, 10u);
  EXPECT_EQ(RegQueryValueExW(key, u"x", nullptr, nullptr, small, nullptr), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(RegQueryValueExW(key, u"none", nullptr, nullptr, nullptr, &size), ERROR_FILE_NOT_FOUND);
}

TEST_F(RegistryTest, NamesIgnoreCaseAndKeepTheirFirstSpelling) {
  Start();
  Create(HKEY_CURRENT_USER, u"Software\\Vendor\\\\Äpfel\\");
  EXPECT_EQ(disposition_, DWORD{REG_CREATED_NEW_KEY});
  const HKEY key = Create(HKEY_CURRENT_USER, u"software\\VENDOR\\äPFEL");
  EXPECT_EQ(disposition_, DWORD{REG_OPENED_EXISTING_KEY});
  Set(key, u"Größe", REG_DWORD, Bytes(4, 1));
  Set(key, u"GRÖßE", REG_DWORD, Bytes(4, 2));
  EXPECT_EQ(SubKeys(Open(HKEY_CURRENT_USER, u"Software\\Vendor")), std::vector<String>{u"Äpfel"});
  WCHAR name[10];
  DWORD chars = 10;
  EXPECT_EQ(RegEnumValueW(key, 0, name, &chars, nullptr, nullptr, nullptr, nullptr), ERROR_SUCCESS);
  EXPECT_EQ(String(name, chars), u"Größe");
  EXPECT_EQ(RegEnumValueW(key, 1, name, &(chars = 10), nullptr, nullptr, nullptr, nullptr), ERROR_NO_MORE_ITEMS);
  EXPECT_EQ(RegEnumValueW(key, 0, name, &(chars = 5), nullptr, nullptr, nullptr, nullptr), ERROR_MORE_DATA);
}

TEST_F(RegistryTest, SubKeysAreListedByNameAndCounted) {
  Start();
  const HKEY key = Create(HKEY_CURRENT_USER, u"Software\\V");
  for (const WCHAR* name : {u"b", u"C", u"a10", u"a"}) Create(key, name);
  EXPECT_EQ(SubKeys(key), (std::vector<String>{u"a", u"a10", u"b", u"C"}));
  Set(key, u"name", REG_BINARY, Bytes(7, 0));
  DWORD keys = 0, longest_key = 0, values = 0, longest_value = 0, bytes = 0;
  EXPECT_EQ(RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &keys, &longest_key, nullptr, &values, &longest_value,
                             &bytes, nullptr, nullptr),
            ERROR_SUCCESS);
  EXPECT_EQ((std::vector<DWORD>{keys, longest_key, values, longest_value, bytes}), (std::vector<DWORD>{4, 3, 1, 4, 7}));
}

TEST_F(RegistryTest, AKeyDoesWhatItWasOpenedFor) {
  Start();
  Set(Create(HKEY_CURRENT_USER, u"Software\\V"), u"x", REG_DWORD, Bytes(4, 1));
  const HKEY reader = Open(HKEY_CURRENT_USER, u"Software\\V", KEY_READ);
  EXPECT_EQ(Set(reader, u"x", REG_DWORD, Bytes(4, 2)), ERROR_ACCESS_DENIED);
  EXPECT_EQ(RegDeleteValueW(reader, u"x"), ERROR_ACCESS_DENIED);
  EXPECT_TRUE(Get(reader, u"x"));
  const HKEY writer = Open(HKEY_CURRENT_USER, u"Software\\V", KEY_WRITE);
  EXPECT_FALSE(Get(writer, u"x"));
  EXPECT_EQ(status_, ERROR_ACCESS_DENIED);
  EXPECT_EQ(RegDeleteValueW(writer, u"X"), ERROR_SUCCESS);
  EXPECT_EQ(RegDeleteValueW(writer, u"X"), ERROR_FILE_NOT_FOUND);
}

TEST_F(RegistryTest, WithoutElevationTheMachinesHalfIsReadOnly) {
  Start(R"({"elevated": false, "registry": {"HKLM32\\Software\\V": {"x": "1"}}})");
  EXPECT_TRUE(Open(HKEY_LOCAL_MACHINE, u"Software\\V", KEY_READ));
  EXPECT_FALSE(Open(HKEY_LOCAL_MACHINE, u"Software\\V", KEY_READ | KEY_SET_VALUE));
  EXPECT_EQ(status_, ERROR_ACCESS_DENIED);
  EXPECT_FALSE(Create(HKEY_LOCAL_MACHINE, u"Software\\New", KEY_READ));
  EXPECT_EQ(status_, ERROR_ACCESS_DENIED);
  EXPECT_EQ(RegDeleteKeyW(HKEY_LOCAL_MACHINE, u"Software\\V"), ERROR_ACCESS_DENIED);
  EXPECT_TRUE(Create(HKEY_CURRENT_USER, u"Software\\New"));
}

TEST_F(RegistryTest, DeletedKeysAreGoneForTheirHandlesToo) {
  Start();
  const HKEY key = Create(HKEY_CURRENT_USER, u"Software\\V\\Inner");
  EXPECT_EQ(RegDeleteKeyW(HKEY_CURRENT_USER, u"Software\\V"), ERROR_ACCESS_DENIED) << "it has a sub-key";
  EXPECT_EQ(RegDeleteKeyW(HKEY_CURRENT_USER, u"Software\\V\\Inner"), ERROR_SUCCESS);
  EXPECT_EQ(RegDeleteKeyW(HKEY_CURRENT_USER, u"Software\\V\\Inner"), ERROR_FILE_NOT_FOUND);
  Create(HKEY_CURRENT_USER, u"Software\\V\\Inner");
  EXPECT_EQ(Set(key, u"x", REG_DWORD, Bytes(4, 1)), ERROR_KEY_DELETED);
  EXPECT_FALSE(Open(key, u"Deeper"));
  EXPECT_EQ(status_, ERROR_KEY_DELETED);
}

TEST_F(RegistryTest, AProcessSeesTheViewOfItsBitnessUnlessItAsksForAnother) {
  Start();
  Create(HKEY_LOCAL_MACHINE, u"Software\\V");
  EXPECT_TRUE(Open(HKEY_LOCAL_MACHINE, u"Software\\V", KEY_READ | KEY_WOW64_32KEY));
  EXPECT_TRUE(Open(HKEY_LOCAL_MACHINE, u"Software\\Wow6432Node\\V", KEY_READ | KEY_WOW64_64KEY));
  EXPECT_FALSE(Open(HKEY_LOCAL_MACHINE, u"Software\\V", KEY_READ | KEY_WOW64_64KEY));
  const HKEY software = Open(HKEY_LOCAL_MACHINE, u"SOFTWARE", KEY_READ | KEY_WOW64_64KEY);
  EXPECT_FALSE(Open(software, u"V", KEY_READ)) << "a key opened from another is of its view";
  EXPECT_FALSE(Open(HKEY_LOCAL_MACHINE, u"Software", KEY_READ | KEY_WOW64_RES));
  EXPECT_EQ(status_, ERROR_INVALID_PARAMETER);
}

TEST_F(RegistryTest, WrongHandlesAndPathsAreRefused) {
  Start();
  EXPECT_EQ(Set(nullptr, u"x", REG_DWORD, Bytes(4, 1)), ERROR_INVALID_HANDLE);
  EXPECT_EQ(RegCloseKey(reinterpret_cast<HKEY>(std::uintptr_t{0x123450})), ERROR_INVALID_HANDLE);
  EXPECT_EQ(RegCloseKey(HKEY_LOCAL_MACHINE), ERROR_SUCCESS);
  Open(HKEY_CURRENT_USER, u"\\Software");
  EXPECT_EQ(status_, ERROR_BAD_PATHNAME);
  Create(HKEY_CURRENT_USER, String(256, u'k').c_str());
  EXPECT_EQ(status_, ERROR_INVALID_PARAMETER);
  EXPECT_TRUE(Create(HKEY_CURRENT_USER, String(255, u'k').c_str()));
  EXPECT_EQ(Set(HKEY_CURRENT_USER, String(16384, u'v').c_str(), REG_SZ, {}), ERROR_INVALID_PARAMETER);
}

TEST_F(RegistryTest, PlannedFaultsNameTheWholePath) {
  Start(R"({"faults": [{"operation": "RegSetValueExW", "subject": "HKLM\\Software\\V\\two", "error": 1450},
                       {"operation": "RegCreateKeyExW", "subject": "Locked", "nth": 0}]})");
  const HKEY key = Create(HKEY_LOCAL_MACHINE, u"SOFTWARE\\v");
  EXPECT_EQ(Set(key, u"one", REG_DWORD, Bytes(4, 1)), ERROR_SUCCESS);
  EXPECT_EQ(Set(key, u"Two", REG_DWORD, Bytes(4, 1)), 1450);
  EXPECT_FALSE(Get(key, u"two"));
  Create(key, u"Locked");
  EXPECT_EQ(status_, ERROR_ACCESS_DENIED);
  EXPECT_FALSE(Open(key, u"Locked"));
}

TEST_F(RegistryTest, SeedsAreThereFromTheStartAndOnlyOnce) {
  Start(R"({"registry": {"HKLM\\Software\\V": {"": "text", "n": {"type": "REG_QWORD", "value": 5}},
      "HKLM32\\Software\\V": {"raw": {"type": "REG_SZ", "hex": "41"}, "bare": {"type": "REG_SZ", "value": "ab",
      "terminated": false}, "list": {"type": "REG_MULTI_SZ", "value": ["a", "b"]}}, "HKCU\\Software\\Empty": {}}})");
  const HKEY wide = Open(HKEY_LOCAL_MACHINE, u"Software\\V", KEY_ALL_ACCESS | KEY_WOW64_64KEY);
  EXPECT_EQ(Get(wide, u""), (Bytes{'t', 0, 'e', 0, 'x', 0, 't', 0, 0, 0}));
  EXPECT_EQ(Get(wide, u"n"), (Bytes{5, 0, 0, 0, 0, 0, 0, 0}));
  const HKEY narrow = Open(HKEY_LOCAL_MACHINE, u"Software\\V");
  EXPECT_EQ(Get(narrow, u"raw"), Bytes{'A'});
  EXPECT_EQ(Get(narrow, u"bare"), (Bytes{'a', 0, 'b', 0}));
  EXPECT_EQ(Get(narrow, u"list"), (Bytes{'a', 0, 0, 0, 'b', 0, 0, 0, 0, 0}));
  EXPECT_TRUE(Open(HKEY_CURRENT_USER, u"Software\\Empty"));
  RegDeleteValueW(narrow, u"raw");
  winhost::MachineScope again(folder_);
  EXPECT_FALSE(Get(Open(HKEY_LOCAL_MACHINE, u"Software\\V"), u"raw"));
}

TEST_F(RegistryTest, TheListingShowsBothViewsAndNoEmptySystemKeys) {
  winhost::Machine& machine = Start();
  EXPECT_EQ(winhost::RegistryAsJson(machine), nlohmann::json::object());
  EXPECT_FALSE(std::filesystem::exists(folder_ / "registry.db")) << "looking makes nothing";
  const HKEY key = Create(HKEY_LOCAL_MACHINE, u"Software\\V");
  Set(key, u"s", REG_SZ, {'h', 0, 'i', 0});
  Set(key, u"d", REG_DWORD, {1, 1, 0, 0});
  Set(key, u"odd", REG_DWORD, {1});
  EXPECT_EQ(winhost::RegistryAsJson(machine), nlohmann::json::parse(R"({"HKLM32\\SOFTWARE\\V": {
      "s": {"type": "REG_SZ", "bytes": 4, "value": "hi"}, "d": {"type": "REG_DWORD", "bytes": 4, "value": 257},
      "odd": {"type": "REG_DWORD", "bytes": 1, "value": "01"}}})"));
}

TEST_F(RegistryTest, ThreadsAndProcessesWriteSideBySide) {
  Start(R"({"registry": {"HKCU\\Software\\Seeded": {"x": "1"}}})");
  const auto work = [](int who) {
    HKEY key = nullptr;
    LSTATUS worst =
        RegCreateKeyExW(HKEY_CURRENT_USER, u"Software\\V", 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr);
    for (int i = 0; i < 20; ++i) {
      const String name = winhost::Wide(std::to_string(who * 100 + i));
      worst = std::max(worst, RegSetValueExW(key, name.c_str(), 0, REG_DWORD, reinterpret_cast<const BYTE*>(&i), 4));
    }
    RegCloseKey(key);
    return worst;
  };
  const pid_t child = fork();
  if (child == 0) _exit(work(1) == ERROR_SUCCESS ? 0 : 1);
  std::thread thread([&] { EXPECT_EQ(work(2), ERROR_SUCCESS); });
  EXPECT_EQ(work(3), ERROR_SUCCESS);
  thread.join();
  int ended = 1;
  ASSERT_EQ(waitpid(child, &ended, 0), child);
  EXPECT_EQ(ended, 0);
  DWORD values = 0;
  EXPECT_EQ(RegQueryInfoKeyW(Open(HKEY_CURRENT_USER, u"Software\\V"), nullptr, nullptr, nullptr, nullptr, nullptr,
                             nullptr, &values, nullptr, nullptr, nullptr, nullptr),
            ERROR_SUCCESS);
  EXPECT_EQ(values, 60u);
}

TEST_F(RegistryTest, ABrokenDatabaseIsAnErrorOfTheCall) {
  std::filesystem::create_directory(folder_ / "registry.db");
  Start();
  EXPECT_FALSE(Create(HKEY_CURRENT_USER, u"Software\\V"));
  EXPECT_EQ(status_, ERROR_REGISTRY_IO_FAILED);
}

}  // namespace
