// Lines of text between a walk and the process that it walks: one end of a socket pair.
#pragma once

#include <chrono>
#include <string>

namespace vantakit {

class LineChannel {
 public:
  using Clock = std::chrono::steady_clock;
  enum class Got { Line, Ended, TooLate };

  explicit LineChannel(int socket) : socket_(socket) {}
  ~LineChannel() { Close(); }
  LineChannel(const LineChannel&) = delete;
  LineChannel& operator=(const LineChannel&) = delete;

  // False when the other end is gone.
  bool Send(const std::string& line) const;
  // Waits until `deadline` of real time.
  Got Receive(std::string* line, Clock::time_point deadline);
  // Wakes a thread of this process that waits in Receive: it gets Ended.
  void HangUp() const;
  void Close();

 private:
  int socket_;
  std::string received_;
};

}  // namespace vantakit
