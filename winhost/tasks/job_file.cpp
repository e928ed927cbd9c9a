#include "winhost/tasks/job_file.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace winhost {
namespace {

constexpr std::uint16_t kFileVersion = 1;
constexpr std::size_t kFixed = 68;
constexpr std::size_t kFlagsAt = 48, kPriorityAt = 32, kMaxRunAt = 36;
constexpr std::uint16_t kIdleDeadlineMinutes = 60, kIdleWaitMinutes = 10;
static_assert(sizeof(TASK_TRIGGER) == 48 && std::endian::native == std::endian::little);

template <class T>
void Put(std::string& out, const T& value) {
  out.append(reinterpret_cast<const char*>(&value), sizeof value);
}

void PutText(std::string& out, const std::u16string& text) {
  const std::size_t count = std::min<std::size_t>(text.size(), 0xFFFE);
  Put(out, static_cast<std::uint16_t>(text.empty() ? 0 : count + 1));
  if (text.empty()) return;
  out.append(reinterpret_cast<const char*>(text.data()), 2 * count);
  Put(out, char16_t{0});
}

// What is between the fixed part and the triggers.
std::string Middle(const JobFile& job) {
  constexpr std::uint16_t kReserved = 8;
  std::string out;
  Put(out, std::uint16_t{0});  // running instances
  for (const auto* text : {&job.program, &job.arguments, &job.working_directory, &job.author, &job.comment})
    PutText(out, *text);
  Put(out, std::uint16_t{0});  // user data
  Put(out, kReserved);
  Put(out, static_cast<std::uint32_t>(SCHED_S_TASK_HAS_NOT_RUN));  // the error of the last start
  Put(out, std::uint32_t{0});
  return out;
}

class Reader {
 public:
  explicit Reader(std::string_view bytes, std::size_t at) : bytes_(bytes), at_(at) {}
  template <class T>
  bool Read(T* value) {
    if (at_ > bytes_.size() || bytes_.size() - at_ < sizeof(T)) return false;
    std::memcpy(value, bytes_.data() + at_, sizeof(T));
    at_ += sizeof(T);
    return true;
  }
  bool Text(std::u16string* text) {
    std::uint16_t count;
    if (!Read(&count) || bytes_.size() - at_ < 2u * count) return false;
    text->resize(count);
    std::memcpy(text->data(), bytes_.data() + at_, 2u * count);
    at_ += 2u * count;
    if (!text->empty() && text->back() == 0) text->pop_back();
    return true;
  }

 private:
  std::string_view bytes_;
  std::size_t at_;
};

}  // namespace

std::string WriteJob(const JobFile& job) {
  constexpr std::uint16_t kProgramAt = kFixed + 2;
  const std::string middle = Middle(job);
  std::string out;
  Put(out, job.windows_version);
  Put(out, kFileVersion);
  Put(out, job.id);
  Put(out, kProgramAt);
  Put(out, static_cast<std::uint16_t>(kFixed + middle.size()));
  Put(out, std::uint32_t{0});  // retries and their distance
  Put(out, kIdleDeadlineMinutes);
  Put(out, kIdleWaitMinutes);
  Put(out, job.priority);
  Put(out, job.max_run_ms);
  Put(out, std::uint32_t{0});  // exit code
  Put(out, static_cast<std::uint32_t>(SCHED_S_TASK_HAS_NOT_RUN));
  Put(out, job.flags);
  Put(out, SYSTEMTIME{});  // last run
  out += middle;
  Put(out, static_cast<std::uint16_t>(job.triggers.size()));
  for (const TASK_TRIGGER& trigger : job.triggers) Put(out, trigger);
  return out;
}

std::optional<JobFile> ReadJob(std::string_view bytes) {
  JobFile job;
  std::uint16_t version = 0, program_at = 0, triggers_at = 0, count = 0;
  Reader fixed(bytes, 0);
  const bool head = fixed.Read(&job.windows_version) && fixed.Read(&version) && fixed.Read(&job.id) &&
                    fixed.Read(&program_at) && fixed.Read(&triggers_at) && bytes.size() >= kFixed;
  if (!head || version != kFileVersion) return std::nullopt;
  Reader(bytes, kPriorityAt).Read(&job.priority);
  Reader(bytes, kMaxRunAt).Read(&job.max_run_ms);
  Reader(bytes, kFlagsAt).Read(&job.flags);
  Reader texts(bytes, program_at);
  for (auto* text : {&job.program, &job.arguments, &job.working_directory, &job.author, &job.comment}) {
    if (!texts.Text(text)) return std::nullopt;
  }
  Reader triggers(bytes, triggers_at);
  if (!triggers.Read(&count)) return std::nullopt;
  for (std::uint16_t i = 0; i < count; ++i) {
    if (!triggers.Read(&job.triggers.emplace_back())) return std::nullopt;
  }
  return job;
}

}  // namespace winhost
