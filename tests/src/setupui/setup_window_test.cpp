#include "setupui/setup_window.h"

#include <fstream>

#include "app/install_state.h"
#include "app/option_store.h"
#include "app/window_registry.h"
#include "install/directories.h"
#include "install/setup_messages.h"
#include "setupui/progress_text.h"
#include "tests/src/setupui/skin_window_fixture.h"

namespace {

using vanta::SetupStatus;

TEST(ProgressText, TakesOnlyTheNumberAndThePercentSign) {
  EXPECT_EQ(vanta::ProgressText(TEXT("正在为您安装  %d%%"), 7), TEXT("正在为您安装  7%"));
  EXPECT_EQ(vanta::ProgressText(TEXT("%d of 100, %d"), 100), TEXT("100 of 100, 100"));
  EXPECT_EQ(vanta::ProgressText(TEXT("%s %n %5d %"), 3), TEXT("%s %n %5d %"));
  EXPECT_EQ(vanta::ProgressText(TEXT(""), 3), TEXT(""));
}

// The test's program carries no payload, so an attempt ends with status 8 unless a test speaks in its place.
class SetupWindowTest : public setupui_testing::SkinWindowTest {
 protected:
  HWND Open(std::string_view facts = "{}") {
    Begin(facts);
    return window_ = vanta::CreateSetupWindow();
  }
  void Status(SetupStatus status) { SendMessageW(window_, vanta::WM_SETUP_STATUS, 0, static_cast<LPARAM>(status)); }
  std::string Page() {
    lumo::ITabBox* const pages = Find(window_, TEXT("tb_bottom"))->AsTabBox();
    return vanta::ToUtf8(pages->GetItemAt(pages->GetSelected())->Name());
  }
  bool Enabled(const WCHAR* name) { return Find(window_, name)->IsEnabled(); }
  void Click(const WCHAR* name) { Find(window_, name)->Activate(); }
  static HWND Message() { return FindWindowW(TEXT("VantaPictorMessageBox_Class"), nullptr); }

  HWND window_ = nullptr;
};

TEST_F(SetupWindowTest, StartsOnTheFirstPageWithTheFolder) {
  ASSERT_NE(Open(), nullptr);
  EXPECT_EQ(FindWindowW(vanta::kSetupWindowClass, nullptr), window_);
  EXPECT_TRUE(IsWindowVisible(window_));
  EXPECT_EQ(Page(), "vb_inst");
  EXPECT_EQ(TextOf(window_, TEXT("lb_folder")), "C:\\Program Files (x86)\\VantaPictor");
  EXPECT_EQ(Find(window_, TEXT("lb_folder"))->GetToolTip(), TEXT("C:\\Program Files (x86)\\VantaPictor"));
  EXPECT_FALSE(Find(window_, TEXT("lb_tips"))->IsVisible());
  Click(TEXT("__close"));
  EXPECT_EQ(Pump(), 0);
  EXPECT_FALSE(IsWindow(window_));
}

TEST_F(SetupWindowTest, InstallAsksForTheAgreementFirst) {
  Open(R"({"clock": {"at": "2024-03-05T14:07:09", "stands": true}})");
  Click(TEXT("btn_inst"));
  EXPECT_TRUE(Find(window_, TEXT("lb_tips"))->IsVisible());
  EXPECT_EQ(TextOf(window_, TEXT("lb_tips")), "agree first");
  EXPECT_EQ(Page(), "vb_inst");
  Sleep(2999);
  Pump();
  EXPECT_TRUE(Find(window_, TEXT("lb_tips"))->IsVisible());
  Sleep(2);
  Pump();
  EXPECT_FALSE(Find(window_, TEXT("lb_tips"))->IsVisible());
  DestroyWindow(window_);
}

TEST_F(SetupWindowTest, BoxOfTheDefaultProgramDecidesOnTheOption) {
  Open();
  Find(window_, TEXT("cb_agree"))->AsCheckBox()->SetSelected(true, false);
  const auto install = [&] {
    Click(TEXT("btn_inst"));
    // No payload: a message, after which the window closes. Here somebody else's click is thrown away.
    MSG message = {};
    while (PeekMessageW(&message, window_, vanta::WM_SETUP_PROGRESS, vanta::WM_SETUP_STATUS, PM_REMOVE)) {
    }
  };
  install();
  EXPECT_TRUE(vanta::IsAssoc());
  Find(window_, TEXT("cb_default"))->AsCheckBox()->SetSelected(false, false);
  install();
  EXPECT_FALSE(vanta::IsAssoc());
  DestroyWindow(window_);
}

TEST_F(SetupWindowTest, PagesFollowTheStatuses) {
  Open();
  Status(SetupStatus::Started);
  EXPECT_EQ(Page(), "vb_insting");
  EXPECT_FALSE(Enabled(TEXT("__close")));
  EXPECT_EQ(TextOf(window_, TEXT("lb_insting")), "at 0%");
  SendMessageW(window_, vanta::WM_SETUP_PROGRESS, 0, 100);
  EXPECT_EQ(TextOf(window_, TEXT("lb_insting")), "at 100%");
  EXPECT_EQ(Find(window_, TEXT("pg_insting"))->AsProgress()->GetValue(), 100);
  // Back to the first page, and then a second attempt from the beginning.
  for (const auto& [status, text] :
       {std::pair(SetupStatus::ErrorCreateDir, "dir"), {SetupStatus::ErrorWriteFile, "write"}}) {
    Soon([this, text = std::string(text)] {
      EXPECT_EQ(TextOf(Message(), TEXT("lb_text")), text);
      EXPECT_EQ(TextOf(Message(), TEXT("okbtn")), "known");
      EXPECT_EQ(Page(), "vb_insting");
      Status(SetupStatus::Failed);  // arrives while the message is open
      EXPECT_FALSE(Enabled(TEXT("__close")));
      Find(Message(), TEXT("okbtn"))->Activate();
    });
    Status(status);
    EXPECT_EQ(Page(), "vb_inst");
    EXPECT_TRUE(Enabled(TEXT("__close")));
    Status(SetupStatus::Started);
    EXPECT_EQ(Find(window_, TEXT("pg_insting"))->AsProgress()->GetValue(), 0);
    EXPECT_EQ(TextOf(window_, TEXT("lb_insting")), "at 0%");
  }
  Status(static_cast<SetupStatus>(99));
  EXPECT_EQ(Page(), "vb_insting");
  // A failure that nobody has explained can at least be left.
  Status(SetupStatus::Failed);
  EXPECT_TRUE(Enabled(TEXT("__close")));
  EXPECT_EQ(Page(), "vb_insting");
  DestroyWindow(window_);
}

TEST_F(SetupWindowTest, ClosesAfterTheEndAndAfterWhatCannotBeMended) {
  const std::pair<SetupStatus, const char*> rows[] = {{SetupStatus::Finished, ""},
                                                      {SetupStatus::ErrorUninstallEntry, ""},
                                                      {SetupStatus::ErrorAppPaths, ""},
                                                      {SetupStatus::ErrorUnzip, "unzip"},
                                                      {SetupStatus::ErrorNoEmbeddedFile, "none"},
                                                      {SetupStatus::ErrorEmbeddedFile, "broken"}};
  for (const auto& [status, text] : rows) {
    Open();
    Pump();
    if (*text) {
      Soon([text = std::string(text)] {
        EXPECT_EQ(TextOf(Message(), TEXT("lb_text")), text);
        Find(Message(), TEXT("okbtn"))->Activate();
      });
    }
    Status(status);
    EXPECT_EQ(Pump(), 0) << text;
    EXPECT_FALSE(IsWindow(window_));
    vanta::ShutdownSkin();
  }
}

TEST_F(SetupWindowTest, WindowThatGoesWhileItsMessageIsOpenIsNotTouched) {
  Open();
  Soon([&] { PostMessageW(window_, WM_CLOSE, 0, 0); });
  Status(SetupStatus::ErrorWriteFile);
  EXPECT_FALSE(IsWindow(window_));
  EXPECT_EQ(Message(), nullptr);
  EXPECT_EQ(Pump(), 0);
}

TEST_F(SetupWindowTest, QuitFromOutsideLeavesTheWindowToTheShutdown) {
  Open();
  PostQuitMessage(0);
  EXPECT_EQ(Pump(), 0);
  vanta::ShutdownSkin();
  vanta::DestroyRegisteredWindows();
  EXPECT_FALSE(IsWindow(window_));
}

TEST_F(SetupWindowTest, LayoutWithoutItsKeyControlsClosesAtOnce) {
  for (const char* name : {"tb_bottom", "lb_insting", "pg_insting"}) {
    std::string layout = setupui_testing::kSetupLayout;
    layout.replace(layout.find(name), 2, "xx");
    files_["themes/default/SetupWnd/SetupWnd.xml"] = layout;
    ASSERT_NE(Open(), nullptr);
    EXPECT_FALSE(IsWindowVisible(window_));
    Status(SetupStatus::Started);
    SendMessageW(window_, vanta::WM_SETUP_PROGRESS, 0, 5);
    EXPECT_EQ(Pump(), 0) << name;
    EXPECT_FALSE(IsWindow(window_));
    vanta::ShutdownSkin();
  }
  files_["themes/default/SetupWnd/SetupWnd.xml"] = "<Window";
  EXPECT_EQ(Open(), nullptr);
}

TEST_F(SetupWindowTest, LayoutWithoutTheOthersDoesWhatItCan) {
  files_["themes/default/SetupWnd/SetupWnd.xml"] =
      R"(<Window size="60,40"><VBox><TabBox name="tb_bottom"><VBox name="other"/></TabBox><Button name="btn_inst"/>
         <Progress name="pg_insting"/><Label name="lb_insting"/></VBox></Window>)";
  Open();
  Click(TEXT("btn_inst"));  // nothing to agree with: no installation
  Status(SetupStatus::Started);
  SendMessageW(window_, vanta::WM_SETUP_PROGRESS, 0, 5);
  EXPECT_EQ(TextOf(window_, TEXT("lb_insting")), "at 5%");
  Soon([&] { Find(Message(), TEXT("okbtn"))->Activate(); });
  Status(SetupStatus::ErrorWriteFile);
  Status(SetupStatus::Failed);
  Status(SetupStatus::Finished);
  EXPECT_EQ(Pump(), 0);
}

TEST_F(SetupWindowTest, ButtonsOfTheRefusalAndTheAgreements) {
  Open();
  Click(TEXT("btn_use_agreement"));
  Click(TEXT("btn_privacy"));
  std::ifstream file(folder_ / "launches.jsonl");
  const std::string launches(std::istreambuf_iterator<char>(file), {});
  EXPECT_NE(launches.find("https://agreement.invalid/product_protocol.html"), std::string::npos) << launches;
  EXPECT_NE(launches.find("https://agreement.invalid/user_protocol.html"), std::string::npos) << launches;
  Find(window_, TEXT("tb_bottom"))->AsTabBox()->Select(1);
  Click(TEXT("btn_instexit"));
  EXPECT_EQ(Pump(), 0);
}

}  // namespace
