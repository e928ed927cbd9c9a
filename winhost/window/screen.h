// The screen as a test or a tool sees it: what the windows of this process show, and hands to use them with.
//
// Pictures are taken from the windows' own pictures, whichever display they are on. Input goes the way of a device's:
// it arrives when the window's thread fetches its messages, so a test sends some, and then lets the program run.
// Windows of other processes of the machine get input too; their pictures stay with them. Any thread.
#pragma once

#include <windows.h>

#include <filesystem>
#include <string_view>

#include "winhost/window/input_event.h"
#include "winhost/window/picture.h"

namespace winhost::screen {

enum class Button { Left, Right, Middle };

// Screen coordinates. Press, Release and Wheel act where the pointer is.
void MovePointer(int x, int y);
void Press(Button button = Button::Left);
void Release(Button button = Button::Left);
void Click(int x, int y, Button button = Button::Left);
// Steps of a wheel's notch; away from the user is positive.
void Wheel(int notches);
// Virtual keys, to the foreground window.
void KeyDown(int key);
void KeyUp(int key);
void Key(int key);
// Presses the keys that give these characters; one that no key gives is a press of VK_PACKET.
void Type(std::u16string_view text);
// A finger, or a pen; it needs no touch screen among the facts.
void Touch(int contact, int x, int y, ContactKind kind = ContactKind::Finger);
void MoveTouch(int contact, int x, int y, ContactKind kind = ContactKind::Finger);
void LiftTouch(int contact, int x, int y, ContactKind kind = ContactKind::Finger);
// The user chooses another scale: every top-level window of this process gets WM_DPICHANGED, sent, with a rectangle of
// the same place at the new scale.
void ChangeDpi(int dpi);

// The window alone with its children, premultiplied as it painted itself; without a layer it is opaque within its
// shape, and transparent outside. Empty for no window of this process.
Picture Snapshot(HWND window);
// All windows of this process over a background (0x00rrggbb), opaque.
Picture Snapshot(DWORD background = 0x3A6EA5);
// The size of the screen.
SIZE Size();
// A PNG with straight alpha. False when the file cannot be written.
bool SavePng(const Picture& picture, const std::filesystem::path& path);

}  // namespace winhost::screen
