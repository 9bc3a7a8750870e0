// A bitmap can serve as an icon, too: it gets an empty mask.
#include "platform/desktop/win32/Picture.h"

#include "platform/desktop/win32/Screen.h"
#include "platform/system/win32/Text.h"

#include <cstring>

namespace tessaly::win32 {

namespace {

// All of the bitmap is seen: the mask that would hide some of it is empty.
IconOwner IconOfBitmap(HBITMAP bitmap, int size) {
    const BitmapOwner mask(CreateBitmap(size, size, 1, 1, nullptr));
    HDC drawing = CreateCompatibleDC(nullptr);
    HGDIOBJ before = SelectObject(drawing, mask.get());
    PatBlt(drawing, 0, 0, size, size, BLACKNESS);
    SelectObject(drawing, before);
    DeleteDC(drawing);
    ICONINFO icon = {};
    icon.fIcon = TRUE;
    icon.hbmMask = mask.get();
    icon.hbmColor = bitmap;
    return IconOwner(CreateIconIndirect(&icon));
}

} // namespace

IconOwner LoadIconFile(const std::string& path, int size) {
    if (path.empty()) {
        return nullptr;
    }
    const std::wstring widePath = ToWide(path);
    const auto load = [&](UINT type) {
        return LoadImageW(nullptr, widePath.c_str(), type, size, size, LR_LOADFROMFILE);
    };
    if (IconOwner icon(static_cast<HICON>(load(IMAGE_ICON))); icon) {
        return icon;
    }
    const BitmapOwner bitmap(static_cast<HBITMAP>(load(IMAGE_BITMAP)));
    return bitmap ? IconOfBitmap(bitmap.get(), size) : nullptr;
}

BitmapOwner LoadPictureResource(const std::wstring& name) {
    return BitmapOwner(static_cast<HBITMAP>(
        LoadImageW(GetModuleHandleW(nullptr), name.c_str(), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
}

void DrawPicture(HDC target, HBITMAP picture, const RECT& place) {
    BITMAP size = {};
    GetObjectW(picture, sizeof size, &size);
    HDC source = CreateCompatibleDC(target);
    HGDIOBJ before = SelectObject(source, picture);
    const BLENDFUNCTION blend = {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
    GdiAlphaBlend(target, place.left, place.top, place.right - place.left, place.bottom - place.top, source, 0, 0,
                  size.bmWidth, size.bmHeight, blend);
    SelectObject(source, before);
    DeleteDC(source);
}

ImageListOwner PicturesOfMarks(int side) {
    ImageListOwner pictures(ImageList_Create(side, side, ILC_COLOR32, 3, 0));
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = side;
    info.bmiHeader.biHeight = -side; // from the top
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    for (const Mark mark : {Mark::None, Mark::Warning, Mark::Error}) {
        void* bits = nullptr;
        const BitmapOwner bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
        if (bitmap && mark != Mark::None) {
            const std::vector<std::uint32_t> pixels = MarkPicture(mark, side, ColourOf(mark), PaperColour());
            std::memcpy(bits, pixels.data(), pixels.size() * sizeof pixels[0]);
        }
        ImageList_Add(pictures.get(), bitmap.get(), nullptr);
    }
    return pictures;
}

} // namespace tessaly::win32
