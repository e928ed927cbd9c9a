// The two interfaces to the folder picker, and the shell items and item lists that they hand out.
#include <shlobj.h>
#include <shobjidl.h>

#include "tests/winhost/dialogs/dialog_fixture.h"

namespace {

const HRESULT kCancelled = HRESULT_FROM_WIN32(ERROR_CANCELLED);

class FolderPickersTest : public testing_support::OnMachineWithDialogs {
 protected:
  void TearDown() override {
    if (dialog_) dialog_->Release();
    OnMachineWithDialogs::TearDown();
  }
  HRESULT Make() {
    return CoCreateInstance(CLSID_FileOpenDialog, nullptr, CLSCTX_INPROC_SERVER, IID_IFileOpenDialog,
                            reinterpret_cast<void**>(&dialog_));
  }
  void MakePicker() {
    ASSERT_EQ(Make(), S_OK);
    FILEOPENDIALOGOPTIONS options = 0;
    EXPECT_EQ(dialog_->GetOptions(&options), S_OK);
    EXPECT_EQ(dialog_->SetOptions(options | FOS_PICKFOLDERS), S_OK);
  }
  static IShellItem* Item(const WCHAR* path) {
    IShellItem* item = nullptr;
    SHCreateItemFromParsingName(path, nullptr, IID_IShellItem, reinterpret_cast<void**>(&item));
    return item;
  }
  static std::u16string NameOf(IShellItem* item, SIGDN kind) {
    LPWSTR text = nullptr;
    if (FAILED(item->GetDisplayName(kind, &text))) return u"(none)";
    const std::u16string name = text;
    CoTaskMemFree(text);
    return name;
  }
  static std::u16string PathOf(PCIDLIST_ABSOLUTE list) {
    WCHAR path[MAX_PATH] = {};
    return SHGetPathFromIDListW(list, path) ? path : u"(none)";
  }
  static void AnswerWith(const WCHAR* path) {
    SetLine(path);
    PostMessageW(Dialog(), WM_COMMAND, IDOK, 0);
  }

  IFileOpenDialog* dialog_ = nullptr;
};

TEST_F(FolderPickersTest, TheFileDialogCameWithVista) {
  StartWithFolders("xp");
  EXPECT_EQ(Make(), REGDB_E_CLASSNOTREG);
  EXPECT_EQ(GetProcAddress(GetModuleHandleW(u"shell32.dll"), "SHCreateItemFromParsingName"), nullptr);
}

TEST_F(FolderPickersTest, TheFileDialogGivesTheItemThatWasPicked) {
  StartWithFolders("vista");
  EXPECT_NE(GetProcAddress(GetModuleHandleW(u"shell32.dll"), "SHCreateItemFromParsingName"), nullptr);
  MakePicker();
  EXPECT_EQ(dialog_->SetTitle(u"Where to?"), S_OK);
  IShellItem* const start = Item(u"d:\\pictures");
  ASSERT_TRUE(start);
  EXPECT_EQ(dialog_->SetDefaultFolder(start), S_OK);
  start->Release();
  IShellItem* item = nullptr;
  EXPECT_EQ(dialog_->GetResult(&item), E_UNEXPECTED);
  User({[] { EXPECT_EQ(TextOf(Dialog()), u"Where to?"); }, [] { AnswerWith(u"2024"); }});
  ASSERT_EQ(dialog_->Show(owner_), S_OK);
  ASSERT_EQ(dialog_->GetResult(&item), S_OK);
  EXPECT_EQ(NameOf(item, SIGDN_FILESYSPATH), u"D:\\Pictures\\2024");
  EXPECT_EQ(NameOf(item, SIGDN_NORMALDISPLAY), u"2024");
  EXPECT_EQ(NameOf(item, static_cast<SIGDN>(5)), u"(none)");
  item->Release();
  User({[] { Press(VK_ESCAPE); }});
  EXPECT_EQ(dialog_->Show(owner_), kCancelled);
  EXPECT_EQ(dialog_->GetResult(&item), E_UNEXPECTED);  // the last answer counts
}

TEST_F(FolderPickersTest, WhatTheFileDialogIsNotForIsRefused) {
  StartWithFolders();
  ASSERT_EQ(Make(), S_OK);
  EXPECT_EQ(dialog_->Show(owner_), E_NOTIMPL);  // it would pick files
  EXPECT_EQ(dialog_->GetOptions(nullptr), E_POINTER);
  EXPECT_EQ(dialog_->GetResult(nullptr), E_POINTER);
  EXPECT_EQ(dialog_->SetOptions(FOS_PICKFOLDERS), S_OK);
  EXPECT_EQ(dialog_->Show(reinterpret_cast<HWND>(12)), HRESULT_FROM_WIN32(ERROR_INVALID_WINDOW_HANDLE));
}

TEST_F(FolderPickersTest, MethodsFailAsPlanned) {
  constexpr HRESULT kDenied = static_cast<HRESULT>(0x80070005);
  Start(R"({"faults": [{"operation": "IFileDialog::GetOptions", "error": 2147942405},
      {"operation": "IFileDialog::SetOptions", "error": 5}, {"operation": "IFileDialog::SetTitle", "error": 5},
      {"operation": "IFileDialog::SetDefaultFolder", "error": 5}, {"operation": "IModalWindow::Show", "error": 5},
      {"operation": "IFileDialog::GetResult", "error": 5}, {"operation": "IShellItem::GetDisplayName", "error": 5},
      {"operation": "SHCreateItemFromParsingName", "nth": 2, "error": 5}]})");
  ASSERT_EQ(Make(), S_OK);
  FILEOPENDIALOGOPTIONS options = 0;
  LPWSTR text = nullptr;
  IShellItem* item = Item(u"C:\\");
  ASSERT_TRUE(item);
  EXPECT_EQ(dialog_->GetOptions(&options), kDenied);
  EXPECT_EQ(dialog_->SetOptions(0), kDenied);
  EXPECT_EQ(dialog_->SetTitle(u"x"), kDenied);
  EXPECT_EQ(dialog_->SetDefaultFolder(item), kDenied);
  EXPECT_EQ(dialog_->SetDefaultFolder(item), S_OK);  // which is no question of the program's to the item
  EXPECT_EQ(dialog_->Show(nullptr), kDenied);
  EXPECT_EQ(item->GetDisplayName(SIGDN_FILESYSPATH, &text), kDenied);
  item->Release();
  EXPECT_EQ(dialog_->GetResult(&item), kDenied);
  EXPECT_EQ(Item(u"C:\\"), nullptr);
}

TEST_F(FolderPickersTest, ItemsAreOfFullPathsThatExist) {
  StartWithFolders();
  const std::pair<const WCHAR*, HRESULT> rows[] = {{u"D:\\notes.txt", S_OK},
                                                   {u"D:\\", S_OK},
                                                   {u"D:\\nope", HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND)},
                                                   {u"Music", HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND)},
                                                   {nullptr, E_INVALIDARG}};
  for (const auto& [path, result] : rows) {
    IShellItem* item = nullptr;
    EXPECT_EQ(SHCreateItemFromParsingName(path, nullptr, IID_IShellItem, reinterpret_cast<void**>(&item)), result);
    EXPECT_EQ(item != nullptr, result == S_OK);
    if (item) item->Release();
  }
}

TEST_F(FolderPickersTest, TheTreeGivesAListThatNamesTheFolder) {
  StartWithFolders("xp");
  std::filesystem::create_directories(folder_ / "UNC/server/share/深");
  Put("D:\\图片\\x", "");
  const WCHAR* const folders[] = {u"D:\\图片", u"D:\\", u"C:\\WINDOWS", u"\\\\server\\share\\深"};
  for (const WCHAR* folder : folders) {
    WCHAR name[MAX_PATH] = {};
    BROWSEINFOW browse{};
    browse.hwndOwner = owner_;
    browse.pszDisplayName = name;
    browse.lpszTitle = u"请选择";
    browse.ulFlags = BIF_RETURNONLYFSDIRS | BIF_DONTGOBELOWDOMAIN;
    User({[] { EXPECT_EQ(TextOf(Dialog()), u"浏览文件夹"); }, [] { EXPECT_EQ(TextOf(Part(IDOK)), u"确定"); },
          [folder] { AnswerWith(folder); }});
    const PIDLIST_ABSOLUTE list = SHBrowseForFolderW(&browse);
    ASSERT_TRUE(list);
    EXPECT_TRUE(winhost::EqualNoCase(PathOf(list), folder));
    EXPECT_TRUE(std::u16string(folder).ends_with(name) || winhost::EqualNoCase(name, u"WINDOWS"));
    CoTaskMemFree(list);
  }
}

TEST_F(FolderPickersTest, TheTreeGivesNothingWhenTheUserOrThePlanSaysNo) {
  StartWithFolders("xp");
  BROWSEINFOW browse{};
  browse.hwndOwner = owner_;
  User({[] { Press(VK_ESCAPE); }});
  EXPECT_EQ(SHBrowseForFolderW(&browse), nullptr);
  EXPECT_EQ(SHBrowseForFolderW(nullptr), nullptr);
  browse.ulFlags = 0x40;  // a flag that is not there
  EXPECT_EQ(SHBrowseForFolderW(&browse), nullptr);
  WCHAR path[MAX_PATH] = u"x";
  EXPECT_FALSE(SHGetPathFromIDListW(nullptr, path));
  EXPECT_EQ(path[0], 0);
  const USHORT desktop = 0;  // a list without items is the desktop, which is no path here
  EXPECT_FALSE(SHGetPathFromIDListW(reinterpret_cast<PCIDLIST_ABSOLUTE>(&desktop), path));
}

}  // namespace
