// Multimedia timers.
//
// Promises: callbacks run one after the other on a thread of the timers' own, at the machine's time: a clock that runs
// fast makes them come early in real time, and on one that stands they come when sleeping or waiting has moved it past
// them. Simplifies: the resolution is taken and not used; callbacks only (no TIME_CALLBACK_EVENT_…).
// To fail: the fault plan: "timeSetEvent" (the error is not told, the answer is 0).
#pragma once

#include <windef.h>

using MMRESULT = UINT;
using LPTIMECALLBACK = void(CALLBACK*)(UINT timer, UINT reserved, DWORD_PTR user, DWORD_PTR, DWORD_PTR);

#define TIMERR_NOERROR (0)
#define MMSYSERR_INVALPARAM 11

#define TIME_ONESHOT 0x0000
#define TIME_PERIODIC 0x0001
#define TIME_CALLBACK_FUNCTION 0x0000
#define TIME_KILL_SYNCHRONOUS 0x0100

// A number above 0, or 0 when the delay is 0 or above 1,000,000 ms, no function is given or the flags are others.
MMRESULT WINAPI timeSetEvent(UINT delay_ms, UINT resolution_ms, LPTIMECALLBACK callback, DWORD_PTR user, UINT flags);
// MMSYSERR_INVALPARAM for a timer that is not there: never made, killed, or of one shot and over. With
// TIME_KILL_SYNCHRONOUS the callback does not run any more when the call returns, unless the callback itself made it.
MMRESULT WINAPI timeKillEvent(UINT timer);
