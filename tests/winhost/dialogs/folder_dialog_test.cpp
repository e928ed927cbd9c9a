#include "winhost/dialogs/folder_dialog.h"

#include <sys/wait.h>
#include <unistd.h>

#include "tests/winhost/dialogs/dialog_fixture.h"

namespace {

namespace screen = winhost::screen;
using winhost::kFolderLine, winhost::kFolderNotice, winhost::kFolderRows, winhost::kFolderUp;

class FolderDialogTest : public testing_support::OnMachineWithDialogs {
 protected:
  static inline const HRESULT kCancelled = HRESULT_FROM_WIN32(ERROR_CANCELLED);

  HRESULT Ask(const std::u16string& start = u"D:\\") {
    return winhost::AskForFolder({owner_, u"选择文件夹", u"", u"选择文件夹", start}, &folder_picked_);
  }
  std::u16string folder_picked_;
};

TEST_F(FolderDialogTest, APathIsTypedAndReturnTakesIt) {
  StartWithFolders();
  User({[] { screen::Type(u"d:\\picx"); }, [] { Press(VK_BACK); }, [] { screen::Type(u"tures"); },
        [] { EXPECT_EQ(TextOf(Part(kFolderLine)), u"d:\\pictures"); }, [] { Press(VK_RETURN); }});
  EXPECT_EQ(Ask(), S_OK);
  EXPECT_EQ(folder_picked_, u"D:\\Pictures");
  EXPECT_EQ(Dialog(), nullptr);
}

TEST_F(FolderDialogTest, TheMouseWalksThroughTheFolders) {
  StartWithFolders();
  User({[] { Click(kFolderUp); }, [] { EXPECT_FALSE(IsWindowEnabled(Part(kFolderUp))); },
        [] { EXPECT_FALSE(IsWindowEnabled(Part(IDOK))); },  // the computer itself is no folder
        [] { ClickRow(1, 2); },                             // D:
        [] { EXPECT_EQ(TextOf(Part(kFolderLine)), u"D:\\"); }, [] { ClickRow(1, 2); },
        [] { EXPECT_EQ(TextOf(Part(kFolderLine)), u"D:\\Pictures"); }, [] { ClickRow(1); },
        [] { EXPECT_EQ(TextOf(Part(kFolderLine)), u"D:\\Pictures\\2024"); }, [] { Click(IDOK); }});
  EXPECT_EQ(Ask(), S_OK);
  EXPECT_EQ(folder_picked_, u"D:\\Pictures\\2024");
}

TEST_F(FolderDialogTest, KeysWalkThroughTheFolders) {
  StartWithFolders();
  User({[] { Press(VK_TAB); }, [] { Press('P'); }, [] { EXPECT_EQ(TextOf(Part(kFolderLine)), u"D:\\Pictures"); },
        [] { Press(VK_RIGHT); }, [] { Press(VK_END); },
        [] { EXPECT_EQ(TextOf(Part(kFolderLine)), u"D:\\Pictures\\2024"); }, [] { Press(VK_BACK); },
        [] { Press(VK_UP); }, [] { EXPECT_EQ(TextOf(Part(kFolderLine)), u"D:\\Music"); },
        [] {
          screen::KeyDown(VK_MENU);
          Press(VK_UP);
          screen::KeyUp(VK_MENU);
        },
        [] { EXPECT_EQ(TextOf(Part(kFolderLine)), u""); }, [] { Press(VK_END); }, [] { Press(VK_HOME); },
        [] { Press(VK_RETURN); }});
  EXPECT_EQ(Ask(), S_OK);
  EXPECT_EQ(folder_picked_, u"C:\\");
}

TEST_F(FolderDialogTest, EachWayToSayNoTakesNothing) {
  StartWithFolders();
  const std::function<void()> ways[] = {
      [] { Press(VK_ESCAPE); },
      [] { Click(IDCANCEL); },
      [] {
        RECT frame{};
        GetWindowRect(Dialog(), &frame);
        screen::Click(frame.right - 20, frame.top + 15);  // the cross
      },
      [] {
        screen::KeyDown(VK_MENU);
        Press(VK_F4);
        screen::KeyUp(VK_MENU);
      },
      [] { PostMessageW(Dialog(), WM_COMMAND, IDCANCEL, 0); },
      [] { SendMessageW(Part(IDCANCEL), BM_CLICK, 0, 0); },
      [] {  // Return on the other button
        SetFocus(Part(IDCANCEL));
        Press(VK_RETURN);
      },
  };
  for (const auto& way : ways) {
    User({way});
    EXPECT_EQ(Ask(), kCancelled);
    EXPECT_EQ(folder_picked_, u"");
    EXPECT_EQ(Dialog(), nullptr);
  }
}

TEST_F(FolderDialogTest, APressTakenBackIsNone) {
  StartWithFolders();
  User({[] {
          const POINT ok = At(IDOK);
          screen::MovePointer(ok.x, ok.y);
          screen::Press();
          screen::MovePointer(ok.x, ok.y - 100);
          screen::Release();
        },
        [] { EXPECT_TRUE(IsWindow(Dialog())); }, [] { Press(VK_ESCAPE); }});
  EXPECT_EQ(Ask(), kCancelled);
}

TEST_F(FolderDialogTest, AProgramAnswersInOneStep) {
  StartWithFolders();
  User({[] {
    SetLine(u"D:\\Music");
    PostMessageW(Dialog(), WM_COMMAND, IDOK, 0);
  }});
  EXPECT_EQ(Ask(u""), S_OK);
  EXPECT_EQ(folder_picked_, u"D:\\Music");
}

TEST_F(FolderDialogTest, WhatIsNoFolderKeepsTheDialogOpenAndSaysSo) {
  StartWithFolders();
  const auto try_path = [](const WCHAR* path) {
    return [path] {
      SetLine(path);
      EXPECT_EQ(TextOf(Part(kFolderNotice)), u"");
      SendMessageW(Dialog(), WM_COMMAND, IDOK, 0);
    };
  };
  const auto says = [](const WCHAR* text) { return [text] { EXPECT_EQ(TextOf(Part(kFolderNotice)), text); }; };
  User({try_path(u"D:\\nope"), says(u"找不到此文件夹，请检查路径：D:\\nope"), try_path(u"notes.txt"),
        says(u"这不是文件夹：notes.txt"),
        [] { screen::Type(u"2"); },  // the refused text was marked, and typing takes the line away
        says(u""), [] { EXPECT_EQ(TextOf(Part(kFolderLine)), u"2"); }, try_path(u"pictures\\2023")});
  EXPECT_EQ(Ask(), S_OK);
  EXPECT_EQ(folder_picked_, u"D:\\Pictures\\2023");
}

TEST_F(FolderDialogTest, AnEmptyLineIsTheFolderThatIsShown) {
  StartWithFolders();
  User({[] { SetLine(u""); }, [] { Press(VK_RETURN); }});
  EXPECT_EQ(Ask(u"D:\\Pictures"), S_OK);
  EXPECT_EQ(folder_picked_, u"D:\\Pictures");
  User({[] { EXPECT_FALSE(IsWindowEnabled(Part(IDOK))); }, [] { SendMessageW(Dialog(), WM_COMMAND, IDOK, 0); },
        [] { EXPECT_EQ(TextOf(Part(kFolderNotice)), u"请选择一个文件夹。"); }, [] { Press(VK_ESCAPE); }});
  EXPECT_EQ(Ask(u"D:\\gone"), kCancelled);  // it opened at the drives
}

TEST_F(FolderDialogTest, TheOwnerRestsMeanwhileAndIsActiveAfterwards) {
  StartWithFolders();
  User({[this] { EXPECT_FALSE(IsWindowEnabled(owner_)); },
        [this] {
          EXPECT_EQ(GetWindow(Dialog(), GW_OWNER), owner_);
          EXPECT_EQ(GetForegroundWindow(), Dialog());
          RECT mine{}, dialog{};
          GetWindowRect(owner_, &mine);
          GetWindowRect(Dialog(), &dialog);
          EXPECT_EQ(mine.left + mine.right, dialog.left + dialog.right);
        },
        [] { Press(VK_ESCAPE); }});
  Ask();
  EXPECT_TRUE(IsWindowEnabled(owner_));
  EXPECT_EQ(GetForegroundWindow(), owner_);
  EnableWindow(owner_, FALSE);
  User({[] { SendMessageW(Dialog(), WM_COMMAND, IDCANCEL, 0); }});
  Ask();
  EXPECT_FALSE(IsWindowEnabled(owner_));  // it was so before
}

TEST_F(FolderDialogTest, AQuitGoesOnToTheLoopOutside) {
  StartWithFolders();
  User({[] { PostQuitMessage(7); }});
  EXPECT_EQ(Ask(), kCancelled);
  EXPECT_TRUE(IsWindowEnabled(owner_));
  MSG message{};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
  }
  EXPECT_EQ(message.wParam, 7u);
}

TEST_F(FolderDialogTest, AnOwnerThatEndsTakesTheDialogWithIt) {
  StartWithFolders();
  User({[this] { DestroyWindow(std::exchange(owner_, nullptr)); }});
  EXPECT_EQ(Ask(), kCancelled);
  EXPECT_EQ(Dialog(), nullptr);
}

TEST_F(FolderDialogTest, AnotherThreadsAnswerEndsItAtOnce) {
  StartWithFolders();
  const HANDLE thread = CreateThread(
      nullptr, 0,
      [](LPVOID) -> DWORD {
        while (!IsWindowVisible(Dialog())) Sleep(1);
        SetLine(u"D:\\Music");
        SendMessageW(Dialog(), WM_COMMAND, IDOK, 0);
        return 0;
      },
      nullptr, 0, nullptr);
  EXPECT_EQ(Ask(), S_OK);  // no message turns the loop but the answer itself
  EXPECT_EQ(folder_picked_, u"D:\\Music");
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
}

// Texts do not travel between processes, characters do.
int AnswerFromAfar(const WCHAR* path) {
  HWND dialog = nullptr;
  for (int i = 0; i < 10'000 && !IsWindowVisible(dialog); ++i) {
    usleep(1000);
    dialog = FindWindowW(u"#32770", nullptr);
  }
  const HWND line = FindWindowExW(dialog, nullptr, u"Edit", nullptr);
  for (; *path; ++path) PostMessageW(line, WM_CHAR, *path, 1);
  return PostMessageW(dialog, WM_COMMAND, IDOK, 0) ? 0 : 1;
}

TEST_F(FolderDialogTest, AnotherProcessTypesAndAnswers) {
  Start(R"({"drives": {"D": {}}})");
  Put("D:\\Music\\x", "");
  const pid_t other = fork();  // while there is no window, and so no second thread, which a child would not have
  if (other == 0) _exit(AnswerFromAfar(u"D:\\music"));
  MakeOwner();
  EXPECT_EQ(Ask(), S_OK);
  EXPECT_EQ(folder_picked_, u"D:\\Music");
  int status = -1;
  waitpid(other, &status, 0);
  EXPECT_EQ(status, 0);
}

TEST_F(FolderDialogTest, TheWheelAndTheBarScrollALongList) {
  StartWithFolders();
  for (int i = 10; i < 60; ++i) Put("D:\\Music\\folder " + std::to_string(i) + "\\x", "");
  RECT rows{};
  User({[&] {
          GetWindowRect(Part(kFolderRows), &rows);
          screen::MovePointer(rows.left, rows.top - 20);
          screen::Wheel(-2);  // six rows on: the wheel is the line's, which has the keys, and it passes it on
        },
        [] { ClickRow(0); }, [] { EXPECT_EQ(TextOf(Part(kFolderLine)), u"D:\\Music\\folder 16"); },
        [&] {  // the thumb to the end
          screen::MovePointer(rows.right - 4, rows.top + 30);
          screen::Press();
          screen::MovePointer(rows.right - 4, rows.bottom + 50);
          screen::Release();
        },
        [&] { screen::Click(rows.left + 60, rows.bottom - 5); },
        [] { EXPECT_EQ(TextOf(Part(kFolderLine)), u"D:\\Music\\folder 59"); }, [] { Press(VK_ESCAPE); }});
  EXPECT_EQ(Ask(u"D:\\Music"), kCancelled);
}

TEST_F(FolderDialogTest, TheLineIsUsedByMouseAndMarks) {
  StartWithFolders();
  User({[] { SetLine(u"D:\\Picturesxx"); },
        [] {
          DWORD first = 9, last = 9;
          SendMessageW(Part(kFolderLine), EM_SETSEL, 11, 13);
          SendMessageW(Part(kFolderLine), EM_GETSEL, reinterpret_cast<WPARAM>(&first), reinterpret_cast<LPARAM>(&last));
          EXPECT_EQ(first, 11u);
          EXPECT_EQ(last, 13u);
        },
        [] { Press(VK_DELETE); }, [] { EXPECT_EQ(TextOf(Part(kFolderLine)), u"D:\\Pictures"); },
        [] {
          const POINT line = At(kFolderLine);
          screen::Click(line.x, line.y);  // behind the text
        },
        [] { screen::Type(u"\\2023"); }, [] { Press(VK_RETURN); }});
  EXPECT_EQ(Ask(u""), S_OK);
  EXPECT_EQ(folder_picked_, u"D:\\Pictures\\2023");
}

TEST_F(FolderDialogTest, ItIsDrawnAndFollowsTheScale) {
  Start(R"({"version": "10", "dpi": 96})");
  SetProcessDPIAware();
  MakeOwner();
  SIZE before{}, after{};
  const auto size = [] {
    RECT frame{};
    GetWindowRect(Dialog(), &frame);
    return SIZE{frame.right - frame.left, frame.bottom - frame.top};
  };
  User({[&] {
          before = size();
          const winhost::Picture picture = screen::Snapshot(Dialog());
          const RECT rows = [] {
            RECT frame{};
            GetWindowRect(Part(kFolderRows), &frame);
            MapWindowPoints(nullptr, Dialog(), reinterpret_cast<POINT*>(&frame), 2);
            return frame;
          }();
          int colored = 0;  // the yellow of the folders' pictures
          for (LONG y = rows.top; y < rows.bottom; ++y) {
            const std::uint8_t* pixel = picture.At(rows.left + 16, y);
            if (pixel[2] > 200 && pixel[0] < 150) ++colored;
          }
          EXPECT_GT(colored, 20);
        },
        [] { screen::ChangeDpi(144); },
        [&] {
          after = size();
          RECT ok{};
          GetClientRect(Part(IDOK), &ok);
          EXPECT_EQ(ok.bottom, 45);
        },
        [] { Press(VK_ESCAPE); }});
  Ask(u"C:\\");
  EXPECT_EQ(after.cx, before.cx * 3 / 2);
  EXPECT_EQ(after.cy, before.cy * 3 / 2);
}

TEST_F(FolderDialogTest, ASmallScreenHasRoomForIt) {
  Start(R"({"screen": {"width": 320, "height": 260, "taskbar": 20}})");
  MakeOwner();
  User({[] {
          RECT frame{};
          GetWindowRect(Dialog(), &frame);
          EXPECT_EQ(frame.right, 320);
          EXPECT_EQ(frame.bottom, 240);
        },
        [] { Press(VK_ESCAPE); }});
  EXPECT_EQ(Ask(), kCancelled);
}

TEST_F(FolderDialogTest, AWindowThatCannotBeMadeIsAnError) {
  Start(R"({"faults": [{"operation": "CreateWindowExW", "subject": "#32770", "error": 8},
                       {"operation": "CreateWindowExW", "subject": "Edit", "error": 14}]})");
  MakeOwner();
  EXPECT_EQ(Ask(), HRESULT_FROM_WIN32(8));
  EXPECT_EQ(Ask(), HRESULT_FROM_WIN32(14));
  EXPECT_EQ(Dialog(), nullptr);
  EXPECT_TRUE(IsWindowEnabled(owner_));
}

}  // namespace
