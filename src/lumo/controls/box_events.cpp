// A container's share in the delivery of events: records that bubble up from below, and bindings for them.
#include "lumo/controls/box_base.h"

namespace lumo {

int BoxBase::HandleEvent(_Msg& msg) {
  int result = 1;
  // Most records that come by concern nobody here.
  const bool heard = msg.control == this || !bubbledCode_.IsEmpty() || !bubbledLayout_.IsEmpty();
  if (heard && !IsInternalEvent(msg.type)) {
    const WeakRef<ControlBase> self(this);
    if (!RunOwnHandlers(msg, self, &result)) return result;
    if (!bubbledCode_.IsEmpty() && !bubbledCode_.Run(msg, self, &result)) return result;
    if (result && !bubbledLayout_.IsEmpty() && !bubbledLayout_.Run(msg, self, &result)) return result;
  }
  if (result) DoEvent(msg);
  return result;
}

int BoxBase::AttachXmlEvent(StringView kind, StringView type, StringView receiver, StringView list) {
  if (kind != TEXT("BubbledEvent")) return ControlBase::AttachXmlEvent(kind, type, receiver, list);
  bubbledLayout_.Add(EventTypeFromName(type), MakeLayoutBinding(this, receiver, list));
  return 0;
}

}  // namespace lumo
