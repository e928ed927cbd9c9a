#include "tools/vantakit/walk/line_channel.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <utility>

namespace vantakit {
namespace {

int MsUntil(LineChannel::Clock::time_point deadline) {
  if (deadline == LineChannel::Clock::time_point::max()) return -1;
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - LineChannel::Clock::now()).count();
  return static_cast<int>(std::clamp<long long>(left, 0, INT_MAX));
}

bool Readable(int socket, LineChannel::Clock::time_point deadline) {
  pollfd wanted{socket, POLLIN, 0};
  for (;;) {
    const int ready = poll(&wanted, 1, MsUntil(deadline));
    if (ready >= 0 || errno != EINTR) return ready > 0;
  }
}

}  // namespace

bool LineChannel::Send(const std::string& line) const {
  const std::string text = line + "\n";
  for (std::size_t sent = 0; sent < text.size();) {
    const ssize_t went = send(socket_, text.data() + sent, text.size() - sent, MSG_NOSIGNAL);
    if (went < 0 && errno == EINTR) continue;
    if (went <= 0) return false;
    sent += static_cast<std::size_t>(went);
  }
  return true;
}

LineChannel::Got LineChannel::Receive(std::string* line, Clock::time_point deadline) {
  for (;;) {
    if (const std::size_t end = received_.find('\n'); end != received_.npos) {
      *line = received_.substr(0, end);
      received_.erase(0, end + 1);
      return Got::Line;
    }
    if (!Readable(socket_, deadline)) return Got::TooLate;
    char buffer[4096];
    const ssize_t got = recv(socket_, buffer, sizeof buffer, 0);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return Got::Ended;
    received_.append(buffer, static_cast<std::size_t>(got));
  }
}

void LineChannel::HangUp() const { shutdown(socket_, SHUT_RDWR); }

void LineChannel::Close() {
  if (socket_ >= 0) close(std::exchange(socket_, -1));
}

}  // namespace vantakit
