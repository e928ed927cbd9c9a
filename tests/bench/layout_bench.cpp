// What arranging a large tree costs. One measurement a run, printed as one JSON object with milliseconds a pass.
//   layout_bench whole          every box stretches; all of the tree gets new rectangles
//   layout_bench measured       boxes take the size of their content; everything is measured anew and placed
//   layout_bench leaf           one leaf changes its width inside boxes that stretch
//   layout_bench window-whole   as whole, in a window, whose handler is told of every new place
//   layout_bench window-leaf    as leaf, in a window
#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "lumo/controls/make_control.h"
#include "lumo/core/handler.h"
#include "lumo/core/window.h"
#include "tests/bench/measure.h"
#include "tests/bench/tree_shape.h"

namespace {

constexpr int kRounds = 200;
using bench::kBranches, bench::kLevels, bench::LeavesOf;

struct Tree {
  lumo::BoxBase* root = nullptr;
  std::vector<lumo::ControlBase*> all;
  std::vector<lumo::ControlBase*> leaves;
  int innermost = 0;  // boxes that hold leaves, so far
};

lumo::BoxBase* MakeBox(int level, bool measured, Tree& tree) {
  lumo::BoxBase* box = nullptr;
  if (level % 2) {
    box = new lumo::VBox;
  } else {
    box = new lumo::HBox;
  }
  if (measured && level > 1) {
    box->SetFixedWidth(lumo::SizeAuto);
    box->SetFixedHeight(lumo::SizeAuto);
  }
  tree.all.push_back(box);
  return box;
}

// Leaves of a fixed size and leaves that stretch take turns, with margins on every third.
lumo::ControlBase* MakeLeaf(bool measured, Tree& tree) {
  auto* const leaf = new lumo::Control;
  const size_t number = tree.leaves.size();
  if (measured || number % 2 == 0) {
    leaf->SetFixedWidth(10);
    leaf->SetFixedHeight(8);
  }
  if (number % 3 == 0) leaf->SetMargin({1, 1, 1, 1});
  tree.all.push_back(leaf);
  tree.leaves.push_back(leaf);
  return leaf;
}

// Adds what is below a box, in the order in which a builder meets it.
void Fill(lumo::BoxBase* box, int level, bool measured, Tree& tree) {
  if (level == kLevels - 1) {
    for (int i = LeavesOf(tree.innermost++); i-- > 0;) box->Add(MakeLeaf(measured, tree));
    return;
  }
  for (int i = 0; i < kBranches; ++i) {
    lumo::BoxBase* const below = MakeBox(level + 1, measured, tree);
    box->Add(below);
    Fill(below, level + 1, measured, tree);
  }
}

Tree Grow(bool measured) {
  Tree tree;
  tree.root = MakeBox(1, measured, tree);
  Fill(tree.root, 1, measured, tree);
  return tree;
}

void Settle(lumo::ControlBase& root) {
  while (lumo::ControlBase* const marked = root.FirstNeedingArrange()) marked->SetPos(marked->Position());
}

// Milliseconds of the median round.
template <class Round>
double Measure(const Round& round) {
  std::vector<double> times;
  for (int i = 0; i < kRounds; ++i) times.push_back(round(i));
  std::nth_element(times.begin(), times.begin() + kRounds / 2, times.end());
  return times[kRounds / 2] * 1e3;
}

double MeasureWhole(Tree& tree, bool measured) {
  return Measure([&](int round) {
    if (measured) {
      for (lumo::ControlBase* const control : tree.all) control->SetNeedsMeasure(true);
    }
    const double start = bench::Now();
    tree.root->SetPos({0, 0, 4000 + round % 2 * 300, 3000 + round % 2 * 200});
    return bench::Now() - start;
  });
}

double MeasureLeaf(Tree& tree) {
  tree.root->SetPos({0, 0, 4000, 3000});
  Settle(*tree.root);
  return Measure([&](int round) {
    lumo::ControlBase* const leaf = tree.leaves[static_cast<size_t>(round) * 37 % tree.leaves.size()];
    const double start = bench::Now();
    leaf->SetFixedWidth(20 + round % 7);
    Settle(*tree.root);
    return bench::Now() - start;
  });
}

}  // namespace

int main(int argc, char** argv) {
  const std::string verb = argc == 2 ? argv[1] : "";
  const bool in_window = verb.starts_with("window-");
  const std::string what = in_window ? verb.substr(7) : verb;
  if (what != "whole" && what != "leaf" && (what != "measured" || in_window)) {
    std::fprintf(stderr, "layout_bench whole | measured | leaf | window-whole | window-leaf\n");
    return 1;
  }
  lumo::SetGlobalScalePercent(100);
  Tree tree = Grow(what == "measured");
  lumo::lumowin handler;
  std::unique_ptr<lumo::Window> window;
  const std::unique_ptr<lumo::ControlBase> own(in_window ? nullptr : tree.root);
  if (in_window) {
    window = std::make_unique<lumo::Window>();
    window->SetHandler(&handler);
    window->AttachRoot(tree.root);
  }
  const double milliseconds = what == "leaf" ? MeasureLeaf(tree) : MeasureWhole(tree, what == "measured");
  std::printf("{\"nodes\": %zu, \"milliseconds\": %.4f}\n", tree.all.size(), milliseconds);
  return 0;
}
