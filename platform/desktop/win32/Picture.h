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

// Draws such a bitmap in this rectangle.
void DrawPicture(HDC target, HBITMAP picture, const RECT& place);

// The pictures of marks in the user's colours, each at the number of its mark; nothing stands for no mark.
ImageListOwner PicturesOfMarks(int side);

} // namespace tessaly::win32
