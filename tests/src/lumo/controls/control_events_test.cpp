#include "lumo/core/handler.h"
#include "tests/src/lumo/controls/tree.h"
#include "tests/support/machine_fixture.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace {

using namespace lumo_tests;
using lumo::Button;
using lumo::CheckBox;
using lumo::Control;
using lumo::ControlBase;
using lumo::Option;
using lumo::TabBox;
using lumo::VBox;

// Writes down what its window's controls send, "name type", and runs what a case hooks to it.
class Handler final : public lumo::lumowin {
 public:
  void OnNotify(lumo::_Msg& record) override {
    if (record.type == lumo::EventPosition) return;
    const std::string text = vanta::ToUtf8(record.senderName) + " " + std::to_string(record.type);
    events.push_back(text);
    if (hooks.contains(text)) hooks.at(text)(record);
  }
  std::vector<std::string> Take() { return std::exchange(events, {}); }

  std::vector<std::string> events;
  std::map<std::string, std::function<void(lumo::_Msg&)>> hooks;
};

using Events = std::vector<std::string>;

// A tree in a window that has no native one.
class ControlEventsTest : public testing_support::OnMachine {
 protected:
  ControlEventsTest() {
    Start();
    window_.SetHandler(&handler_);
    window_.AttachRoot(root_);
    root_->SetPos({0, 0, 100, 100});
  }

  template <class T>
  T* Add(T* control) {
    root_->Add(control);
    root_->SetPos({0, 0, 100, 100});
    handler_.Take();
    return control;
  }
  // Delivers a record as the window does; the last pointer position is (0, 0).
  void Send(ControlBase* control, int type, WPARAM key = 0) { window_.SendNotify(control, type, key, 0); }
  void Press(ControlBase* control) { Send(control, lumo::EventButtonDown); }
  void Release(ControlBase* control, LONG x = 0, LONG y = 0, int type = lumo::EventButtonUp) {
    lumo::_Msg record;
    record.type = type;
    record.control = control;
    record.senderName = TEXT("");
    record.point = {x, y};
    control->HandleEvent(record);
  }

  Handler handler_;
  lumo::Window window_;
  VBox* root_ = new VBox;
};

TEST_F(ControlEventsTest, APressedButtonClicksWhenReleasedInside) {
  Button* const button = Add(Make<Button>({{TEXT("name"), TEXT("b")}}));
  Press(button);
  EXPECT_EQ(button->State(), lumo::StatePushed);
  EXPECT_TRUE(button->IsCaptured());
  EXPECT_EQ(root_->State(), lumo::StateNormal);
  Release(button, 1, 1);
  EXPECT_EQ(button->State(), lumo::StateHot);
  EXPECT_EQ(handler_.Take(), (Events{"b 13", " 14", "b 37"}));
}

TEST_F(ControlEventsTest, AReleaseOutsideOrWithoutAPressDoesNothing) {
  Button* const button = Add(Make<Button>({{TEXT("name"), TEXT("b")}}));
  Release(button, 1, 1);
  Press(button);
  Release(button, -1, 1);
  EXPECT_EQ(button->State(), lumo::StateNormal);
  EXPECT_EQ(handler_.Take(), (Events{" 14", "b 13", " 14"}));
}

TEST_F(ControlEventsTest, ATouchedButtonIsNotHotAfterwards) {
  Button* const button = Add(Make<Button>({{TEXT("name"), TEXT("b")}}));
  Send(button, lumo::EventTouchDown);
  EXPECT_EQ(button->State(), lumo::StatePushed);
  Release(button, 1, 1, lumo::EventTouchUp);
  EXPECT_EQ(button->State(), lumo::StateNormal);
  EXPECT_EQ(handler_.Take(), (Events{"b 22", " 24", "b 37"}));
  Set(button, TEXT("receivepointer"), TEXT("0"));
  Send(button, lumo::EventTouchDown);
  EXPECT_EQ(button->State(), lumo::StateNormal);
}

TEST_F(ControlEventsTest, SpaceAndReturnClickOnce) {
  Button* const button = Add(Make<Button>({{TEXT("name"), TEXT("b")}}));
  for (const WPARAM key : {VK_SPACE, VK_RETURN, VK_ESCAPE}) Send(button, lumo::EventKeyDown, key);
  EXPECT_EQ(handler_.Take(), (Events{"b 3", "b 37", "b 3", "b 37", "b 3"}));
  Set(button, TEXT("keyboard"), TEXT("0"));
  EXPECT_FALSE(button->IsFocusable());
  Send(button, lumo::EventKeyDown, VK_SPACE);
  EXPECT_EQ(handler_.Take(), (Events{"b 3"}));
}

TEST_F(ControlEventsTest, DisabledControlsStayDisabled) {
  Button* const button = Add(Make<Button>({{TEXT("name"), TEXT("b")}, {TEXT("enabled"), TEXT("0")}}));
  for (const int type : {lumo::EventMouseEnter, lumo::EventButtonDown, lumo::EventButtonUp, lumo::EventMouseLeave}) {
    Send(button, type);
  }
  Send(button, lumo::InternalSetFocus);
  EXPECT_EQ(button->State(), lumo::StateDisabled);
  EXPECT_FALSE(button->IsFocused());
  EXPECT_FALSE(button->IsFocusable());
  handler_.Take();
  Send(button, lumo::InternalContextMenu);
  EXPECT_EQ(handler_.Take(), (Events{"b 18"}));
}

TEST_F(ControlEventsTest, FocusLooksHot) {
  Button* const button = Add(Make<Button>({{TEXT("name"), TEXT("b")}}));
  button->SetFocus();
  EXPECT_TRUE(button->IsFocused());
  EXPECT_EQ(button->State(), lumo::StateHot);
  EXPECT_EQ(root_->State(), lumo::StateNormal);
  button->SetVisible(false);
  EXPECT_FALSE(button->IsFocused());
  EXPECT_EQ(window_.Focused(), nullptr);
  Button* const shy = Add(Make<Button>({{TEXT("nofocus"), TEXT("0")}}));
  shy->SetFocus();
  EXPECT_EQ(window_.Focused(), nullptr);
}

TEST_F(ControlEventsTest, AHiddenPageTellsItsFocusedControl) {
  Button* const button = Make<Button>({{TEXT("name"), TEXT("b")}});
  VBox* const page = Add(Make<VBox>({}, button));
  button->SetFocus();
  handler_.Take();
  page->SetVisible(false);
  EXPECT_EQ(handler_.Take(), (Events{"b 32"}));
  EXPECT_EQ(window_.Focused(), nullptr);
}

TEST_F(ControlEventsTest, PointerEventsPassControlsThatDoNotListen) {
  Button* const deaf = Make<Button>({{TEXT("mouse"), TEXT("0")}});
  lumo::ButtonBox* const box = Add(Make<lumo::ButtonBox>({{TEXT("name"), TEXT("box")}}, deaf));
  Press(deaf);
  EXPECT_EQ(deaf->State(), lumo::StateNormal);
  EXPECT_EQ(box->State(), lumo::StatePushed);
  Release(deaf, 1, 1);
  EXPECT_EQ(handler_.Take(), (Events{" 13", " 14", "box 37"}));
}

TEST_F(ControlEventsTest, CodeBindingsThatAnswerZeroKeepTheDefaultAway) {
  Button* const button = Add(Make<Button>({}));
  button->AttachEvent(lumo::EventButtonDown, [](lumo::_Msg2&) { return 0; });
  Press(button);
  EXPECT_EQ(button->State(), lumo::StateNormal);
}

TEST_F(ControlEventsTest, LayoutBindingsApplyListsAndNeverEndTheDispatch) {
  Control* const light = Make({{TEXT("name"), TEXT("light")}});
  Button* const button = Make<Button>({});
  VBox* const box = Add(Make<VBox>({}, light, button));
  button->AttachXmlEvent(TEXT("Event"), TEXT("buttondown"), TEXT("light"), TEXT("width=\"5\" height=\"6\""));
  button->AttachXmlEvent(TEXT("BubbledEvent"), TEXT("buttondown"), TEXT("light"), TEXT("width=\"99\""));
  button->AttachXmlEvent(TEXT("Event"), TEXT("buttondown"), TEXT("nobody"), TEXT("width=\"99\""));
  box->AttachXmlEvent(TEXT("BubbledEvent"), TEXT("keydown"), TEXT("light"), TEXT("width=\"7\""));
  Press(button);
  EXPECT_EQ(light->Sizes().width, 5);
  EXPECT_EQ(light->Sizes().height, 6);
  EXPECT_EQ(button->State(), lumo::StatePushed);
  Send(button, lumo::EventKeyDown, VK_ESCAPE);
  EXPECT_EQ(light->Sizes().width, 7);
}

TEST_F(ControlEventsTest, TheStopFlagEndsEverything) {
  Button* const button = Add(Make<Button>({{TEXT("name"), TEXT("b")}}));
  handler_.hooks["b 13"] = [](lumo::_Msg& record) { record.stop = true; };
  Press(button);
  EXPECT_EQ(button->State(), lumo::StateNormal);
}

TEST_F(ControlEventsTest, ACheckBoxTurnsOverAndTellsOnlyChanges) {
  CheckBox* const box = Add(Make<CheckBox>({{TEXT("name"), TEXT("c")}}));
  box->Activate();
  box->Activate();
  box->SetSelected(false, true);
  box->SetSelected(true, false);
  EXPECT_TRUE(box->IsSelected());
  Set(box, TEXT("selected"), TEXT("0"));
  EXPECT_EQ(handler_.Take(), (Events{"c 38", "c 39", "c 39"}));
  box->SetEnabled(false);
  box->Activate();
  EXPECT_FALSE(box->IsSelected());
}

TEST_F(ControlEventsTest, OneOptionOfAGroupIsSelected) {
  Option* options[3];
  const WCHAR* const names[] = {TEXT("0"), TEXT("1"), TEXT("2")};
  for (int i = 0; i < 3; ++i) {
    options[i] = Add(Make<Option>({{TEXT("name"), names[i]}, {TEXT("group"), TEXT("g")}}));
  }
  Option* const alone = Add(Make<Option>({{TEXT("name"), TEXT("alone")}, {TEXT("selected"), TEXT("1")}}));
  options[1]->Activate();
  EXPECT_EQ(handler_.Take(), (Events{"1 37", "0 39", "2 39", "1 38"}));
  options[1]->Activate();
  EXPECT_EQ(handler_.Take(), (Events{"1 37", "0 39", "2 39", "1 38"}));
  options[2]->SetSelected(true, false);
  EXPECT_EQ(handler_.Take(), (Events{"0 39", "1 39"}));
  EXPECT_FALSE(options[1]->IsSelected());
  EXPECT_TRUE(options[2]->IsSelected() && alone->IsSelected());
  options[2]->SetGroup(TEXT(""));
  EXPECT_EQ(handler_.Take(), (Events{"2 38"}));
  options[0]->Activate();
  EXPECT_TRUE(options[2]->IsSelected() && options[0]->IsSelected());
}

TEST_F(ControlEventsTest, ASelectedPageIsTold) {
  TabBox* const tabs = Add(Make<TabBox>({{TEXT("name"), TEXT("t")}}, Make<VBox>({}), Make<VBox>({})));
  WPARAM now = 9;
  LPARAM before = 9;
  handler_.hooks["t 38"] = [&](lumo::_Msg& record) { now = record.wParam, before = record.lParam; };
  EXPECT_TRUE(tabs->Select(1));
  EXPECT_TRUE(tabs->Select(1));
  EXPECT_EQ(handler_.Take(), (Events{"t 38"}));
  EXPECT_EQ(now, 1u);
  EXPECT_EQ(before, 0);
}

// Each case destroys, at one event, the control that sent it or a container around it.
TEST_F(ControlEventsTest, ControlsMayGoInsideTheirOwnEvents) {
  struct Row {
    const char* event;
    bool outer;  // destroy the container instead
    std::function<void(ControlBase*)> cause;
  };
  const Row kRows[] = {
      {"x 37", false, [](ControlBase* x) { x->Activate(); }},
      {"x 37", true, [](ControlBase* x) { x->Activate(); }},
      {"x 38", false, [](ControlBase* x) { x->SetAttribute(TEXT("selected"), TEXT("1")); }},
      {"x 39", true, [](ControlBase* x) { x->SetAttribute(TEXT("group"), TEXT("g")); }},
      {"x 31", false, [](ControlBase* x) { x->SetFocus(); }},
      {"x 18", true, [this](ControlBase* x) { Send(x, lumo::InternalContextMenu); }},
      {"x 13", true, [this](ControlBase* x) { Press(x); }},
  };
  for (const Row& row : kRows) {
    Option* const option = Make<Option>({{TEXT("name"), TEXT("x")}});
    VBox* const outer = Add(Make<VBox>({}, Make({}), option, Make({})));
    const lumo::WeakRef<ControlBase> alive(option);
    handler_.hooks[row.event] = [&](lumo::_Msg&) { delete (row.outer ? static_cast<ControlBase*>(outer) : option); };
    row.cause(option);
    EXPECT_FALSE(alive) << row.event;
    handler_.hooks.clear();
    root_->RemoveAll();
  }
}

TEST_F(ControlEventsTest, ATreeMayChangeWhileItIsArranged) {
  for (const bool all : {false, true}) {
    VBox* const inner = Add(Make<VBox>({}, Make({}), Make({}), Make({})));
    class OnPosition final : public lumo::lumowin {
     public:
      void OnNotify(lumo::_Msg& record) override {
        if (record.type == lumo::EventPosition && act) std::exchange(act, nullptr)();
      }
      std::function<void()> act;
    } handler;
    window_.SetHandler(&handler);
    inner->SetDelayedDestroy(false);
    handler.act = [&] {
      handler.act = [&] {
        if (all) {
          delete inner;
        } else {
          inner->RemoveAt(0);
        }
      };
    };
    root_->SetPos({0, 0, 100, all ? 70 : 80});
    if (!all) {
      EXPECT_EQ(inner->GetCount(), 2);
    }
    window_.SetHandler(&handler_);
    root_->RemoveAll();
  }
}

}  // namespace
