#include "winhost/gdi/device_context.h"

#include <windows.h>

#include <vector>

#include "tests/winhost/gdi/canvas.h"

using namespace graphics_testing;
using winhost::CountObjects;
using winhost::ObjectKind;

namespace {

class DeviceContextTest : public GraphicsTest {};

TEST_F(DeviceContextTest, DibSectionIsWhatTheDcDrawsInto) {
  Canvas canvas(4, 3);
  const RECT rect{1, 1, 3, 2};
  HBRUSH brush = CreateSolidBrush(RGB(0x11, 0x22, 0x33));
  FillRect(canvas.dc(), &rect, brush);
  DeleteObject(brush);
  EXPECT_EQ(canvas.At(1, 1), 0x00112233u) << "alpha stays 0";
  EXPECT_EQ(canvas.Count(0x112233), 2);
  DIBSECTION section{};
  EXPECT_EQ(GetObjectW(canvas.bitmap(), sizeof section, &section), static_cast<int>(sizeof section));
  EXPECT_EQ(section.dsBm.bmWidth, 4);
  EXPECT_EQ(section.dsBm.bmBits, &canvas.At(0, 0));
  EXPECT_EQ(section.dsBmih.biHeight, -3);
}

TEST_F(DeviceContextTest, BottomUpSectionHasItsLastRowFirst) {
  Canvas canvas(2, 3, false);
  const RECT top{0, 0, 2, 1};
  FillRect(canvas.dc(), &top, GetSysColorBrush(COLOR_WINDOWTEXT));
  canvas.Fill(0xFFFFFFFF);
  FillRect(canvas.dc(), &top, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
  EXPECT_EQ(canvas.At(0, 0), 0u);
  EXPECT_EQ(canvas.At(0, 2), 0xFFFFFFFFu);
}

TEST_F(DeviceContextTest, BadSectionsAreRefused) {
  const BITMAPINFOHEADER good{sizeof(BITMAPINFOHEADER), 2, -2, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  std::vector<BITMAPINFOHEADER> bad(5, good);
  bad[0].biWidth = 0;
  bad[1].biHeight = 0;
  bad[2].biBitCount = 24;
  bad[3].biWidth = 0x8000;
  bad[4].biSize = 12;
  for (const BITMAPINFOHEADER& header : bad) {
    BITMAPINFO info{header, {}};
    void* bits = &info;
    EXPECT_EQ(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0), nullptr);
    EXPECT_EQ(bits, nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
  }
}

TEST_F(DeviceContextTest, SelectedBitmapCannotBeDeletedOrSelectedTwice) {
  Canvas canvas(2, 2);
  EXPECT_FALSE(DeleteObject(canvas.bitmap()));
  HDC other = CreateCompatibleDC(nullptr);
  EXPECT_EQ(SelectObject(other, canvas.bitmap()), nullptr);
  EXPECT_NE(SelectObject(canvas.dc(), canvas.bitmap()), nullptr) << "again into the same one is fine";
  DeleteDC(other);
}

TEST_F(DeviceContextTest, DeletedDcGivesItsBitmapFree) {
  Canvas canvas(2, 2);
  HDC other = CreateCompatibleDC(nullptr);
  BITMAPINFO info{{sizeof(BITMAPINFOHEADER), 1, 1, 1, 32, BI_RGB, 0, 0, 0, 0, 0}, {}};
  HBITMAP bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, nullptr, nullptr, 0);
  SelectObject(other, bitmap);
  DeleteDC(other);
  EXPECT_TRUE(DeleteObject(bitmap));
}

TEST_F(DeviceContextTest, FontDeletedWhileSelectedGoesOnWorking) {
  Canvas canvas(60, 30);
  HFONT font = MakeFont(u"Arial", 20);
  HGDIOBJ former = SelectObject(canvas.dc(), font);
  EXPECT_TRUE(DeleteObject(font));
  TEXTMETRICW metrics{};
  EXPECT_TRUE(GetTextMetricsW(canvas.dc(), &metrics));
  EXPECT_EQ(metrics.tmHeight - metrics.tmInternalLeading, 20);
  EXPECT_EQ(SelectObject(canvas.dc(), former), font);
  EXPECT_EQ(SelectObject(canvas.dc(), font), nullptr) << "now it is gone";
}

TEST_F(DeviceContextTest, SavedStateComesBackWhole) {
  Canvas canvas(10, 10);
  HFONT font = MakeFont(u"Arial", 20);
  HRGN region = CreateRectRgn(2, 2, 4, 4);
  const int first = SaveDC(canvas.dc());
  SetWindowOrgEx(canvas.dc(), 3, 4, nullptr);
  HGDIOBJ gui = SelectObject(canvas.dc(), font);
  SetTextColor(canvas.dc(), RGB(1, 2, 3));
  ExtSelectClipRgn(canvas.dc(), region, RGN_AND);
  EXPECT_EQ(SaveDC(canvas.dc()), first + 1);
  EXPECT_TRUE(RestoreDC(canvas.dc(), first));
  POINT origin{9, 9};
  GetWindowOrgEx(canvas.dc(), &origin);
  EXPECT_EQ(origin.x, 0);
  EXPECT_EQ(SetTextColor(canvas.dc(), 0), RGB(0, 0, 0));
  EXPECT_EQ(SelectObject(canvas.dc(), gui), gui);
  RECT box;
  GetClipBox(canvas.dc(), &box);
  EXPECT_EQ(box, (RECT{0, 0, 10, 10}));
  EXPECT_FALSE(RestoreDC(canvas.dc(), first + 1)) << "the later state is dropped";
  EXPECT_FALSE(RestoreDC(canvas.dc(), -1));
  DeleteObject(region);
  DeleteObject(font);
}

TEST_F(DeviceContextTest, ClipIsInDeviceCoordinatesAndMovesNothing) {
  Canvas canvas(10, 10);
  HRGN region = CreateRectRgn(2, 2, 5, 5);
  POINT former{7, 7};
  OffsetWindowOrgEx(canvas.dc(), -3, -3, &former);
  EXPECT_EQ(former.x, 0);
  EXPECT_EQ(ExtSelectClipRgn(canvas.dc(), region, RGN_AND), SIMPLEREGION);
  const RECT all{-50, -50, 50, 50};
  canvas.Fill(0xFFFFFFFF);
  FillRect(canvas.dc(), &all, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
  EXPECT_EQ(canvas.Drawn(0xFFFFFFFF), (RECT{2, 2, 5, 5}));
  RECT box;
  EXPECT_EQ(GetClipBox(canvas.dc(), &box), SIMPLEREGION);
  EXPECT_EQ(box, (RECT{-1, -1, 2, 2}));
  EXPECT_EQ(ExtSelectClipRgn(canvas.dc(), nullptr, RGN_COPY), SIMPLEREGION);
  DeleteObject(region);
}

TEST_F(DeviceContextTest, WrongAndStaleHandlesAreFoundOut) {
  Canvas canvas(2, 2);
  HDC gone = CreateCompatibleDC(nullptr);
  DeleteDC(gone);
  HDC another = CreateCompatibleDC(nullptr);
  EXPECT_NE(another, gone) << "a place in the table is used again, a handle is not";
  SetLastError(0);
  EXPECT_FALSE(DeleteDC(gone));
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_HANDLE));
  EXPECT_EQ(SaveDC(gone), 0);
  EXPECT_EQ(SaveDC(reinterpret_cast<HDC>(canvas.bitmap())), 0);
  EXPECT_EQ(SelectObject(another, reinterpret_cast<HGDIOBJ>(0x1234)), nullptr);
  EXPECT_FALSE(BitBlt(gone, 0, 0, 1, 1, canvas.dc(), 0, 0, SRCCOPY));
  EXPECT_EQ(GetObjectW(gone, 0, nullptr), 0);
  EXPECT_FALSE(DeleteObject(nullptr));
  EXPECT_TRUE(DeleteObject(GetStockObject(DEFAULT_GUI_FONT))) << "stock objects stay";
  EXPECT_NE(GetObjectW(GetStockObject(DEFAULT_GUI_FONT), 0, nullptr), 0);
  DeleteDC(another);
}

TEST_F(DeviceContextTest, PlannedFailuresLeaveNothingBehind) {
  Start(R"({"faults": [{"operation": "CreateDIBSection", "error": 8},
                       {"operation": "CreateFontIndirectW", "subject": "arial", "error": 14}]})");
  BITMAPINFO info{{sizeof(BITMAPINFOHEADER), 1, 1, 1, 32, BI_RGB, 0, 0, 0, 0, 0}, {}};
  EXPECT_EQ(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, nullptr, nullptr, 0), nullptr);
  EXPECT_EQ(GetLastError(), 8u);
  EXPECT_EQ(MakeFont(u"Arial", 12), nullptr);
  EXPECT_EQ(GetLastError(), 14u);
}

TEST_F(DeviceContextTest, ResolutionIsTheMachines) {
  Start(R"({"dpi": 144})");
  HDC dc = CreateCompatibleDC(nullptr);
  EXPECT_EQ(GetDeviceCaps(dc, LOGPIXELSX), 144);
  EXPECT_EQ(GetDeviceCaps(dc, BITSPIXEL), 32);
  DeleteDC(dc);
}

TEST_F(DeviceContextTest, PixelDcDrawsIntoSomebodysPixelsWithinTheVisibleRegion) {
  auto pixels = std::make_shared<std::vector<std::uint32_t>>(6 * 4, 0xFFFFFFFFu);
  std::weak_ptr<std::vector<std::uint32_t>> alive = pixels;
  const winhost::PixelBuffer buffer{reinterpret_cast<std::uint8_t*>(pixels->data()), 4, 4, 6 * 4};
  HDC dc = winhost::MakePixelDc(buffer, pixels);
  const RECT visible[] = {{0, 0, 2, 2}, {2, 2, 4, 4}};
  EXPECT_TRUE(winhost::SetVisibleRegion(dc, visible));
  HRGN region = CreateRectRgn(0, 0, 4, 3);
  ExtSelectClipRgn(dc, region, RGN_COPY);
  const RECT all{0, 0, 9, 9};
  FillRect(dc, &all, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
  EXPECT_EQ(std::count(pixels->begin(), pixels->end(), 0u), 4 + 2);
  EXPECT_EQ((*pixels)[2 * 6 + 2], 0u);
  EXPECT_EQ((*pixels)[3 * 6 + 2], 0xFFFFFFFFu);
  pixels.reset();
  EXPECT_FALSE(alive.expired()) << "held by the DC";
  EXPECT_FALSE(DeleteDC(dc)) << "only its maker ends it";
  EXPECT_TRUE(winhost::EndPixelDc(dc));
  EXPECT_TRUE(alive.expired());
  DeleteObject(region);
}

TEST_F(DeviceContextTest, ScreenDcMeasuresAndDrawsNothing) {
  HDC dc = winhost::MakeScreenDc({1920, 1080});
  RECT rect{0, 0, 100, 100};
  EXPECT_GT(DrawTextW(dc, u"text", -1, &rect, DT_CALCRECT | DT_SINGLELINE), 0);
  EXPECT_GT(rect.right, 0);
  EXPECT_GT(DrawTextW(dc, u"text", -1, &rect, DT_SINGLELINE), 0);
  EXPECT_TRUE(FillRect(dc, &rect, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH))));
  EXPECT_FALSE(winhost::DcPixels(dc).has_value());
  EXPECT_EQ(GetDeviceCaps(dc, HORZRES), 1920);
  EXPECT_TRUE(winhost::EndPixelDc(dc));
}

}  // namespace
