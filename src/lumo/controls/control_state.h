// The four states that a control shows, and values that a skin gives per state.
#pragma once

#include "lumo/core/types.h"

#include <array>
#include <memory>

namespace lumo {

enum ControlState : int { StateNormal = 0, StateHot = 1, StatePushed = 2, StateDisabled = 3 };
inline constexpr int kStateCount = 4;

// The state that is looked at next when `state` has no value of its own: pushed, hot, normal; disabled, normal. -1
// ends.
constexpr int FallbackOf(int state) {
  if (state == StatePushed) return StateHot;
  return state == StateHot || state == StateDisabled ? int{StateNormal} : -1;
}

// The state whose value is shown in `state`; -1 for none. `has(state)` tells whether a state's value is not empty.
// Numbers outside the four states have nothing and fall back to nothing.
template <class Has>
constexpr int ShownState(int state, Has&& has) {
  for (; state >= 0 && state < kStateCount; state = FallbackOf(state)) {
    if (has(state)) return state;
  }
  return -1;
}

// One value a state, made on first use. T says Text() for what the skin wrote; an empty text counts as no value.
template <class T>
class StateValues {
 public:
  // `state` is one of the four.
  T& At(int state) {
    std::unique_ptr<T>& slot = values_[static_cast<size_t>(state)];
    if (!slot) slot = std::make_unique<T>();
    return *slot;
  }
  // Null when the state was never given one.
  T* Find(int state) const {
    return state >= 0 && state < kStateCount ? values_[static_cast<size_t>(state)].get() : nullptr;
  }
  bool Has(int state) const {
    const T* const value = Find(state);
    return value && !TextOf(*value).empty();
  }
  // What `state` shows after fallbacks, null for nothing; `from` receives the state whose value it is.
  T* Shown(int state, int* from = nullptr) const {
    const int shown = ShownState(state, [this](int s) { return Has(s); });
    if (from) *from = shown;
    return Find(shown);
  }
  bool AnySet() const {
    for (int state = 0; state < kStateCount; ++state) {
      if (Has(state)) return true;
    }
    return false;
  }
  template <class F>
  void ForEach(F&& f) const {
    for (const std::unique_ptr<T>& value : values_) {
      if (value) f(*value);
    }
  }

 private:
  static StringView TextOf(const String& text) { return text; }
  template <class V>
  static StringView TextOf(const V& value) {
    return value.text;
  }

  std::array<std::unique_ptr<T>, kStateCount> values_;
};

}  // namespace lumo
