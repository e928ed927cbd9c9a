// What travels between processes of a machine: a message, or the answer to a sent one.
#pragma once

#include <sys/types.h>

#include <cstdint>

namespace winhost {

enum class PacketKind : std::uint32_t {
  Post = 1,
  Send,
  Notify,
  Reply,
  Stop,
  Activate,    // `window` of this thread is the foreground window now
  Deactivate,  // … no longer
  Show,        // `message`: the way, `wparam`: the style it had
  Input,       // see input_packet.h
};

struct Packet {
  PacketKind kind = PacketKind::Post;
  std::uint32_t thread = 0;  // whose queue it is for
  std::int32_t process = 0;  // who sends
  std::uint32_t message = 0;
  std::uint32_t time = 0;  // of posting
  std::uint32_t unused = 0;
  std::uint64_t window = 0;
  std::uint64_t wparam = 0;
  std::int64_t lparam = 0;    // Reply: the result
  std::uint64_t request = 0;  // Send, Reply: the sender's number for it
};

}  // namespace winhost
