// Pictures from files, from the program's resources, and those of marks.
#pragma once

#include "platform/desktop/Margin.h"
#include "platform/desktop/win32/Headers.h"

#include <string>

namespace tessaly::win32 {

// The number of the program's own icon among its resources.
inline constexpr int ProgramIcon = 1;

// The icon in an icon file, or one made of a bitmap file, in this size; null when there is none.
IconOwner LoadIconFile(const std::string& path, int size);

// A bitmap resource; its colours are premultiplied with their alpha. Null when there is none of this name.
BitmapOwner LoadPictureResource(const std::wstring& name);

// A mark's picture, likewise, in the user's colours.
BitmapOwner PictureOfMark(Mark mark, int side);

// Draws such a bitmap in this rectangle.
void DrawPicture(HDC target, HBITMAP picture, const RECT& place);

} // namespace tessaly::win32
