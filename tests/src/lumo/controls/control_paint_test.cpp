#include "lumo/controls/control_looks.h"
#include "tests/src/lumo/controls/tree.h"
#include "tests/src/lumo/render/render_fixture.h"

namespace {

using namespace lumo_tests;
using lumo::Control;
using lumo::ControlBase;

constexpr DWORD kRed = 0xFFFF0000, kGreen = 0xFF00FF00, kBlue = 0xFF0000FF, kNothing = 0;

class ControlPaintTest : public lumo::RenderTest {
 protected:
  ControlPaintTest() {
    lumo::SetGlobalScalePercent(100);
    for (const auto& [name, value] : Attributes{
             {TEXT("red"), TEXT("#ffff0000")}, {TEXT("green"), TEXT("#ff00ff00")}, {TEXT("blue"), TEXT("#ff0000ff")}}) {
      lumo::Globals().AddColor(name, value);
    }
    render_->Resize(100, 60, true);
  }

  // Paints the control, at (10, 10, 50, 40) unless it has a place, onto a cleared surface.
  void Paint(ControlBase* control, RECT dirty = {0, 0, 100, 60}) {
    if (PlaceOf(control) == Place{0, 0, 0, 0}) control->SetPos({10, 10, 50, 40});
    render_->Clear();
    control->Paint(render_.get(), dirty);
  }
  Place Painted() {
    const RECT r = Touched(*render_);
    return {r.left, r.top, r.right, r.bottom};
  }

  template <class T = Control>
  std::unique_ptr<T> Own(Attributes attributes) {
    return std::unique_ptr<T>(Make<T>(attributes));
  }
};

TEST_F(ControlPaintTest, TheBackgroundFillsThePositionAndNoMore) {
  const auto control = Own({{TEXT("bkcolor"), TEXT("red")}});
  Paint(control.get());
  EXPECT_EQ(Painted(), (Place{10, 10, 50, 40}));
  EXPECT_TRUE(Near(At(30, 20), kRed));
  Paint(control.get(), {20, 0, 30, 60});
  EXPECT_TRUE(Near(At(25, 20), kRed));
  Set(control.get(), TEXT("bkcolor"), TEXT("#ff00ff00"));  // names no colour
  Paint(control.get());
  EXPECT_TRUE(Near(At(25, 20), kNothing, 0));
}

TEST_F(ControlPaintTest, AColoursPlaceLiesInsideTheControlAndScales) {
  lumo::SetGlobalScalePercent(200);
  const auto control = Own({{TEXT("bkcolor"), TEXT("color='green' dest='2,3,7,9'")}});
  Paint(control.get());
  EXPECT_EQ(Painted(), (Place{14, 16, 24, 28}));
}

TEST_F(ControlPaintTest, LayersLieOnEachOtherInTheirOrder) {
  const auto control = Own({{TEXT("bkcolor"), TEXT("red")},
                            {TEXT("normalcolor"), TEXT("color='green' dest='0,0,10,30'")},
                            {TEXT("bordercolor"), TEXT("blue")},
                            {TEXT("bordersize"), TEXT("4")}});
  Paint(control.get());
  EXPECT_TRUE(Near(At(40, 25), kRed));
  EXPECT_TRUE(Near(At(17, 25), kGreen));
  EXPECT_TRUE(Near(At(12, 25), kBlue));
  Set(control.get(), TEXT("normalbordercolor"), TEXT("red"));
  Paint(control.get());
  EXPECT_TRUE(Near(At(12, 25), kRed));
}

TEST_F(ControlPaintTest, TheStateDecidesTheColour) {
  const auto control = Own({{TEXT("normalcolor"), TEXT("red")}, {TEXT("hotcolor"), TEXT("green")}});
  const DWORD shown[] = {kRed, kGreen, kGreen, kRed};
  for (int state = 0; state < 4; ++state) {
    control->SetState(state);
    Paint(control.get());
    EXPECT_TRUE(Near(At(30, 20), shown[state])) << state;
  }
}

TEST_F(ControlPaintTest, ASelectedCheckBoxShowsItsOwnColours) {
  const auto box =
      Own<lumo::CheckBox>({{TEXT("normalcolor"), TEXT("red")}, {TEXT("selectednormalcolor"), TEXT("blue")}});
  Paint(box.get());
  EXPECT_TRUE(Near(At(30, 20), kRed));
  box->SetSelected(true, false);
  box->SetState(lumo::StatePushed);
  Paint(box.get());
  EXPECT_TRUE(Near(At(30, 20), kBlue));
}

TEST_F(ControlPaintTest, FourRadiiOfHalfASquareDrawACircle) {
  const auto control = Own({{TEXT("bordercolor"), TEXT("red")},
                            {TEXT("bordersize"), TEXT("2")},
                            {TEXT("borderround"), TEXT("15,15,15,15")}});
  control->SetPos({10, 10, 40, 40});
  Paint(control.get());
  EXPECT_EQ(Painted(), (Place{11, 11, 40, 40}));  // half a pixel inside, as outlines are
  EXPECT_EQ(Alpha(13, 13), 0);
  EXPECT_GT(Alpha(25, 11), 200);
}

TEST_F(ControlPaintTest, ChildrenStayInsideAndPaintInOrder) {
  const std::unique_ptr<lumo::Box> box(Make<lumo::Box>(
      {}, Make({{TEXT("bkcolor"), TEXT("red")}}), Make({{TEXT("bkcolor"), TEXT("green")}, {TEXT("width"), TEXT("20")}}),
      Make({{TEXT("bkcolor"), TEXT("blue")}, {TEXT("width"), TEXT("90")}, {TEXT("height"), TEXT("5")}}),
      Make({{TEXT("bkcolor"), TEXT("blue")}, {TEXT("visible"), TEXT("0")}})));
  box->SetPos({10, 10, 50, 40});
  Paint(box.get());
  EXPECT_EQ(Painted(), (Place{10, 10, 50, 40}));
  EXPECT_TRUE(Near(At(20, 30), kGreen));
  EXPECT_TRUE(Near(At(40, 30), kRed));
  EXPECT_TRUE(Near(At(45, 12), kBlue));
}

TEST_F(ControlPaintTest, OpacityHoldsForTheWholeSubtree) {
  const std::unique_ptr<lumo::Box> box(
      Make<lumo::Box>({{TEXT("bkcolor"), TEXT("red")}, {TEXT("alpha"), TEXT("128")}},
                      Make({{TEXT("bkcolor"), TEXT("green")}, {TEXT("width"), TEXT("20")}})));
  box->SetPos({10, 10, 50, 40});
  Paint(box.get());
  EXPECT_TRUE(Near(At(20, 20), 0x80008000));
  EXPECT_TRUE(Near(At(40, 20), 0x80800000));
  EXPECT_EQ(box->Looks()->copy, nullptr);
  Paint(box.get(), {0, 0, 15, 60});
  EXPECT_EQ(Painted(), (Place{10, 10, 15, 40}));
  Set(box.get(), TEXT("alpha"), TEXT("0"));
  Paint(box.get());
  EXPECT_EQ(Alpha(20, 20), 0);
}

// Counts how often it is asked for its own painting.
class Counting final : public lumo::BoxT<Counting, lumo::IBox, lumo::BoxBase> {
 public:
  static constexpr lumo::ControlClass kClass = lumo::ControlClass::Box;
  void PaintBkColor(lumo::IRender* render) override {
    ++painted;
    lumo::BoxBase::PaintBkColor(render);
  }
  int painted = 0;
};

TEST_F(ControlPaintTest, AKeptCopyIsPaintedOnlyWhenItChanged) {
  const auto control = Own<Counting>({{TEXT("cache"), TEXT("1")}, {TEXT("bkcolor"), TEXT("red")}});
  Paint(control.get(), {0, 0, 20, 60});
  Paint(control.get());
  EXPECT_EQ(control->painted, 1);
  EXPECT_EQ(Painted(), (Place{10, 10, 50, 40}));
  Set(control.get(), TEXT("bkcolor"), TEXT("green"));
  Paint(control.get());
  EXPECT_EQ(control->painted, 2);
  EXPECT_TRUE(Near(At(45, 35), kGreen));
  control->SetPos({0, 0, 40, 30});  // a move needs no painting
  Paint(control.get());
  EXPECT_EQ(control->painted, 2);
  EXPECT_EQ(Painted(), (Place{0, 0, 40, 30}));
}

TEST_F(ControlPaintTest, TheRenderOffsetMovesTheContentInsideTheClip) {
  for (const WCHAR* const cache : {TEXT("0"), TEXT("1")}) {
    const auto control =
        Own({{TEXT("bkcolor"), TEXT("red")}, {TEXT("renderoffset"), TEXT("5,-3")}, {TEXT("cache"), cache}});
    Paint(control.get());
    EXPECT_EQ(Painted(), (Place{10, 13, 45, 40}));
  }
}

TEST_F(ControlPaintTest, AProgressFillsFromItsSide) {
  const auto bar = Own<lumo::Progress>({{TEXT("bkcolor"), TEXT("blue")},
                                        {TEXT("progresscolor"), TEXT("red")},
                                        {TEXT("value"), TEXT("25")},
                                        {TEXT("normalcolor"), TEXT("green")}});
  Set(bar.get(), TEXT("normalcolor"), TEXT(""));
  Paint(bar.get());
  EXPECT_TRUE(Near(At(19, 20), kRed));
  EXPECT_TRUE(Near(At(20, 20), kBlue));
  Set(bar.get(), TEXT("hor"), TEXT("0"));
  Paint(bar.get());
  EXPECT_TRUE(Near(At(30, 31), kBlue));
  EXPECT_TRUE(Near(At(30, 32), kRed));
  Set(bar.get(), TEXT("progresscolor"), TEXT("color1='red' color2='green' mode='0'"));
  Set(bar.get(), TEXT("hor"), TEXT("1"));
  Set(bar.get(), TEXT("value"), TEXT("100"));
  Paint(bar.get());
  EXPECT_TRUE(Near(At(11, 20), kRed, 16));
  EXPECT_TRUE(Near(At(48, 20), kGreen, 16));
}

TEST_F(ControlPaintTest, ACircleRunsClockwiseFromTheTop) {
  const auto circle = Own<lumo::CircleProgress>({{TEXT("circlewidth"), TEXT("6")},
                                                 {TEXT("bgcolor"), TEXT(" blue")},
                                                 {TEXT("fgcolor"), TEXT("red")},
                                                 {TEXT("value"), TEXT("50")}});
  circle->SetPos({10, 5, 60, 55});
  Paint(circle.get());
  EXPECT_TRUE(Near(At(55, 30), kRed, 4));
  EXPECT_TRUE(Near(At(14, 30), kBlue, 4));
  EXPECT_EQ(Alpha(35, 30), 0);
  Set(circle.get(), TEXT("clockwise"), TEXT("0"));
  Paint(circle.get());
  EXPECT_TRUE(Near(At(14, 30), kRed, 4));
  Set(circle.get(), TEXT("circular"), TEXT("0"));
  Paint(circle.get());
  EXPECT_EQ(Alpha(14, 30), 0);
}

class LabelMeasureTest : public ControlPaintTest {
 protected:
  LabelMeasureTest() { lumo::Globals().AddFont(TEXT("f"), TEXT("system"), 14, false, false, false, false, true); }
  std::unique_ptr<lumo::Label> AutoLabel(const WCHAR* text, Attributes more = {}) {
    auto label =
        Own<lumo::Label>({{TEXT("width"), TEXT("auto")}, {TEXT("height"), TEXT("auto")}, {TEXT("text"), text}});
    for (const auto& [name, value] : more) Set(label.get(), name, value);
    return label;
  }
};

TEST_F(LabelMeasureTest, PaddingIsAddedToTheText) {
  const Size bare = Measured(AutoLabel(TEXT("measure")).get());
  EXPECT_GT(bare.width, 20);
  EXPECT_GT(bare.height, 10);
  const Size padded = Measured(AutoLabel(TEXT("measure"), {{TEXT("textpadding"), TEXT("8,1,8,2")}}).get());
  EXPECT_EQ(padded, (Size{bare.width + 16, bare.height + 3}));
  EXPECT_EQ(Measured(AutoLabel(TEXT("")).get()), (Size{0, 0}));
}

TEST_F(LabelMeasureTest, OnlyALabelOfSeveralLinesWraps) {
  const WCHAR* const text = TEXT("several words that are by far too long to fit into a place this narrow");
  const Size line = Measured(AutoLabel(text).get(), 100, 500);
  EXPECT_GT(line.width, 200);
  const auto wrapped = AutoLabel(
      text,
      {{TEXT("singleline"), TEXT("0")}, {TEXT("maxwidth"), TEXT("stretch")}, {TEXT("textpadding"), TEXT("10,0,10,0")}});
  const Size size = Measured(wrapped.get(), 100, 500);
  EXPECT_EQ(size.width, 100);
  EXPECT_GT(size.height, line.height * 3);
  EXPECT_EQ(Measured(wrapped.get(), 5000, 500).height, Measured(wrapped.get(), 4000, 500).height);
}

TEST_F(LabelMeasureTest, AFixedWidthLimitsTheMeasuredText) {
  const auto label = AutoLabel(TEXT("several words in two lines"), {{TEXT("singleline"), TEXT("0")}});
  const Size one = Measured(label.get());
  Set(label.get(), TEXT("width"), TEXT("120"));
  const Size two = Measured(label.get());
  EXPECT_EQ(two.width, 120);
  EXPECT_GT(two.height, one.height + one.height / 2);
}

TEST_F(LabelMeasureTest, AnAutoTooltipShowsOnlyWhatDoesNotFit) {
  const auto label = Own<lumo::Label>({{TEXT("tooltiptext"), TEXT("the whole text")},
                                       {TEXT("text"), TEXT("the whole text")},
                                       {TEXT("autotooltip"), TEXT("1")}});
  label->SetPos({0, 0, 30, 30});
  EXPECT_EQ(label->GetToolTip(), String(TEXT("the whole text")));
  label->SetPos({0, 0, 300, 30});
  EXPECT_EQ(label->GetToolTip(), String());
  label->SetText(TEXT("the whole text and much, much more than could ever be shown in this place"));
  EXPECT_EQ(label->GetToolTip(), String(TEXT("the whole text")));
  label->SetText(TEXT(""));
  EXPECT_EQ(label->GetToolTip(), String());
}

TEST_F(LabelMeasureTest, TextTakesTheColourOfTheState) {
  const auto label = Own<lumo::Label>({{TEXT("text"), TEXT("MMMMMMMM")},
                                       {TEXT("normaltextcolor"), TEXT("red")},
                                       {TEXT("pushedtextcolor"), TEXT("blue")},
                                       {TEXT("align"), TEXT("hcenter,vcenter")}});
  const auto hue = [&] {
    DWORD all = 0;
    for (int y = 0; y < 60; ++y) {
      for (int x = 0; x < 100; ++x) all |= At(x, y);
    }
    return all & 0xFFFFFF;
  };
  Paint(label.get());
  EXPECT_TRUE(hue() & 0xFF0000);
  EXPECT_FALSE(hue() & 0x00FFFF);
  label->SetState(lumo::StatePushed);
  Paint(label.get());
  EXPECT_TRUE(hue() & 0x0000FF);
  EXPECT_FALSE(hue() & 0xFFFF00);
}

class SizingImageTest : public ControlPaintTest {};

TEST_F(SizingImageTest, VectorPicturesAreNotScaledTwice) {
  skin_.Put("skin/theme/v.svg",
            R"(<svg xmlns="http://www.w3.org/2000/svg" width="34" height="12"><rect width="34" height="12"/></svg>)");
  for (const int scale : {100, 150}) {
    lumo::Window window;
    window.SetScalePercent(scale);
    Control control;
    control.SetOwningWindow(&window);
    Set(&control, TEXT("width"), TEXT("auto"));
    Set(&control, TEXT("height"), TEXT("auto"));
    Set(&control, TEXT("bkimage"), TEXT("v.svg"));
    EXPECT_EQ(Measured(&control), (Size{34 * scale / 100, 12 * scale / 100})) << scale;
    control.SetOwningWindow(nullptr);
  }
}

TEST_F(SizingImageTest, BitmapsAreScaledAndMissingFilesTakeNoRoom) {
  skin_.Put("skin/theme/b.png", lumo::MakePng(34, 12, [](int, int) { return kGreen; }));
  lumo::SetGlobalScalePercent(150);
  const auto control =
      Own({{TEXT("width"), TEXT("auto")}, {TEXT("height"), TEXT("auto")}, {TEXT("bkimage"), TEXT("b.png")}});
  EXPECT_EQ(Measured(control.get()), (Size{51, 18}));
  Set(control.get(), TEXT("bkimage"), TEXT("none.png"));
  EXPECT_EQ(Measured(control.get()), (Size{0, 0}));
}

}  // namespace
