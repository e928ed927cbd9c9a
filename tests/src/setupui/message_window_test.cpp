#include "setupui/message_window.h"

#include "lumo/render/image_attribute.h"
#include "tests/src/setupui/skin_window_fixture.h"
#include "winhost/window/screen.h"

namespace {

class MessageWindowTest : public setupui_testing::SkinWindowTest {
 protected:
  static HWND Message() { return FindWindowW(TEXT("VantaPictorMessageBox_Class"), nullptr); }

  HWND OpenOwner() {
    WNDCLASSEXW window_class = {};
    window_class.cbSize = sizeof window_class;
    window_class.lpfnWndProc = DefWindowProcW;
    window_class.lpszClassName = TEXT("owner");
    RegisterClassExW(&window_class);
    const HWND owner =
        CreateWindowExW(0, TEXT("owner"), TEXT(""), WS_POPUP, 300, 200, 600, 400, nullptr, nullptr, nullptr, nullptr);
    ShowWindow(owner, SW_SHOW);
    return owner;
  }

  int Show(HWND owner, const WCHAR* icon = TEXT("")) {
    return vanta::ShowMessage({icon, TEXT("It failed."), TEXT("Oh"), TRUE, owner});
  }
};

TEST_F(MessageWindowTest, ShowsTheRequestOverItsOwner) {
  Begin();
  const HWND owner = OpenOwner();
  Soon([&] {
    EXPECT_EQ(TextOf(Message(), TEXT("lb_text")), "It failed.");
    EXPECT_EQ(TextOf(Message(), TEXT("okbtn")), "Oh");
    EXPECT_TRUE(Find(Message(), TEXT("okbtn"))->IsFocused());
    EXPECT_EQ(Find(Message(), TEXT("ct_icon"))->BackgroundImage()->text, TEXT("x.png"));
    EXPECT_FALSE(IsWindowEnabled(owner));
    WCHAR title[20] = {};
    GetWindowTextW(Message(), title, 20);
    EXPECT_EQ(vanta::String(title), TEXT("VantaView"));
    RECT place = {};
    GetWindowRect(Message(), &place);
    EXPECT_EQ(place.left, 300 + (600 - 380) / 2);
    EXPECT_EQ(place.top, 200 + (400 - 160) / 2);
    winhost::screen::Key(VK_SPACE);
  });
  EXPECT_EQ(Show(owner, TEXT("x.png")), vanta::kMessageConfirmed);
  EXPECT_EQ(Message(), nullptr);
  EXPECT_TRUE(IsWindowEnabled(owner));
  EXPECT_EQ(GetForegroundWindow(), owner);
  DestroyWindow(owner);
}

TEST_F(MessageWindowTest, EndsWithTheCodeOfWhateverClosesAWindow) {
  Begin();
  const HWND owner = OpenOwner();
  Soon([&] {
    EXPECT_EQ(Find(Message(), TEXT("ct_icon"))->BackgroundImage()->text, TEXT(".\\warn.png"));
    Find(Message(), TEXT("__close"))->Activate();
  });
  EXPECT_EQ(Show(owner), vanta::kMessageClosed);
  Soon([&] { winhost::screen::Key(VK_ESCAPE); });
  EXPECT_EQ(Show(owner), vanta::kMessageClosed);
  // The owner itself is closed: its message goes with it.
  Soon([&] { PostMessageW(owner, WM_CLOSE, 5, 0); });
  EXPECT_EQ(Show(owner), 5);
  EXPECT_FALSE(IsWindow(owner));
  EXPECT_EQ(Message(), nullptr);
}

TEST_F(MessageWindowTest, QuitEndsBothLoops) {
  Begin();
  const HWND owner = OpenOwner();
  Soon([] { PostQuitMessage(3); });
  EXPECT_EQ(Show(owner), vanta::kMessageQuit);
  EXPECT_TRUE(IsWindowEnabled(owner));
  EXPECT_EQ(Pump(), 3);
  DestroyWindow(owner);
  EXPECT_EQ(Message(), nullptr);
}

TEST_F(MessageWindowTest, WithoutModalFlagItOnlyShows) {
  Begin();
  EXPECT_EQ(vanta::ShowMessage({TEXT(""), TEXT("t"), TEXT("b"), FALSE, nullptr}), 0);
  ASSERT_NE(Message(), nullptr);
  EXPECT_TRUE(IsWindowVisible(Message()));
  Find(Message(), TEXT("okbtn"))->Activate();
  Pump();
  EXPECT_EQ(Message(), nullptr);
}

TEST_F(MessageWindowTest, LayoutThatIsNoneShowsNothing) {
  for (const char* layout : {"<Window", "<Window size='10,10'/>"}) {
    files_["themes/default/MessageWnd/MessageWnd.xml"] = layout;
    Begin();
    EXPECT_EQ(Show(nullptr), 0) << layout;
    EXPECT_EQ(Message(), nullptr);
    vanta::ShutdownSkin();
  }
  // Without a button and a text there is still a way to close it.
  files_["themes/default/MessageWnd/MessageWnd.xml"] =
      "<Window size='10,10'><VBox><Button name='__close'/></VBox></Window>";
  Begin();
  Soon([&] { Find(Message(), TEXT("__close"))->Activate(); });
  EXPECT_EQ(Show(nullptr), vanta::kMessageClosed);
}

}  // namespace
