#include "report/http/header_block.h"

namespace vanta::HttpLib {

String HeaderBlock(const HeaderMap& headers) {
  String block;
  for (const auto& [name, values] : headers) {
    if (!block.empty()) block += TEXT('\n');
    block += name;
    block += TEXT(':');
    for (size_t i = 0; i < values.size(); ++i) {
      if (i > 0) block += TEXT(',');
      block += values[i];
    }
  }
  return block;
}

}  // namespace vanta::HttpLib
