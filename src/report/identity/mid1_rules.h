// Identifier 1: its rules, apart from where stored texts and hardware facts come from.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vanta {

// What the rules ask and change. Texts are bytes of the system's ANSI code page.
class Mid1Surroundings {
 public:
  // The stored "mid", where it takes up at most `room` bytes with its terminator. False: none, no text, or longer.
  virtual bool ReadStored(size_t room, std::string* text) = 0;
  // Asked only when the stored value does not hold.
  virtual std::string HardwareString() = 0;
  // Stores a text as "mid" or "mid_old". Best effort.
  virtual void Write(const char* name, const std::string& text) = 0;

 protected:
  ~Mid1Surroundings() = default;
};

// The stored identifier where it holds, else a new one, which is stored together with its check; whatever that replaces
// is kept as "mid_old". 32 characters.
std::string Identifier1(Mid1Surroundings& surroundings);

// Whether `stored` is an identifier followed by its own hash (in any letter case), and the identifier. Pure.
bool HoldsIdentifier1(std::string_view stored, std::string* identifier);

// The identifier that a hardware string gives: of its first 259 bytes, or of a fixed text when it is empty. Pure.
std::string Identifier1Of(std::string_view hardware);

}  // namespace vanta
