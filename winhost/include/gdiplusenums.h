// GDI+: the enumerations that its functions take. Of a fixed type, so that a number outside of them is a wrong argument
// and nothing worse.
#pragma once

namespace Gdiplus {

enum ColorAdjustType : int { ColorAdjustTypeDefault = 0, ColorAdjustTypeBitmap = 1 };
enum ColorMatrixFlags : int { ColorMatrixFlagsDefault = 0 };
enum FillMode : int { FillModeAlternate = 0, FillModeWinding = 1 };
enum ImageLockMode : int { ImageLockModeRead = 1, ImageLockModeWrite = 2, ImageLockModeUserInputBuf = 4 };
enum LinearGradientMode : int {
  LinearGradientModeHorizontal = 0,
  LinearGradientModeVertical = 1,
  LinearGradientModeForwardDiagonal = 2,
  LinearGradientModeBackwardDiagonal = 3,
};
enum MatrixOrder : int { MatrixOrderPrepend = 0, MatrixOrderAppend = 1 };
enum PixelOffsetMode : int {
  PixelOffsetModeInvalid = -1,
  PixelOffsetModeDefault = 0,
  PixelOffsetModeHighSpeed = 1,
  PixelOffsetModeHighQuality = 2,
  PixelOffsetModeNone = 3,
  PixelOffsetModeHalf = 4,
};
// Rotation is clockwise and comes before the flip.
enum RotateFlipType : int {
  RotateNoneFlipNone = 0,
  Rotate90FlipNone = 1,
  Rotate180FlipNone = 2,
  Rotate270FlipNone = 3,
  RotateNoneFlipX = 4,
  Rotate90FlipX = 5,
  Rotate180FlipX = 6,
  Rotate270FlipX = 7,
  RotateNoneFlipXY = Rotate180FlipNone,
  RotateNoneFlipY = Rotate180FlipX,
};
enum SmoothingMode : int {
  SmoothingModeInvalid = -1,
  SmoothingModeDefault = 0,
  SmoothingModeHighSpeed = 1,
  SmoothingModeHighQuality = 2,
  SmoothingModeNone = 3,
  SmoothingModeAntiAlias8x4 = 4,
  SmoothingModeAntiAlias = 4,
  SmoothingModeAntiAlias8x8 = 5,
};
enum StringAlignment : int { StringAlignmentNear = 0, StringAlignmentCenter = 1, StringAlignmentFar = 2 };
enum StringFormatFlags : int {
  StringFormatFlagsDirectionRightToLeft = 0x00000001,
  StringFormatFlagsDirectionVertical = 0x00000002,
  StringFormatFlagsNoFitBlackBox = 0x00000004,
  StringFormatFlagsNoFontFallback = 0x00000400,
  StringFormatFlagsMeasureTrailingSpaces = 0x00000800,
  StringFormatFlagsNoWrap = 0x00001000,
  StringFormatFlagsLineLimit = 0x00002000,
  StringFormatFlagsNoClip = 0x00004000,
};
enum StringTrimming : int {
  StringTrimmingNone = 0,
  StringTrimmingCharacter = 1,
  StringTrimmingWord = 2,
  StringTrimmingEllipsisCharacter = 3,
  StringTrimmingEllipsisWord = 4,
  StringTrimmingEllipsisPath = 5,
};
enum TextRenderingHint : int {
  TextRenderingHintSystemDefault = 0,
  TextRenderingHintSingleBitPerPixelGridFit = 1,
  TextRenderingHintSingleBitPerPixel = 2,
  TextRenderingHintAntiAliasGridFit = 3,
  TextRenderingHintAntiAlias = 4,
  TextRenderingHintClearTypeGridFit = 5,
};
enum Unit : int { UnitWorld = 0, UnitDisplay = 1, UnitPixel = 2, UnitPoint = 3 };
enum WrapMode : int {
  WrapModeTile = 0,
  WrapModeTileFlipX = 1,
  WrapModeTileFlipY = 2,
  WrapModeTileFlipXY = 3,
  WrapModeClamp = 4,
};

}  // namespace Gdiplus
