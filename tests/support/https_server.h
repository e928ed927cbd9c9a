// The misbehaving HTTPS server (tests/support/https/misbehaving.py) on the loopback address, for the life of the
// object.
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>

namespace testing_support {

class HttpsServer {
 public:
  HttpsServer() {
    std::string pattern = (std::filesystem::temp_directory_path() / "vanta-https-XXXXXX").string();
    folder_ = mkdtemp(pattern.data());
    int in[2], out[2];
    if (pipe(in) != 0 || pipe(out) != 0) std::abort();
    child_ = fork();
    if (child_ == 0) {
      dup2(in[0], STDIN_FILENO);
      dup2(out[1], STDOUT_FILENO);
      for (const int end : {in[0], in[1], out[0], out[1]}) close(end);
      execlp("python3", "python3", VANTA_HTTPS_SCRIPT, folder_.c_str(), VANTA_HTTPS_CERTIFICATES,
             static_cast<char*>(nullptr));
      _exit(127);
    }
    close(in[0]);
    close(out[1]);
    until_ = in[1];
    ports_ = nlohmann::json::parse(ReadLine(out[0]));
    close(out[0]);
  }
  ~HttpsServer() {
    close(until_);
    waitpid(child_, nullptr, 0);
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  HttpsServer(const HttpsServer&) = delete;
  HttpsServer& operator=(const HttpsServer&) = delete;

  int Port(const std::string& name = "server") const { return ports_.at(name).get<int>(); }
  // "https://localhost:<port>" + path.
  std::string Url(const std::string& path, const std::string& name = "server") const {
    return "https://localhost:" + std::to_string(Port(name)) + path;
  }
  std::string Root() const { return VANTA_HTTPS_CERTIFICATES "/root.crt"; }

  // Facts of a machine that trusts the server and finds it under all its names. `more` is further facts, each with a
  // comma behind it.
  std::string Facts(const std::string& more = "") const {
    const std::string here = "127.0.0.1:" + std::to_string(Port());
    return "{" + more + R"("tls_roots": [")" + Root() + R"("], "hosts": {"localhost": "127.0.0.1", "other.invalid":
        "127.0.0.1", "statistics.invalid": ")" +
           here + R"(", "upgrade.invalid": ")" + here + R"("}})";
  }

  // A line a request that arrived: "GET /path [headers] body".
  std::string Requests() const {
    std::ifstream file(folder_ / "requests.log");
    return std::string(std::istreambuf_iterator<char>(file), {});
  }
  int RequestCount() const {
    const std::string all = Requests();
    return static_cast<int>(std::count(all.begin(), all.end(), '\n'));
  }

 private:
  static std::string ReadLine(int end) {
    std::string line;
    for (char c; read(end, &c, 1) == 1 && c != '\n';) line += c;
    return line;
  }

  std::filesystem::path folder_;
  pid_t child_ = -1;
  int until_ = -1;
  nlohmann::json ports_;
};

}  // namespace testing_support
