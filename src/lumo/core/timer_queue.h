// Timers ordered by due time; knows no clock and no window.
#pragma once

#include "lumo/core/timers.h"

#include <map>
#include <optional>
#include <vector>

namespace lumo {

class TimerQueue {
 public:
  TimerQueue() = default;
  TimerQueue(const TimerQueue&) = delete;
  TimerQueue& operator=(const TimerQueue&) = delete;
  ~TimerQueue() { Clear(); }

  // Times are in ticks of whatever clock the caller uses. Takes over a reference of `owner`.
  TimerId Add(LivenessBlock* owner, LONGLONG now, LONGLONG interval, int repeat, std::function<void()> callback);
  void Remove(TimerId timer);
  void Clear();

  // Runs what is due at `now`, earliest first. Timers that callbacks add wait for the next run.
  void RunDue(LONGLONG now);

  // When the earliest timer is due; none when nothing waits.
  std::optional<LONGLONG> NextDue();
  size_t Count() const { return entries_.size(); }

 private:
  struct Entry {
    LivenessBlock* owner;
    LONGLONG interval;
    int repeat;
    std::function<void()> callback;
  };
  struct Turn {
    LONGLONG due;
    TimerId timer;
    bool operator<(const Turn& other) const {  // the heap's top is the earliest
      return due != other.due ? due > other.due : timer > other.timer;
    }
  };

  void Push(Turn turn);
  Turn Pop();
  void RunTurn(const Turn& turn, LONGLONG now);

  std::map<TimerId, Entry> entries_;
  std::vector<Turn> heap_;  // turns of removed timers stay until they come up
  TimerId last_ = 0;
};

}  // namespace lumo
