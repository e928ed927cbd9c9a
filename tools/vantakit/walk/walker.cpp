#include "tools/vantakit/walk/walker.h"

#include <unistd.h>

#include <nlohmann/json.hpp>
#include <thread>

#include "tools/vantakit/commands.h"
#include "tools/vantakit/walk/conditions.h"
#include "tools/vantakit/walk/hands.h"
#include "tools/vantakit/walk/look.h"
#include "tools/vantakit/walk/open_windows.h"
#include "tools/vantakit/walk/step.h"
#include "winhost/machine/clock.h"

namespace vantakit {
namespace {

using Json = nlohmann::ordered_json;
using Clock = UiThread::Clock;

struct ProgramEnded {};

// For a thread that is looked at when the time of a wait is over.
constexpr std::chrono::seconds kToRest(5);

// How long the program may go on between two looks at it. A clock that stands passes a wait by only when nothing has
// disturbed it for a while.
std::chrono::milliseconds BetweenLooks() { return std::chrono::milliseconds(winhost::MachineClockStands() ? 60 : 3); }

}  // namespace

Walker::Walker(int socket, DWORD ui_thread)
    : channel_(socket), ui_(ui_thread, [] { return SetupWindow() != nullptr; }) {}

void Walker::Run() {
  std::string line;
  while (channel_.Receive(&line, Clock::time_point::max()) == LineChannel::Got::Line) {
    Json answer;
    try {
      took_ms_ = 0;
      Take(Json::parse(line));
      answer["seen"] = See();
      answer["ms"] = took_ms_;
    } catch (const ProgramEnded&) {
      return;
    } catch (const std::exception& failure) {
      answer["error"] = failure.what();
      answer["seen"] = See();
    }
    channel_.Send(answer.dump());
  }
  // Over for the walk, whatever the program is doing; when the program has ended itself, it waits for this thread.
  if (ui_.Settle(Clock::now()) != UiThread::Answer::Ended) _exit(1);
}

void Walker::End() {
  ui_.End();
  channel_.HangUp();
}

void Walker::Take(const Json& step) {
  const auto deadline = Clock::now() + TimeoutOf(step);
  if (step.contains("wait")) return Await(step, deadline);
  if (step.contains("release")) return ui_.Release();
  if (step.contains("make")) {
    MakeFile(step["make"].get<std::string>());
    Settle(deadline);
    return;
  }
  Act(step, deadline);
}

void Walker::Act(const Json& step, Clock::time_point deadline) {
  if (!Settle(deadline)) throw Failure("there is no window");
  const auto start = Clock::now();
  ui_.Run([&] { UseHands(step); });
  const bool there = Settle(deadline);
  if (there && HasSecondHalf(step)) {
    ui_.Run([&] { FinishWithHands(step); });
    Settle(deadline);
  }
  took_ms_ = std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

void Walker::Await(const Json& step, Clock::time_point deadline) {
  const Condition condition = ParseCondition(step.at("wait").get<std::string>());
  for (;;) {
    Settle(deadline + kToRest);
    if (condition(See())) return;
    if (Clock::now() >= deadline) throw Failure("waited in vain");
    ui_.Release();
    std::this_thread::sleep_for(BetweenLooks());
  }
}

bool Walker::Settle(Clock::time_point deadline) {
  const UiThread::Answer answer = ui_.Settle(deadline);
  if (answer == UiThread::Answer::Ended) throw ProgramEnded();
  if (answer == UiThread::Answer::TooLate) throw Failure("the window's thread does not come to rest");
  return answer == UiThread::Answer::Still;
}

Json Walker::See() {
  Json seen = NothingSeen();
  ui_.Run([&] { seen = Look(); });
  return seen;
}

}  // namespace vantakit
