#include "tests/src/lumo/core/window_fixture.h"

#include <commctrl.h>

#include "winhost/gdi/object_counts.h"

namespace lumo {
namespace {

constexpr char kTwoButtons[] = R"(<Window size="200,100" caption="0,0,0,40">
  <VBox>
    <HBox height="40">
      <Label name="title" width="100"/>
      <Button name="inside" width="50"/>
      <Button name="__close" width="50"/>
    </HBox>
    <HBox>
      <Button name="left" width="100"/>
      <Button name="right" width="100"/>
    </HBox>
  </VBox>
</Window>)";

TEST_F(WindowTest, TakesTheSizeOfItsLayoutAtAnyScale) {
  Open(kTwoButtons);
  EXPECT_EQ(ClientSize().cx, 200);
  EXPECT_EQ(ClientSize().cy, 100);
  DestroyWindow(window_);
  Begin(R"({"dpi": 144})");
  Open(kTwoButtons);
  EXPECT_EQ(Win().ScalePercent(), 150);
  EXPECT_EQ(ClientSize().cx, 300);
  EXPECT_EQ(ClientSize().cy, 150);
  EXPECT_EQ(Named(TEXT("right"))->Position().left, 150);
}

TEST_F(WindowTest, RootThatSizesItselfGivesTheWindowItsSize) {
  Open(
      R"(<Window size="9,9"><VBox width="auto" height="auto" minwidth="120"><Control width="80" height="30"/></VBox></Window>)");
  EXPECT_EQ(ClientSize().cx, 120);
  EXPECT_EQ(ClientSize().cy, 30);
}

TEST_F(WindowTest, LayoutThatCannotBeBuiltLeavesNoWindow) {
  EXPECT_EQ(Open("<Window><VBox></Window>"), nullptr);
  EXPECT_EQ(Open("<Window size='10,10'></Window>"), nullptr);
  EXPECT_EQ(recorder_.created, 0);
}

TEST_F(WindowTest, AnswersItsOwnMessages) {
  Open(R"(<Window size="200,100"><HBox><Label name="a"/><Label name="b"/><Button name="a"/></HBox></Window>)");
  const auto find = [&](const WCHAR* name) {
    return reinterpret_cast<IControl*>(SendMessageW(window_, kMessageFindControl, 0, reinterpret_cast<LPARAM>(name)));
  };
  ASSERT_NE(find(TEXT("a")), nullptr);
  EXPECT_EQ(find(TEXT("a"))->AsControl()->Class(), ControlClass::Button);  // the one entered last
  EXPECT_EQ(find(TEXT("nobody")), nullptr);
  POINT point = {100, 50};
  auto* const at =
      reinterpret_cast<IControl*>(SendMessageW(window_, kMessageControlAtPoint, 0, reinterpret_cast<LPARAM>(&point)));
  EXPECT_EQ(at->AsControl(), Named(TEXT("b")));
  EXPECT_EQ(SendMessageW(window_, kMessageUpdateMaxRestore, 0, 0), 0);
}

TEST_F(WindowTest, ClickTravelsFromThePointerToTheHandler) {
  Open(kTwoButtons);
  Click(50, 70);
  const std::vector<std::string> expected = {"left 10", "left 9", "left 13", "left 9", "left 14", "left 37"};
  std::vector<std::string> seen = recorder_.events;
  std::erase_if(seen, [](const std::string& event) { return event.ends_with(" 36"); });  // cursor
  EXPECT_EQ(seen, expected);
  EXPECT_EQ(Win().Captured(), nullptr);
}

TEST_F(WindowTest, ReleaseOutsideIsNoClick) {
  Open(kTwoButtons);
  Press(50, 70);
  EXPECT_EQ(Named(TEXT("left"))->State(), StatePushed);
  Release(150, 70);
  EXPECT_EQ(recorder_.Count("left 37"), 0);
  EXPECT_EQ(recorder_.Count("right 37"), 0);
  EXPECT_EQ(Named(TEXT("left"))->State(), StateNormal);
}

TEST_F(WindowTest, PointerThatLeavesTheWindowLeavesTheControl) {
  Open(kTwoButtons);
  Move(50, 70);
  EXPECT_EQ(Named(TEXT("left"))->State(), StateHot);
  Move(500, 500);
  EXPECT_EQ(Named(TEXT("left"))->State(), StateNormal);
  EXPECT_EQ(Win().Hot(), nullptr);
}

TEST_F(WindowTest, CaptionIsDraggedByLabelsAndNotByButtons) {
  Open(kTwoButtons);
  const auto hit = [&](int x, int y) { return SendMessageW(window_, WM_NCHITTEST, 0, MAKELPARAM(100 + x, 100 + y)); };
  EXPECT_EQ(hit(50, 20), HTCAPTION);
  EXPECT_EQ(hit(120, 20), HTCLIENT);
  EXPECT_EQ(hit(50, 60), HTCLIENT);
}

TEST_F(WindowTest, TabGoesRoundTheButtonsAndSpacePressesOne) {
  Open(kTwoButtons);
  const auto focused = [&] { return Win().Focused() ? vanta::ToUtf8(Win().Focused()->Name()) : std::string(); };
  Key(VK_TAB);
  EXPECT_EQ(focused(), "inside");
  EXPECT_EQ(Named(TEXT("inside"))->State(), StateHot);
  winhost::screen::KeyDown(VK_SHIFT);
  Key(VK_TAB);
  winhost::screen::KeyUp(VK_SHIFT);
  Pump();
  EXPECT_EQ(focused(), "right");
  EXPECT_EQ(Named(TEXT("inside"))->State(), StateNormal);
  Key(VK_SPACE);
  EXPECT_EQ(recorder_.Count("right 37"), 1);
  Named(TEXT("right"))->SetEnabled(false);
  Key(VK_SPACE);
  EXPECT_EQ(recorder_.Count("right 37"), 1);
}

TEST_F(WindowTest, CloseButtonHidesAndClosesWithEight) {
  Open(kTwoButtons);
  Click(175, 20);
  EXPECT_EQ(recorder_.closed_with, 8);
  EXPECT_EQ(recorder_.ended, 1);
  EXPECT_FALSE(IsWindow(window_));
}

TEST_F(WindowTest, ControlMayEndInsideItsOwnClick) {
  Open(kTwoButtons);
  recorder_.hooks["left 37"] = [&](_Msg& record) { delete record.control; };
  Click(50, 70);
  EXPECT_EQ(Named(TEXT("left")), nullptr);
  EXPECT_EQ(Named(TEXT("right"))->Parent()->AsBox()->GetCount(), 1);
}

TEST_F(WindowTest, WindowMayEndInsideAnyEventOfAClick) {
  for (const char* event : {"left 10", "left 9", "left 13", "left 14", "left 37"}) {
    SCOPED_TRACE(event);
    recorder_.hooks.clear();
    recorder_.ended = 0;
    Move(900, 900);
    Open(kTwoButtons);
    recorder_.hooks[event] = [&](_Msg& record) { DestroyWindow(record.window); };
    Click(50, 70);
    EXPECT_EQ(recorder_.ended, 1);
    EXPECT_FALSE(IsWindow(window_));
  }
}

TEST_F(WindowTest, PressEndsWithTheFocusOfTheWindow) {
  Open(kTwoButtons);
  Press(50, 70);
  SendMessageW(window_, WM_KILLFOCUS, 0, 0);
  EXPECT_EQ(recorder_.Count("left 14"), 1);
  EXPECT_EQ(Win().Captured(), nullptr);
  EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(WindowTest, FingerPressesAButton) {
  Open(kTwoButtons);
  winhost::screen::Touch(1, 150, 170);
  Pump();
  EXPECT_EQ(Named(TEXT("left"))->State(), StatePushed);
  winhost::screen::LiftTouch(1, 150, 170);
  Pump();
  EXPECT_EQ(recorder_.Count("left 37"), 1);
  EXPECT_EQ(Named(TEXT("left"))->State(), StateNormal);
}

TEST_F(WindowTest, RoundCornersFollowTheScale) {
  Begin(R"({"dpi": 144})");
  Open(R"(<Window size="100,60" roundcorner="6,6"><VBox bkcolor="x"/></Window>)");
  const winhost::Picture picture = winhost::screen::Snapshot(window_);
  EXPECT_EQ(picture.At(0, 0)[3], 0);
  EXPECT_EQ(picture.At(5, 0)[3], 255);
  EXPECT_EQ(picture.At(149, 45)[3], 255);
  EXPECT_EQ(picture.At(75, 89)[3], 255);
  EXPECT_EQ(picture.At(149, 89)[3], 0);
}

TEST_F(WindowTest, NewRootReplacesTheOldOneOutsideTheCall) {
  Open(kTwoButtons);
  Named(TEXT("left"))->SetFocus();
  const WeakRef<ControlBase> old(Win().Root());
  Win().AttachRoot(CreateControl(TEXT("VBox")));
  EXPECT_TRUE(old);
  EXPECT_EQ(Win().Focused(), nullptr);
  EXPECT_EQ(Named(TEXT("left")), nullptr);
  Pump();
  EXPECT_FALSE(old);
}

TEST_F(WindowTest, TipOfAControlAppearsWhenThePointerRests) {
  Open(R"(<Window size="200,100"><VBox><Button name="b" tooltiptext="one&lt;n&gt;two"/></VBox></Window>)");
  Move(50, 50);
  SendMessageW(window_, WM_MOUSEHOVER, 0, MAKELPARAM(50, 50));
  const HWND tip = FindWindowW(TOOLTIPS_CLASSW, nullptr);
  ASSERT_NE(tip, nullptr);
  EXPECT_TRUE(IsWindowVisible(tip));
  Move(500, 500);
  EXPECT_FALSE(IsWindowVisible(tip));
}

TEST_F(WindowTest, ThousandWindowsLeaveNothingBehind) {
  const auto open_and_close = [&] {
    Open(kTwoButtons);
    DestroyWindow(window_);
    Pump();
  };
  open_and_close();
  const int objects = winhost::CountAllObjects();
  for (int i = 0; i < 1000; ++i) open_and_close();
  EXPECT_EQ(winhost::CountAllObjects(), objects);
  EXPECT_EQ(recorder_.ended, 1001);
}

}  // namespace
}  // namespace lumo
