// Qt's box layouts on the tree of layout_bench.cpp: as many nodes, levels, branches and rounds, bare items as leaves.
//   layout_peer measured    every layout is invalid; all of it is measured anew and placed
//   layout_peer leaf        one leaf changes its width inside boxes that stretch; the layout is activated, as Qt does
//                           it when such a change reaches the window
#include <QApplication>
#include <QBoxLayout>
#include <QWidget>
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "tests/bench/measure.h"
#include "tests/bench/tree_shape.h"

namespace {

constexpr int kRounds = 200;
using bench::kBranches, bench::kLevels, bench::LeavesOf;

class Leaf : public QLayoutItem {
 public:
  Leaf(bool fixed, int margin) : fixed_(fixed), size_(10 + 2 * margin, 8 + 2 * margin) {}
  QSize sizeHint() const override { return fixed_ ? size_ : QSize(0, 0); }
  QSize minimumSize() const override { return sizeHint(); }
  QSize maximumSize() const override { return fixed_ ? size_ : QSize(QLAYOUTSIZE_MAX, QLAYOUTSIZE_MAX); }
  Qt::Orientations expandingDirections() const override {
    return fixed_ ? Qt::Orientations() : Qt::Horizontal | Qt::Vertical;
  }
  void setGeometry(const QRect& place) override { place_ = place; }
  QRect geometry() const override { return place_; }
  bool isEmpty() const override { return false; }
  void SetWidth(int width) {
    fixed_ = true;
    size_.setWidth(width);
  }

 private:
  bool fixed_;
  QSize size_;
  QRect place_;
};

struct Tree {
  QBoxLayout* root = nullptr;
  std::vector<QBoxLayout*> boxes;
  std::vector<Leaf*> leaves;
  std::vector<QBoxLayout*> box_of_leaf;
  int innermost = 0;  // boxes that hold leaves, so far
};

QBoxLayout* MakeBox(int level, Tree& tree) {
  auto* const box = new QBoxLayout(level % 2 ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
  box->setContentsMargins(0, 0, 0, 0);
  box->setSpacing(0);
  tree.boxes.push_back(box);
  return box;
}

void AddLeaf(QBoxLayout* box, bool measured, Tree& tree) {
  const size_t number = tree.leaves.size();
  auto* const leaf = new Leaf(measured || number % 2 == 0, number % 3 == 0);
  box->addItem(leaf);
  tree.leaves.push_back(leaf);
  tree.box_of_leaf.push_back(box);
}

// Adds what is below a box, in the order in which a builder meets it.
void Fill(QBoxLayout* box, int level, bool measured, Tree& tree) {
  if (level == kLevels - 1) {
    for (int i = LeavesOf(tree.innermost++); i-- > 0;) AddLeaf(box, measured, tree);
    return;
  }
  for (int i = 0; i < kBranches; ++i) {
    QBoxLayout* const below = MakeBox(level + 1, tree);
    box->addLayout(below);
    Fill(below, level + 1, measured, tree);
  }
}

Tree Grow(bool measured) {
  Tree tree;
  tree.root = MakeBox(1, tree);
  Fill(tree.root, 1, measured, tree);
  return tree;
}

// Milliseconds of the median round.
template <class Round>
double Measure(const Round& round) {
  std::vector<double> times;
  for (int i = 0; i < kRounds; ++i) times.push_back(round(i));
  std::nth_element(times.begin(), times.begin() + kRounds / 2, times.end());
  return times[kRounds / 2] * 1e3;
}

double MeasureWhole(Tree& tree) {
  return Measure([&](int round) {
    for (QBoxLayout* const box : tree.boxes) box->invalidate();
    const double start = bench::Now();
    tree.root->setGeometry(QRect(0, 0, 4000 + round % 2 * 300, 3000 + round % 2 * 200));
    return bench::Now() - start;
  });
}

double MeasureLeaf(Tree& tree, QWidget& widget) {
  widget.resize(4000, 3000);
  tree.root->activate();
  return Measure([&](int round) {
    const size_t number = static_cast<size_t>(round) * 37 % tree.leaves.size();
    const double start = bench::Now();
    tree.leaves[number]->SetWidth(20 + round % 7);
    tree.box_of_leaf[number]->update();
    tree.root->activate();
    const double taken = bench::Now() - start;
    QCoreApplication::removePostedEvents(&widget);
    return taken;
  });
}

}  // namespace

int main(int argc, char** argv) {
  const std::string verb = argc == 2 ? argv[1] : "";
  if (verb != "measured" && verb != "leaf") {
    std::fprintf(stderr, "layout_peer measured | leaf\n");
    return 1;
  }
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  QWidget widget;
  Tree tree = Grow(verb == "measured");
  widget.setLayout(tree.root);
  tree.root->setSizeConstraint(QLayout::SetNoConstraint);
  const double milliseconds = verb == "leaf" ? MeasureLeaf(tree, widget) : MeasureWhole(tree);
  std::printf("{\"nodes\": %zu, \"milliseconds\": %.4f}\n", tree.boxes.size() + tree.leaves.size(), milliseconds);
  return 0;
}
