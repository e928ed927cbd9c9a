#include "winhost/window/input_packet.h"

namespace winhost {
namespace {

std::uint64_t Pair(std::uint32_t low, std::uint32_t high) { return low | static_cast<std::uint64_t>(high) << 32; }
std::uint32_t Low(std::uint64_t pair) { return static_cast<std::uint32_t>(pair); }
std::uint32_t High(std::uint64_t pair) { return static_cast<std::uint32_t>(pair >> 32); }

}  // namespace

// kind, held and contact | character and data | the point
Packet PacketOfInput(const WindowInfo& to, const InputEvent& event) {
  Packet packet{};
  packet.kind = PacketKind::Input;
  packet.thread = to.thread;
  packet.window = reinterpret_cast<std::uintptr_t>(to.window);
  packet.message = event.message;
  packet.time = event.time;
  packet.unused = static_cast<std::uint32_t>(event.kind) | static_cast<std::uint32_t>(event.contact) << 8 |
                  static_cast<std::uint32_t>(event.held) << 16;
  packet.wparam = Pair(static_cast<std::uint32_t>(event.data), event.character);
  packet.lparam = static_cast<std::int64_t>(
      Pair(static_cast<std::uint32_t>(event.point.x), static_cast<std::uint32_t>(event.point.y)));
  return packet;
}

InputEvent InputOfPacket(const Packet& packet) {
  InputEvent event;
  event.kind = static_cast<InputKind>(packet.unused & 0xFF);
  event.contact = static_cast<ContactKind>(packet.unused >> 8 & 0xFF);
  event.held = static_cast<WORD>(packet.unused >> 16);
  event.window = reinterpret_cast<HWND>(packet.window);
  event.message = packet.message;
  event.data = static_cast<int>(Low(packet.wparam));
  event.character = static_cast<char16_t>(High(packet.wparam));
  const auto point = static_cast<std::uint64_t>(packet.lparam);
  event.point = {static_cast<LONG>(Low(point)), static_cast<LONG>(High(point))};
  event.time = packet.time;
  return event;
}

}  // namespace winhost
