#include "report/stats/request_record.h"

namespace vanta {
namespace {

constexpr DWORD kMostRetries = 3;
constexpr DWORD kLongerEachTime = 300000;

}  // namespace

bool PlanRetry(RequestRecord* record) {
  if (!record->retry || record->retry_count >= kMostRetries) return false;
  record->delay += kLongerEachTime;
  ++record->retry_count;
  return true;
}

}  // namespace vanta
