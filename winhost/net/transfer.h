// One HTTP exchange up to the end of the answer's headers.
#pragma once

#include <winerror.h>

#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

namespace winhost {

struct TransferPlan {
  std::string server;  // "https://host:port/"
  std::string target;  // path and query, as sent
  std::string verb;
  std::string agent;  // empty: no such header
  std::string proxy;  // empty: none
  std::string host;
  std::vector<std::string> headers;  // "Name: value"
  std::string body;
  // Milliseconds of the machine.
  std::uint32_t connect_ms = 0;
  std::uint32_t receive_ms = 0;
  std::uint32_t connect_tries = 1;
};

class Transfer {
 public:
  explicit Transfer(TransferPlan plan);
  // Blocks. ERROR_SUCCESS, or an error of WinINet's; `Headers` is empty then.
  DWORD Run();
  // From any thread, before or during Run, which then ends soon.
  void Cancel();
  // The status line and the header lines of the answer, without line ends.
  const std::vector<std::string>& Headers() const { return headers_; }

 private:
  struct Handles;
  DWORD Try();
  DWORD Drive(Handles& handles);
  DWORD Result(Handles& handles) const;
  static std::size_t TakeHeader(char* bytes, std::size_t size, std::size_t count, void* transfer);

  const TransferPlan plan_;
  std::vector<std::string> headers_;
  bool complete_ = false;
  std::atomic<bool> cancelled_{false};
  std::mutex lock_;
  void* running_ = nullptr;  // the multi handle to wake
};

}  // namespace winhost
