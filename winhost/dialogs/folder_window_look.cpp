// How the folder picker looks, and where its parts are. Lengths are at 96 dpi.
#include <algorithm>

#include "winhost/dialogs/folder_window.h"

namespace winhost {
namespace {

constexpr int kWidth = 560, kHeight = 430;
constexpr int kTitle = 34, kCross = 46, kMargin = 14, kGap = 8;
constexpr int kLine = 28, kNotice = 22, kFooter = 56, kButton = 30;
constexpr int kOkWidth = 104, kCancelWidth = 88, kLabel = 58;

void Put(const WindowPart& part, int left, int top, int right, int bottom) {
  MoveWindow(part.window(), left, top, std::max(right - left, 0), std::max(bottom - top, 0), TRUE);
}

RECT FrameOf(HWND window) {
  RECT frame{};
  if (!window || IsIconic(window) || !GetWindowRect(window, &frame)) {
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &frame, 0);
  }
  return frame;
}

}  // namespace

// Over its owner, and inside the work area, which may be smaller than it would like to be.
void FolderWindow::Center() {
  RECT work{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  const RECT over = FrameOf(question_.owner);
  const LONG width = std::min<LONG>(look_.Px(kWidth), work.right - work.left);
  const LONG height = std::min<LONG>(look_.Px(kHeight), work.bottom - work.top);
  const LONG left = std::clamp((over.left + over.right - width) / 2, work.left, work.right - width);
  const LONG top = std::clamp((over.top + over.bottom - height) / 2, work.top, work.bottom - height);
  SetWindowPos(window(), nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

void FolderWindow::Rescale(int dpi, const RECT* place) {
  look_.Follow(dpi);
  if (place) {
    SetWindowPos(window(), nullptr, place->left, place->top, place->right - place->left, place->bottom - place->top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
  }
  LayOut();
}

int FolderWindow::TopOfRows() const { return static_cast<int>(WhereArea().bottom) + look_.Px(kGap); }

void FolderWindow::LayOut() {
  if (!notice_.window()) return;  // the parts are not all there yet
  RECT box{};
  GetClientRect(window(), &box);
  const int margin = look_.Px(kMargin), right = static_cast<int>(box.right) - margin;
  const RECT where = WhereArea();
  Put(up_, margin, where.top, margin + look_.Px(kLine), where.bottom);

  const int footer = static_cast<int>(box.bottom) - look_.Px(kFooter);
  const int button = footer + look_.Px((kFooter - kButton) / 2);
  const int cancel = right - look_.Px(kCancelWidth), ok = cancel - look_.Px(kGap + kOkWidth);
  Put(cancel_, cancel, button, right, button + look_.Px(kButton));
  Put(ok_, ok, button, ok + look_.Px(kOkWidth), button + look_.Px(kButton));

  const int line = footer - look_.Px(kNotice + kLine + 2), left = margin + look_.Px(kLabel);
  Put(line_, left, line, right, line + look_.Px(kLine));
  Put(notice_, left, line + look_.Px(kLine), right, line + look_.Px(kLine + kNotice));
  // One pixel inside the frame that is painted around the rows.
  Put(rows_, margin + 1, TopOfRows() + 1, right - 1, line - look_.Px(kGap + 2) - 1);
  InvalidateRect(window(), nullptr, FALSE);
}

RECT FolderWindow::CrossArea() const {
  RECT box{};
  GetClientRect(window(), &box);
  return {box.right - look_.Px(kCross), 1, box.right - 1, look_.Px(kTitle)};
}

RECT FolderWindow::WhereArea() const {
  RECT box{};
  GetClientRect(window(), &box);
  const int margin = look_.Px(kMargin);
  const int top = look_.Px(kTitle + kGap / 2 + (question_.instruction.empty() ? 0 : kNotice + kGap / 2));
  return {margin + look_.Px(kLine + kGap), top, box.right - margin, top + look_.Px(kLine)};
}

LRESULT FolderWindow::HitTest(POINT screen) const {
  POINT client = screen;
  RECT box{};
  ScreenToClient(window(), &client);
  GetClientRect(window(), &box);
  const RECT cross = CrossArea();
  if (!PtInRect(&box, client)) return HTNOWHERE;
  if (PtInRect(&cross, client)) return HTCLOSE;
  return client.y < look_.Px(kTitle) ? HTCAPTION : HTCLIENT;
}

void FolderWindow::HoverCross(bool hot) {
  if (hot == cross_hot_) return;
  cross_hot_ = hot;
  if (hot) {
    TRACKMOUSEEVENT track{sizeof(TRACKMOUSEEVENT), TME_LEAVE | TME_NONCLIENT, window(), 0};
    TrackMouseEvent(&track);
  }
  const RECT cross = CrossArea();
  InvalidateRect(window(), &cross, FALSE);
}

void FolderWindow::Paint() {
  const PaintScope paint(window());
  const Painter painter(look_, paint.context());
  if (!painter) return;
  RECT box{};
  GetClientRect(window(), &box);
  const int footer = static_cast<int>(box.bottom) - look_.Px(kFooter);
  painter.Fill({box.left, box.top, box.right, footer}, ink::kPaper);
  painter.Fill({box.left, footer, box.right, box.bottom}, ink::kFooter);
  painter.Fill({box.left, footer, box.right, footer + 1}, ink::kLine);
  PaintTitle(painter, box);
  PaintWhere(painter);
  RECT rows{};
  GetWindowRect(rows_.window(), &rows);
  MapWindowPoints(nullptr, window(), reinterpret_cast<POINT*>(&rows), 2);
  InflateRect(&rows, 1, 1);
  painter.Frame(rows, ink::kLine);
  const int line = footer - look_.Px(kNotice + kLine + 2), margin = look_.Px(kMargin);
  painter.Text(u"文件夹：", {margin, line, margin + look_.Px(kLabel), line + look_.Px(kLine)}, ink::kText, DT_LEFT);
  painter.Frame(box, ink::kEdge);
}

void FolderWindow::PaintTitle(const Painter& painter, const RECT& box) const {
  const RECT cross = CrossArea();
  const int margin = look_.Px(kMargin), title = look_.Px(kTitle);
  painter.Text(question_.title, {margin, 0, cross.left, title}, ink::kText, DT_LEFT | DT_END_ELLIPSIS);
  if (cross_hot_) painter.Fill(cross, ink::kWarning);
  const LONG side = look_.Px(16), left = (cross.left + cross.right - side) / 2;
  const LONG top = (cross.top + cross.bottom - side) / 2;
  DrawGlyph(painter.context(), Glyph::Close, {left, top, left + side, top + side},
            cross_hot_ ? ink::kPaper : ink::kText);
  if (!question_.instruction.empty()) {
    painter.Text(question_.instruction, {margin, title, box.right - margin, title + look_.Px(kNotice)}, ink::kText,
                 DT_LEFT | DT_END_ELLIPSIS);
  }
}

void FolderWindow::PaintWhere(const Painter& painter) const {
  const RECT area = WhereArea();
  const FolderPlace place = PlaceOf(where_);
  painter.Frame(area, ink::kLine);
  const LONG side = look_.Px(16), left = area.left + look_.Px(8), top = (area.top + area.bottom - side) / 2;
  DrawGlyph(painter.context(), place.glyph, {left, top, left + side, top + side}, ink::kText);
  painter.Text(place.name, {left + side + look_.Px(8), area.top, area.right - look_.Px(8), area.bottom}, ink::kText,
               DT_LEFT | DT_PATH_ELLIPSIS);
}

}  // namespace winhost
