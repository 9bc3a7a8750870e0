// The resolution of a window, and what depends on it; and pictures. Windows of one program can have several resolutions
// at a time.
#pragma once

#include "platform/desktop/Margin.h"
#include "platform/desktop/win32/Headers.h"

#include <string>

namespace tessaly::win32 {

// Of the monitor that the window is on, or the system's where Windows has only one.
int WindowDpi(HWND window);

// The one that Windows was started with, by which controls measure fonts that are given in points.
int SystemDpi();

int ToPixels(float twips, int dpi); // the nearest
float ToTwips(int pixels, int dpi);

// What a window may take of the monitor that it is on, in pixels.
RECT WorkArea(HWND window);

// The text of a window or control of this program.
std::wstring WindowText(HWND window);

// The outer size of a window with this client area.
SIZE FrameSize(SIZE client, DWORD style, DWORD extendedStyle, bool hasMenu, int dpi);

// The font of message boxes, which labels and trees use too. `times` makes it larger.
FontOwner MakeMessageFont(int dpi, float times = 1);

// The font of a window's caption.
FontOwner MakeCaptionFont(int dpi);

TEXTMETRICW MeasureFont(HFONT font);

bool IsHighContrast();

// Of the user's windows, as 0xRRGGBB, and what is shown in or beside them.
std::uint32_t PaperColour();
std::uint32_t InkColour();
std::uint32_t ColourOf(Mark mark);

// A COLORREF of Windows for a colour as 0xRRGGBB, or the other way round.
constexpr std::uint32_t Turned(std::uint32_t colour) {
    return (colour & 0xFF) << 16 | (colour & 0xFF00) | (colour >> 16 & 0xFF);
}

// The name of a fixed-pitch font that is installed, and that font in the size for what stands beside the pane.
std::wstring CodeFontName();
FontOwner MakeCodeFont(int dpi);

// The number of the program's own icon among its resources.
inline constexpr int ProgramIcon = 1;

// The icon in an icon file, or one made of a bitmap file, in this size; null when there is none.
IconOwner LoadIconFile(const std::string& path, int size);

// A bitmap resource; its colours are premultiplied with their alpha. Null when there is none of this name.
BitmapOwner LoadPictureResource(const std::wstring& name);

// Draws such a bitmap in this rectangle.
void DrawPicture(HDC target, HBITMAP picture, const RECT& place);

// The pictures of marks in the user's colours, each at the number of its mark; nothing stands for no mark.
ImageListOwner PicturesOfMarks(int side);

} // namespace tessaly::win32
