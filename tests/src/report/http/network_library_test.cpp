#include "report/http/network_library.h"

#include "tests/src/report/makerlibs/maker_machine.h"

namespace vanta {
namespace {

constexpr char kLibrary[] = "C:\\Setup\\vantanetbase.dll";
constexpr char kBase[] = "C:\\Setup\\VantaBase.dll";
constexpr char kInSuite[] = "C:\\Suite\\vantanetbase.dll";
constexpr char kOpened[] = "InitLibs\nglobal 2\n";

class NetworkLibraryTest : public MakerMachine {
 protected:
  ~NetworkLibraryTest() override {
    for (const char* name : {"MAKER_VERSION", "MAKER_DIRECT", "MAKER_NET_INIT", "MAKER_NET_GLOBAL"}) unsetenv(name);
  }
  // A trusted base library that gives every file this level; level 0 stands for one that is fine with it.
  void PutBaseThatSays(const char* level) {
    PutLibrary(kBase, "VantaBase", "maker");
    setenv("MAKER_VERSION", "11", 1);
    setenv("MAKER_DIRECT", level, 1);
  }
  // Whether the library was loaded, and its calls without those of the base library.
  std::string Load() {
    const int result = LoadNetworkLibrary();
    EXPECT_EQ(LoadNetworkLibrary(), result) << "remembered";
    EXPECT_EQ(GetNetworkFunctions() != nullptr, result == 0);
    std::string calls;
    std::istringstream lines(Calls());
    for (std::string line; std::getline(lines, line);) {
      if (line != "InitLibs 256" && line != "direct") calls += line + "\n";
    }
    return result == 0 ? calls : "refused " + calls;
  }
  static std::string SuiteFacts(const std::string& more) {
    return R"({"registry": {"HKLM32\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\bastion.exe":
                {"Path": "C:\\SUITE"}}, )" +
           more + "}";
  }
};

TEST_F(NetworkLibraryTest, MissingLibraryIsAFailure) {
  Start();
  EXPECT_EQ(LoadNetworkLibrary(), 2);
  PutLibrary(kLibrary, "vantanetbase", "maker");
  EXPECT_EQ(Load(), "refused ") << "tried once a process";
}

TEST_F(NetworkLibraryTest, TrustedLibraryIsLoadedAndInitialised) {
  Start();
  PutLibrary(kLibrary, "vantanetbase");
  PutBaseThatSays("1");
  EXPECT_EQ(Load(), kOpened);
}

TEST_F(NetworkLibraryTest, WithoutBaseLibraryNothingIsTrusted) {
  Start();
  PutLibrary(kLibrary, "vantanetbase", "maker");
  EXPECT_EQ(Load(), "refused ");
}

TEST_F(NetworkLibraryTest, LevelThreeAndNoLevelAreRefused) {
  Start();
  PutLibrary(kLibrary, "vantanetbase", "maker");
  PutBaseThatSays("3");
  EXPECT_EQ(Load(), "refused ");
}
TEST_F(NetworkLibraryTest, UndecidedIsRefused) {
  Start();
  PutLibrary(kLibrary, "vantanetbase", "maker");
  PutBaseThatSays("-1");
  EXPECT_EQ(Load(), "refused ");
}

TEST_F(NetworkLibraryTest, InTheSuiteAVouchedProcessNeedsNoCheck) {
  Start(SuiteFacts(R"("protection_device": "vouches")"));
  PutLibrary(kInSuite, "vantanetbase");
  EXPECT_EQ(Load(), kOpened);
}
TEST_F(NetworkLibraryTest, InTheSuiteWithoutDriverTheCheckDecides) {
  Start(SuiteFacts(R"("protection_device": "refuses")"));
  PutLibrary(kInSuite, "vantanetbase");
  EXPECT_EQ(Load(), "refused ");
}
TEST_F(NetworkLibraryTest, VouchedProcessOutsideOfTheSuiteIsChecked) {
  Start(SuiteFacts(R"("protection_device": "vouches")"));
  PutLibrary(kLibrary, "vantanetbase");
  EXPECT_EQ(Load(), "refused ");
}

TEST_F(NetworkLibraryTest, NegativeInitLibsUnloads) {
  Start();
  setenv("MAKER_NET_INIT", "0xFFFFFFFF", 1);
  PutLibrary(kLibrary, "vantanetbase");
  PutBaseThatSays("1");
  EXPECT_EQ(Load(), "refused InitLibs\n");
  EXPECT_EQ(GetModuleHandleW(TEXT("vantanetbase.dll")), nullptr);
}
TEST_F(NetworkLibraryTest, PositiveInitLibsIsFine) {
  Start();
  setenv("MAKER_NET_INIT", "7", 1);
  PutLibrary(kLibrary, "vantanetbase");
  PutBaseThatSays("1");
  EXPECT_EQ(Load(), kOpened);
}
TEST_F(NetworkLibraryTest, FailingGlobalInitialisationUnloads) {
  Start();
  setenv("MAKER_NET_GLOBAL", "2", 1);
  PutLibrary(kLibrary, "vantanetbase");
  PutBaseThatSays("1");
  EXPECT_EQ(Load(), std::string("refused ") + kOpened);
  EXPECT_EQ(GetModuleHandleW(TEXT("vantanetbase.dll")), nullptr);
}

TEST_F(NetworkLibraryTest, AnotherLibraryOfThatNameIsRefused) {
  Start();
  PutLibrary(kLibrary, "CrashReport");
  PutBaseThatSays("1");
  EXPECT_EQ(Load(), "refused ");
}

}  // namespace
}  // namespace vanta
