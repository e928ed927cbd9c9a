// Where the machine's programs find a host: its fact "hosts", then the Linux system's own lookup.
#pragma once

#include <map>
#include <string>

#include "winhost/machine/machine.h"

namespace winhost {

struct HostPlace {
  bool known = true;         // false: the name resolves to nothing, and nobody is asked
  std::string instead = {};  // "address:port" to connect to; a part that stays the request's own is empty
};

// The machine's hosts file, read once a machine.
class Hosts {
 public:
  explicit Hosts(Machine& machine);
  // Names compare without regard to case.
  HostPlace Find(const std::string& host) const;

 private:
  std::map<std::string, std::string> places_;
};

}  // namespace winhost
