// The process-wide install state that the setup window, the driver and the installer thread share.
//
// The window changes the directory and the options only before an installation starts; the installer thread reports by
// posted messages. Values that both threads touch are atomic, so that no order between them has to be argued for.
#pragma once

#include "base/lock.h"
#include "base/text.h"

#include <atomic>

namespace vanta {

// Also the marker by which a second start finds the first one's window.
inline constexpr const WCHAR* kSetupWindowClass = TEXT("VantaPictorSetupWndClass");

class ZipReader;

class InstallState {
 public:
  // Target of the installation, at most 259 characters; "" until resolved or chosen. A longer one is not taken.
  String Directory();
  void SetDirectory(StringView directory);

  std::atomic<LONG> progress{0};             // last percentage posted to the window
  std::atomic<bool> progress_posted{false};  // a progress message has been posted at least once
  std::atomic<HWND> target_window{nullptr};  // gets the progress and status messages; none in silent mode
  std::atomic<bool> over_install{false};     // a usable earlier installation lies in the directory
  std::atomic<bool> stop_requested{false};   // the window is gone: extraction ends before its next file

  // The opened payload archive, or none. Used by one thread at a time: the driver until the installer thread starts,
  // then that thread.
  ZipReader* payload = nullptr;

 private:
  CriticalSection lock_;
  String directory_;
};

InstallState& GetInstallState();

}  // namespace vanta
