#include "winhost/dialogs/folder_list.h"

#include <algorithm>

#include "winhost/machine/text.h"

namespace winhost {
namespace {

constexpr int kThumbWidth = 10, kShortestThumb = 24;  // at 96 dpi
constexpr int kRowsANotch = 3;

}  // namespace

bool FolderList::Make(HWND parent, int id) {
  const Class kClass{u"FolderList", CS_DBLCLKS, IDC_ARROW};
  return Create(kClass, 0, WS_CHILD | WS_VISIBLE | WS_TABSTOP, u"", {}, parent, id);
}

void FolderList::Show(std::vector<FolderPlace> places, const std::u16string& chosen) {
  places_ = std::move(places);
  chosen_ = hot_ = -1;
  top_ = 0;
  const auto found = std::ranges::find(places_, chosen, &FolderPlace::path);
  if (found != places_.end()) {
    chosen_ = static_cast<int>(found - places_.begin());
    Reveal(chosen_);
  }
  InvalidateRect(window(), nullptr, FALSE);
}

const FolderPlace* FolderList::Chosen() const {
  return chosen_ < 0 ? nullptr : &places_[static_cast<std::size_t>(chosen_)];
}

LRESULT FolderList::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_PAINT:
      Paint();
      return 0;
    case WM_ERASEBKGND:
      return TRUE;
    case WM_SIZE:
      ScrollTo(top_);
      return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      InvalidateRect(window(), nullptr, FALSE);
      return 0;
    case WM_LBUTTONDOWN:
      Down(PointOf(lparam));
      return 0;
    case WM_LBUTTONDBLCLK:
      if (RowAt(PointOf(lparam)) >= 0) {
        Notify(LBN_DBLCLK);
      } else {
        Down(PointOf(lparam));
      }
      return 0;
    case WM_MOUSEMOVE:
      Move(PointOf(lparam));
      return 0;
    case WM_LBUTTONUP:
      ReleaseCapture();
      return 0;
    case WM_CAPTURECHANGED:
      grip_ = -1;
      return 0;
    case WM_MOUSELEAVE:
      Hover(-1);
      return 0;
    case WM_MOUSEWHEEL:
      ScrollTo(top_ - GET_WHEEL_DELTA_WPARAM(wparam) * kRowsANotch * RowHeight() / WHEEL_DELTA);
      return 0;
    case WM_KEYDOWN:
      return Press(wparam) ? 0 : Default(message, wparam, lparam);
    case WM_CHAR:
      GoTo(static_cast<char16_t>(wparam));
      return 0;
    default:
      return Default(message, wparam, lparam);
  }
}

bool FolderList::Press(WPARAM key) {
  const int page = std::max(Height() / RowHeight() - 1, 1);
  switch (key) {
    case VK_UP:
      Choose(chosen_ < 0 ? 0 : chosen_ - 1);
      return true;
    case VK_DOWN:
      Choose(chosen_ + 1);
      return true;
    case VK_PRIOR:
      Choose(chosen_ - page);
      return true;
    case VK_NEXT:
      Choose(chosen_ + page);
      return true;
    case VK_HOME:
      Choose(0);
      return true;
    case VK_END:
      Choose(Rows() - 1);
      return true;
    case VK_RIGHT:
      if (chosen_ >= 0) Notify(LBN_DBLCLK);
      return true;
    default:
      return false;
  }
}

void FolderList::GoTo(char16_t letter) {
  for (int i = 1; i <= Rows(); ++i) {
    const int row = (std::max(chosen_, -1) + i) % Rows();
    const std::u16string& name = places_[static_cast<std::size_t>(row)].name;
    if (name.empty() || Upcase(name[0]) != Upcase(letter)) continue;
    Choose(row);
    return;
  }
}

void FolderList::Down(POINT client) {
  SetFocus(window());
  const RECT thumb = Thumb();
  if (!IsRectEmpty(&thumb) && client.x >= thumb.left) {
    if (client.y < thumb.top || client.y >= thumb.bottom) {
      ScrollTo(top_ + (client.y < thumb.top ? -Height() : Height()));
    } else {
      grip_ = static_cast<int>(client.y - thumb.top);
      SetCapture(window());
    }
    return;
  }
  const int row = RowAt(client);
  if (row >= 0) Choose(row);
}

void FolderList::Move(POINT client) {
  if (grip_ < 0) {
    Hover(RowAt(client));
    return;
  }
  const RECT thumb = Thumb();
  const int way = Height() - static_cast<int>(thumb.bottom - thumb.top);
  if (way > 0) ScrollTo(MulDiv(static_cast<int>(client.y) - grip_, Rows() * RowHeight() - Height(), way));
}

void FolderList::Hover(int row) {
  if (row == hot_) return;
  if (hot_ < 0) {
    TRACKMOUSEEVENT track{sizeof(TRACKMOUSEEVENT), TME_LEAVE, window(), 0};
    TrackMouseEvent(&track);
  }
  hot_ = row;
  InvalidateRect(window(), nullptr, FALSE);
}

void FolderList::Choose(int row) {
  if (places_.empty()) return;
  row = std::clamp(row, 0, Rows() - 1);
  Reveal(row);
  if (row == chosen_) return;
  chosen_ = row;
  InvalidateRect(window(), nullptr, FALSE);
  Notify(LBN_SELCHANGE);
}

void FolderList::Reveal(int row) {
  const int first = row * RowHeight();
  if (first < top_) ScrollTo(first);
  if (first + RowHeight() > top_ + Height()) ScrollTo(first + RowHeight() - Height());
}

void FolderList::ScrollTo(int y) {
  top_ = std::clamp(y, 0, std::max(Rows() * RowHeight() - Height(), 0));
  InvalidateRect(window(), nullptr, FALSE);
}

int FolderList::Height() const {
  RECT box{};
  GetClientRect(window(), &box);
  return static_cast<int>(box.bottom);
}

int FolderList::RowAt(POINT client) const {
  RECT box{};
  GetClientRect(window(), &box);
  const RECT thumb = Thumb();
  if (!PtInRect(&box, client) || (!IsRectEmpty(&thumb) && client.x >= thumb.left)) return -1;
  const int row = static_cast<int>(client.y + top_) / RowHeight();
  return row < Rows() ? row : -1;
}

RECT FolderList::RowArea(int row) const {
  RECT area{};
  GetClientRect(window(), &area);
  const RECT thumb = Thumb();
  if (!IsRectEmpty(&thumb)) area.right = thumb.left;
  area.top = row * RowHeight() - top_;
  area.bottom = area.top + RowHeight();
  return area;
}

RECT FolderList::Thumb() const {
  RECT box{};
  GetClientRect(window(), &box);
  const int all = Rows() * RowHeight(), height = static_cast<int>(box.bottom);
  if (all <= height || height <= 0) return {};
  const int length = std::clamp(MulDiv(height, height, all), std::min(look_.Px(kShortestThumb), height), height);
  const int top = MulDiv(height - length, top_, all - height);
  return {box.right - look_.Px(kThumbWidth), top, box.right, top + length};
}

void FolderList::Paint() {
  const PaintScope paint(window());
  const Painter painter(look_, paint.context());
  if (!painter) return;
  RECT box{};
  GetClientRect(window(), &box);
  painter.Fill(box, ink::kPaper);
  for (int row = top_ / RowHeight(); row < Rows(); ++row) {
    const RECT area = RowArea(row);
    if (area.top >= box.bottom) break;
    PaintRow(painter, row, area);
  }
  if (places_.empty()) {
    box.bottom = std::min<LONG>(box.bottom, look_.Px(56));
    painter.Text(u"此处没有文件夹。", box, ink::kFaint, DT_CENTER);
  }
  RECT thumb = Thumb();
  if (IsRectEmpty(&thumb)) return;
  InflateRect(&thumb, -look_.Px(3), -look_.Px(2));
  painter.Fill(thumb, grip_ >= 0 ? ink::kFaint : RGB(180, 180, 180));
}

void FolderList::PaintRow(const Painter& painter, int row, const RECT& area) const {
  if (row == chosen_) {
    painter.Fill(area, ink::kChosen);
    if (GetFocus() == window()) painter.Frame(area, RGB(153, 209, 255));
  } else if (row == hot_) {
    painter.Fill(area, ink::kHot);
  }
  const FolderPlace& place = places_[static_cast<std::size_t>(row)];
  const LONG side = look_.Px(16), left = area.left + look_.Px(8), top = (area.top + area.bottom - side) / 2;
  DrawGlyph(painter.context(), place.glyph, {left, top, left + side, top + side}, ink::kText);
  const RECT text{left + side + look_.Px(8), area.top, area.right - look_.Px(4), area.bottom};
  painter.Text(place.name, text, ink::kText, DT_LEFT | DT_END_ELLIPSIS);
}

}  // namespace winhost
