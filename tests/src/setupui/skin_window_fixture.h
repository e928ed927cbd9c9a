// The setup's windows over a small skin of a test's own, in a package as the executable carries it.
#pragma once

#include <functional>
#include <map>
#include <string>

#include "lumo/controls/control_base.h"
#include "lumo/controls/control_interfaces.h"
#include "lumo/core/window_messages.h"
#include "setupui/skin_package.h"
#include "tests/src/install/zip/zip_builder.h"
#include "tests/support/machine_fixture.h"

namespace setupui_testing {

inline constexpr char kMessageLayout[] = R"(<Window size="380,160" caption="0,0,0,32" textid="T"><VBox>
  <HBox height="32"><Label/><Button name="__close" width="32"/></HBox>
  <Control name="ct_icon" width="24" height="24" bkimage=".\warn.png"/>
  <Label name="lb_text" width="240" height="auto"/><Button name="okbtn" width="112" height="40"/></VBox></Window>)";

inline constexpr char kSetupLayout[] = R"(<Window size="600,400" textid="T"><VBox>
  <HBox height="32"><Label/><Button name="__min" width="32"/><Button name="__close" width="32"/></HBox>
  <Label name="lb_tips" visible="0" height="20"/>
  <TabBox name="tb_bottom" height="120" selectedid="1">
    <VBox name="vb_inst"><Label name="lb_folder"/><Button name="btn_browse"/><CheckBox name="cb_agree"/>
      <Button name="btn_use_agreement"/><Button name="btn_privacy"/><CheckBox name="cb_default" selected="1"/>
      <Button name="btn_inst"/></VBox>
    <VBox name="vb_noinst"><Button name="btn_instexit"/></VBox>
    <VBox name="vb_insting"><Progress name="pg_insting" height="4"/><Label name="lb_insting"/></VBox>
  </TabBox></VBox></Window>)";

inline constexpr char kTexts[] =
    "T = Title\nSTRID_PICTOR_INSTING = at %d%%\nSTRID_PICTOR_KNOWN = known\n"
    "STRID_PICTOR_TIPS_USER_AGREE = agree first\nSTRID_PICTOR_NO_INST = too old\n"
    "STRID_PICTOR_INST_ERROR_UNZIP = unzip\nSTRID_PICTOR_INST_ERROR_CREATE_DIR = dir\n"
    "STRID_PICTOR_INST_ERROR_WRITE_FILE = write\nSTRID_PICTOR_INST_ERROR_NO_EMBEDDED_FILE = none\n"
    "STRID_PICTOR_INST_ERROR_EMBEDDED_FILE = broken\n";

class SkinWindowTest : public testing_support::OnMachine {
 protected:
  ~SkinWindowTest() override { vanta::ShutdownSkin(); }

  // The folder of windows that layouts are in is the one that the product names.
  void Begin(std::string_view facts = "{}") {
    Start(facts);
    LoadLibraryW(TEXT("Shcore.dll"));
    zip_testing::ZipBuilder zip;
    for (const auto& [path, content] : files_) zip.AddStored("resources/" + path, content);
    archive_ = zip.Build();
    ASSERT_EQ(vanta::LoadSkinArchive(archive_, ""), vanta::SkinOk);
    ASSERT_EQ(vanta::InitSkin(TEXT("resources\\"), TEXT("themes\\default"), TEXT("lang\\zh-CN"), true), vanta::SkinOk);
  }

  static lumo::ControlBase* Find(HWND window, const WCHAR* name) {
    const LRESULT found = SendMessageW(window, lumo::kMessageFindControl, 0, reinterpret_cast<LPARAM>(name));
    return found ? reinterpret_cast<lumo::IControl*>(found)->AsControl() : nullptr;
  }
  static std::string TextOf(HWND window, const WCHAR* name) {
    lumo::ControlBase* const control = Find(window, name);
    return control && control->AsLabel() ? control->AsLabel()->GetUtf8Text() : "none";
  }

  // Runs once the thread next looks for messages, in whatever loop that is.
  void Soon(std::function<void()> action) {
    soon_ = std::move(action);
    const UINT_PTR timer = SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR id, DWORD) {
      KillTimer(nullptr, id);
      const auto run = std::move(soon_);
      run();
    });
    ASSERT_NE(timer, 0u);
  }

  // Until nothing is left or WM_QUIT, whose code it gives.
  static int Pump() {
    MSG message = {};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
      if (message.message == WM_QUIT) return static_cast<int>(message.wParam);
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
    return -1;
  }

  std::map<std::string, std::string> files_ = {
      {"themes/default/SetupWnd/SetupWnd.xml", kSetupLayout},
      {"themes/default/MessageWnd/MessageWnd.xml", kMessageLayout},
      {"lang/zh-CN/gdstrings.ini", kTexts},
  };

 private:
  inline static std::function<void()> soon_;
  std::string archive_;
};

}  // namespace setupui_testing
