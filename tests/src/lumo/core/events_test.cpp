#include "lumo/core/event_bindings.h"

#include "lumo/core/weak_callback.h"
#include "tests/src/lumo/core/window_fixture.h"

namespace lumo {
namespace {

TEST(EventNamesTest, TheTableAndNothingElse) {
  EXPECT_EQ(EventTypeFromName(TEXT("all")), 1);
  EXPECT_EQ(EventTypeFromName(TEXT("buttondown")), 13);
  EXPECT_EQ(EventTypeFromName(TEXT("valuechange")), 45);
  for (const WCHAR* name : {TEXT("click"), TEXT("ButtonDown"), TEXT(""), TEXT("rbuttonup"), TEXT("return ")}) {
    EXPECT_EQ(EventTypeFromName(name), 0);
  }
}

struct Target : WeakBase {
  int Answer(int add) { return value + add; }
  int value = 5;
};

TEST(WeakCallbackTest, AnswersNothingOnceTheTargetIsGone) {
  auto target = std::make_unique<Target>();
  const auto callback = WeakCallback(target.get(), &Target::Answer);
  const auto copy = callback;
  EXPECT_EQ(copy(2), 7);
  target.reset();
  EXPECT_EQ(copy(2), 0);
  EXPECT_EQ(callback(2), 0);
}

class EventsTest : public WindowTest {
 protected:
  void OpenBox(const std::string& inside) {
    ASSERT_TRUE(Open("<Window size='200,100'><VBox name='box'>" + inside + "</VBox></Window>"));
  }
  // A binding that notes its mark and answers.
  EventBinding Note(const char* mark, int answer) {
    return [this, mark, answer](_Msg2&) {
      seen_ += mark;
      return answer;
    };
  }
  void Send(const WCHAR* name, int type) { Win().SendNotify(Named(name), type, 0, 0); }

  std::string seen_;
};

TEST_F(EventsTest, ListsOfTheTypeThenOfAllEachWithItsOwnResult) {
  OpenBox("<Button name='b'/>");
  ControlBase& button = *Named(TEXT("b"));
  button.AttachEvent(EventButtonDown, Note("1", 1));
  button.AttachEvent(EventButtonDown, Note("2", 0));
  button.AttachEvent(EventButtonDown, Note("never", 1));
  Send(TEXT("b"), EventButtonDown);
  EXPECT_EQ(seen_, "12");
  EXPECT_EQ(button.State(), StateNormal) << "0 keeps the button up";
  button.AttachEvent(EventAll, Note("3", 1));
  Send(TEXT("b"), EventButtonDown);
  EXPECT_EQ(seen_, "12123");
  EXPECT_EQ(button.State(), StatePushed) << "the list for all overrules";
}

TEST_F(EventsTest, AStopFlagEndsTheDispatchBeforeBindings) {
  OpenBox("<Button name='b'><Event type='buttondown' receiver='b' attribute='width=\"7\"'/></Button>");
  Named(TEXT("b"))->AttachEvent(EventButtonDown, Note("1", 1));
  recorder_.hooks["b 13"] = [](_Msg& record) { record.stop = true; };
  Send(TEXT("b"), EventButtonDown);
  EXPECT_EQ(seen_, "");
  EXPECT_EQ(Named(TEXT("b"))->Sizes().width, SizeStretch);
  EXPECT_EQ(Named(TEXT("b"))->State(), StateNormal);
}

TEST_F(EventsTest, LayoutBindingsSetAttributesOfTheirReceivers) {
  OpenBox(
      "<Button name='b'><Event type=' mouseenter  setfocus ' receiver='x y  nobody' "
      "attribute='width=\"7\" height=\"8\"'/></Button><Label name='x'/><Label name='y'/>");
  Send(TEXT("b"), EventMouseEnter);
  for (const WCHAR* name : {TEXT("x"), TEXT("y")}) {
    EXPECT_EQ(Named(name)->Sizes().width, 7);
    EXPECT_EQ(Named(name)->Sizes().height, 8);
    Named(name)->SetFixedWidth(1);
  }
  Send(TEXT("b"), EventSetFocus);
  EXPECT_EQ(Named(TEXT("y"))->Sizes().width, 7) << "each type with each receiver";
}

TEST_F(EventsTest, RecordsBubbleToContainersWithTheirOwnTables) {
  OpenBox(
      "<BubbledEvent type='char' receiver='box' attribute='dataid=\"bubbled\"'/>"
      "<Event type='char' receiver='box' attribute='dataid=\"own\"'/><HBox><Label name='l'/></HBox>");
  ControlBase& box = *Named(TEXT("box"));
  Send(TEXT("l"), EventChar);
  EXPECT_EQ(box.DataId(), u"bubbled") << "Event elements are for records that the container sends";
  box.SetDataId(TEXT(""));
  box.AsBox()->AttachBubbledEvent(EventChar, Note("b", 0));
  Send(TEXT("l"), EventChar);
  EXPECT_EQ(box.DataId(), u"") << "a 0 ends before the layout's bindings";
  EXPECT_EQ(seen_, "b");
}

TEST_F(EventsTest, AnUnknownNameNeverFires) {
  OpenBox("<Button name='b'><Event type='click' receiver='b' attribute='width=\"7\"'/></Button>");
  Send(TEXT("b"), EventClick);
  EXPECT_EQ(Named(TEXT("b"))->Sizes().width, SizeStretch);
}

TEST_F(EventsTest, PlainControlsTakeNoBubbledEvents) {
  OpenBox("<Label name='l'><BubbledEvent type='char' receiver='l' attribute='width=\"7\"'/></Label>");
  Send(TEXT("l"), EventChar);
  EXPECT_EQ(Named(TEXT("l"))->Sizes().width, SizeStretch);
}

TEST_F(EventsTest, BindingsAttachedMeanwhileWaitForTheNextRecord) {
  OpenBox("<Button name='b'/>");
  ControlBase& button = *Named(TEXT("b"));
  button.AttachEvent(EventChar, [&](_Msg2&) {
    for (int i = 0; i < 20; ++i) button.AttachEvent(EventChar, Note("x", 1));
    return 1;
  });
  Send(TEXT("b"), EventChar);
  EXPECT_EQ(seen_, "");
  Send(TEXT("b"), EventChar);
  EXPECT_EQ(seen_, std::string(20, 'x'));
}

TEST_F(EventsTest, AControlDestroyedByItsOwnCallbackIsNotTouchedAgain) {
  OpenBox("<Button name='b'/>");
  Named(TEXT("b"))->AttachEvent(EventChar, [&](_Msg2&) {
    Named(TEXT("box"))->AsBox()->SetDelayedDestroy(false);
    Named(TEXT("box"))->AsBox()->RemoveAll();
    return 1;
  });
  Named(TEXT("b"))->AttachEvent(EventChar, Note("never", 1));
  Send(TEXT("b"), EventChar);
  EXPECT_EQ(seen_, "");
  EXPECT_FALSE(Named(TEXT("b")));
}

// A handler with its tables in use.
class Bound : public lumowin {
 public:
  std::string seen;
};

TEST_F(EventsTest, HandlersLookByIdentityThenByName) {
  OpenBox("<Button name='b'/><Button name='c'/>");
  Bound handler;
  const auto note = [&](const char* mark) { return [&handler, mark](_Msg&) { handler.seen += mark; }; };
  handler.Bind(TEXT("b"), EventClick, note("old"));
  handler.Bind(TEXT("b"), EventClick, note("name "));
  handler.Bind(TEXT("c"), EventClick, note("c "));
  handler.Bind(Named(TEXT("c")), EventClick, note("identity "));
  handler.Bind(Named(TEXT("b")), EventChar, note("char "));
  handler.Bind(static_cast<ControlBase*>(nullptr), EventClick, note("never"));
  SendMessageW(window_, kMessageSetHandler, 0, reinterpret_cast<LPARAM>(&handler));
  Send(TEXT("b"), EventClick);
  Send(TEXT("c"), EventClick);
  Send(TEXT("b"), EventChar);
  Send(TEXT("c"), EventChar);
  EXPECT_EQ(handler.seen, "name identity char ");
}

TEST_F(EventsTest, AHandlerMayRebindAndEndItselfInACallback) {
  OpenBox("<Button name='b'/>");
  auto handler = std::make_unique<Bound>();
  Bound* const bound = handler.get();
  bound->Bind(TEXT("b"), EventClick, [&](_Msg&) {
    bound->Bind(TEXT("b"), EventClick, [](_Msg&) {});
    handler.reset();
    seen_ += "ended";
  });
  SendMessageW(window_, kMessageSetHandler, 0, reinterpret_cast<LPARAM>(bound));
  Send(TEXT("b"), EventClick);
  Send(TEXT("b"), EventClick);
  EXPECT_EQ(seen_, "ended");
  EXPECT_FALSE(Win().Handler());
}

}  // namespace
}  // namespace lumo
