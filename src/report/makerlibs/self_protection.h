// The maker's self-protection driver, asked about this process.
#pragma once

namespace vanta {

// Callers weigh an absent driver differently, so it is an answer of its own.
enum class SelfProtection {
  Absent,  // no such device, or it cannot be opened
  No,      // it does not vouch for this process, or gives no answer
  Yes,     // it vouches for this process
};

// Asks anew at each call. Any thread.
SelfProtection AskSelfProtection();

}  // namespace vanta
