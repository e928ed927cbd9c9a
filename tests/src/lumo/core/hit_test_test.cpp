#include "lumo/core/hit_test.h"

#include "lumo/core/scaling.h"

#include <gtest/gtest.h>

namespace lumo {
namespace {

struct Case {
  const char* name;
  POINT point;
  int expected;
};
void PrintTo(const Case& row, std::ostream* out) { *out << row.name; }

int Hit(const FrameShape& frame, POINT point, bool takes_press = false) {
  return HitFrame(frame, point, [&] { return takes_press; });
}

class SizingBorder : public testing::TestWithParam<Case> {};

TEST_P(SizingBorder, NamesTheSide) {
  const FrameShape frame = {{0, 0, 600, 400}, {5, 6, 7, 8}, {}, false};
  EXPECT_EQ(Hit(frame, GetParam().point), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Points, SizingBorder,
    testing::Values(Case{"above", {300, -1}, HTCLIENT}, Case{"top left", {4, 5}, HTTOPLEFT},
                    Case{"top right of the left corner", {5, 5}, HTTOP}, Case{"top right", {593, 0}, HTTOPRIGHT},
                    Case{"top left of the right corner", {592, 0}, HTTOP}, Case{"left", {4, 6}, HTLEFT},
                    Case{"right", {593, 200}, HTRIGHT}, Case{"bottom left", {0, 392}, HTBOTTOMLEFT},
                    Case{"bottom", {300, 399}, HTBOTTOM}, Case{"bottom right", {599, 399}, HTBOTTOMRIGHT},
                    Case{"first pixel inside", {5, 6}, HTCLIENT}, Case{"last pixel inside", {592, 391}, HTCLIENT}));

TEST(HitFrame, MaximisedWindowHasNoSizingBorder) {
  const FrameShape frame = {{0, 0, 600, 400}, {5, 5, 5, 5}, {0, 0, 0, 30}, true};
  EXPECT_EQ(Hit(frame, {2, 2}), HTCAPTION);
}

TEST(HitFrame, CaptionEndsAtItsInsetsAndBottom) {
  const FrameShape frame = {{10, 10, 610, 410}, {}, {20, 5, 30, 280}, false};
  EXPECT_EQ(Hit(frame, {30, 15}), HTCAPTION);
  EXPECT_EQ(Hit(frame, {29, 15}), HTCLIENT);
  EXPECT_EQ(Hit(frame, {30, 14}), HTCLIENT);
  EXPECT_EQ(Hit(frame, {579, 289}), HTCAPTION);
  EXPECT_EQ(Hit(frame, {580, 289}), HTCLIENT);
  EXPECT_EQ(Hit(frame, {579, 290}), HTCLIENT);
}

TEST(HitFrame, ControlThatTakesThePressIsClient) {
  const FrameShape frame = {{0, 0, 600, 400}, {}, {0, 0, 0, 280}, false};
  EXPECT_EQ(Hit(frame, {300, 100}, true), HTCLIENT);
  EXPECT_EQ(Hit(frame, {300, 100}, false), HTCAPTION);
  EXPECT_EQ(Hit(frame, {300, 300}, false), HTCLIENT);
}

}  // namespace
}  // namespace lumo
