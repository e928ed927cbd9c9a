// The seam list: what the program relies on and both Windows and its stand-in on Linux must answer alike. One source,
// built for both; each area is a table of checks in a check_*.cpp, named in seam_check.cpp.
#pragma once

#include <span>

struct SeamCheck {
  const char* name;
  bool (*run)();
};

std::span<const SeamCheck> ComChecks();
std::span<const SeamCheck> DeviceChecks();
std::span<const SeamCheck> FileChecks();
std::span<const SeamCheck> GraphicsChecks();
std::span<const SeamCheck> NetChecks();
std::span<const SeamCheck> PathChecks();
std::span<const SeamCheck> ProcessChecks();
std::span<const SeamCheck> RegistryChecks();
std::span<const SeamCheck> TextChecks();
std::span<const SeamCheck> WindowChecks();
