#include <shlobj.h>

#include "install/directories.h"
#include "tests/winhost/dialogs/dialog_fixture.h"

namespace {

using vanta::ChooseFolder, vanta::String;

class ChooseFolderTest : public testing_support::OnMachineWithDialogs {
 protected:
  void StartWith(const std::string& facts) {
    Start(R"({"drives": {"D": {}}, )" + facts + "}");
    Put("D:\\Music\\x", "");
    MakeOwner();
  }
  // The dialog, should one come, is answered with a folder, and remembered.
  String Choose() {
    User({[this] { Answer(); }});
    return ChooseFolder(owner_, CSIDL_RECENT);
  }
  void Answer() {
    if (!Dialog()) return;
    title_ = TextOf(Dialog());
    where_ = TextOf(Part(winhost::kFolderLine));
    SetLine(u"D:\\Music");
    PostMessageW(Dialog(), WM_COMMAND, IDOK, 0);
  }
  String title_, where_;  // title_ is empty when there was no dialog
};

struct Version {
  const char* name;
  const char* facts;
  const WCHAR* title;
  const WCHAR* where;
};

// The rows' own names, as the cases are called.
template <class Row>
std::string NameOf(const testing::TestParamInfo<Row>& info) {
  return info.param.name;
}
void PrintTo(const Version& row, std::ostream* out) { *out << row.name; }

class ChooseFolderOnTest : public ChooseFolderTest, public testing::WithParamInterface<Version> {};

// A process remembers which Windows it runs on, so each version is a case of its own.
TEST_P(ChooseFolderOnTest, TheSystemsOwnDialogIsAsked) {
  StartWith(GetParam().facts);
  EXPECT_EQ(Choose(), String(TEXT("D:\\Music")));
  EXPECT_EQ(title_, GetParam().title);
  EXPECT_EQ(where_, GetParam().where);
  User({[] { Press(VK_ESCAPE); }});
  EXPECT_EQ(ChooseFolder(owner_, CSIDL_RECENT), String());
  EXPECT_TRUE(IsWindowEnabled(owner_));
}

constexpr WCHAR kRecent[] = u"C:\\Users\\user\\AppData\\Roaming\\Microsoft\\Windows\\Recent";
INSTANTIATE_TEST_SUITE_P(
    Versions, ChooseFolderOnTest,
    testing::Values(Version{"Xp", R"("version": "xp")", u"浏览文件夹", u""},
                    Version{"Server2003", R"("version": "2003")", u"浏览文件夹", u""},
                    Version{"Vista", R"("version": "vista")", u"选择文件夹", kRecent},
                    Version{"Seven", R"("version": "7")", u"选择文件夹", kRecent},
                    Version{"Ten", R"("version": "10")", u"选择文件夹", kRecent},
                    // Conveniences that are not to be had.
                    Version{"WithoutTheFolder", R"("folders": {"CSIDL_RECENT": ""})", u"选择文件夹", u""},
                    Version{"WithoutItems", R"("missing_exports": ["shell32.dll!SHCreateItemFromParsingName"])",
                            u"选择文件夹", u""},
                    Version{"WithAFailedItem",
                            R"("faults": [{"operation": "SHCreateItemFromParsingName", "times": 9}])", u"选择文件夹",
                            u""}),
    NameOf<Version>);

struct Fault {
  const char* name;
  const char* version;
  const char* operation;
  bool after_dialog;  // the user has answered by then
};

void PrintTo(const Fault& row, std::ostream* out) { *out << row.name; }

class ChooseFolderFaultTest : public ChooseFolderTest, public testing::WithParamInterface<Fault> {};

TEST_P(ChooseFolderFaultTest, AFailedStepGivesNoFolder) {
  const Fault& row = GetParam();
  StartWith(std::string(R"("version": ")") + row.version + R"(", "faults": [{"operation": ")" + row.operation +
            R"("}])");
  EXPECT_EQ(Choose(), String());
  EXPECT_EQ(!title_.empty(), row.after_dialog);
  EXPECT_TRUE(UserIsDone() || !row.after_dialog);
  EXPECT_TRUE(IsWindowEnabled(owner_));
  EXPECT_EQ(Choose(), String(TEXT("D:\\Music")));  // and the next time is not spoiled
}

INSTANTIATE_TEST_SUITE_P(Steps, ChooseFolderFaultTest,
                         testing::Values(Fault{"CoCreateInstance", "10", "CoCreateInstance", false},
                                         Fault{"GetOptions", "10", "IFileDialog::GetOptions", false},
                                         Fault{"SetOptions", "10", "IFileDialog::SetOptions", false},
                                         Fault{"Show", "10", "IModalWindow::Show", false},
                                         Fault{"GetResult", "10", "IFileDialog::GetResult", true},
                                         Fault{"GetDisplayName", "10", "IShellItem::GetDisplayName", true},
                                         Fault{"SHBrowseForFolderWOnXp", "xp", "SHBrowseForFolderW", false},
                                         Fault{"SHGetPathFromIDListWOnXp", "xp", "SHGetPathFromIDListW", true}),
                         NameOf<Fault>);

TEST_F(ChooseFolderTest, WithoutTheDialogsClassNothingIsChosen) {
  StartWith(R"("missing_classes": ["CLSID_FileOpenDialog"])");
  EXPECT_EQ(Choose(), String());
  EXPECT_EQ(title_, String());
}

TEST_F(ChooseFolderTest, ATitleThatIsRefusedLeavesTheDialogsOwn) {
  StartWith(R"("faults": [{"operation": "IFileDialog::SetTitle"}])");
  EXPECT_EQ(Choose(), String(TEXT("D:\\Music")));
}

TEST_F(ChooseFolderTest, ANetworkFolderIsGivenAsItIs) {
  StartWith(R"("version": "7")");
  std::filesystem::create_directories(folder_ / "UNC/server/share/pictures");
  User({[] { SetLine(u"\\\\server\\share\\pictures"); }, [] { Press(VK_RETURN); }});
  const String chosen = ChooseFolder(owner_, CSIDL_RECENT);
  EXPECT_EQ(chosen, String(TEXT("\\\\server\\share\\pictures")));
  String directory;
  EXPECT_EQ(vanta::CheckChosenDirectory(chosen, &directory), vanta::DirectoryCheck::Invalid);
}

}  // namespace
