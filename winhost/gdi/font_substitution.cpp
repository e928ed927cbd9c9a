#include "winhost/gdi/font_substitution.h"

#include <algorithm>

#include "winhost/machine/text.h"

namespace winhost {
namespace {

constexpr const char* kInstalled = "WenQuanYi Micro Hei";

constexpr std::u16string_view kFaces[] = {
    u"Arial",
    u"Helv",
    u"Helvetica",
    u"Microsoft Sans Serif",
    u"Microsoft YaHei",
    u"Microsoft YaHei UI",
    u"微软雅黑",
    u"MS Sans Serif",
    u"MS Shell Dlg",
    u"MS Shell Dlg 2",
    u"NSimSun",
    u"新宋体",
    u"Segoe UI",
    u"SimHei",
    u"黑体",
    u"SimSun",
    u"宋体",
    u"System",
    u"Tahoma",
    u"Times New Roman",
    u"Verdana",
    u"WenQuanYi Micro Hei",
};

}  // namespace

Substitute SubstituteFor(std::u16string_view face) {
  const bool known = std::ranges::any_of(kFaces, [face](std::u16string_view name) { return EqualNoCase(name, face); });
  return {kInstalled, known};
}

}  // namespace winhost
