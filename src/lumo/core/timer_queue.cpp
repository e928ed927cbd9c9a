#include "lumo/core/timer_queue.h"

#include <algorithm>

namespace lumo {

TimerId TimerQueue::Add(LivenessBlock* owner, LONGLONG now, LONGLONG interval, int repeat,
                        std::function<void()> callback) {
  const TimerId timer = ++last_ ? last_ : ++last_;
  entries_.emplace(timer, Entry{owner, interval, repeat, std::move(callback)});
  Push({now + interval, timer});
  return timer;
}

void TimerQueue::Remove(TimerId timer) {
  const auto found = entries_.find(timer);
  if (found == entries_.end()) return;
  found->second.owner->Release();
  // The callback may be the one that is running: what it captured goes last.
  const std::function<void()> callback = std::move(found->second.callback);
  entries_.erase(found);
}

void TimerQueue::Clear() {
  while (!entries_.empty()) Remove(entries_.begin()->first);
  heap_.clear();
}

void TimerQueue::RunDue(LONGLONG now) {
  std::vector<Turn> due;
  while (!heap_.empty() && heap_.front().due <= now) due.push_back(Pop());
  for (const Turn& turn : due) RunTurn(turn, now);
}

void TimerQueue::RunTurn(const Turn& turn, LONGLONG now) {
  auto found = entries_.find(turn.timer);
  if (found == entries_.end()) return;
  Entry& entry = found->second;
  if (!entry.owner->IsAlive() || entry.repeat == 0) return Remove(turn.timer);
  if (entry.repeat > 0) --entry.repeat;
  const bool again = entry.repeat != 0;
  // A copy: the callback may remove its own timer.
  const std::function<void()> callback = entry.callback;
  callback();
  found = entries_.find(turn.timer);
  if (found == entries_.end()) return;
  if (!again) return Remove(turn.timer);
  const LONGLONG interval = found->second.interval;
  Push({std::max(turn.due + interval, now + 1), turn.timer});
}

std::optional<LONGLONG> TimerQueue::NextDue() {
  while (!heap_.empty() && !entries_.contains(heap_.front().timer)) Pop();
  if (heap_.empty()) return std::nullopt;
  return heap_.front().due;
}

void TimerQueue::Push(Turn turn) {
  heap_.push_back(turn);
  std::push_heap(heap_.begin(), heap_.end());
}

TimerQueue::Turn TimerQueue::Pop() {
  std::pop_heap(heap_.begin(), heap_.end());
  const Turn turn = heap_.back();
  heap_.pop_back();
  return turn;
}

}  // namespace lumo
