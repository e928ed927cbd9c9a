#include "lumo/controls/circle_progress.h"

#include "lumo/controls/arc_geometry.h"
#include "lumo/controls/attribute_table.h"
#include "lumo/core/global_resources.h"
#include "lumo/core/window.h"
#include "lumo/render/gdip.h"
#include "lumo/render/image_cache.h"
#include "lumo/render/image_info.h"

namespace lumo {
namespace {

template <ValueKind Kind, auto Set>
constexpr AttributeValue<CircleProgress> kAs = kValueAs<CircleProgress, Kind, Set>;

constexpr AttributeRow<CircleProgress> kAttributes[] = {
    {TEXT("bgcolor"), kAs<ValueKind::ColorName, &CircleProgress::SetBackColor>},
    {TEXT("circlewidth"), kAs<ValueKind::Integer, &CircleProgress::SetCircleWidth>},
    {TEXT("circular"), kAs<ValueKind::Boolean, &CircleProgress::SetCircular>},
    {TEXT("clockwise"), kAs<ValueKind::Boolean, &CircleProgress::SetClockwise>},
    {TEXT("fgcolor"), kAs<ValueKind::ColorName, &CircleProgress::SetForeColor>},
    {TEXT("gradientcolor"), kAs<ValueKind::ColorName, &CircleProgress::SetGradientColor>},
    {TEXT("indicator"), kAs<ValueKind::PictureFile, &CircleProgress::SetIndicator>},
};
static_assert(SortedAndUnique(kAttributes));

DWORD ColorOf(StringView name) {
  while (!name.empty() && name.front() == TEXT(' ')) name.remove_prefix(1);
  return GetColor(name);
}

constexpr float kTop = 270;  // degrees

float F(LONG value) { return static_cast<float>(value); }

UniqueGpBrush MakeArcBrush(const RECT& square, DWORD from, DWORD to) {
  UniqueGpBrush brush = MakeGradientBrush(square, from, to, Gdiplus::LinearGradientModeVertical);
  static constexpr float kFactors[] = {0.0f, 0.4f, 0.6f, 1.0f};
  static constexpr float kPositions[] = {0.0f, 0.2f, 0.8f, 1.0f};
  if (brush) {
    Record(gdip::GdipSetLineBlend(static_cast<Gdiplus::GpLineGradient*>(brush.Get()), kFactors, kPositions, 4));
  }
  return brush;
}

void DrawArc(const UniqueGraphics& graphics, const UniqueGpPen& pen, const RECT& arc, float sweep) {
  if (!pen) return;
  Record(gdip::GdipDrawArc(graphics.Get(), pen.Get(), F(arc.left), F(arc.top), F(arc.right - arc.left),
                           F(arc.bottom - arc.top), kTop, sweep));
}

void TurnAbout(const UniqueGraphics& graphics, float x, float y, float degrees) {
  Record(gdip::GdipTranslateWorldTransform(graphics.Get(), x, y, Gdiplus::MatrixOrderPrepend));
  Record(gdip::GdipRotateWorldTransform(graphics.Get(), degrees, Gdiplus::MatrixOrderPrepend));
  Record(gdip::GdipTranslateWorldTransform(graphics.Get(), -x, -y, Gdiplus::MatrixOrderPrepend));
}

// At the top of the arc, the whole turned about the circle's centre by the sweep. The picture is shared, so that its
// own half turn is a part of the drawing as well.
void DrawIndicator(const UniqueGraphics& graphics, const ArcGeometry& geometry, const ImageInfo& image, float sweep,
                   bool turned) {
  const float x = F(geometry.centre.x), top = F(geometry.arc.top);
  TurnAbout(graphics, x, F(geometry.centre.y), sweep);
  if (turned) TurnAbout(graphics, x, top, 180);
  Record(gdip::GdipDrawImageRectI(graphics.Get(), image.Bitmap(), geometry.centre.x - image.width / 2,
                                  geometry.arc.top - image.height / 2, image.width, image.height));
  Record(gdip::GdipResetWorldTransform(graphics.Get()));
}

}  // namespace

void CircleProgress::SetCircular(bool circular) {
  circular_ = circular;
  Invalidate();
}

void CircleProgress::SetCircleWidth(int width) {
  circleWidth_ = width;
  Invalidate();
}

void CircleProgress::SetIndicator(StringView file) {
  String path(file);
  // A file that is there as written is taken from there; images know such by their whole path.
  WCHAR whole[MAX_PATH];
  if (GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES) {
    const DWORD length = GetFullPathNameW(path.c_str(), MAX_PATH, whole, nullptr);
    if (length > 0 && length < MAX_PATH) path = whole;
  }
  indicator_.Assign(path);
  turned_ = false;
  Invalidate();
}

void CircleProgress::SetClockwise(bool clockwise) {
  if (clockwise == clockwise_) return;
  clockwise_ = clockwise;
  if (indicator_.IsSet()) turned_ = !turned_;
  Invalidate();
}

void CircleProgress::SetBackColor(StringView name) {
  backColor_ = ColorOf(name);
  Invalidate();
}

void CircleProgress::SetForeColor(StringView name) {
  foreColor_ = ColorOf(name);
  Invalidate();
}

void CircleProgress::SetGradientColor(StringView name) {
  gradientColor_ = ColorOf(name);
  Invalidate();
}

bool CircleProgress::SetAttribute(const WCHAR* name, const WCHAR* value) {
  return ApplyAttribute(kAttributes, *this, TextOf(name), TextOf(value)) || Base::SetAttribute(name, value);
}

void CircleProgress::ListAttributes(AttributeInfos* infos) { ListRows(kAttributes, infos); }

void CircleProgress::ReleaseImages() {
  Base::ReleaseImages();
  indicator_.Release();
}

void CircleProgress::PaintStateImages(IRender* render) {
  Base::PaintStateImages(render);
  if (circular_) PaintArc(render);
}

void CircleProgress::PaintArc(IRender* render) {
  bar_.SettleFill();
  const ProgressRange& range = bar_.Range();
  const bool has_indicator = indicator_.IsSet() && LoadImage(indicator_, GetWindow());
  const LONG pen_width = ScaleLength(circleWidth_, Scale());
  const LONG inset = has_indicator ? indicator_.image->width / 2 : pen_width / 2;
  const ArcGeometry geometry = ArcIn(Position(), inset);
  if (IsRectEmpty(&geometry.arc)) return;
  const UniqueGraphics graphics = MakeGraphics(render->GetDC(), false);
  if (!graphics) return;
  const float width = F(pen_width);
  DrawArc(graphics, MakePen(backColor_, width), geometry.arc, 360);
  const float sweep = SweepOf(range.Fraction(), clockwise_);
  UniqueGpPen pen;
  UniqueGpBrush brush;
  if (gradientColor_) {
    brush = MakeArcBrush(geometry.square, foreColor_, gradientColor_);
    if (brush) Record(gdip::GdipCreatePen2(brush.Get(), width, Gdiplus::UnitPixel, pen.Put()));
  } else {
    pen = MakePen(foreColor_, width);
  }
  DrawArc(graphics, pen, geometry.arc, sweep);
  if (has_indicator) DrawIndicator(graphics, geometry, *indicator_.image, sweep, turned_);
}

}  // namespace lumo
