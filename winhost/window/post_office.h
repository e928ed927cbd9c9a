// Messages between the processes of a machine: a datagram socket a process, and a thread that reads it and puts what
// comes into the queues. Pointers in parameters do not travel.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <string>
#include <thread>

#include "winhost/machine/machine.h"
#include "winhost/window/packet.h"
#include "winhost/window/thread_queue.h"

namespace winhost {

class PostOffice {
 public:
  explicit PostOffice(Machine& machine);
  ~PostOffice();
  PostOffice(const PostOffice&) = delete;
  PostOffice& operator=(const PostOffice&) = delete;

  static PostOffice& Current();

  // False with the last error: ERROR_INVALID_WINDOW_HANDLE when the process is not there, ERROR_NOT_ENOUGH_QUOTA when
  // it has not read for a second.
  bool Deliver(pid_t process, Packet packet);
  // Sends and waits for the answer, running meanwhile what is sent to this thread. None when the process ends first, or
  // `real_ns` of real time have passed.
  std::optional<LRESULT> Ask(pid_t process, Packet packet, std::uint64_t real_ns = kForEver);
  static constexpr std::uint64_t kForEver = UINT64_MAX;

 private:
  std::string AddressOf(pid_t process) const;
  void Read();
  void Accept(const Packet& packet);

  std::string prefix_;
  int socket_ = -1;
  std::thread reader_;
};

}  // namespace winhost
