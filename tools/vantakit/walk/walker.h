// The walker in the walked process: takes one step after the other from the walk and answers what is to be seen then.
//
// An answer is {"seen": …, "ms": …} or {"error": "…", "seen": …}. When the setup's program ends there is no answer any
// more; the channel's end says so.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include "tools/vantakit/walk/line_channel.h"
#include "tools/vantakit/walk/ui_thread.h"

namespace vantakit {

class Walker {
 public:
  // Owns the socket.
  Walker(int socket, DWORD ui_thread);
  // On a thread of its own, until the program or the walk ends. With the walk the whole process ends.
  void Run();
  // On the UI thread, when the program is over.
  void End();

 private:
  void Take(const nlohmann::ordered_json& step);
  // All three throw Failure when the deadline passes and ProgramEnded when the program is over.
  void Act(const nlohmann::ordered_json& step, UiThread::Clock::time_point deadline);
  void Await(const nlohmann::ordered_json& step, UiThread::Clock::time_point deadline);
  // False when the thread has no window.
  bool Settle(UiThread::Clock::time_point deadline);
  nlohmann::ordered_json See();

  LineChannel channel_;
  UiThread ui_;
  double took_ms_ = 0;  // of the step's action, until the thread was at rest again
};

}  // namespace vantakit
