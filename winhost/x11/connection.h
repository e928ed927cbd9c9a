// A connection to an X server and what is asked of it once.
#pragma once

#include <xcb/xcb.h>

#include <memory>
#include <string>

namespace winhost {

struct XcbFreed {
  void operator()(void* reply) const;
};
template <class T>
using Reply = std::unique_ptr<T, XcbFreed>;

class XConnection {
 public:
  // Connects to DISPLAY. `why` says what is missing when Usable() is false.
  XConnection();
  ~XConnection();
  XConnection(const XConnection&) = delete;
  XConnection& operator=(const XConnection&) = delete;

  bool Usable() const { return why.empty(); }
  xcb_atom_t Atom(const char* name) const;
  // Somebody manages windows, or lays them over each other with their alpha.
  bool HasManager() const;
  bool HasCompositor() const;

  xcb_connection_t* get = nullptr;
  xcb_screen_t* screen = nullptr;
  xcb_visualid_t alpha_visual = 0;  // 32 bits deep; 0: none
  std::string why;
};

}  // namespace winhost
