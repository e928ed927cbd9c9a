#include "lumo/core/layered_update.h"

#include <gtest/gtest.h>

namespace lumo {
namespace {

constexpr VirtualScreen kScreen = {0, 0, 1920, 1080};
constexpr RECT kClient = {0, 0, 600, 400};

bool Same(const RECT& a, const RECT& b) {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

TEST(WidenLayeredUpdate, WindowInsideTheScreenKeepsItsUpdate) {
  EXPECT_TRUE(Same(WidenLayeredUpdate({10, 20, 30, 40}, kClient, {100, 100, 700, 500}, kScreen), {10, 20, 30, 40}));
}

TEST(WidenLayeredUpdate, UpdateCutAtAScreenEdgeReachesTheHiddenStrip) {
  // 50 beyond the left and 30 beyond the top edge: the system cuts the update there.
  EXPECT_TRUE(Same(WidenLayeredUpdate({50, 30, 80, 90}, kClient, {-50, -30, 550, 370}, kScreen), {0, 0, 80, 90}));
  // 80 beyond the right and 20 beyond the bottom edge.
  EXPECT_TRUE(
      Same(WidenLayeredUpdate({10, 10, 520, 380}, kClient, {1400, 700, 2000, 1100}, kScreen), {10, 10, 600, 400}));
}

TEST(WidenLayeredUpdate, UpdateThatEndsBeforeTheEdgeIsLeftAlone) {
  EXPECT_TRUE(Same(WidenLayeredUpdate({60, 40, 80, 90}, kClient, {-50, -30, 550, 370}, kScreen), {60, 40, 80, 90}));
}

TEST(WidenLayeredUpdate, FarEdgesAreComparedWithTheScreensSize) {
  // A virtual screen that begins at -1920: the right edge 600 is not greater than the width 3840.
  EXPECT_TRUE(Same(WidenLayeredUpdate({0, 0, 500, 400}, kClient, {1420, 0, 2020, 400}, {-1920, 0, 3840, 1080}),
                   {0, 0, 500, 400}));
}

}  // namespace
}  // namespace lumo
