// The names of the buttons that every window understands.
#pragma once

#include "lumo/core/types.h"

namespace lumo {

inline constexpr StringView kCloseButton = TEXT("__close");
inline constexpr StringView kMinimiseButton = TEXT("__min");
inline constexpr StringView kMaximiseButton = TEXT("__max");
inline constexpr StringView kRestoreButton = TEXT("__restore");

}  // namespace lumo
