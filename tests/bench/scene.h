// What paint_bench and paint_peer both draw: a scene of the setup window's size and contents.
#pragma once

namespace scene {

struct Box {
  int left, top, right, bottom;
};
struct Filling {
  Box box;
  int radius;
  unsigned color;    // ARGB
  unsigned outline;  // 0: none
};
struct Writing {
  Box box;
  const char16_t* text;
};

constexpr int kWidth = 600, kHeight = 400, kFontPixels = 14;
constexpr Box kAll = {0, 0, kWidth, kHeight};
constexpr Box kArt = {130, 60, 470, 188};  // its picture's own size
constexpr Box kIcons[] = {{40, 370, 56, 386}, {340, 370, 356, 386}};
constexpr unsigned kTextColor = 0xFF223344;

constexpr Filling kGround = {kAll, 8, 0xFFF7F9FB, 0};
constexpr Filling kButtons[] = {{{180, 260, 290, 300}, 20, 0xFF00BB96, 0xFF009977},
                                {{310, 260, 420, 300}, 20, 0xFFE6EAEE, 0xFF009977}};
constexpr Filling kTrack = {{40, 330, 560, 334}, 2, 0xFFE0E4E8, 0};
constexpr unsigned kBarFrom = 0xFF2A7DE1, kBarTo = 0xFF00BB96;
constexpr Writing kTexts[] = {{{180, 260, 290, 300}, u"\x7acb\x5373\x5b89\x88c5"},
                              {{310, 260, 420, 300}, u"Cancel"},
                              {{60, 366, 330, 390}, u"\x6211\x5df2\x9605\x8bfb\x5e76\x540c\x610f"},
                              {{360, 366, 600, 390}, u"\x6211\x5df2\x9605\x8bfb\x5e76\x540c\x610f"},
                              {{16, 8, 300, 32}, u"VantaView"},
                              {{40, 200, 560, 230}, u"C:\\Program Files\\VantaPictor"}};
// What a progress step changes: the bar and the text below it.
constexpr Box kStatus = {40, 340, 560, 360};
constexpr Box kStep = {40, 330, 560, 360};

constexpr Writing StatusAt(int percent) { return {kStatus, percent % 2 ? u"Installing 37%" : u"Installing 38%"}; }
constexpr Box BarAt(int percent) { return {40, 330, 40 + 520 * percent / 100, 334}; }

constexpr bool Meet(const Box& a, const Box& b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

constexpr const char* kArtDrawing =
    "<svg width='340' height='128'><defs><linearGradient id='g' x2='100%'><stop offset='0' stop-color='#00bb96'/>"
    "<stop offset='1' stop-color='#2a7de1'/></linearGradient></defs><rect width='340' height='128' rx='12' "
    "fill='url(#g)'/><circle cx='170' cy='64' r='40' fill='#fff' fill-opacity='.8'/></svg>";
constexpr const char* kIconDrawing =
    "<svg width='16' height='16'><circle cx='8' cy='8' r='7' fill='none' stroke='#555' stroke-width='1.5'/>"
    "<path d='M4 8l3 3 5-6' fill='none' stroke='#00bb96' stroke-width='2'/></svg>";

}  // namespace scene
