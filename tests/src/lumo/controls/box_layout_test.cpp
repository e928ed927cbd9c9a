#include "tests/src/lumo/controls/tree.h"

namespace {

using namespace lumo_tests;
using lumo::Box;
using lumo::Control;
using lumo::HBox;
using lumo::VBox;

TEST_F(ControlsTest, AFillerGetsWhatFixedRowsLeave) {
  VBox* const box = Lay(Make<VBox>({}, Make({{TEXT("height"), TEXT("32")}}), Make({}),
                                   Make({{TEXT("height"), TEXT("24")}, {TEXT("margin"), TEXT("0,2,0,10")}})),
                        {0, 0, 600, 280});
  EXPECT_EQ(PlaceOf(box->GetItemAt(1)), (Place{0, 32, 600, 244}));
  EXPECT_EQ(PlaceOf(box->GetItemAt(2)), (Place{0, 246, 600, 270}));
}

// A row a case: heights (or widths) of the children, the room, what they get.
struct Sharing {
  const char* what;
  std::initializer_list<const WCHAR*> sizes;
  LONG room;
  std::initializer_list<LONG> lengths;
};
const Sharing kSharing[] = {
    {"odd pixels go to the first", {TEXT("stretch"), TEXT("stretch")}, 101, {51, 50}},
    {"two odd pixels", {TEXT("stretch"), TEXT("stretch"), TEXT("stretch")}, 101, {34, 34, 33}},
    {"fixed ones first", {TEXT("60"), TEXT("stretch"), TEXT("40")}, 150, {60, 50, 40}},
    {"nothing left", {TEXT("60"), TEXT("stretch"), TEXT("90")}, 100, {60, 0, 90}},
    {"no stretch", {TEXT("10"), TEXT("20")}, 100, {10, 20}},
    {"empty room", {TEXT("stretch"), TEXT("stretch")}, 0, {0, 0}},
};

TEST_F(ControlsTest, StretchingChildrenShareOnBothAxes) {
  for (const Sharing& row : kSharing) {
    for (const bool down : {true, false}) {
      std::unique_ptr<lumo::BoxBase> box;
      if (down) {
        box.reset(new VBox);
      } else {
        box.reset(new HBox);
      }
      for (const WCHAR* const size : row.sizes) box->Add(Make({{down ? TEXT("height") : TEXT("width"), size}}));
      box->SetPos(down ? RECT{5, 7, 25, 7 + row.room} : RECT{7, 5, 7 + row.room, 25});
      LONG cursor = 7;
      int index = 0;
      for (const LONG length : row.lengths) {
        const Place expected = down ? Place{5, cursor, 25, cursor + length} : Place{cursor, 5, cursor + length, 25};
        EXPECT_EQ(PlaceOf(box->GetItemAt(index++)), expected) << row.what;
        cursor += length;
      }
    }
  }
}

TEST_F(ControlsTest, AClampedStretchChildKeepsItsBoundAndPushesTheRest) {
  VBox* const box =
      Lay(Make<VBox>({}, Make({{TEXT("minheight"), TEXT("70")}}), Make({{TEXT("maxheight"), TEXT("20")}}), Make({})),
          {0, 0, 10, 90});
  EXPECT_EQ(PlaceOf(box->GetItemAt(0)), (Place{0, 0, 10, 70}));
  EXPECT_EQ(PlaceOf(box->GetItemAt(1)), (Place{0, 70, 10, 90}));
  EXPECT_EQ(PlaceOf(box->GetItemAt(2)), (Place{0, 90, 10, 120}));
}

TEST_F(ControlsTest, NegativeMaximaAreNoBounds) {
  VBox* const box =
      Lay(Make<VBox>({}, Make({{TEXT("maxheight"), TEXT("stretch")}, {TEXT("maxwidth"), TEXT("-9")}})), {0, 0, 30, 90});
  EXPECT_EQ(PlaceOf(box->GetItemAt(0)), (Place{0, 0, 30, 90}));
}

TEST_F(ControlsTest, GapsStandBetweenTheChildrenOnly) {
  VBox* const box = Lay(Make<VBox>({{TEXT("childmargin"), TEXT("10")}, {TEXT("padding"), TEXT("1,2,3,4")}},
                                   Make({{TEXT("height"), TEXT("20")}}), Make({}), Make({{TEXT("visible"), TEXT("0")}}),
                                   Make({{TEXT("height"), TEXT("20")}})),
                        {0, 0, 100, 106});
  EXPECT_EQ(PlaceOf(box->GetItemAt(0)), (Place{1, 2, 97, 22}));
  EXPECT_EQ(PlaceOf(box->GetItemAt(1)), (Place{1, 32, 97, 72}));
  EXPECT_EQ(PlaceOf(box->GetItemAt(2)), (Place{0, 0, 0, 0}));
  EXPECT_EQ(PlaceOf(box->GetItemAt(3)), (Place{1, 82, 97, 102}));
}

TEST_F(ControlsTest, ACentredChildMovesByHalfTheDifferenceOfItsMargins) {
  struct Row {
    const WCHAR *align, *margin;
    LONG left;
  };
  constexpr Row kRows[] = {{TEXT("left"), TEXT("8,0,3,0"), 8},
                           {TEXT("right"), TEXT("8,0,3,0"), 77},
                           {TEXT("center"), TEXT("8,0,0,0"), 44},
                           {TEXT("center"), TEXT("0,0,8,0"), 36},
                           {TEXT("center"), TEXT("0,0,3,0"), 38}};
  for (const Row& row : kRows) {
    VBox* const box = Lay(Make<VBox>({}, Make({{TEXT("width"), TEXT("20")},
                                               {TEXT("height"), TEXT("5")},
                                               {TEXT("halign"), row.align},
                                               {TEXT("margin"), row.margin}})),
                          {0, 0, 100, 50});
    EXPECT_EQ(PlaceOf(box->GetItemAt(0)).left, row.left);
    EXPECT_EQ(PlaceOf(box->GetItemAt(0)).right, row.left + 20);
  }
}

TEST_F(ControlsTest, InAnHBoxValignCountsAndHalignDoesNot) {
  HBox* const box = Lay(
      Make<HBox>({},
                 Make({{TEXT("width"), TEXT("20")},
                       {TEXT("height"), TEXT("10")},
                       {TEXT("valign"), TEXT("bottom")},
                       {TEXT("halign"), TEXT("right")},
                       {TEXT("margin"), TEXT("0,0,0,4")}}),
                 Make({{TEXT("width"), TEXT("20")}, {TEXT("height"), TEXT("11")}, {TEXT("valign"), TEXT("center")}})),
      {0, 0, 100, 50});
  EXPECT_EQ(PlaceOf(box->GetItemAt(0)), (Place{0, 36, 20, 46}));
  EXPECT_EQ(PlaceOf(box->GetItemAt(1)), (Place{20, 19, 40, 30}));
}

TEST_F(ControlsTest, AFloatingChildStandsAtItsMarginAndMovesNobody) {
  VBox* const box = Lay(Make<VBox>({{TEXT("padding"), TEXT("10,10,10,10")}}, Make({{TEXT("height"), TEXT("30")}}),
                                   Make({{TEXT("float"), TEXT("1")},
                                         {TEXT("margin"), TEXT("130,76,0,0")},
                                         {TEXT("width"), TEXT("340")},
                                         {TEXT("height"), TEXT("128")}}),
                                   Make({{TEXT("height"), TEXT("30")}})),
                        {0, 0, 600, 280});
  EXPECT_EQ(PlaceOf(box->GetItemAt(1)), (Place{140, 86, 480, 214}));
  EXPECT_EQ(PlaceOf(box->GetItemAt(2)), (Place{10, 40, 590, 70}));
}

TEST_F(ControlsTest, StackedChildrenAlignEachForItself) {
  Box* const box = Lay(
      Make<Box>({},
                Make({{TEXT("width"), TEXT("21")},
                      {TEXT("height"), TEXT("10")},
                      {TEXT("halign"), TEXT("center")},
                      {TEXT("valign"), TEXT("bottom")}}),
                Make({{TEXT("margin"), TEXT("5,6,7,8")}}),
                Make({{TEXT("width"), TEXT("120")}, {TEXT("height"), TEXT("10")}, {TEXT("halign"), TEXT("center")}})),
      {0, 0, 100, 50});
  EXPECT_EQ(PlaceOf(box->GetItemAt(0)), (Place{39, 40, 60, 50}));
  EXPECT_EQ(PlaceOf(box->GetItemAt(1)), (Place{5, 6, 93, 42}));
  EXPECT_EQ(PlaceOf(box->GetItemAt(2)), (Place{-10, 0, 110, 10}));
}

TEST_F(ControlsTest, AutomaticContainersTakeTheSizeOfTheirContent) {
  const auto child = [](const WCHAR* width, const WCHAR* height) {
    return Make({{TEXT("width"), width}, {TEXT("height"), height}, {TEXT("margin"), TEXT("1,2,3,4")}});
  };
  const auto fill = [&](lumo::BoxBase* box) {
    root_.reset(box);
    for (const WCHAR* const name : {TEXT("width"), TEXT("height")}) Set(box, name, TEXT("auto"));
    Set(box, TEXT("padding"), TEXT("10,20,30,40"));
    Set(box, TEXT("childmargin"), TEXT("5"));
    box->Add(child(TEXT("100"), TEXT("50")));
    box->Add(child(TEXT("60"), TEXT("70")));
    box->Add(Make({{TEXT("visible"), TEXT("0")}, {TEXT("width"), TEXT("999")}}));
    return Measured(box);
  };
  EXPECT_EQ(fill(new VBox), (Size{40 + 104, 60 + 50 + 70 + 12 + 5}));
  EXPECT_EQ(fill(new HBox), (Size{40 + 100 + 60 + 8 + 5, 60 + 76}));
  EXPECT_EQ(fill(new Box), (Size{40 + 104, 60 + 76}));
}

TEST_F(ControlsTest, AStackWithoutVisibleChildrenMeasuresLessThanNothing) {
  Box box;
  Set(&box, TEXT("width"), TEXT("auto"));
  Set(&box, TEXT("padding"), TEXT("1,2,3,4"));
  box.Add(Make({{TEXT("visible"), TEXT("0")}}));
  EXPECT_EQ(Measured(&box).width, -9995);
  VBox stack;
  Set(&stack, TEXT("width"), TEXT("auto"));
  EXPECT_EQ(Measured(&stack).width, 0);
}

TEST_F(ControlsTest, EverythingIsScaledWhereItIsUsed) {
  lumo::SetGlobalScalePercent(150);
  VBox* const box = Lay(Make<VBox>({{TEXT("padding"), TEXT("10,10,30,20")}, {TEXT("childmargin"), TEXT("3")}},
                                   Make({{TEXT("width"), TEXT("33")}, {TEXT("height"), TEXT("21")}}),
                                   Make({{TEXT("maxheight"), TEXT("10")}})),
                        {0, 0, 300, 200});
  // Padding 10,10,30,20 scales as a rectangle to 15,15,45,30; 3 to 5 (rounded), 33 to 50, 21 to 32.
  EXPECT_EQ(PlaceOf(box->GetItemAt(0)), (Place{15, 15, 65, 47}));
  EXPECT_EQ(PlaceOf(box->GetItemAt(1)), (Place{15, 52, 255, 67}));
}

TEST_F(ControlsTest, AGapKeepsTheScaleOfItsSetting) {
  VBox box;
  Set(&box, TEXT("childmargin"), TEXT("10"));
  lumo::SetGlobalScalePercent(200);
  EXPECT_EQ(box.GetLayout().GetChildMargin(), 10);
}

TEST_F(ControlsTest, TurnedRectanglesAreStraightened) {
  Control control;
  control.SetPos({10, 20, 5, 15});
  EXPECT_EQ(PlaceOf(&control), (Place{10, 20, 10, 20}));
}

TEST_F(ControlsTest, TilesFlowInRows) {
  lumo::TileBox* const box =
      Lay(Make<lumo::TileBox>({{TEXT("itemsize"), TEXT("30,20")}, {TEXT("childmargin"), TEXT("5")}}, Make({}), Make({}),
                              Make({{TEXT("visible"), TEXT("0")}}), Make({}), Make({})),
          {0, 0, 100, 100});
  EXPECT_EQ(PlaceOf(box->GetItemAt(1)), (Place{35, 0, 65, 20}));
  EXPECT_EQ(PlaceOf(box->GetItemAt(3)), (Place{70, 0, 100, 20}));
  EXPECT_EQ(PlaceOf(box->GetItemAt(4)), (Place{0, 25, 30, 45}));
  Set(box, TEXT("columns"), TEXT("2"));
  Set(box, TEXT("columns"), TEXT("0"));
  box->SetPos({0, 0, 100, 100});
  EXPECT_EQ(PlaceOf(box->GetItemAt(4)), (Place{35, 25, 65, 45}));
}

// Measures to a given size once asked, like a text that wraps.
class Wrapping final : public lumo::ControlT<Wrapping, lumo::IControl, lumo::ControlBase> {
 public:
  static constexpr lumo::ControlClass kClass = lumo::ControlClass::Label;
  SIZE EstimateContent(SIZE) override {
    ++measured;
    const LONG width = ScaledWidth() == lumo::SizeAuto ? 400 : ScaledWidth();
    seen = ScaledWidth();
    return {width, 400 * 10 / (width > 0 ? width : 1)};
  }
  int measured = 0;
  LONG seen = 0;
};

TEST_F(ControlsTest, AnAutomaticChildThatMayNotOverflowIsMeasuredAtTheWidthOfItsPlace) {
  for (const int scale : {100, 133, 150}) {
    lumo::SetGlobalScalePercent(scale);
    Wrapping* const text = Make<Wrapping>(
        {{TEXT("width"), TEXT("auto")}, {TEXT("height"), TEXT("auto")}, {TEXT("maxwidth"), TEXT("stretch")}});
    Lay(Make<Box>({}, text), {0, 0, 101, 300});
    EXPECT_EQ(PlaceOf(text), (Place{0, 0, 101, 39}));
    EXPECT_EQ(text->seen, 101);
    EXPECT_EQ(text->Sizes().width, lumo::SizeAuto);
    root_->SetPos({0, 0, 250, 300});  // and grows again with its place
    EXPECT_EQ(PlaceOf(text), (Place{0, 0, 250, 16}));
  }
}

TEST_F(ControlsTest, MeasurementsAreKeptUntilSomethingChanges) {
  Wrapping* const text = Make<Wrapping>({{TEXT("width"), TEXT("auto")}, {TEXT("height"), TEXT("auto")}});
  VBox* const box = Lay(Make<VBox>({{TEXT("width"), TEXT("auto")}}, Make<HBox>({{TEXT("height"), TEXT("auto")}}, text)),
                        {0, 0, 500, 500});
  EXPECT_EQ(text->measured, 1);
  Measured(box);
  box->SetPos({0, 0, 400, 400});
  EXPECT_EQ(text->measured, 1);
  text->ArrangeAncestor();
  EXPECT_TRUE(text->Parent()->NeedsMeasure() && box->NeedsMeasure());
  Measured(box);
  EXPECT_EQ(text->measured, 2);
}

}  // namespace
