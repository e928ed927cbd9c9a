// How a device answers its requests: the fact "answers" of a drive or an adapter.
//
//   "answers": "never"                                  every request
//   "answers": {"identify": "short", "version": 87}     by request; a number is the error it fails with
//
// A request that is not named is answered well. "fails": ERROR_GEN_FAILURE. "short": half of the answer arrives.
// "long": the whole room is filled, 0xA5 behind the answer. {"hex": "00ff"}: these bytes. "never": the driver's
// time-out, ten seconds of the machine's clock, then ERROR_SEM_TIMEOUT, as the storage stack and NDIS end what hangs
// below them.
#pragma once

#include <minwindef.h>

#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include <nlohmann/json_fwd.hpp>

namespace winhost {

using Bytes = std::vector<BYTE>;

class Answers {
 public:
  // `requests` are the names that the device knows. Throws std::runtime_error.
  static Answers Parse(const nlohmann::json& fact, std::span<const char* const> requests);

  // Ends a request: `bytes` is the good answer, which must fit into `out` whole unless the caller has cut it. Answers
  // the system error number; may let machine time pass.
  DWORD Send(const std::string& request, const Bytes& bytes, std::span<BYTE> out, DWORD* returned) const;

 private:
  struct Way {
    enum class Kind { Error, Short, Long, Never, Given } kind = Kind::Error;
    DWORD error = 0;
    Bytes given;
  };
  static Way ParseWay(const nlohmann::json& fact);
  const Way* Find(const std::string& request) const;

  std::optional<Way> all_;
  std::map<std::string, Way> named_;
};

// Digits to bytes; throws std::runtime_error naming `where`.
Bytes BytesOfHex(const std::string& where, const std::string& hex);

// ERROR_ACCESS_DENIED when a handle opened with `access` may not send the control code, 0 otherwise.
DWORD CheckRights(DWORD code, DWORD access);
// Whether this process has an administrator's rights.
bool HasAdministratorRights();

}  // namespace winhost
