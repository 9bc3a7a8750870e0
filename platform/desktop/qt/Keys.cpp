// Letters, digits and function keys count on in both worlds; the others stand in a table.
#include "platform/desktop/qt/Keys.h"

#include <algorithm>
#include <iterator>

namespace tessaly::qt {

namespace {

constexpr int VirtualF1 = 112;
constexpr int VirtualNumpad0 = 96;
constexpr int VirtualAdd = 107;
constexpr int VirtualSubtract = 109;
constexpr int NoVirtualKey = 255;

struct KeyPair {
    int key;
    int virtualKey;
};

constexpr KeyPair Keys[] = {
    {Qt::Key_Backspace, 8},   {Qt::Key_Tab, 9},
    {Qt::Key_Backtab, 9},     {Qt::Key_Return, 13},
    {Qt::Key_Enter, 13},      {Qt::Key_Shift, 16},
    {Qt::Key_Control, 17},    {Qt::Key_Alt, 18},
    {Qt::Key_Pause, 19},      {Qt::Key_CapsLock, 20},
    {Qt::Key_Escape, 27},     {Qt::Key_Space, 32},
    {Qt::Key_PageUp, 33},     {Qt::Key_PageDown, 34},
    {Qt::Key_End, 35},        {Qt::Key_Home, 36},
    {Qt::Key_Left, 37},       {Qt::Key_Up, 38},
    {Qt::Key_Right, 39},      {Qt::Key_Down, 40},
    {Qt::Key_Print, 44},      {Qt::Key_Insert, 45},
    {Qt::Key_Delete, 46},     {Qt::Key_Super_L, 91},
    {Qt::Key_Super_R, 92},    {Qt::Key_Menu, 93},
    {Qt::Key_NumLock, 144},   {Qt::Key_ScrollLock, 145},
    {Qt::Key_Semicolon, 186}, {Qt::Key_Equal, 187},
    {Qt::Key_Comma, 188},     {Qt::Key_Minus, 189},
    {Qt::Key_Period, 190},    {Qt::Key_Slash, 191},
    {Qt::Key_QuoteLeft, 192}, {Qt::Key_BracketLeft, 219},
    {Qt::Key_Backslash, 220}, {Qt::Key_BracketRight, 221},
    {Qt::Key_AltGr, 18},      {Qt::Key_Meta, 91},
    {Qt::Key_Plus, 187},
};

} // namespace

int VirtualKey(const QKeyEvent& event) {
    const int key = event.key();
    if (key >= Qt::Key_0 && key <= Qt::Key_9) {
        return event.modifiers().testFlag(Qt::KeypadModifier) ? VirtualNumpad0 + (key - Qt::Key_0) : key;
    }
    if (key >= Qt::Key_A && key <= Qt::Key_Z) {
        return key; // ASCII capitals in both
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) {
        return VirtualF1 + (key - Qt::Key_F1);
    }
    if (event.modifiers().testFlag(Qt::KeypadModifier) && (key == Qt::Key_Plus || key == Qt::Key_Minus)) {
        return key == Qt::Key_Plus ? VirtualAdd : VirtualSubtract;
    }
    const auto found =
        std::find_if(std::begin(Keys), std::end(Keys), [key](const KeyPair& pair) { return pair.key == key; });
    return found != std::end(Keys) ? found->virtualKey : NoVirtualKey;
}

bool IsMenuKey(const QKeyEvent& event) {
    const int shift = ShiftState(event.modifiers());
    return (event.key() == Qt::Key_Menu && shift == 0) || (event.key() == Qt::Key_F10 && shift == 1);
}

int ShiftState(Qt::KeyboardModifiers modifiers) {
    return (modifiers.testFlag(Qt::ShiftModifier) ? 1 : 0) + (modifiers.testFlag(Qt::ControlModifier) ? 2 : 0) +
           (modifiers.testFlag(Qt::AltModifier) ? 4 : 0);
}

} // namespace tessaly::qt
