#include <stdlib.h>

#include <charconv>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "lumo/core/window.h"
#include "tools/vantakit/arguments.h"
#include "tools/vantakit/commands.h"
#include "tools/vantakit/passing_machine.h"
#include "tools/vantakit/preview/dressing.h"
#include "tools/vantakit/preview/live.h"
#include "tools/vantakit/preview/rects.h"
#include "tools/vantakit/preview/stage.h"
#include "winhost/window/screen.h"
#include "winhost/x11/x11_display.h"

namespace vantakit {
namespace {

constexpr char kHelp[] =
    "Draws a layout of a skin into a PNG, or opens it in a window that follows changes of the skin's files.\n\n"
    "usage: vantakit preview LAYOUT [--skin DIR] [--page NAME] [--state NAME=WORD]… [--set NAME.ATTRIBUTE=VALUE]…\n"
    "                        [--scale N] [--opened-at N] [--windows VERSION]\n"
    "                        (--out FILE | --window [--trace] | --rects)\n\n"
    "LAYOUT is SetupWnd.xml, MessageWnd.xml, or a path below the theme folder.\n"
    "WORD is normal, hot, pushed, disabled, selected, unselected, shown, hidden or focused.\n\n";
constexpr Option kOptions[] = {
    {"skin", Option::Value, "DIR", "folder that holds resources/… (default: \"skin\" beside this program)"},
    {"page", Option::Value, "NAME", "page of a tab box to show"},
    {"state", Option::Repeatable, "NAME=WORD", "state of a control"},
    {"set", Option::Repeatable, "NAME.ATTRIBUTE=VALUE", "an attribute, as the layout would give it"},
    {"scale", Option::Value, "N", "percent, 100 to 400 (default: 100)"},
    {"opened-at", Option::Value, "N", "percent at which it is opened before the user chooses --scale"},
    {"windows", Option::Value, "VERSION", "the Windows that draws it, as in a machine's facts: xp, vista, 7, 10 …"},
    {"out", Option::Value, "FILE", "picture to write"},
    {"rects", Option::Flag, nullptr, "print name, class and rectangle of every control as JSON"},
    {"window", Option::Flag, nullptr, "open it on the X display"},
    {"trace", Option::Flag, nullptr, "with --window: print what happens to it, a JSON object a line"},
};

int PercentOf(const Arguments& arguments, const char* option, const std::string& otherwise) {
  const std::string text = arguments.Get(option).value_or(otherwise);
  int percent = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), percent);
  if (error != std::errc() || *end || percent < 100 || percent > 400) {
    throw WrongArguments(std::string("--") + option + " is 100 to 400");
  }
  return percent;
}

nlohmann::json FactsOf(const Arguments& arguments, int percent) {
  nlohmann::json facts = {{"dpi", percent * 96 / 100}};
  if (const auto windows = arguments.Get("windows")) facts["version"] = *windows;
  return facts;
}

void ChangeScale(HWND window, int percent) {
  ShowWindow(window, SW_SHOWNA);
  UpdateWindow(window);
  winhost::screen::ChangeDpi(percent * 96 / 100);
  Settle();
}

void Draw(HWND window, const std::filesystem::path& out) {
  ShowWindow(window, SW_SHOWNA);
  UpdateWindow(window);
  // The first paint may have started what changes the picture: a second one shows it.
  Settle();
  if (!winhost::screen::SavePng(winhost::screen::Snapshot(window), out)) {
    throw Failure(out.string() + ": cannot be written");
  }
}

}  // namespace

int RunPreview(int argc, char** argv) {
  if (AskedForHelp(argc, argv, kHelp, kOptions)) return 0;
  const Arguments arguments(kOptions, argc, argv);
  if (arguments.rest().size() != 1) throw WrongArguments("one LAYOUT is wanted");
  const bool live = arguments.Has("window");
  if (arguments.Has("out") + arguments.Has("rects") + live != 1) {
    throw WrongArguments("one of --out, --window and --rects is wanted");
  }
  const std::filesystem::path beside = std::filesystem::read_symlink("/proc/self/exe").parent_path() / "skin";
  const std::filesystem::path skin = arguments.Get("skin").value_or(beside.string());
  const Dressing dressing = {arguments.Get("page").value_or(""), arguments.All("state"), arguments.All("set")};
  if (live) setenv("VANTA_DISPLAY", "x11", 1);
  // Without one, windows are drawn in memory, where nobody could ever close them.
  if (live && !winhost::OpenX11Display()) throw Failure("--window needs an X display, which DISPLAY names");

  const int scale = PercentOf(arguments, "scale", "100");
  const int opened_at = PercentOf(arguments, "opened-at", std::to_string(scale));
  const PassingMachine machine(FactsOf(arguments, opened_at));
  Stage stage(skin);
  Trace trace(arguments.Has("trace"));
  if (live) return RunLive(stage, skin, arguments.rest().front(), dressing, trace);
  const HWND window = stage.Open(arguments.rest().front(), nullptr);
  Dress(*WindowBehind(window), dressing);
  if (opened_at != scale) ChangeScale(window, scale);
  if (arguments.Has("rects")) {
    std::printf("%s\n", RectsOf(*WindowBehind(window)).dump(1).c_str());
  } else {
    Draw(window, arguments.Required("out"));
  }
  DestroyWindow(window);
  return 0;
}

}  // namespace vantakit
