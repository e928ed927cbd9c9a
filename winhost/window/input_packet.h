// Input for a window of another process, as a packet.
#pragma once

#include "winhost/window/input_event.h"
#include "winhost/window/packet.h"
#include "winhost/window/window_table.h"

namespace winhost {

Packet PacketOfInput(const WindowInfo& to, const InputEvent& event);
InputEvent InputOfPacket(const Packet& packet);

}  // namespace winhost
