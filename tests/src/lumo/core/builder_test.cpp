#include "lumo/core/builder.h"

#include <memory>

#include "lumo/controls/box_base.h"
#include "lumo/controls/control_interfaces.h"
#include "lumo/core/global_resources.h"
#include "lumo/core/markup_document.h"
#include "lumo/core/result.h"
#include "tests/src/lumo/core/window_fixture.h"

namespace lumo {
namespace {

// "VBox(HBox Label=name)" of a tree.
std::string Print(ControlBase* control) {
  if (!control) return "none";
  std::string text = vanta::ToUtf8(control->ClassName());
  if (!control->Name().empty()) text += "=" + vanta::ToUtf8(control->Name());
  BoxBase* const box = control->AsBox();
  if (!box || box->Children().empty()) return text;
  std::string children;
  for (ControlBase* child : box->Children()) children += (children.empty() ? "" : " ") + Print(child);
  return text + "(" + children + ")";
}

class BuilderTest : public testing_support::OnMachine {
 protected:
  BuilderTest() { SetResourceSource(&skin_); }
  ~BuilderTest() override { SetResourceSource(nullptr); }

  std::unique_ptr<ControlBase> BuildText(const std::string& inside) {
    return std::unique_ptr<ControlBase>(
        BuildWindow(vanta::FromUtf8("<Window>" + inside + "</Window>").c_str(), nullptr));
  }
  std::string Built(const std::string& inside) { return Print(BuildText(inside).get()); }

  TestSkin skin_;
};

TEST_F(BuilderTest, TreesAsWritten) {
  const std::pair<const char*, const char*> rows[] = {
      {"<VBox><HBox/></VBox>", "VBox(HBox)"},
      {"<VBox name='v'><Label name='a'/><TabBox><VBox/><Control/></TabBox><Label name='b'/></VBox>",
       "VBox=v(Label=a TabBox(VBox Control) Label=b)"},
      {"<VBox><Button name='1'/><Unknown><Button name='2'/></Unknown><Button name='3'/></VBox>",
       "VBox(Button=1 Button=3)"},
      {"<vbox/>", "none"},
      {"<VBox><vbox><HBox/></vbox></VBox>", "VBox"},
      {"", "none"},
      {"<Window/>", "none"},
      // Several at top level: the last one. The address sanitizer sees to the others.
      {"<VBox name='1'><Label/></VBox><HBox name='2'/><Unknown/>", "HBox=2"},
      // A child of what is no container.
      {"<VBox><Label><Button/></Label></VBox>", "VBox(Label)"},
  };
  for (const auto& [inside, tree] : rows) EXPECT_EQ(Built(inside), tree) << inside;
}

TEST_F(BuilderTest, EveryTagOfTheTableMakesAControl) {
  EXPECT_EQ(ControlTags().size(), 31u);
  for (const ControlTag& row : ControlTags()) {
    const std::unique_ptr<ControlBase> control(CreateControl(row.tag));
    ASSERT_TRUE(control);
    EXPECT_EQ(control->GetWindow(), nullptr);
  }
  EXPECT_FALSE(CreateControl(TEXT("vbox")));
  EXPECT_FALSE(CreateControl(TEXT("")));
  EXPECT_FALSE(CreateControl(TEXT("Window")));
}

TEST_F(BuilderTest, TheRootNeedNotBeAWindow) {
  EXPECT_EQ(Print(std::unique_ptr<ControlBase>(BuildWindow(TEXT("<Any name='x'><Box/></Any>"), nullptr)).get()), "Box");
}

TEST_F(BuilderTest, AttributesAndThemesApplyInTheirOrder) {
  Globals().Clear();
  MarkupDocument document;
  document.LoadText(TEXT("<Global><Theme name='t' name2='x' width='10' height='20'/></Global>"));
  Globals().AddDocument(document);
  const auto after = BuildText("<Button theme='t' width='30'/>");
  EXPECT_EQ(after->Sizes().width, 30);
  EXPECT_EQ(after->Sizes().height, 20);
  EXPECT_EQ(BuildText("<Button width='30' theme='t'/>")->Sizes().width, 10);
}

TEST_F(BuilderTest, SourcesAreTextsPackagesAndDisk) {
  MarkupDocument document;
  EXPECT_EQ(LoadMarkup(nullptr, &document), LumoMissingArgument);
  EXPECT_EQ(LoadMarkup(TEXT("<a/>"), &document), LumoOk);
  EXPECT_EQ(LoadMarkup(TEXT("<a>"), &document), LumoParseFailure);
  EXPECT_EQ(LoadMarkup(TEXT(""), &document), LumoParseFailure);
  EXPECT_EQ(LoadMarkup(TEXT("x.xml"), &document), LumoParseFailure);

  skin_.files[TEXT("x.xml")] = std::string("<a b='\xE7\xAA\x97'/>\0<garbage", 21);
  EXPECT_EQ(LoadMarkup(TEXT("x.xml"), &document), LumoOk) << "up to the first NUL";
  skin_.files[TEXT("x.xml")] = "<a>";
  EXPECT_EQ(LoadMarkup(TEXT("x.xml"), &document), LumoParseFailure);

  Put("C:\\other.xml", "<disk/>");
  EXPECT_EQ(LoadMarkup(TEXT("C:\\other.xml"), &document), LumoOk) << "not in the package";
  EXPECT_TRUE(document.NextElement(TEXT("disk")));
}

TEST_F(BuilderTest, GlobalResourcesAreLoadedOnceFromTheThemeFolder) {
  Globals().Clear();
  EXPECT_EQ(LoadGlobalResources(), LumoParseFailure);
  skin_.files[TEXT("global.xml")] = "<Global><Color name='c' value='#ff010203'/></Global>";
  EXPECT_EQ(LoadGlobalResources(), LumoOk);
  EXPECT_EQ(GetColor(TEXT("c")), 0xFF010203u);
}

TEST_F(BuilderTest, LayoutsNestedTooDeepAreRefused) {
  const auto nested = [&](int levels) {
    std::string text;
    for (int i = 0; i < levels; ++i) text += "<VBox>";
    for (int i = 0; i < levels; ++i) text += "</VBox>";
    return BuildText(text) != nullptr;
  };
  EXPECT_TRUE(nested(kDeepestLayout));
  EXPECT_FALSE(nested(kDeepestLayout + 1));
  EXPECT_FALSE(nested(100'000));
  EXPECT_TRUE(nested(kDeepestLayout)) << "a refusal leaves nothing behind";
}

TEST_F(BuilderTest, ChildBoxesLoadTheirFile) {
  skin_.files[TEXT("part.xml")] = "<Part><VBox name='in'><Label/></VBox></Part>";
  EXPECT_EQ(Built("<ChildBox file='part.xml'/>"), "ChildBox(VBox=in(Label))");
  EXPECT_EQ(Built("<ChildBox file='missing.xml'/>"), "ChildBox");
  skin_.files[TEXT("label.xml")] = "<Part><Label/></Part>";
  EXPECT_EQ(Built("<ChildBox file='label.xml'/>"), "ChildBox") << "no container";
}

TEST_F(BuilderTest, FilesThatPullInThemselvesComeToAnEnd) {
  skin_.files[TEXT("self.xml")] = "<P><VBox><ChildBox file='SELF.xml'/><ChildBox file='self.xml'/></VBox></P>";
  skin_.files[TEXT("SELF.xml")] = skin_.files[TEXT("self.xml")];
  EXPECT_EQ(Built("<ChildBox file='self.xml'/>"), "ChildBox(VBox(ChildBox ChildBox))");
  // Names that differ each time are bounded by their number.
  std::string all;
  for (int i = 0; i < 60; ++i) {
    const std::string below = "f" + std::to_string(i + 1);
    skin_.files[vanta::FromUtf8("f" + std::to_string(i))] =
        "<P><VBox><ChildBox file='" + below + "'/><ChildBox file='" + below + "'/></VBox></P>";
  }
  EXPECT_NE(BuildText("<ChildBox file='f0'/>"), nullptr);
}

}  // namespace
}  // namespace lumo
