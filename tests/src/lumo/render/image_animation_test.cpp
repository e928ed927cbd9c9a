#include "lumo/render/image_animation.h"

#include <string>

#include "lumo/core/timers.h"
#include "lumo/render/image_info.h"
#include "lumo/render/image_painter.h"
#include "tests/src/lumo/render/render_fixture.h"

namespace lumo {
namespace {

ImageAttribute Picture(const WCHAR* text, int frames = 1, std::vector<DWORD> delays = {}) {
  ImageAttribute image;
  image.Assign(text);
  image.image = std::make_shared<ImageInfo>();
  image.image->frames = frames;
  image.image->frame_delays = std::move(delays);
  return image;
}

// Frames or angles after each step; "." ends what has been played out.
std::string Play(ImageAttribute image, int steps) {
  const bool turns = KindOfAnimation(image) == AnimationKind::Rotation;
  std::string shown;
  for (int i = 0; i < steps; ++i) {
    const bool goes_on = Advance(image);
    shown += std::to_string(turns ? image.animation.angle : image.animation.frame) + (goes_on ? " " : ".");
    if (!goes_on) return shown;
  }
  return shown;
}

TEST(ImageAnimationTest, WhatMovesIsSaidByPictureAndAttribute) {
  EXPECT_EQ(KindOfAnimation(Picture(TEXT("a"))), AnimationKind::None);
  EXPECT_EQ(KindOfAnimation(Picture(TEXT("file='a' interval='5'"))), AnimationKind::None);
  EXPECT_EQ(KindOfAnimation(Picture(TEXT("file='a' angle='5'"))), AnimationKind::None);
  EXPECT_EQ(KindOfAnimation(Picture(TEXT("file='a' interval='5' angle='5'"))), AnimationKind::Rotation);
  EXPECT_EQ(KindOfAnimation(Picture(TEXT("file='a' interval='5' framecount='2' angle='5'"))), AnimationKind::Strip);
  EXPECT_EQ(KindOfAnimation(Picture(TEXT("a"), 2)), AnimationKind::Frames);
  ImageAttribute without;
  without.Assign(TEXT("file='a' interval='5' angle='5'"));
  EXPECT_EQ(KindOfAnimation(without), AnimationKind::None);
  EXPECT_FALSE(IsAnimationDue(without));
}

TEST(ImageAnimationTest, FramesGoRoundAndStopOnTheLast) {
  EXPECT_EQ(Play(Picture(TEXT("a"), 3), 7), "1 2 0 1 2 0 1 ");
  EXPECT_EQ(Play(Picture(TEXT("file='a' playcount='1'"), 3), 7), "1 2 2.");
  EXPECT_EQ(Play(Picture(TEXT("file='a' playcount='2'"), 3), 9), "1 2 0 1 2 2.");
  EXPECT_EQ(Play(Picture(TEXT("file='a' interval='9' framecount='2' playcount='1'")), 9), "1 1.");
}

TEST(ImageAnimationTest, TurnsRestartAtOneStepAndStopOneStepShort) {
  EXPECT_EQ(Play(Picture(TEXT("file='a' interval='9' angle='90'")), 6), "90 180 270 360 90 180 ");
  EXPECT_EQ(Play(Picture(TEXT("file='a' interval='9' angle='90' playcount='1'")), 6), "90 180 270 360 270.");
  EXPECT_EQ(Play(Picture(TEXT("file='a' interval='9' angle='-120' playcount='1'")), 6), "-120 -240 -360 -240.");
  EXPECT_EQ(Play(Picture(TEXT("file='a' interval='9' angle='-2147483648'")), 2), "-2147483648 -2147483648 ");
}

TEST(ImageAnimationTest, PlayCountDecidesWhetherItStarts) {
  EXPECT_TRUE(IsAnimationDue(Picture(TEXT("a"), 2)));
  EXPECT_FALSE(IsAnimationDue(Picture(TEXT("file='a' playcount='0'"), 2)));
  ImageAttribute played = Picture(TEXT("file='a' playcount='1'"), 2);
  while (Advance(played)) {
  }
  EXPECT_FALSE(IsAnimationDue(played));
  StopAnimation(played);
  EXPECT_TRUE(IsAnimationDue(played));
  played.animation.running = true;
  EXPECT_FALSE(IsAnimationDue(played));
}

TEST(ImageAnimationTest, DelaysComeFromThePictureOrTheInterval) {
  ImageAttribute film = Picture(TEXT("file='a' interval='7'"), 3, {5, 0});
  EXPECT_EQ(StepDelay(film), 50U);
  film.animation.frame = 1;
  EXPECT_EQ(StepDelay(film), 0U);
  film.animation.frame = 2;
  EXPECT_EQ(StepDelay(film), 0U);
  EXPECT_EQ(StepDelay(Picture(TEXT("file='a' interval='7' angle='1'"))), 7U);
  EXPECT_EQ(StepDelay(Picture(TEXT("a"), 2, {0xFFFFFFFF, 1})) % 10, 0U);
}

// A control with an animated background, painted on a machine whose timers run.
class RunningAnimationTest : public RenderTest {
 protected:
  struct Control : WeakBase {
    ~Control() override { StopAnimation(image); }
    static void Invalidate(WeakBase* owner) { ++static_cast<Control*>(owner)->invalidated; }

    ImageAttribute image;
    int invalidated = 0;
  };

  RunningAnimationTest() {
    StartTimers();
    render_->Resize(30, 10, true);
    skin_.Put("skin/theme/a.png",
              MakePng(30, 10, [](int x, int) { return x < 10 ? kFrames[0] : kFrames[x < 20 ? 1 : 2]; }));
  }
  ~RunningAnimationTest() override {
    control_.reset();
    StopTimers();
  }

  void Paint() {
    ImagePlace place;
    place.position = place.paint = {0, 0, 10, 10};
    PaintImage(render_.get(), place, control_->image, nullptr,
               {&control_->image, control_.get(), &Control::Invalidate});
  }
  // Runs messages until the control has asked for so many paints, or no timer is left.
  void RunUntil(int invalidated) {
    MSG message;
    while (control_ && control_->invalidated < invalidated && CountTimers() && GetMessageW(&message, nullptr, 0, 0)) {
      DispatchMessageW(&message);
    }
  }

  static constexpr DWORD kFrames[] = {0xFFFF0000, 0xFF00FF00, 0xFF0000FF};
  std::unique_ptr<Control> control_ = std::make_unique<Control>();
};

TEST_F(RunningAnimationTest, TheFirstPaintStartsAndTheNextOnesShowTheFrames) {
  control_->image.Assign(TEXT("file='a.png' framecount='3' interval='5' playcount='1'"));
  Paint();
  EXPECT_EQ(At(5, 5), 0U);
  EXPECT_TRUE(control_->image.animation.running);
  EXPECT_EQ(control_->invalidated, 1);
  Paint();
  EXPECT_EQ(At(5, 5), kFrames[0]);
  for (const int frame : {1, 2, 2}) {
    RunUntil(control_->invalidated + 1);
    Paint();
    EXPECT_EQ(At(5, 5), kFrames[frame]);
  }
  EXPECT_FALSE(control_->image.animation.running);
  EXPECT_EQ(CountTimers(), 0U);
  EXPECT_EQ(control_->invalidated, 4);
}

TEST_F(RunningAnimationTest, NothingRunsAfterTheControlIsGoneOrStopped) {
  control_->image.Assign(TEXT("file='a.png' angle='30' interval='5'"));
  Paint();
  EXPECT_EQ(CountTimers(), 1U);
  StopAnimation(control_->image);
  EXPECT_EQ(CountTimers(), 0U);
  Paint();
  RunUntil(3);
  EXPECT_EQ(control_->image.animation.angle, 30);
  control_.reset();
  EXPECT_EQ(CountTimers(), 0U);
}

TEST_F(RunningAnimationTest, APictureThatMayNotPlayIsDrawnAsItIs) {
  control_->image.Assign(TEXT("file='a.png' framecount='3' interval='5' playcount='0'"));
  Paint();
  EXPECT_EQ(At(5, 5), kFrames[0]);
  EXPECT_EQ(CountTimers(), 0U);
}

}  // namespace
}  // namespace lumo
