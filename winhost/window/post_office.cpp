#include "winhost/window/post_office.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unordered_map>

#include "winhost/kernel/waitable.h"
#include "winhost/window/activation.h"
#include "winhost/window/input_packet.h"
#include "winhost/window/live_process.h"
#include "winhost/window/place.h"

namespace winhost {
namespace {

// Answers that threads of this process wait for. Guarded by WaitLock.
struct Questions {
  std::uint64_t last = 0;
  std::unordered_map<std::uint64_t, std::shared_ptr<SentMessage>> open;
};

Questions& TheQuestions() {
  static auto* questions = new Questions;
  return *questions;
}

std::uint64_t RealNs() {
  timespec now;
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<std::uint64_t>(now.tv_sec) * 1'000'000'000 + static_cast<std::uint64_t>(now.tv_nsec);
}

// An abstract name needs no file and vanishes with its process.
socklen_t Fill(const std::string& name, sockaddr_un* address) {
  *address = sockaddr_un{};
  address->sun_family = AF_UNIX;
  std::memcpy(address->sun_path + 1, name.data(), name.size());
  return static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size());
}

// What the thread is to do, for the kinds of packets that are no message.
std::function<void()> TaskOf(const Packet& packet) {
  const HWND window = reinterpret_cast<HWND>(packet.window);
  switch (packet.kind) {
    case PacketKind::Activate:
      return [window] { ActivateMine(window, false); };
    case PacketKind::Deactivate:
      return [] { ActivateMine(nullptr, false); };
    case PacketKind::Show:
      return [window, show = static_cast<int>(packet.message), style = static_cast<DWORD>(packet.wparam)] {
        ShowMine(window, show, style);
      };
    default:
      return {};
  }
}

[[noreturn]] void Fail(const char* what) {
  std::fprintf(stderr, "machine: %s: %s\n", what, std::strerror(errno));
  std::exit(3);
}

}  // namespace

PostOffice& PostOffice::Current() { return Machine::Current().Get<PostOffice>(); }

PostOffice::PostOffice(Machine& machine) {
  struct stat folder {};
  if (stat(machine.folder().c_str(), &folder) != 0) Fail("machine folder");
  prefix_ = "vanta-window-" + std::to_string(folder.st_dev) + "-" + std::to_string(folder.st_ino) + "-";
  socket_ = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  sockaddr_un mine;
  const socklen_t size = Fill(AddressOf(getpid()), &mine);
  if (socket_ < 0 || bind(socket_, reinterpret_cast<sockaddr*>(&mine), size) != 0) Fail("message socket");
  // A sender is held up for so long while the reader has not caught up.
  constexpr timeval kPatience{1, 0};
  setsockopt(socket_, SOL_SOCKET, SO_SNDTIMEO, &kPatience, sizeof kPatience);
  reader_ = std::thread([this] { Read(); });
}

PostOffice::~PostOffice() {
  Deliver(getpid(), Packet{.kind = PacketKind::Stop});
  reader_.join();
  close(socket_);
}

std::string PostOffice::AddressOf(pid_t process) const { return prefix_ + std::to_string(process); }

bool PostOffice::Deliver(pid_t process, Packet packet) {
  packet.process = getpid();
  sockaddr_un address;
  const socklen_t size = Fill(AddressOf(process), &address);
  for (;;) {
    if (sendto(socket_, &packet, sizeof packet, MSG_NOSIGNAL, reinterpret_cast<sockaddr*>(&address), size) >= 0)
      return true;
    if (errno == EINTR) continue;
    SetLastError(errno == EAGAIN ? ERROR_NOT_ENOUGH_QUOTA : ERROR_INVALID_WINDOW_HANDLE);
    return false;
  }
}

std::optional<LRESULT> PostOffice::Ask(pid_t process, Packet packet, std::uint64_t real_ns) {
  const auto queue = ThreadQueue::Mine();
  const auto question = std::make_shared<SentMessage>();
  {
    std::scoped_lock lock(WaitLock());
    packet.request = ++TheQuestions().last;
    TheQuestions().open.emplace(packet.request, question);
  }
  const std::uint64_t start = ProcessStartTicks(process);
  constexpr std::uint64_t kLookEveryNs = 100'000'000;  // whether the process still lives: real time, not the machine's
  std::uint64_t left = real_ns;
  bool waiting = Deliver(process, packet);
  while (waiting && left > 0) {
    RunSentMessages(*queue);
    const std::uint64_t begun = RealNs();
    const int ended =
        WaitForObjects({}, false, std::min(left, kLookEveryNs), [&] { return question->done || !queue->sent.empty(); });
    if (left != kForEver) left -= std::min(left, RealNs() - begun);
    const bool gone = ended == kWaitTimedOut && ProcessStartTicks(process) != start;
    std::scoped_lock lock(WaitLock());
    waiting = !question->done && !gone;
  }
  std::scoped_lock lock(WaitLock());
  TheQuestions().open.erase(packet.request);
  return question->done ? std::optional(question->result) : std::nullopt;
}

void PostOffice::Read() {
  Packet packet;
  for (;;) {
    const ssize_t size = recv(socket_, &packet, sizeof packet, 0);
    if (size < 0 && errno == EINTR) continue;
    if (size < 0) return;
    if (size != sizeof packet) continue;  // nobody of this machine
    if (packet.kind == PacketKind::Stop) return;
    Accept(packet);
  }
}

void PostOffice::Accept(const Packet& packet) {
  const HWND window = reinterpret_cast<HWND>(packet.window);
  const auto lparam = static_cast<LPARAM>(packet.lparam);
  bool accepted = true;
  {
    std::scoped_lock lock(WaitLock());
    const auto queue = ThreadQueue::Of(packet.thread);
    if (packet.kind == PacketKind::Reply) {
      const auto question = TheQuestions().open.find(packet.request);
      if (question == TheQuestions().open.end()) return;
      question->second->result = lparam;
      question->second->done = true;
    } else if (!queue) {
      accepted = false;
    } else if (packet.kind == PacketKind::Post) {
      queue->Post({window, packet.message, packet.wparam, lparam, packet.time, {}});
    } else if (packet.kind == PacketKind::Input) {
      queue->Push(InputOfPacket(packet));
    } else if (const auto task = TaskOf(packet)) {
      const auto message = std::make_shared<SentMessage>();
      message->task = task;
      queue->sent.push_back(message);
    } else {
      const pid_t reply_to = packet.kind == PacketKind::Send ? packet.process : 0;
      queue->sent.push_back(std::make_shared<SentMessage>(
          SentMessage{window, packet.message, packet.wparam, lparam, false, 0, reply_to, packet.request, {}}));
    }
  }
  if (!accepted && packet.kind == PacketKind::Send) {  // the thread has ended: nobody would ever answer
    Deliver(packet.process, Packet{.kind = PacketKind::Reply, .request = packet.request});
  }
  WakeWaiters();
}

}  // namespace winhost
