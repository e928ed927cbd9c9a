// The tools of a tooltip window: what it has a text for.
#pragma once

#include <commctrl.h>
#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace winhost {

struct TooltipTool {
  UINT flags = 0;
  HWND window = nullptr;
  UINT_PTR id = 0;
  RECT area{};  // client coordinates of `window`
  HINSTANCE instance = nullptr;
  std::u16string text;
  LPARAM parameter = 0;
};

class TooltipTools {
 public:
  // Replaces one with the same window and id. False for a record of a wrong size, and for what is not supported: texts
  // that are asked for when needed (LPSTR_TEXTCALLBACKW) or lie in resources, and TTF_SUBCLASS.
  bool Add(const TTTOOLINFOW* info);
  bool Change(const TTTOOLINFOW* info);
  bool ChangeArea(const TTTOOLINFOW* info);
  bool ChangeText(const TTTOOLINFOW* info);
  void Remove(const TTTOOLINFOW* info);

  // Null for none. Valid until the tools change.
  const TooltipTool* Find(const TTTOOLINFOW* info) const;
  const TooltipTool* At(std::size_t index) const { return index < tools_.size() ? &tools_[index] : nullptr; }
  const TooltipTool* Under(HWND window, POINT client) const;
  std::size_t Count() const { return tools_.size(); }

  // Fills what the record's size has room for; the text too, into the buffer that it brings, 80 characters at most.
  static bool Write(const TooltipTool& tool, TTTOOLINFOW* info, bool with_text);

 private:
  TooltipTool* Search(const TTTOOLINFOW* info);
  std::vector<TooltipTool> tools_;
};

}  // namespace winhost
