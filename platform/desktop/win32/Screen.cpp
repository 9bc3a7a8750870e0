// The calls that know of resolutions are newer than the oldest Windows that the program runs on, so they are looked up.
// A bitmap can serve as an icon, too: it gets an empty mask.
#include "platform/desktop/win32/Screen.h"

#include "platform/system/win32/Text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <type_traits>

namespace tessaly::win32 {

namespace {

constexpr float TwipsPerInch = 1440;

// A function of user32, or null.
template <class Function>
Function User32(const char* name) {
    const HMODULE user32 = GetModuleHandleW(L"user32.dll");
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(user32, name)));
}

int CALLBACK Found(const LOGFONTW*, const TEXTMETRICW*, DWORD, LPARAM isFound) {
    *std::bit_cast<bool*>(isFound) = true;
    return 0;
}

bool IsInstalled(const wchar_t* name) {
    LOGFONTW font = {};
    font.lfCharSet = DEFAULT_CHARSET;
    lstrcpynW(font.lfFaceName, name, LF_FACESIZE);
    bool isFound = false;
    HDC screen = GetDC(nullptr);
    EnumFontFamiliesExW(screen, &font, Found, reinterpret_cast<LPARAM>(&isFound), 0);
    ReleaseDC(nullptr, screen);
    return isFound;
}

// The name of the font that Windows takes when only the pitch is given.
std::wstring AnyFixedPitchFont() {
    LOGFONTW wanted = {};
    wanted.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
    wanted.lfCharSet = DEFAULT_CHARSET;
    const FontOwner font(CreateFontIndirectW(&wanted));
    HDC screen = GetDC(nullptr);
    HGDIOBJ before = SelectObject(screen, font.get());
    std::array<wchar_t, LF_FACESIZE> name = {};
    GetTextFaceW(screen, static_cast<int>(name.size()), name.data());
    SelectObject(screen, before);
    ReleaseDC(nullptr, screen);
    return name.data();
}

NONCLIENTMETRICSW WindowMetrics() {
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    return metrics;
}

// A font of Windows, whose height is for the system's resolution.
FontOwner MakeFont(LOGFONTW font, int dpi, float times) {
    const float scale = times * static_cast<float>(dpi) / static_cast<float>(SystemDpi());
    font.lfHeight = static_cast<LONG>(std::lround(static_cast<float>(font.lfHeight) * scale));
    return FontOwner(CreateFontIndirectW(&font));
}

} // namespace

int WindowDpi(HWND window) {
    using Function = UINT(WINAPI*)(HWND);
    static const auto function = User32<Function>("GetDpiForWindow");
    const UINT dpi = function != nullptr ? function(window) : 0;
    return dpi > 0 ? static_cast<int>(dpi) : SystemDpi();
}

int SystemDpi() {
    static const int dpi = [] { // the same as long as the program runs
        HDC screen = GetDC(nullptr);
        const int atStart = GetDeviceCaps(screen, LOGPIXELSX);
        ReleaseDC(nullptr, screen);
        return std::max(atStart, 1);
    }();
    return dpi;
}

int ToPixels(float twips, int dpi) {
    // Beyond this, windows have no place; the conversion back of what was clipped is never asked for.
    constexpr float largest = 1e6F;
    return static_cast<int>(std::lround(std::clamp(twips * static_cast<float>(dpi) / TwipsPerInch, -largest, largest)));
}

float ToTwips(int pixels, int dpi) {
    return static_cast<float>(pixels) * TwipsPerInch / static_cast<float>(dpi);
}

RECT WorkArea(HWND window) {
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor);
    return monitor.rcWork;
}

std::wstring WindowText(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

SIZE FrameSize(SIZE client, DWORD style, DWORD extendedStyle, bool hasMenu, int dpi) {
    using Function = BOOL(WINAPI*)(RECT*, DWORD, BOOL, DWORD, UINT);
    static const auto function = User32<Function>("AdjustWindowRectExForDpi");
    RECT rect = {0, 0, client.cx, client.cy};
    if (function == nullptr ||
        function(&rect, style, hasMenu ? TRUE : FALSE, extendedStyle, static_cast<UINT>(dpi)) == 0) {
        AdjustWindowRectEx(&rect, style, hasMenu ? TRUE : FALSE, extendedStyle);
    }
    return {rect.right - rect.left, rect.bottom - rect.top};
}

FontOwner MakeMessageFont(int dpi, float times) {
    LOGFONTW font = WindowMetrics().lfMessageFont;
    if (times > 1) {
        font.lfWeight = FW_SEMIBOLD;
    }
    return MakeFont(font, dpi, times);
}

FontOwner MakeCaptionFont(int dpi) {
    return MakeFont(WindowMetrics().lfCaptionFont, dpi, 1);
}

TEXTMETRICW MeasureFont(HFONT font) {
    TEXTMETRICW metrics = {};
    HDC screen = GetDC(nullptr);
    HGDIOBJ before = SelectObject(screen, font);
    GetTextMetricsW(screen, &metrics);
    SelectObject(screen, before);
    ReleaseDC(nullptr, screen);
    return metrics;
}

std::wstring CodeFontName() {
    for (const wchar_t* const name : {L"Consolas", L"Courier New", L"DejaVu Sans Mono", L"Liberation Mono"}) {
        if (IsInstalled(name)) {
            return name;
        }
    }
    return AnyFixedPitchFont();
}

FontOwner MakeCodeFont(int dpi) {
    constexpr float height = 200; // in twips
    LOGFONTW font = {};
    font.lfHeight = -ToPixels(height, dpi);
    font.lfPitchAndFamily = FIXED_PITCH;
    CodeFontName().copy(font.lfFaceName, LF_FACESIZE - 1);
    return FontOwner(CreateFontIndirectW(&font));
}

bool IsHighContrast() {
    HIGHCONTRASTW contrast = {};
    contrast.cbSize = sizeof contrast;
    return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) != 0 &&
           (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

std::uint32_t PaperColour() {
    return Turned(GetSysColor(COLOR_WINDOW));
}

std::uint32_t InkColour() {
    return Turned(GetSysColor(COLOR_WINDOWTEXT));
}

std::uint32_t ColourOf(Mark mark) {
    return MarkColour(mark, PaperColour(), InkColour(), IsHighContrast());
}

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
