#include "tests/src/lumo/controls/tree.h"

namespace {

using namespace lumo_tests;
using lumo::Box;
using lumo::Control;
using lumo::ControlBase;
using lumo::TabBox;
using lumo::VBox;

TEST_F(ControlsTest, ChildrenAreAddedMovedAndFoundByPlace) {
  VBox box;
  ControlBase *const a = Make({}), *const b = Make({}), *const c = Make({});
  EXPECT_TRUE(box.Add(a) && box.Add(c) && box.AddAt(b, 1));
  EXPECT_EQ(box.GetItemIndex(b), 1);
  EXPECT_TRUE(box.SetItemIndex(a, 2));
  EXPECT_EQ(box.GetItemAt(0), b);
  EXPECT_EQ(box.GetItemAt(2), a);
  EXPECT_FALSE(box.SetItemIndex(a, 3));
  EXPECT_EQ(box.GetItemAt(3), nullptr);
  EXPECT_EQ(box.GetItemAt(-1), nullptr);
  EXPECT_EQ(box.GetItemIndex(&box), -1);
}

TEST_F(ControlsTest, WhatCannotBeAChildIsRefused) {
  VBox box;
  VBox* const inner = Make<VBox>({});
  EXPECT_TRUE(box.Add(inner));
  EXPECT_FALSE(box.Add(nullptr));
  EXPECT_FALSE(box.Add(inner));
  EXPECT_FALSE(inner->Add(&box));
  EXPECT_FALSE(inner->Add(inner));
  Control extra;
  EXPECT_FALSE(box.AddAt(&extra, 2));
  EXPECT_FALSE(box.Remove(&extra));
  EXPECT_EQ(box.GetCount(), 1);
}

TEST_F(ControlsTest, RemovedChildrenGoOrComeBack) {
  VBox box;
  ControlBase* const kept = Make({});
  const lumo::WeakRef<ControlBase> gone(Make({}));
  box.Add(gone.Get());
  box.Add(kept);
  EXPECT_TRUE(box.RemoveAt(0));
  EXPECT_FALSE(gone);
  box.SetAutoDestroy(false);
  EXPECT_TRUE(box.Remove(kept));
  EXPECT_EQ(kept->Parent(), nullptr);
  delete kept;
  EXPECT_EQ(box.GetCount(), 0);
}

TEST_F(ControlsTest, ChildrenThatAreNotDestroyedOutliveTheirContainer) {
  const std::unique_ptr<Control> child(Make({}));
  {
    VBox box;
    box.SetAutoDestroy(false);
    box.Add(child.get());
  }
  EXPECT_EQ(child->Parent(), nullptr);
}

TEST_F(ControlsTest, ADestroyedChildLeavesItsContainer) {
  VBox box;
  ControlBase* const child = Make({});
  box.Add(child);
  delete child;
  EXPECT_EQ(box.GetCount(), 0);
}

TEST_F(ControlsTest, HidingAContainerHidesWhatIsInside) {
  Control* const leaf = Make({});
  VBox* const inner = Make<VBox>({}, leaf);
  Lay(Make<VBox>({}, inner), {0, 0, 10, 10});
  Set(root_.get(), TEXT("visible"), TEXT("0"));
  EXPECT_FALSE(leaf->IsVisible());
  EXPECT_FALSE(leaf->IsInternVisible());
  Control* const late = Make({});
  inner->Add(late);
  EXPECT_FALSE(late->IsVisible());
  Set(root_.get(), TEXT("visible"), TEXT("1"));
  EXPECT_TRUE(leaf->IsVisible() && late->IsVisible());
  Set(root_.get(), TEXT("enabled"), TEXT("0"));
  EXPECT_FALSE(leaf->IsEnabled());
}

TEST_F(ControlsTest, OnlyListElementsAreSelectable) {
  using lumo::ListContainerElement;
  lumo::ListBox list(std::make_unique<lumo::VLayout>());
  EXPECT_EQ(list.FindSelectable(0, true), -1);
  list.Add(Make({}));
  list.Add(Make<ListContainerElement>({}));
  list.Add(Make<ListContainerElement>({{TEXT("enabled"), TEXT("0")}}));
  list.Add(Make<lumo::MenuItem>({}));
  list.Add(Make({}));
  EXPECT_EQ(list.FindSelectable(0, true), 1);
  EXPECT_EQ(list.FindSelectable(2, true), 3);
  EXPECT_EQ(list.FindSelectable(99, true), -1);
  EXPECT_EQ(list.FindSelectable(99, false), 3);
  EXPECT_EQ(list.FindSelectable(2, false), 1);
  EXPECT_EQ(list.FindSelectable(-5, false), 1);
}

ControlBase* Self(ControlBase* control, void*) { return control; }
ControlBase* Hit(ControlBase* root, LONG x, LONG y, unsigned flags) {
  POINT point = {x, y};
  return root->FindControl(Self, &point, flags | lumo::FindHitTest | lumo::FindVisible);
}

TEST_F(ControlsTest, ThePointFindsTheTopmostControl) {
  Control *const below = Make({}), *const above = Make({{TEXT("width"), TEXT("50")}});
  Control* const deaf = Make({{TEXT("mouse"), TEXT("0")}});
  Box* const box = Lay(Make<Box>({{TEXT("padding"), TEXT("10,10,10,10")}}, below, above, deaf), {0, 0, 100, 100});
  EXPECT_EQ(Hit(box, 20, 20, lumo::FindTopFirst), above);
  EXPECT_EQ(Hit(box, 20, 20, 0), below);
  EXPECT_EQ(Hit(box, 80, 20, lumo::FindTopFirst), below);
  EXPECT_EQ(Hit(box, 5, 5, lumo::FindTopFirst), box);
  EXPECT_EQ(Hit(box, 100, 50, lumo::FindTopFirst), nullptr);
  EXPECT_EQ(Hit(box, 20, 20, lumo::FindSelfFirst), box);
  Set(box, TEXT("mousechild"), TEXT("0"));
  EXPECT_EQ(Hit(box, 20, 20, lumo::FindTopFirst), box);
  Set(box, TEXT("visible"), TEXT("0"));
  EXPECT_EQ(Hit(box, 20, 20, lumo::FindTopFirst), nullptr);
}

TEST_F(ControlsTest, OnlyFloatingChildrenAnswerInThePadding) {
  Control* const wide = Make({{TEXT("width"), TEXT("200")}, {TEXT("height"), TEXT("100")}});
  Control* const floating = Make({{TEXT("float"), TEXT("1")},
                                  {TEXT("margin"), TEXT("-10,0,0,0")},
                                  {TEXT("width"), TEXT("10")},
                                  {TEXT("height"), TEXT("20")}});
  Box* const box = Lay(Make<Box>({{TEXT("padding"), TEXT("10,10,10,10")}}, wide, floating), {0, 0, 100, 100});
  EXPECT_EQ(Hit(box, 95, 50, lumo::FindTopFirst), box);
  EXPECT_EQ(Hit(box, 5, 15, lumo::FindTopFirst), floating);
}

TEST_F(ControlsTest, ScrolledContentIsFoundWhereItShows) {
  Control *const first = Make({{TEXT("height"), TEXT("50")}}), *const second = Make({{TEXT("height"), TEXT("50")}});
  VBox* const box = Lay(Make<VBox>({}, first, second), {0, 0, 50, 50});
  EXPECT_EQ(Hit(box, 10, 10, 0), first);
  box->SetScrollOffset({0, 50});
  EXPECT_EQ(Hit(box, 10, 10, 0), second);
  EXPECT_TRUE(second->HitTest({10, 10}));
  EXPECT_FALSE(first->HitTest({10, 10}));
}

TEST_F(ControlsTest, MarkedControlsAreFoundContainersFirst) {
  Control *const leaf = Make({}), *const hidden = Make({{TEXT("visible"), TEXT("0")}});
  VBox* const inner = Make<VBox>({}, leaf, hidden);
  VBox* const box = Make<VBox>({}, inner);
  root_.reset(box);
  EXPECT_EQ(box->FirstNeedingArrange(), box);
  box->SetPos({0, 0, 0, 0});  // the rectangle that they have: the marks are cleared all the way down
  EXPECT_EQ(box->FirstNeedingArrange(), nullptr);
  leaf->InvalidateLayout();
  EXPECT_EQ(box->FirstNeedingArrange(), leaf);
  inner->InvalidateLayout();
  EXPECT_EQ(box->FirstNeedingArrange(), inner);
  inner->SetPos({0, 0, 0, 0});
  EXPECT_EQ(box->FirstNeedingArrange(), nullptr);
  hidden->SetVisible(true);
  EXPECT_EQ(box->FirstNeedingArrange(), inner);
}

// Pages by number, "." hidden.
String Pages(const TabBox& tabs) {
  String shown;
  for (int i = 0; i < tabs.GetCount(); ++i) {
    const ControlBase* const page = tabs.GetItemAt(i);
    EXPECT_EQ(page->IsVisible(), page->IsMouseEnabled());
    shown += page->IsVisible() ? static_cast<WCHAR>('0' + i) : WCHAR{'.'};
  }
  return shown;
}

TEST_F(ControlsTest, TheFirstVisiblePageIsTheCurrentOne) {
  TabBox tabs;
  tabs.Add(Make<VBox>({}));
  tabs.Add(Make<VBox>({}));
  EXPECT_EQ(tabs.GetSelected(), 0);
  EXPECT_EQ(Pages(tabs), String(TEXT("0.")));
  EXPECT_FALSE(tabs.GetItemAt(1)->AsBox()->IsMouseChildEnabled());
  tabs.AddAt(Make<VBox>({}), 0);
  EXPECT_EQ(tabs.GetSelected(), 1);
  EXPECT_EQ(Pages(tabs), String(TEXT(".1.")));
}

TEST_F(ControlsTest, APageIsSelectedByPlaceByPointerAndByName) {
  TabBox tabs;
  for (const WCHAR* const name : {TEXT("a"), TEXT("b"), TEXT("c")}) {
    tabs.Add(Make<VBox>({{TEXT("name"), name}}, Make({{TEXT("name"), TEXT("inside")}})));
  }
  EXPECT_TRUE(tabs.Select(2));
  EXPECT_EQ(Pages(tabs), String(TEXT("..2")));
  EXPECT_FALSE(tabs.Select(9));
  EXPECT_FALSE(tabs.Select(-1));
  EXPECT_EQ(tabs.GetSelected(), 2);
  EXPECT_TRUE(tabs.SelectPage(StringView(TEXT("b"))));
  EXPECT_EQ(Pages(tabs), String(TEXT(".1.")));
  EXPECT_FALSE(tabs.SelectPage(StringView(TEXT("inside"))));
  EXPECT_FALSE(tabs.SelectPage(StringView(TEXT("none"))));
  EXPECT_TRUE(tabs.SelectPage(tabs.GetItemAt(0)));
  EXPECT_EQ(tabs.GetSelected(), 0);
}

TEST_F(ControlsTest, ASelectedIdWaitsForTheInitialisation) {
  TabBox tabs;
  Set(&tabs, TEXT("selectedid"), TEXT("1"));
  tabs.Add(Make<VBox>({}));
  tabs.Add(Make<VBox>({}));
  EXPECT_EQ(tabs.GetSelected(), 0);
  tabs.Init();
  EXPECT_EQ(tabs.GetSelected(), 1);
  Set(&tabs, TEXT("selectedid"), TEXT("0"));
  EXPECT_EQ(tabs.GetSelected(), 0);
}

TEST_F(ControlsTest, RemovingPagesKeepsOneCurrent) {
  TabBox tabs;
  for (int i = 0; i < 4; ++i) tabs.Add(Make<VBox>({}));
  tabs.Select(2);
  tabs.RemoveAt(0);
  EXPECT_EQ(tabs.GetSelected(), 1);
  tabs.RemoveAt(2);
  EXPECT_EQ(tabs.GetSelected(), 1);
  tabs.RemoveAt(1);
  EXPECT_EQ(tabs.GetSelected(), 0);
  EXPECT_EQ(Pages(tabs), String(TEXT("0")));
  tabs.RemoveAt(0);
  EXPECT_EQ(tabs.GetSelected(), -1);
  tabs.Add(Make<VBox>({}));
  EXPECT_EQ(tabs.GetSelected(), 0);
  tabs.RemoveAll();
  EXPECT_EQ(tabs.GetSelected(), -1);
}

}  // namespace
