// What stands behind an HINTERNET: a session, a connection of it, a request on that.
#pragma once

#include <windows.h>
#include <wininet.h>

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "winhost/kernel/object.h"
#include "winhost/net/transfer.h"

namespace winhost {

class InternetObject : public KernelObject {
 public:
  // Its handle is being closed while a call may be working on it.
  virtual void Close() {}
};

struct SessionOptions {
  std::string agent;
  std::string proxy;
  // The system's own bounds, milliseconds.
  DWORD connect_ms = 60'000;
  DWORD connect_tries = 5;
  DWORD send_ms = 30'000;
  DWORD receive_ms = 30'000;
};

class InternetSession final : public InternetObject {
 public:
  SessionOptions Options() const;
  // ERROR_SUCCESS, or why the option was not taken.
  DWORD SetOption(DWORD option, const void* value, DWORD bytes);
  void SetAgent(std::string agent);

 private:
  mutable std::mutex lock_;
  SessionOptions options_;
};

class InternetConnection final : public InternetObject {
 public:
  InternetConnection(SessionOptions options, std::string host, INTERNET_PORT port)
      : options_(std::move(options)), host_(std::move(host)), port_(port) {}
  const SessionOptions& options() const { return options_; }
  const std::string& host() const { return host_; }
  std::string Authority() const { return host_ + ":" + std::to_string(port_); }

 private:
  const SessionOptions options_;
  const std::string host_;
  const INTERNET_PORT port_;
};

class InternetRequest final : public InternetObject {
 public:
  InternetRequest(std::shared_ptr<InternetConnection> connection, std::string verb, std::string target, bool secure);
  std::string Url() const { return server_ + target_.substr(1); }
  // ERROR_SUCCESS once the answer's headers are there.
  DWORD Send(std::vector<std::string> headers, std::string body);
  // Both without a header of that kind: empty, and `found` false.
  std::string Status(bool& found) const;
  std::string Header(const std::string& name, bool& found) const;
  void Close() override;

 private:
  const std::shared_ptr<InternetConnection> connection_;
  const std::string verb_;
  const std::string target_;
  const std::string server_;
  mutable std::mutex lock_;
  bool closed_ = false;
  std::shared_ptr<Transfer> transfer_;
  std::vector<std::string> answer_;
};

}  // namespace winhost
