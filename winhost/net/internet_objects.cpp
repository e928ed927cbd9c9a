#include "winhost/net/internet_objects.h"

#include <strings.h>

#include <cstring>

#include "winhost/machine/text.h"

namespace winhost {

SessionOptions InternetSession::Options() const {
  const std::scoped_lock lock(lock_);
  return options_;
}

void InternetSession::SetAgent(std::string agent) {
  const std::scoped_lock lock(lock_);
  options_.agent = std::move(agent);
}

DWORD InternetSession::SetOption(DWORD option, const void* value, DWORD bytes) {
  const std::scoped_lock lock(lock_);
  if (option == INTERNET_OPTION_PROXY) {
    if (!value || bytes != sizeof(INTERNET_PROXY_INFO)) return ERROR_INTERNET_BAD_OPTION_LENGTH;
    const auto& info = *static_cast<const INTERNET_PROXY_INFO*>(value);
    const bool named = info.dwAccessType == INTERNET_OPEN_TYPE_PROXY;
    if (named && !info.lpszProxy) return ERROR_INVALID_PARAMETER;
    options_.proxy = named ? Narrow(info.lpszProxy) : std::string();
    return ERROR_SUCCESS;
  }
  DWORD* const number = option == INTERNET_OPTION_CONNECT_TIMEOUT   ? &options_.connect_ms
                        : option == INTERNET_OPTION_CONNECT_RETRIES ? &options_.connect_tries
                        : option == INTERNET_OPTION_SEND_TIMEOUT    ? &options_.send_ms
                        : option == INTERNET_OPTION_RECEIVE_TIMEOUT ? &options_.receive_ms
                                                                    : nullptr;
  if (!number) return ERROR_INTERNET_INVALID_OPTION;
  if (!value || bytes != sizeof(DWORD)) return ERROR_INTERNET_BAD_OPTION_LENGTH;
  std::memcpy(number, value, sizeof(DWORD));
  return ERROR_SUCCESS;
}

InternetRequest::InternetRequest(std::shared_ptr<InternetConnection> connection, std::string verb, std::string target,
                                 bool secure)
    : connection_(std::move(connection)),
      verb_(std::move(verb)),
      target_(std::move(target)),
      server_((secure ? "https://" : "http://") + connection_->Authority() + "/") {}

DWORD InternetRequest::Send(std::vector<std::string> headers, std::string body) {
  const SessionOptions& options = connection_->options();
  auto transfer = std::make_shared<Transfer>(TransferPlan{.server = server_,
                                                          .target = target_,
                                                          .verb = verb_,
                                                          .agent = options.agent,
                                                          .proxy = options.proxy,
                                                          .host = connection_->host(),
                                                          .headers = std::move(headers),
                                                          .body = std::move(body),
                                                          .connect_ms = options.connect_ms,
                                                          .receive_ms = options.receive_ms,
                                                          .connect_tries = options.connect_tries});
  {
    const std::scoped_lock lock(lock_);
    if (closed_) return ERROR_INTERNET_OPERATION_CANCELLED;
    transfer_ = transfer;
  }
  const DWORD result = transfer->Run();
  const std::scoped_lock lock(lock_);
  transfer_.reset();
  if (closed_) return ERROR_INTERNET_OPERATION_CANCELLED;
  answer_ = transfer->Headers();
  return result;
}

void InternetRequest::Close() {
  const std::scoped_lock lock(lock_);
  closed_ = true;
  if (transfer_) transfer_->Cancel();
}

std::string InternetRequest::Status(bool& found) const {
  const std::scoped_lock lock(lock_);
  const std::string line = answer_.empty() ? std::string() : answer_.front();
  const std::size_t blank = line.find(' ');
  found = blank != std::string::npos;
  return found ? line.substr(blank + 1, 3) : std::string();
}

std::string InternetRequest::Header(const std::string& name, bool& found) const {
  const std::scoped_lock lock(lock_);
  found = false;
  for (std::size_t i = 1; i < answer_.size(); ++i) {
    const std::string& line = answer_[i];
    const std::size_t colon = line.find(':');
    if (colon != name.size() || strncasecmp(line.c_str(), name.c_str(), colon) != 0) continue;
    found = true;
    const std::size_t begin = line.find_first_not_of(" \t", colon + 1);
    return begin == std::string::npos ? std::string() : line.substr(begin);
  }
  return {};
}

}  // namespace winhost
