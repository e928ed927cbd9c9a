#include "winhost/window/rect_set.h"

#include <gtest/gtest.h>

using winhost::RectSet;

namespace {

int Area(const RectSet& set) {
  int area = 0;
  for (const RECT& rect : set.rects()) area += (rect.right - rect.left) * (rect.bottom - rect.top);
  return area;
}

TEST(RectSetTest, PixelsCountOnceHoweverTheyOverlap) {
  RectSet set(RECT{0, 0, 10, 10});
  set.Add({5, 5, 15, 15});
  set.Add({5, 5, 5, 90});  // empty
  EXPECT_EQ(Area(set), 175);
  EXPECT_TRUE(set.Contains({14, 14}) && set.Contains({0, 9}));
  EXPECT_FALSE(set.Contains({12, 2}) || set.Contains({15, 14}));
  const RECT bounds = set.Bounds();
  EXPECT_EQ(bounds.right, 15);
  set.Subtract({4, 4, 6, 6});
  EXPECT_EQ(Area(set), 171);
  EXPECT_FALSE(set.Contains({5, 5}));
  set.Intersect({0, 0, 5, 5});
  EXPECT_EQ(Area(set), 24);
  set.Move(100, 0);
  EXPECT_TRUE(set.Contains({100, 0}));
  set.Subtract({0, 0, 1000, 1000});
  EXPECT_TRUE(set.Empty());
}

TEST(RectSetTest, RectanglesCombineAsTheSystemsDo) {
  const RECT a{0, 0, 10, 10}, b{5, -5, 20, 30}, empty{3, 3, 3, 9};
  RECT out;
  EXPECT_TRUE(IntersectRect(&out, &a, &b));
  EXPECT_TRUE(out.left == 5 && out.top == 0 && out.right == 10 && out.bottom == 10);
  EXPECT_FALSE(IntersectRect(&out, &a, &empty));
  EXPECT_TRUE(IsRectEmpty(&out));
  EXPECT_TRUE(UnionRect(&out, &empty, &a) && EqualRect(&out, &a));
  EXPECT_TRUE(SubtractRect(&out, &a, &b));
  EXPECT_EQ(out.right, 5);
  const RECT corner{5, 5, 20, 20};
  EXPECT_TRUE(SubtractRect(&out, &a, &corner) && EqualRect(&out, &a));
}

}  // namespace
