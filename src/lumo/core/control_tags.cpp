#include "lumo/controls/make_control.h"
#include "lumo/core/builder.h"

namespace lumo {
namespace {

constexpr ControlTag kTags[] = {
    {TEXT("Box"), &MakeControl<Box>},
    {TEXT("HBox"), &MakeControl<HBox>},
    {TEXT("VBox"), &MakeControl<VBox>},
    {TEXT("Menu"), &MakeControl<MenuBox>},
    {TEXT("Item"), &MakeControl<ListContainerElement>},
    {TEXT("Combo"), &MakeControl<Combo>},
    {TEXT("Label"), &MakeControl<Label>},
    {TEXT("Button"), &MakeControl<Button>},
    {TEXT("Option"), &MakeControl<Option>},
    {TEXT("Slider"), &MakeControl<Slider>},
    {TEXT("TabBox"), &MakeControl<TabBox>},
    {TEXT("Control"), &MakeControl<Control>},
    {TEXT("TileBox"), &MakeControl<TileBox>},
    {TEXT("ListBox"), &MakeList<VLayout>},
    {TEXT("Progress"), &MakeControl<Progress>},
    {TEXT("RichEdit"), &MakeControl<RichEdit>},
    {TEXT("CheckBox"), &MakeControl<CheckBox>},
    {TEXT("TreeView"), &MakeControl<TreeView>},
    {TEXT("TreeNode"), &MakeControl<TreeNode>},
    {TEXT("HListBox"), &MakeList<HLayout>},
    {TEXT("VListBox"), &MakeList<VLayout>},
    {TEXT("ChildBox"), &MakeControl<ChildBox>},
    {TEXT("LabelBox"), &MakeControl<LabelBox>},
    {TEXT("MenuItem"), &MakeControl<MenuItem>},
    {TEXT("ScrollBar"), &MakeControl<ScrollBar>},
    {TEXT("ButtonBox"), &MakeControl<ButtonBox>},
    {TEXT("OptionBox"), &MakeControl<OptionBox>},
    {TEXT("TileListBox"), &MakeList<TileLayout>},
    {TEXT("CheckBoxBox"), &MakeControl<CheckBoxBox>},
    {TEXT("VirtualListBox"), &MakeControl<VirtualListBox>},
    {TEXT("CircleProgress"), &MakeControl<CircleProgress>},
};
static_assert(sizeof kTags / sizeof *kTags == 31);

}  // namespace

std::span<const ControlTag> ControlTags() { return kTags; }

}  // namespace lumo
