#include "lumo/render/rounded_path.h"

#include <gtest/gtest.h>

namespace lumo {
namespace {

using Kind = RoundedShape::Kind;

TEST(RoundedPathTest, ShapesFollowRadiiAndSize) {
  const struct {
    const char* what;
    RECT rect;
    RECT round;
    int pen;
    Kind kind;
    float x, y, width, height;
    float radii[4];
  } rows[] = {
      {"no radii", {10, 20, 110, 60}, {0, 0, 0, 0}, 0, Kind::Rectangle, 10.5F, 20.5F, 99, 39, {0, 0, 0, 0}},
      {"a capsule",
       {0, 0, 100, 40},
       {20, 20, 20, 20},
       0,
       Kind::Corners,
       .5F,
       .5F,
       99,
       39,
       {19.5F, 19.5F, 19.5F, 19.5F}},
      {"a circle", {0, 0, 40, 40}, {20, 20, 20, 20}, 0, Kind::Ellipse, .5F, .5F, 39, 39, {19.5F, 19.5F, 19.5F, 19.5F}},
      {"not quite", {0, 0, 41, 41}, {20, 20, 20, 20}, 0, Kind::Corners, .5F, .5F, 40, 40, {20, 20, 20, 20}},
      {"different", {0, 0, 40, 40}, {1, 2, 3, 20}, 0, Kind::Corners, .5F, .5F, 39, 39, {1, 2, 3, 19.5F}},
      {"with a pen", {0, 0, 50, 30}, {4, 4, 4, 4}, 3, Kind::Corners, 2, 2, 46, 26, {4, 4, 4, 4}},
      {"below zero", {0, 0, 50, 30}, {-4, 4, 4, 4}, 0, Kind::Corners, .5F, .5F, 49, 29, {0, 4, 4, 4}},
  };
  for (const auto& row : rows) {
    const RoundedShape shape = ShapeOf(row.rect, row.round, row.pen);
    EXPECT_EQ(shape.kind, row.kind) << row.what;
    EXPECT_FLOAT_EQ(shape.x, row.x) << row.what;
    EXPECT_FLOAT_EQ(shape.y, row.y) << row.what;
    EXPECT_FLOAT_EQ(shape.width, row.width) << row.what;
    EXPECT_FLOAT_EQ(shape.height, row.height) << row.what;
    for (int i = 0; i < 4; ++i) EXPECT_FLOAT_EQ(shape.radii[i], row.radii[i]) << row.what;
  }
}

}  // namespace
}  // namespace lumo
