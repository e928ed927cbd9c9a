// What a step does to the walked setup.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace vantakit {

// Every kind but "wait", "start" and "make". Input goes the way of a device's: it arrives when the thread looks for
// messages. Throws Failure when it cannot be done. UI thread only.
void UseHands(const nlohmann::ordered_json& step);

// Some steps have a second half, for when the thread has taken the first: a window that is dragged gets the pointer's
// moves from anywhere only once it has begun to follow.
bool HasSecondHalf(const nlohmann::ordered_json& step);
void FinishWithHands(const nlohmann::ordered_json& step);

// An empty file at this Windows path. Throws Failure when it cannot be made. Any thread.
void MakeFile(const std::string& path);

}  // namespace vantakit
