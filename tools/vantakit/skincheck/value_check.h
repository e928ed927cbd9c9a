// Is the value of an attribute what its kind asks for, and is there what it names?
#pragma once

#include <string>
#include <vector>

#include "lumo/core/value_kind.h"
#include "tools/vantakit/findings.h"
#include "tools/vantakit/skincheck/skin_theme.h"

namespace vantakit {

struct Remark {
  std::string message;
  Finding::Severity severity = Finding::Error;
};
using Remarks = std::vector<Remark>;

// An empty value stands for "none" where a name or a picture is wanted. Pictures are looked for in the theme's folder
// of the window, "SetupWnd\" or "", and drawn once: that needs GDI+ started and `theme` as the library's resource
// source.
Remarks CheckValue(SkinTheme& theme, lumo::StringView window_folder, lumo::ValueKind kind, lumo::StringView value);

// The kinds that look the same from every window; others name pictures.
bool NamesPicture(lumo::ValueKind kind);

// The value as the finding's text shows it: name="value", long ones cut.
std::string Quote(lumo::StringView name, lumo::StringView value);

}  // namespace vantakit
