#include "winhost/gdi/tooltip_tools.h"

#include <algorithm>

namespace winhost {
namespace {

constexpr std::size_t kMostText = 80;

bool KnownSize(const TTTOOLINFOW* info) {
  return info && (info->cbSize == TTTOOLINFOW_V1_SIZE || info->cbSize == TTTOOLINFOW_V2_SIZE ||
                  info->cbSize == TTTOOLINFOW_V3_SIZE);
}

bool Supported(const TTTOOLINFOW* info) {
  if (!KnownSize(info) || (info->uFlags & TTF_SUBCLASS)) return false;
  return info->lpszText != LPSTR_TEXTCALLBACKW && (!info->lpszText || !IS_INTRESOURCE(info->lpszText));
}

TooltipTool Read(const TTTOOLINFOW& info) {
  TooltipTool tool{info.uFlags, info.hwnd, info.uId, info.rect, info.hinst, {}, 0};
  if (info.lpszText) tool.text = info.lpszText;
  if (info.cbSize > TTTOOLINFOW_V1_SIZE) tool.parameter = info.lParam;
  return tool;
}

}  // namespace

TooltipTool* TooltipTools::Search(const TTTOOLINFOW* info) {
  if (!KnownSize(info)) return nullptr;
  const auto found = std::ranges::find_if(
      tools_, [&](const TooltipTool& tool) { return tool.window == info->hwnd && tool.id == info->uId; });
  return found == tools_.end() ? nullptr : &*found;
}

const TooltipTool* TooltipTools::Find(const TTTOOLINFOW* info) const {
  return const_cast<TooltipTools*>(this)->Search(info);
}

bool TooltipTools::Add(const TTTOOLINFOW* info) {
  if (!Supported(info)) return false;
  Remove(info);
  tools_.push_back(Read(*info));
  return true;
}

bool TooltipTools::Change(const TTTOOLINFOW* info) {
  TooltipTool* tool = Search(info);
  if (!tool || !Supported(info)) return false;
  *tool = Read(*info);
  return true;
}

bool TooltipTools::ChangeArea(const TTTOOLINFOW* info) {
  TooltipTool* tool = Search(info);
  if (tool) tool->area = info->rect;
  return tool != nullptr;
}

bool TooltipTools::ChangeText(const TTTOOLINFOW* info) {
  TooltipTool* tool = Search(info);
  if (!tool || !Supported(info)) return false;
  tool->text = info->lpszText ? info->lpszText : u"";
  return true;
}

void TooltipTools::Remove(const TTTOOLINFOW* info) {
  if (const TooltipTool* tool = Search(info)) tools_.erase(tools_.begin() + (tool - tools_.data()));
}

const TooltipTool* TooltipTools::Under(HWND window, POINT client) const {
  for (const TooltipTool& tool : tools_) {
    const bool whole = (tool.flags & TTF_IDISHWND) && reinterpret_cast<HWND>(tool.id) == window;
    if (whole || (tool.window == window && PtInRect(&tool.area, client))) return &tool;
  }
  return nullptr;
}

bool TooltipTools::Write(const TooltipTool& tool, TTTOOLINFOW* info, bool with_text) {
  if (!KnownSize(info)) return false;
  info->uFlags = tool.flags;
  info->hwnd = tool.window;
  info->uId = tool.id;
  info->rect = tool.area;
  info->hinst = tool.instance;
  if (info->cbSize > TTTOOLINFOW_V1_SIZE) info->lParam = tool.parameter;
  if (with_text && info->lpszText) {
    const std::size_t count = std::min(tool.text.size(), kMostText - 1);
    tool.text.copy(info->lpszText, count);
    info->lpszText[count] = 0;
  }
  return true;
}

}  // namespace winhost
