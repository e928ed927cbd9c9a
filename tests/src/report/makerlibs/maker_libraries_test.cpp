#include "report/makerlibs/base_library.h"
#include "report/makerlibs/crash_reporter.h"
#include "report/makerlibs/maker_files.h"
#include "report/makerlibs/safe_loader.h"
#include "report/makerlibs/self_protection.h"
#include "report/makerlibs/trusted_library.h"
#include "tests/src/report/makerlibs/maker_machine.h"

namespace vanta {
namespace {

constexpr char kBase[] = "C:\\Setup\\VantaBase.dll";
constexpr char kReporter[] = "C:\\Setup\\CrashReport.dll";
const String kFile = TEXT("C:\\P\\any.exe");

class MakerLibrariesTest : public MakerMachine {};

TEST_F(MakerLibrariesTest, FilesAreLookedForBesideAboveAndInTheSuite) {
  Start(R"({"registry": {"HKLM\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\bastion.exe":
                          {"Path": "C:\\Suite"}}})");
  EXPECT_EQ(FindMakerFile(TEXT("a.dll")), TEXT("C:\\Suite\\a.dll")) << "the last place when there is none";
  Put("C:\\Suite\\a.dll", "x");
  EXPECT_EQ(FindMakerFile(TEXT("a.dll")), TEXT("C:\\Suite\\a.dll"));
  Put("C:\\a.dll", "x");
  EXPECT_EQ(FindMakerFile(TEXT("a.dll")), TEXT("C:\\a.dll"));
  Put("C:\\Setup\\a.dll", "x");
  EXPECT_EQ(FindMakerFile(TEXT("a.dll")), TEXT("C:\\Setup\\a.dll"));
}

TEST_F(MakerLibrariesTest, WithoutSuiteAMissingFileIsNowhere) {
  Start();
  EXPECT_EQ(FindMakerFile(TEXT("a.dll")), String());
}

TEST_F(MakerLibrariesTest, DriverAnswersForThisProcess) {
  Start(R"({"protection_device": "vouches"})");
  EXPECT_EQ(AskSelfProtection(), SelfProtection::Yes);
}
TEST_F(MakerLibrariesTest, DriverThatRefusesOrFailsDoesNotVouch) {
  Start(R"({"protection_device": "refuses"})");
  EXPECT_EQ(AskSelfProtection(), SelfProtection::No);
}
TEST_F(MakerLibrariesTest, DriverThatFailsDoesNotVouch) {
  Start(R"({"protection_device": "fails"})");
  EXPECT_EQ(AskSelfProtection(), SelfProtection::No);
}
TEST_F(MakerLibrariesTest, MissingDriverIsAnAnswerOfItsOwn) {
  Start();
  EXPECT_EQ(AskSelfProtection(), SelfProtection::Absent);
}

TEST(IsFullDrivePathTest, NeedsALetterAndARoot) {
  for (const auto* path : {TEXT("C:\\a"), TEXT("z:\\a.dll")}) EXPECT_TRUE(IsFullDrivePath(path));
  for (const auto* path : {TEXT(""), TEXT("a.dll"), TEXT("\\a"), TEXT("C:a.dll"), TEXT("\\\\server\\a"), TEXT("1:\\a"),
                           TEXT("C:\\"), TEXT("..\\a")}) {
    EXPECT_FALSE(IsFullDrivePath(path)) << winhost::Narrow(path);
  }
}

TEST_F(MakerLibrariesTest, PlainAndRelativeNamesAreNotLoaded) {
  Start();
  PutLibrary(kReporter, "CrashReport", "maker");
  for (const auto* path : {TEXT("CrashReport.dll"), TEXT("Setup\\CrashReport.dll"), TEXT("")}) {
    EXPECT_FALSE(LoadLibrarySafely(path));
  }
  EXPECT_FALSE(LoadSystemLibrary(TEXT("..\\..\\Setup\\CrashReport.dll")));
  EXPECT_FALSE(LoadSystemLibrary(TEXT("CrashReport.dll")));
}

TEST_F(MakerLibrariesTest, TrustedLibraryNeedsTheMakersSignature) {
  Start();
  PutLibrary("C:\\L\\unsigned.dll", "CrashReport");
  PutLibrary("C:\\L\\foreign.dll", "CrashReport", "stranger");
  PutLibrary("C:\\L\\own.dll", "CrashReport", "maker");
  EXPECT_FALSE(LoadTrustedLibrary(TEXT("C:\\L\\missing.dll")));
  EXPECT_FALSE(LoadTrustedLibrary(TEXT("C:\\L\\unsigned.dll")));
  EXPECT_FALSE(LoadTrustedLibrary(TEXT("C:\\L\\foreign.dll")));
  EXPECT_TRUE(LoadTrustedLibrary(TEXT("C:\\L\\own.dll")));
}

TEST_F(MakerLibrariesTest, LoadedModuleOfThatNameIsTheOneThatCounts) {
  Start();
  PutLibrary("C:\\L\\one.dll", "CrashReport", "maker");
  PutLibrary("C:\\M\\one.dll", "CrashReport");
  const HMODULE first = LoadTrustedLibrary(TEXT("C:\\L\\one.dll"));
  ASSERT_TRUE(first);
  EXPECT_EQ(LoadTrustedLibrary(TEXT("C:\\M\\one.dll")), first);
}

TEST_F(MakerLibrariesTest, VouchedProcessNeedsNoSignature) {
  Start(R"({"protection_device": "vouches"})");
  PutLibrary("C:\\L\\unsigned.dll", "CrashReport");
  EXPECT_TRUE(LoadTrustedLibrary(TEXT("C:\\L\\unsigned.dll")));
}

TEST_F(MakerLibrariesTest, OldLoaderWithoutSearchFlagsLoadsPlainly) {
  Start(R"({"version": "xp", "windows_bits": 32})");
  PutLibrary("C:\\L\\own.dll", "CrashReport", "maker");
  EXPECT_TRUE(LoadTrustedLibrary(TEXT("C:\\L\\own.dll")));
}

TEST_F(MakerLibrariesTest, NoBaseLibraryDecidesNothing) {
  Start();
  LONG level = 0;
  EXPECT_FALSE(LoadBaseLibrary());
  EXPECT_FALSE(GetFileTrustLevel(kFile, &level));
  EXPECT_EQ(level, TrustUndecided);
  PutLibrary(kBase, "VantaBase", "maker");
  EXPECT_FALSE(LoadBaseLibrary()) << "tried once a process";
}

TEST_F(MakerLibrariesTest, UnsignedBaseLibraryIsNotCalled) {
  Start();
  PutLibrary(kBase, "VantaBase");
  EXPECT_FALSE(LoadBaseLibrary());
  EXPECT_EQ(Calls(), "");
}

TEST_F(MakerLibrariesTest, FailingInitLibsUnloadsTheLibrary) {
  setenv("MAKER_INIT", "1", 1);
  Start();
  PutLibrary(kBase, "VantaBase", "maker");
  EXPECT_FALSE(LoadBaseLibrary());
  EXPECT_EQ(Calls(), "InitLibs 256\n");
  EXPECT_FALSE(GetModuleHandleW(TEXT("VantaBase.dll")));
}

TEST_F(MakerLibrariesTest, LibraryWithoutExportsIsUnloaded) {
  Start();
  PutLibrary(kBase, "VantaBaseBare", "maker");
  EXPECT_FALSE(LoadBaseLibrary());
  EXPECT_FALSE(GetModuleHandleW(TEXT("VantaBase.dll")));
}

TEST_F(MakerLibrariesTest, TrustObjectIsAskedInOrderAtEveryCheck) {
  setenv("MAKER_PROPERTY5", "0x30000", 1);
  Start();
  PutLibrary(kBase, "VantaBase", "maker");
  LONG level = 0;
  EXPECT_TRUE(GetFileTrustLevel(kFile, &level));
  EXPECT_EQ(level, TrustReporter);
  const std::string asked = "Open 0\nMAKER_PROPERTY4\nMAKER_PROPERTY5\nMAKER_PROPERTY3\nreleased\n";
  EXPECT_EQ(Calls(), "InitLibs 256\n" + asked);
  EXPECT_TRUE(GetFileTrustLevel(kFile, &level));
  EXPECT_EQ(Calls(), "InitLibs 256\n" + asked + asked);
}

TEST_F(MakerLibrariesTest, ObjectThatCannotOpenTheFileDecidesNothing) {
  setenv("MAKER_PROPERTY4", "0x2000", 1);
  setenv("MAKER_OPEN", "0x80070005", 1);
  Start();
  PutLibrary(kBase, "VantaBase", "maker");
  LONG level = 0;
  EXPECT_FALSE(GetFileTrustLevel(kFile, &level));
  EXPECT_EQ(level, TrustUndecided);
}

TEST_F(MakerLibrariesTest, DirectEntryOfANewTableIsUsed) {
  setenv("MAKER_VERSION", "11", 1);
  setenv("MAKER_DIRECT", "3", 1);
  Start();
  PutLibrary(kBase, "VantaBase", "maker");
  LONG level = 0;
  EXPECT_TRUE(GetFileTrustLevel(kFile, &level));
  EXPECT_EQ(level, TrustRefused);
  EXPECT_EQ(Calls(), "InitLibs 256\ndirect\n");
}

TEST_F(MakerLibrariesTest, DirectEntryOfAnOldTableIsNot) {
  setenv("MAKER_VERSION", "10", 1);
  setenv("MAKER_DIRECT", "3", 1);
  Start();
  PutLibrary(kBase, "VantaBase", "maker");
  LONG level = 0;
  EXPECT_FALSE(GetFileTrustLevel(kFile, &level));
}

TEST(TrustLevelOfTest, PropertiesAreReadAtTheirBits) {
  struct Row {
    DWORD property4, property5, property3;
    LONG level;
  };
  const Row rows[] = {{0x2000, 0, 0, 1},         {0x3000, 0x30000, 0x300, 1}, {0x1000, 0x30000, 0x300, 4},
                      {0x4000, 0, 0x300, 3},     {0, 0x20000, 0x200, -1},     {0, 0x3000, 0x30, -1},
                      {0xFFFF0FFF, 0, 0x300, 3}, {0xFFFF2FFF, 0, 0, 1},       {0, 0xFFF3FFFF, 0, 4}};
  for (const Row& row : rows) {
    EXPECT_EQ(TrustLevelOf(row.property4, row.property5, row.property3), row.level)
        << std::hex << row.property4 << " " << row.property5 << " " << row.property3;
  }
}

class CrashReporterTest : public MakerMachine {};

TEST_F(CrashReporterTest, MakersOwnIsStartedAndToldTheEnd) {
  Start();
  PutLibrary(kReporter, "CrashReport", "maker");
  StartCrashReporter();
  EXPECT_EQ(Calls(), "Initialize\n");
  TellCrashReporterExiting();
  EXPECT_EQ(Calls(), "Initialize\nOnExiting\n");
}

TEST_F(CrashReporterTest, MissingForeignOrUnsignedIsSilentlyLeftAlone) {
  Start();
  StartCrashReporter();
  PutLibrary(kReporter, "CrashReport");
  StartCrashReporter();
  PutLibrary(kReporter, "CrashReport", "stranger");
  StartCrashReporter();
  TellCrashReporterExiting();
  EXPECT_EQ(Calls(), "");
  EXPECT_FALSE(GetModuleHandleW(TEXT("CrashReport.dll")));
}

TEST_F(CrashReporterTest, WithTheBaseLibraryItsLevelDecidesAlone) {
  setenv("MAKER_PROPERTY4", "0x2000", 1);
  Start();
  PutLibrary(kBase, "VantaBase", "maker");
  PutLibrary(kReporter, "CrashReport", "maker");
  StartCrashReporter();
  EXPECT_EQ(Calls().find("Initialize\n"), std::string::npos) << "level 1 is not 4";
  setenv("MAKER_PROPERTY4", "0", 1);
  setenv("MAKER_PROPERTY5", "0x30000", 1);
  StartCrashReporter();
  EXPECT_NE(Calls().find("Initialize\n"), std::string::npos);
}

TEST_F(CrashReporterTest, LibraryThatLosesTrustIsNotToldTheEnd) {
  setenv("MAKER_PROPERTY5", "0x30000", 1);
  Start();
  PutLibrary(kBase, "VantaBase", "maker");
  PutLibrary(kReporter, "CrashReport");
  StartCrashReporter();
  setenv("MAKER_PROPERTY5", "0", 1);
  TellCrashReporterExiting();
  EXPECT_NE(Calls().find("Initialize\n"), std::string::npos);
  EXPECT_EQ(Calls().find("OnExiting\n"), std::string::npos);
}

}  // namespace
}  // namespace vanta
