#include "lumo/render/image_attribute.h"

#include <gtest/gtest.h>

namespace lumo {
namespace {

std::string Utf8(const String& text) { return vanta::ToUtf8(text); }

std::string Sides(const RECT& r) {
  return std::to_string(r.left) + "," + std::to_string(r.top) + "," + std::to_string(r.right) + "," +
         std::to_string(r.bottom);
}

TEST(ImageAttributeTest, ABareNameIsTheFile) {
  ImageAttribute image;
  image.Assign(TEXT("./bk_bg.png"));
  EXPECT_EQ(Utf8(image.file), "./bk_bg.png");
  EXPECT_EQ(Utf8(image.text), "./bk_bg.png");
  EXPECT_EQ(Sides(image.dest), "-1,-1,-1,-1");
  EXPECT_EQ(Sides(image.source), "-1,-1,-1,-1");
  EXPECT_EQ(Sides(image.corner), "0,0,0,0");
  EXPECT_EQ(image.fade, 255);
  EXPECT_EQ(image.playcount, -1);
}

TEST(ImageAttributeTest, EveryKeyIsRead) {
  ImageAttribute image;
  image.Assign(
      TEXT("file='../public/a.svg' dest='1,2,3,4' source='5,6,7,8' corner='9,10,11,12' fade='128' xtiled='1' "
           "ytiled='2' playcount='3' interval='40' framecount='5' angle='-30' color='svg_01' scale='1.6'"));
  EXPECT_EQ(Utf8(image.file), "../public/a.svg");
  EXPECT_EQ(Sides(image.dest), "1,2,3,4");
  EXPECT_EQ(Sides(image.source), "5,6,7,8");
  EXPECT_EQ(Sides(image.corner), "9,10,11,12");
  EXPECT_EQ(image.fade, 128);
  EXPECT_EQ(image.xtiled, 1);
  EXPECT_EQ(image.ytiled, 2);
  EXPECT_EQ(image.playcount, 3);
  EXPECT_EQ(image.interval, 40);
  EXPECT_EQ(image.framecount, 5);
  EXPECT_EQ(image.angle, -30);
  EXPECT_EQ(Utf8(image.color), "svg_01");
  EXPECT_EQ(Utf8(image.scale), "1.6");
}

TEST(ImageAttributeTest, AssigningAnewKeepsFadeAngleColorAndScaleOnly) {
  ImageAttribute image;
  image.Assign(
      TEXT("file='a.png' dest='1,2,3,4' source='1,2,3,4' corner='1,2,3,4' fade='10' xtiled='1' ytiled='1' "
           "playcount='2' interval='3' framecount='4' angle='5' color='c' scale='2'"));
  image.Assign(TEXT("b.png"));
  EXPECT_EQ(Utf8(image.file), "b.png");
  EXPECT_EQ(Sides(image.dest) + Sides(image.source) + Sides(image.corner), "-1,-1,-1,-1-1,-1,-1,-10,0,0,0");
  EXPECT_EQ(image.xtiled + image.ytiled + image.interval + image.framecount, 0);
  EXPECT_EQ(image.playcount, -1);
  EXPECT_EQ(image.fade, 10);
  EXPECT_EQ(image.angle, 5);
  EXPECT_EQ(Utf8(image.color) + Utf8(image.scale), "c2");
}

TEST(ImageAttributeTest, ReadingStopsAtTheFirstMalformedPair) {
  const struct {
    const WCHAR* text;
    const char* file;
    int interval;
  } rows[] = {
      {TEXT("file='a.png' interval=5 interval='7'"), "a.png", 0},
      {TEXT("file='a.png' interval='5"), "a.png", 0},
      {TEXT("file='a.png' interval ='5'"), "a.png", 0},
      {TEXT("interval='5' file='' angle='1'"), "interval='5' file='' angle='1'", 5},
      {TEXT("\t\r\nfile='a.png'\x01interval='5'"), "a.png", 5},
      {TEXT("FILE='b.png' file='a.png' interval='5'"), "a.png", 5},
      {TEXT("file='a.png' unknown='1' interval='5'"), "a.png", 5},
      {TEXT(""), "", 0},
  };
  for (const auto& row : rows) {
    ImageAttribute image;
    image.Assign(row.text);
    EXPECT_EQ(Utf8(image.file), row.file) << Utf8(row.text);
    EXPECT_EQ(image.interval, row.interval) << Utf8(row.text);
  }
}

TEST(ImageAttributeTest, NumbersOutOfRangeStopAtTheirEnds) {
  ImageAttribute image;
  image.Assign(TEXT("file='a' fade='300' dest='7' source='1;2;3;4'"));
  EXPECT_EQ(image.fade, 255);
  EXPECT_EQ(Sides(image.dest), "7,0,0,0");
  EXPECT_EQ(Sides(image.source), "1,2,3,4");
  image.Assign(TEXT("file='a' fade='-1'"));
  EXPECT_EQ(image.fade, 0);
}

TEST(ImageAttributeTest, AnAttributeMayBeAssignedItsOwnText) {
  ImageAttribute image;
  image.Assign(TEXT("file='a.png' angle='3'"));
  image.Assign(image.text);
  EXPECT_EQ(Utf8(image.file), "a.png");
  EXPECT_EQ(Utf8(image.text), "file='a.png' angle='3'");
}

}  // namespace
}  // namespace lumo
