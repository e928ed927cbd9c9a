#include "winhost/registry/views.h"

#include <gtest/gtest.h>

#include "winhost/machine/text.h"

namespace winhost {
namespace {

enum Windows { k32, kVista64, k10 };

Facts FactsOf(Windows windows) {
  Facts facts;
  if (windows == k32) facts.windows_bits = 32;
  if (windows == kVista64) facts.version = {2, 6, 0, 6002};
  return facts;
}

struct Case {
  Windows windows;
  View view;
  const char16_t* logical;
  const char16_t* stored;
};

TEST(RegistryViews, KeysAreStoredWhereTheSystemPutsThem) {
  constexpr View k32Bit = View::Bits32, k64Bit = View::Bits64;
  const Case cases[] = {
      {k10, k32Bit, u"HKLM\\SOFTWARE", u"HKLM\\SOFTWARE\\Wow6432Node"},
      {k10, k32Bit, u"HKLM\\Software\\Vendor\\X", u"HKLM\\Software\\Wow6432Node\\Vendor\\X"},
      {k10, k64Bit, u"HKLM\\Software\\Vendor\\X", u"HKLM\\Software\\Vendor\\X"},
      {k32, k32Bit, u"HKLM\\Software\\Vendor", u"HKLM\\Software\\Vendor"},
      {k32, k64Bit, u"HKLM\\Software\\Vendor", u"HKLM\\Software\\Vendor"},
      {k10, k32Bit, u"HKLM\\SOFTWARE\\WOW6432Node\\Vendor", u"HKLM\\SOFTWARE\\WOW6432Node\\Vendor"},
      {k10, k32Bit, u"HKLM\\SYSTEM\\CurrentControlSet", u"HKLM\\SYSTEM\\CurrentControlSet"},
      {k10, k32Bit, u"HKLM\\SOFTWARES\\Vendor", u"HKLM\\SOFTWARES\\Vendor"},
      {k10, k32Bit, u"HKCU\\Software\\Vendor", u"HKCU\\Software\\Vendor"},
      {k10, k32Bit, u"HKLM\\Software\\microsoft\\windows\\currentversion\\app paths\\a.exe",
       u"HKLM\\Software\\microsoft\\windows\\currentversion\\app paths\\a.exe"},
      {kVista64, k32Bit, u"HKLM\\Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\a.exe",
       u"HKLM\\Software\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\App Paths\\a.exe"},
      {k10, k32Bit, u"HKLM\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\V",
       u"HKLM\\Software\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\V"},
      {k10, k32Bit, u"HKLM\\Software\\Policies\\V", u"HKLM\\Software\\Policies\\V"},
      {kVista64, k32Bit, u"HKLM\\Software\\Policies\\V", u"HKLM\\Software\\Policies\\V"},
      {k10, k32Bit, u"HKLM\\Software\\Classes\\.png", u"HKLM\\Software\\Classes\\.png"},
      {k10, k32Bit, u"HKLM\\Software\\Classes\\CLSID\\{1}", u"HKLM\\Software\\Classes\\Wow6432Node\\CLSID\\{1}"},
      {kVista64, k32Bit, u"HKLM\\Software\\Classes\\CLSID\\{1}", u"HKLM\\Software\\Wow6432Node\\Classes\\CLSID\\{1}"},
      {k10, k32Bit, u"HKCR\\CLSID\\{1}", u"HKLM\\SOFTWARE\\Classes\\Wow6432Node\\CLSID\\{1}"},
      {k10, k32Bit, u"HKCU\\Software\\Classes\\CLSID\\{1}", u"HKCU\\Software\\Classes\\Wow6432Node\\CLSID\\{1}"},
  };
  for (const Case& c : cases) {
    const KeyPath stored = StoredPath(SplitKeyPath(c.logical), c.view, FactsOf(c.windows));
    EXPECT_EQ(JoinKeyPath(stored), c.stored) << Narrow(c.logical);
  }
}

TEST(RegistryViews, ListingNamesTheViewThatReachesAKey) {
  const std::pair<const char16_t*, const char16_t*> rows[] = {
      {u"HKLM\\SOFTWARE\\Wow6432Node\\Vendor", u"HKLM32\\SOFTWARE\\Vendor"},
      {u"HKLM\\SOFTWARE\\Classes\\Wow6432Node\\CLSID", u"HKLM32\\SOFTWARE\\Classes\\CLSID"},
      {u"HKLM\\SOFTWARE\\Vendor", u"HKLM\\SOFTWARE\\Vendor"},
      {u"HKLM\\SYSTEM\\Wow6432Node", u"HKLM\\SYSTEM\\Wow6432Node"},
  };
  for (const auto& [stored, listed] : rows) {
    EXPECT_EQ(JoinKeyPath(ListedPath(SplitKeyPath(stored), FactsOf(k10))), listed);
  }
  const KeyPath plain = SplitKeyPath(u"HKLM\\SOFTWARE\\Wow6432Node\\V");
  EXPECT_EQ(ListedPath(plain, FactsOf(k32)), plain) << "on 32-bit Windows it is a name like any other";
}

}  // namespace
}  // namespace winhost
