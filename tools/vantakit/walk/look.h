// What is to be seen of the walked setup. UI thread only.
#pragma once

#include <nlohmann/json_fwd.hpp>

namespace vantakit {

// window      the foremost: "SetupWnd", "MessageWnd", "folder" (the folder picker); null: none is shown
// rect        its place on the screen
// active      whether it is the machine's foreground window
// minimised
// page        of "tb_bottom"
// tip         the text of "lb_tips", null while that is hidden
// message     the text of the message window, null without one
// progress    {"value", "text"} of "pg_insting" and "lb_insting"
// picker      {"path", "notice"}: the line of the folder picker and why it did not take it; null without one
// focus       the name of the control that has the keyboard focus; null for none
// controls    name → {"enabled", "visible", "selected" (check boxes), "text" (if it shows one)}
//
// Page, tip and progress are the setup window's, which may lie behind another; focus and controls belong to the
// foremost window that has a layout. Null, or nothing, when there is no such window or control.
nlohmann::ordered_json Look();
// The same of a setup that has ended. Any thread, any process.
nlohmann::ordered_json NothingSeen();

}  // namespace vantakit
