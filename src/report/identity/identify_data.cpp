#include "report/identity/identify_data.h"

#include "report/identity/ascii.h"

namespace vanta {
namespace {

struct Field {
  size_t word, words;
};
constexpr Field kSerial = {10, 10};
constexpr Field kModel = {27, 20};

std::string FieldOf(std::string_view identify, Field field) {
  std::string bytes(2 * field.words, '\0');
  const size_t first = 2 * field.word;
  if (first < identify.size()) identify.substr(first).copy(bytes.data(), bytes.size());
  return bytes;
}

// Blanks at the front of the bytes as they came go to their end before the pairs are swapped: an odd number of them
// thereby shifts the text by half a word, which stored identifiers depend on.
std::string ReadableField(std::string_view identify, Field field) {
  std::string bytes = FieldOf(identify, field);
  const size_t blanks = bytes.find_first_not_of(' ');
  if (blanks != std::string::npos) bytes = bytes.substr(blanks) + bytes.substr(0, blanks);
  const std::string swapped = WithSwappedPairs(bytes);
  return std::string(WithoutWhiteSpace(UpToZero(swapped)));
}

}  // namespace

std::string SerialOfIdentify(std::string_view identify) {
  const std::string swapped = WithSwappedPairs(FieldOf(identify, kSerial));
  return std::string(WithoutTrailingBlanks(UpToZero(swapped)));
}

std::string SerialAndModelOfIdentify(std::string_view identify) {
  const std::string serial = ReadableField(identify, kSerial);
  return serial.empty() ? serial : serial + ReadableField(identify, kModel);
}

}  // namespace vanta
