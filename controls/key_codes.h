// The virtual-key codes the portable control models take, with the values the Windows headers
// give them, so a window passes its wParam on unchanged.
#pragma once

namespace varion::keys {

constexpr int kBack = 0x08;
constexpr int kTab = 0x09;
constexpr int kReturn = 0x0D;
constexpr int kEscape = 0x1B;
constexpr int kPrior = 0x21;  // Page Up
constexpr int kNext = 0x22;   // Page Down
constexpr int kEnd = 0x23;
constexpr int kHome = 0x24;
constexpr int kLeft = 0x25;
constexpr int kUp = 0x26;
constexpr int kRight = 0x27;
constexpr int kDown = 0x28;
constexpr int kInsert = 0x2D;
constexpr int kDelete = 0x2E;
constexpr int kC = 0x43;
constexpr int kV = 0x56;
constexpr int kAdd = 0x6B;       // numeric keypad +
constexpr int kSubtract = 0x6D;  // numeric keypad -
constexpr int kF4 = 0x73;

// Modifier state of a key press.
struct Modifiers {
  bool ctrl = false;
  bool shift = false;
  bool alt = false;
};

}  // namespace varion::keys
