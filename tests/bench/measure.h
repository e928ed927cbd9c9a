// What the benchmark programs measure with.
#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <thread>
#include <vector>

namespace bench {

// Seconds of a steady clock.
double Now();

// What a whole paint and a progress step take.
struct Turns {
  double full_us;
  double step_us;
};
// Runs both in turns, some hundred times, with the number of the turn; medians.
Turns TakeTurns(const std::function<void(int)>& full, const std::function<void(int)>& step);

// The middle of some measurements, of which there must be one.
double Median(std::vector<double> values);

// A file mapped read-only; ends the program with a message when it cannot be.
class MappedFile {
 public:
  explicit MappedFile(const std::string& path);
  ~MappedFile();
  MappedFile(const MappedFile&) = delete;
  MappedFile& operator=(const MappedFile&) = delete;
  std::span<const unsigned char> bytes() const { return bytes_; }

 private:
  std::span<const unsigned char> bytes_;
};

// How far this process's anonymous memory (heap, stacks; not the mapped archive) grows while it lives. Sampled every
// millisecond by a thread, whose own first pages are in the base.
class PeakMemory {
 public:
  PeakMemory();
  ~PeakMemory();
  // Bytes beyond those at the start, so far.
  std::size_t growth() const { return peak_ > base_ ? peak_ - base_ : 0; }

 private:
  std::size_t base_ = 0;
  std::atomic<std::size_t> peak_{0};
  std::atomic<bool> stop_{false};
  std::thread sampler_;
};

}  // namespace bench
