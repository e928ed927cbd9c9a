#include "lumo/controls/control_looks.h"
#include "tests/src/lumo/controls/tree.h"

namespace {

using namespace lumo_tests;
using lumo::Control;
using lumo::SizeAuto;
using lumo::SizeStretch;

TEST_F(ControlsTest, DefaultsAreThoseOfAPlainStretchingControl) {
  const Control control;
  EXPECT_EQ(control.ScaledWidth(), SizeStretch);
  EXPECT_EQ(control.ScaledHeight(), SizeStretch);
  EXPECT_EQ(control.Sizes().minWidth, INT_MIN);
  EXPECT_EQ(control.Sizes().maxHeight, INT_MAX);
  EXPECT_EQ(control.ToolTipWidth(), 300);
  EXPECT_EQ(control.Alpha(), 255);
  EXPECT_TRUE(control.IsVisible() && control.IsEnabled() && control.IsMouseEnabled() && control.IsKeyboardEnabled());
  EXPECT_TRUE(control.NeedsMeasure() && control.NeedsArrange());
  EXPECT_FALSE(control.HasStateVisuals());
}

TEST_F(ControlsTest, SizesTakeWordsAndNumbersButNoOtherNegatives) {
  struct Row {
    const WCHAR* value;
    LONG width;
  };
  constexpr Row kRows[] = {{TEXT("stretch"), -1}, {TEXT("auto"), -2}, {TEXT("40"), 40}, {TEXT("0"), 0},
                           {TEXT("-3"), 7},       {TEXT("-1"), -1},   {TEXT("-2"), -2}, {TEXT("12px"), 12},
                           {TEXT("Auto"), 0},     {TEXT(""), 0}};
  for (const Row& row : kRows) {
    Control control;
    control.SetFixedWidth(7);
    Set(&control, TEXT("width"), row.value);
    EXPECT_EQ(control.Sizes().width, row.width) << row.width;
  }
}

TEST_F(ControlsTest, BoundsKeepTheirSentinels) {
  Control control;
  Set(&control, TEXT("maxwidth"), TEXT("stretch"));
  Set(&control, TEXT("maxheight"), TEXT("90"));
  Set(&control, TEXT("minwidth"), TEXT("-5"));
  Set(&control, TEXT("minheight"), TEXT("10"));
  lumo::SetGlobalScalePercent(150);
  EXPECT_EQ(control.ScaledMaxWidth(), -1);
  EXPECT_EQ(control.ScaledMaxHeight(), 135);
  EXPECT_EQ(control.Sizes().minWidth, INT_MIN);
  EXPECT_EQ(control.ScaledMinHeight(), 15);
  EXPECT_EQ(Control().ScaledMaxWidth(), INT_MAX);
}

TEST_F(ControlsTest, WordsAreComparedExactly) {
  Control control;
  Set(&control, TEXT("halign"), TEXT("right"));
  Set(&control, TEXT("halign"), TEXT("Center"));
  Set(&control, TEXT("valign"), TEXT("bottom"));
  Set(&control, TEXT("valign"), TEXT("middle"));
  EXPECT_EQ(control.HorizontalAlign(), lumo::AlignRight);
  EXPECT_EQ(control.VerticalAlign(), lumo::AlignBottom);
  Set(&control, TEXT("Visible"), TEXT("0"));
  Set(&control, TEXT("no-such-name"), TEXT("0"));
  EXPECT_TRUE(control.IsVisible());
}

TEST_F(ControlsTest, BooleansAreNumbers) {
  Control control;
  Set(&control, TEXT("visible"), TEXT("true"));
  EXPECT_FALSE(control.IsVisible());
  Set(&control, TEXT("visible"), TEXT("1"));
  EXPECT_TRUE(control.IsVisible());
  Set(&control, TEXT("enabled"), nullptr);
  EXPECT_FALSE(control.IsEnabled());
  Set(&control, TEXT("nofocus"), TEXT("0"));
  EXPECT_TRUE(control.IsNoFocus());
}

TEST_F(ControlsTest, OnlyTheFirstNumberOfABorderSizeCounts) {
  Control control;
  Set(&control, TEXT("bordersize"), TEXT("1,1,0,1"));
  Set(&control, TEXT("borderround"), TEXT("2,4,6"));
  EXPECT_EQ(control.ScaledBorderSize(), 1);
  lumo::SetGlobalScalePercent(150);
  EXPECT_EQ(control.ScaledBorderSize(), 2);
  // The corners scale as a rectangle; the missing number is 0, and 0 - 4 is no length.
  const RECT round = control.ScaledBorderRound();
  EXPECT_EQ((Place{round.left, round.top, round.right, round.bottom}), (Place{3, 6, 9, 2}));
}

TEST_F(ControlsTest, EnablingAndDisablingSetTheState) {
  Control control;
  Set(&control, TEXT("state"), TEXT("2"));
  EXPECT_EQ(control.State(), lumo::StatePushed);
  Set(&control, TEXT("enabled"), TEXT("0"));
  EXPECT_EQ(control.State(), lumo::StateDisabled);
  Set(&control, TEXT("enabled"), TEXT("1"));
  EXPECT_EQ(control.State(), lumo::StateNormal);
}

TEST_F(ControlsTest, DisablingEndsACapture) {
  Control control;
  control.SetCaptured(true);
  control.SetEnabled(false);
  EXPECT_FALSE(control.IsCaptured());
}

TEST_F(ControlsTest, LineBreaksOfATooltipAreWrittenAsMarks) {
  Control control;
  Set(&control, TEXT("tooltiptext"), TEXT("one<n>two"));
  EXPECT_EQ(control.GetToolTip(), String(TEXT("one\r\ntwo")));
}

TEST_F(ControlsTest, LooksAreKeptPerStateAndKind) {
  struct Row {
    const WCHAR* prefix;
    int state;
  };
  constexpr Row kRows[] = {{TEXT("normal"), 0}, {TEXT("hot"), 1}, {TEXT("pushed"), 2}, {TEXT("disabled"), 3}};
  for (const Row& row : kRows) {
    Control control;
    const String prefix = row.prefix;
    Set(&control, (prefix + TEXT("color")).c_str(), TEXT("c"));
    Set(&control, (prefix + TEXT("bordercolor")).c_str(), TEXT("b"));
    Set(&control, (prefix + TEXT("image")).c_str(), TEXT("file='i.png'"));
    Set(&control, (TEXT("fore") + prefix + TEXT("image")).c_str(), TEXT("f.png"));
    const lumo::ControlLooks& looks = *control.Looks();
    ASSERT_TRUE(looks.stateColors.Has(row.state) && looks.stateBorderColors.Has(row.state));
    EXPECT_EQ(looks.stateColors.Find(row.state)->color, String(TEXT("c")));
    EXPECT_EQ(looks.stateBorderColors.Find(row.state)->color, String(TEXT("b")));
    EXPECT_EQ(looks.stateImages[Control::BackImages].Find(row.state)->file, String(TEXT("i.png")));
    EXPECT_EQ(looks.stateImages[Control::ForeImages].Find(row.state)->file, String(TEXT("f.png")));
    EXPECT_TRUE(control.HasStateVisuals());
  }
}

TEST_F(ControlsTest, TextColoursAndSelectedColoursAreStateVisuals) {
  lumo::Button link;
  EXPECT_FALSE(link.HasStateVisuals());
  Set(&link, TEXT("hottextcolor"), TEXT("c"));
  EXPECT_TRUE(link.HasStateVisuals());
  lumo::CheckBox box;
  EXPECT_FALSE(box.HasStateVisuals());
  Set(&box, TEXT("selectedhotcolor"), TEXT("c"));
  EXPECT_TRUE(box.HasStateVisuals());
}

TEST_F(ControlsTest, TheSizingImageIsTheBackgroundElseTheNormalState) {
  Control control;
  EXPECT_EQ(control.GetSizingImage(), nullptr);
  Set(&control, TEXT("hotimage"), TEXT("hot.png"));
  EXPECT_EQ(control.GetSizingImage(), nullptr);
  Set(&control, TEXT("normalimage"), TEXT("normal.png"));
  EXPECT_EQ(control.GetSizingImage()->file, String(TEXT("normal.png")));
  Set(&control, TEXT("bkimage"), TEXT("back.png"));
  EXPECT_EQ(control.GetSizingImage()->file, String(TEXT("back.png")));
  lumo::CheckBox box;
  Set(&box, TEXT("selectednormalimage"), TEXT("tick.png"));
  EXPECT_EQ(box.GetSizingImage()->file, String(TEXT("tick.png")));
}

TEST_F(ControlsTest, AGivenSourceDecidesAnAutomaticSizeWithoutTheFile) {
  Control control;
  Set(&control, TEXT("width"), TEXT("auto"));
  Set(&control, TEXT("bkimage"), TEXT("file='none.png' source='10,0,50,30'"));
  EXPECT_EQ(Measured(&control), (Size{40, 30}));
  EXPECT_EQ(control.Sizes().width, 40);
}

TEST_F(ControlsTest, EveryControlTakesEveryKindOfGarbage) {
  constexpr const WCHAR* kNames[] = {TEXT("width"),       TEXT("height"),       TEXT("maxwidth"),    TEXT("minheight"),
                                     TEXT("margin"),      TEXT("padding"),      TEXT("borderround"), TEXT("bordersize"),
                                     TEXT("textpadding"), TEXT("childmargin"),  TEXT("itemsize"),    TEXT("columns"),
                                     TEXT("min"),         TEXT("max"),          TEXT("value"),       TEXT("selectedid"),
                                     TEXT("circlewidth"), TEXT("renderoffset"), TEXT("alpha"),       TEXT("state"),
                                     TEXT("bkcolor"),     TEXT("text"),         TEXT("theme")};
  constexpr const WCHAR* kValues[] = {nullptr,
                                      TEXT(""),
                                      TEXT("2147483647"),
                                      TEXT("-2147483648"),
                                      TEXT("2147483647,-2147483648,2147483647,2147483647"),
                                      TEXT(",,,"),
                                      TEXT("'"),
                                      TEXT("color1='")};
  lumo::SetGlobalScalePercent(200);
  lumo::ControlBase* (*const makers[])() = {
      &lumo::MakeControl<lumo::VBox>,   &lumo::MakeControl<lumo::HBox>,     &lumo::MakeControl<lumo::TileBox>,
      &lumo::MakeControl<lumo::TabBox>, &lumo::MakeControl<lumo::Progress>, &lumo::MakeControl<lumo::CircleProgress>};
  for (const auto make : makers) {
    for (const WCHAR* const name : kNames) {
      for (const WCHAR* const value : kValues) {
        const std::unique_ptr<lumo::ControlBase> outer(new lumo::VBox);
        lumo::ControlBase* const control = make();
        outer->AsBox()->Add(control);
        if (lumo::BoxBase* const box = control->AsBox()) {
          box->Add(Make({{name, value}}));
          box->Add(Make({{name, value}}));
        }
        Set(control, name, value);
        Set(outer.get(), name, value);
        outer->SetPos({-2147483647, -5, 2147483647, 2147483647});
        Measured(outer.get());
      }
    }
  }
}

}  // namespace
