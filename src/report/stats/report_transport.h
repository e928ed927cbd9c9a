// The two ways on which a report travels.
#pragma once

#include "base/text.h"

namespace vanta {

// Each sends a GET request and blocks until it is over.
// Through WinINet: true when an answer arrived, whatever its status.
bool SendThroughWinInet(const String& url);
// Through the maker's network library: true when the transfer reports no error; false also without the library.
bool SendThroughNetworkLibrary(const String& url);

// As SendThroughWinInet, for a caller that must not be held up: connecting is tried once, 5 seconds long, each piece of
// the answer is waited for 5 seconds, and 10 seconds after the start all is over, whatever the server does.
bool SendThroughWinInetPromptly(const String& url);

}  // namespace vanta
