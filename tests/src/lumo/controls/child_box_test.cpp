#include "lumo/controls/child_box.h"

#include "lumo/core/builder.h"
#include "tests/src/lumo/controls/tree.h"
#include "tests/src/lumo/render/render_fixture.h"

namespace {

using namespace lumo_tests;
using lumo::ChildBox;

class ChildBoxTest : public lumo::RenderTest {
 protected:
  ChildBoxTest() { skin_.Put("skin/theme/inner.xml", "<Window><VBox name='in'><Label name='leaf'/></VBox></Window>"); }
};

TEST_F(ChildBoxTest, ItsContentIsAnotherLayout) {
  ChildBox box;
  Set(&box, TEXT("file"), TEXT("inner.xml"));
  ASSERT_EQ(box.GetCount(), 1);
  EXPECT_EQ(box.GetItemAt(0)->Name(), String(TEXT("in")));
  EXPECT_EQ(box.GetItemAt(0)->AsBox()->GetCount(), 1);
  box.SetPos({0, 0, 40, 30});
  EXPECT_EQ(PlaceOf(box.GetItemAt(0)->AsBox()->GetItemAt(0)), (Place{0, 0, 40, 30}));
  box.SetFile(TEXT("inner.xml"));
  EXPECT_EQ(box.GetCount(), 1);
  box.SetFile(TEXT("none.xml"));
  EXPECT_EQ(box.GetCount(), 0);
}

TEST_F(ChildBoxTest, ALayoutThatHoldsItselfEnds) {
  skin_.Put("skin/theme/self.xml",
            "<Window><VBox name='outer'><ChildBox name='again' file='self.xml'/></VBox></Window>");
  const std::unique_ptr<lumo::ControlBase> root(lumo::BuildWindow(TEXT("self.xml"), nullptr));
  ASSERT_NE(root, nullptr);
  const lumo::BoxBase* const again = root->AsBox()->GetItemAt(0)->AsBox();
  EXPECT_EQ(again->GetCount(), 0);
}

// Every tag's control takes attributes, a place and a paint, and says what it is.
TEST_F(ChildBoxTest, EveryTagMakesAControlThatWorks) {
  render_->Resize(100, 60, true);
  EXPECT_EQ(lumo::ControlTags().size(), 31u);
  for (const lumo::ControlTag& row : lumo::ControlTags()) {
    const std::unique_ptr<lumo::ControlBase> control(row.make());
    Set(control.get(), TEXT("text"), TEXT("text"));
    Set(control.get(), TEXT("normaltextcolor"), TEXT("none"));
    if (control->AsBox()) {
      EXPECT_TRUE(control->AsBox()->Add(Make({{TEXT("width"), TEXT("10")}})));
    }
    control->SetPos({0, 0, 100, 60});
    control->Paint(render_.get(), {0, 0, 100, 60});
    EXPECT_EQ(control->Interface()->AsControl(), control.get());
    EXPECT_TRUE(control->IsA(control->Class()));
    EXPECT_NE(StringView(control->ClassName()), StringView());
  }
}

}  // namespace
