#include "lumo/controls/lists.h"

namespace lumo {

TreeView::TreeView() : root_(std::make_unique<TreeNode>()) { SetLayout(std::make_unique<VLayout>()); }

}  // namespace lumo
