// Prints "ok" or "FAIL" and the name of each check; the exit code is the number of failures, at most 100.
#include "seam_check.h"

#include <stdio.h>

int main() {
  const std::span<const SeamCheck> groups[] = {FileChecks(),    PathChecks(),    RegistryChecks(), TextChecks(),
                                               ProcessChecks(), ComChecks(),     DeviceChecks(),   NetChecks(),
                                               WindowChecks(),  GraphicsChecks()};
  int failures = 0;
  for (const std::span<const SeamCheck>& group : groups) {
    for (const SeamCheck& check : group) {
      const bool holds = check.run();
      printf("%s %s\n", holds ? "ok" : "FAIL", check.name);
      failures += holds ? 0 : 1;
    }
  }
  return failures < 100 ? failures : 100;
}
