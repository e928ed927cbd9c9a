#include "tests/bench/measure.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace bench {
namespace {

std::size_t AnonymousBytes() {
  static const int file = open("/proc/self/status", O_RDONLY | O_CLOEXEC);
  char text[4096];
  const ssize_t size = pread(file, text, sizeof(text) - 1, 0);
  text[size > 0 ? size : 0] = 0;
  const char* at = std::strstr(text, "RssAnon:");
  return at ? std::strtoull(at + 8, nullptr, 10) * 1024 : 0;
}

}  // namespace

double Now() { return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count(); }

double Median(std::vector<double> values) {
  std::nth_element(values.begin(), values.begin() + static_cast<long>(values.size() / 2), values.end());
  return values[values.size() / 2];
}

Turns TakeTurns(const std::function<void(int)>& full, const std::function<void(int)>& step) {
  constexpr int kTurns = 500;
  std::vector<double> fulls, steps;
  for (int i = 0; i < kTurns; ++i) {
    const double start = Now();
    full(i);
    const double between = Now();
    step(i);
    fulls.push_back((between - start) * 1e6);
    steps.push_back((Now() - between) * 1e6);
  }
  return {Median(fulls), Median(steps)};
}

MappedFile::MappedFile(const std::string& path) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  struct stat status = {};
  if (file < 0 || fstat(file, &status) != 0) {
    std::perror(path.c_str());
    std::exit(2);
  }
  const auto size = static_cast<std::size_t>(status.st_size);
  void* const bytes = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
  close(file);
  if (bytes == MAP_FAILED) {
    std::perror(path.c_str());
    std::exit(2);
  }
  bytes_ = {static_cast<const unsigned char*>(bytes), size};
}

MappedFile::~MappedFile() { munmap(const_cast<unsigned char*>(bytes_.data()), bytes_.size()); }

PeakMemory::PeakMemory() {
  std::atomic<bool> started{false};
  sampler_ = std::thread([this, &started] {
    base_ = AnonymousBytes();
    peak_ = base_;
    started = true;
    while (!stop_) {
      const std::size_t now = AnonymousBytes();
      if (now > peak_) peak_ = now;
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
  });
  while (!started) std::this_thread::yield();
}

PeakMemory::~PeakMemory() {
  stop_ = true;
  sampler_.join();
}

}  // namespace bench
