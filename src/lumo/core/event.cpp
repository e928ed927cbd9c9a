#include "lumo/core/event.h"

namespace lumo {
namespace {

struct EventName {
  StringView name;
  EventType type;
};
constexpr EventName kEventNames[] = {
    {TEXT("all"), EventAll},
    {TEXT("keydown"), EventKeyDown},
    {TEXT("keyup"), EventKeyUp},
    {TEXT("char"), EventChar},
    {TEXT("syskey"), EventSysKey},
    {TEXT("mousemove"), EventMouseMove},
    {TEXT("mouseenter"), EventMouseEnter},
    {TEXT("mouseleave"), EventMouseLeave},
    {TEXT("mousehover"), EventMouseHover},
    {TEXT("buttondown"), EventButtonDown},
    {TEXT("buttonup"), EventButtonUp},
    {TEXT("rbuttondown"), EventRButtonDown},
    {TEXT("doubleclick"), EventDoubleClick},
    {TEXT("menu"), EventMenu},
    {TEXT("scrollwheel"), EventScrollWheel},
    {TEXT("setfocus"), EventSetFocus},
    {TEXT("killfocus"), EventKillFocus},
    {TEXT("setcursor"), EventSetCursor},
    {TEXT("select"), EventSelect},
    {TEXT("unselect"), EventUnselect},
    {TEXT("return"), EventReturn},
    {TEXT("tab"), EventTab},
    {TEXT("scrollchange"), EventScrollChange},
    {TEXT("valuechange"), EventValueChange},
};
static_assert(sizeof kEventNames / sizeof *kEventNames == 24);

}  // namespace

int EventTypeFromName(StringView name) {
  for (const EventName& row : kEventNames) {
    if (row.name == name) return row.type;
  }
  return 0;
}

}  // namespace lumo
