#include "platform/desktop/win32/Picture.h"

#include "platform/system/win32/Text.h"

namespace tessaly {

namespace {

// All of the bitmap is seen: the mask that would hide some of it is empty.
Win32Icon IconOfBitmap(HBITMAP bitmap, int size) {
    const Win32Bitmap mask(CreateBitmap(size, size, 1, 1, nullptr));
    HDC drawing = CreateCompatibleDC(nullptr);
    HGDIOBJ before = SelectObject(drawing, mask.get());
    PatBlt(drawing, 0, 0, size, size, BLACKNESS);
    SelectObject(drawing, before);
    DeleteDC(drawing);
    ICONINFO icon = {};
    icon.fIcon = TRUE;
    icon.hbmMask = mask.get();
    icon.hbmColor = bitmap;
    return Win32Icon(CreateIconIndirect(&icon));
}

} // namespace

Win32Icon LoadIconFile(const std::string& path, int size) {
    if (path.empty()) {
        return nullptr;
    }
    const std::wstring widePath = ToWide(path);
    const auto load = [&](UINT type) {
        return LoadImageW(nullptr, widePath.c_str(), type, size, size, LR_LOADFROMFILE);
    };
    if (Win32Icon icon(static_cast<HICON>(load(IMAGE_ICON))); icon) {
        return icon;
    }
    const Win32Bitmap bitmap(static_cast<HBITMAP>(load(IMAGE_BITMAP)));
    return bitmap ? IconOfBitmap(bitmap.get(), size) : nullptr;
}

Win32Bitmap LoadPictureResource(const std::wstring& name) {
    return Win32Bitmap(static_cast<HBITMAP>(
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

} // namespace tessaly
