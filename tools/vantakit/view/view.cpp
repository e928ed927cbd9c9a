#include <cstdio>
#include <iostream>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "tools/vantakit/commands.h"
#include "tools/vantakit/passing_machine.h"
#include "tools/vantakit/view/views.h"

namespace vantakit {
namespace {

using Json = nlohmann::json;

const View* FindView(const std::string& op) {
  for (const View& view : Views()) {
    if (op == view.op) return &view;
  }
  return nullptr;
}

Json Answer(const Json& request) {
  const auto op = request.at("op").get<std::string>();
  const View* view = FindView(op);
  if (!view) throw std::runtime_error("unknown op \"" + op + "\"");
  return view->answer(request.at("input"));
}

}  // namespace

std::string AnswerLine(const std::string& line) {
  Json answer = Json::object();
  answer["id"] = nullptr;
  try {
    const Json request = Json::parse(line);
    if (!request.is_object()) throw std::runtime_error("a request is an object");
    if (const auto id = request.find("id"); id != request.end()) answer["id"] = *id;
    answer["output"] = Answer(request);
  } catch (const std::exception& wrong) {
    answer["error"] = wrong.what();
  }
  return answer.dump(-1, ' ', false, Json::error_handler_t::replace);
}

int RunView(int argc, char** argv) {
  // Views run on a machine of their own, in zone UTC, that is gone afterwards.
  std::optional<PassingMachine> passing;
  // With "--here" the machine is the one that VANTA_MACHINE names; machine views call themselves so.
  if (argc < 2 || std::string(argv[1]) != "--here") passing.emplace();
  std::string line;
  while (std::getline(std::cin, line)) {
    if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
    std::cout << AnswerLine(line) << std::endl;
  }
  return 0;
}

}  // namespace vantakit
