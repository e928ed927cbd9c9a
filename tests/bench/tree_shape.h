// The tree that layout_bench and layout_peer both measure.
#pragma once

namespace bench {

constexpr int kNodes = 10500, kLevels = 6, kBranches = 6;  // levels of boxes but the last, which are leaves

constexpr int CountBoxes(int level, int boxes) {
  return level == kLevels ? 0 : boxes + CountBoxes(level + 1, boxes * kBranches);
}
constexpr int kInnermost = kBranches * kBranches * kBranches * kBranches;
static_assert(kLevels == 6, "the innermost boxes stand on level 5");

// How many leaves the innermost box with this number holds.
constexpr int LeavesOf(int box) {
  constexpr int kLeaves = kNodes - CountBoxes(1, 1);
  return kLeaves / kInnermost + (box < kLeaves % kInnermost);
}

}  // namespace bench
