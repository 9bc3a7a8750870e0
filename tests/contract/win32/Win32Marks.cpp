// What the user sees of marks. The margin is taken down as a metafile and compared with the screen; lines under text
// are looked for on the screen alone.
#include "platform/desktop/win32/Screen.h"
#include "platform/system/win32/Text.h"
#include "tests/contract/win32/Win32Driver.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <gtest/gtest.h>
#include <map>

namespace tessaly {

namespace {

// Pixels of 32 bits that can be drawn on, white at first.
class Pixels {
public:
    explicit Pixels(SIZE size) : mSize(size) {
        BITMAPINFO info = {};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = size.cx;
        info.bmiHeader.biHeight = -size.cy;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* bits = nullptr;
        mBitmap.reset(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
        mBits = static_cast<std::uint32_t*>(bits);
        mDrawing = CreateCompatibleDC(nullptr);
        SelectObject(mDrawing, mBitmap.get());
        PatBlt(mDrawing, 0, 0, size.cx, size.cy, WHITENESS);
    }
    Pixels(const Pixels&) = delete;
    Pixels& operator=(const Pixels&) = delete;
    ~Pixels() { DeleteDC(mDrawing); }

    HDC Drawing() const { return mDrawing; }
    std::uint32_t At(LONG x, LONG y) const {
        GdiFlush();
        return mBits[y * mSize.cx + x] & 0xFFFFFF;
    }

    bool Differs(const Pixels& other, const RECT& place) const {
        for (LONG y = place.top; y < place.bottom; ++y) {
            for (LONG x = place.left; x < place.right; ++x) {
                if (At(x, y) != other.At(x, y)) {
                    return true;
                }
            }
        }
        return false;
    }

private:
    SIZE mSize;
    win32::BitmapOwner mBitmap;
    std::uint32_t* mBits = nullptr;
    HDC mDrawing = nullptr;
};

SIZE SizeOf(const RECT& rect) {
    return {rect.right - rect.left, rect.bottom - rect.top};
}

struct Drawn {
    struct Text {
        LONG top = 0;
        std::wstring text;
    };
    struct Picture {
        LONG top = 0;
        LONG height = 0;
        Mark mark = Mark::None;
    };
    std::vector<Text> texts;
    std::vector<Picture> pictures;
};

// Told by how opaque it is altogether, whichever of its rows comes first.
Mark MarkOf(const std::uint32_t* pixels, int side) {
    const auto opacity = [side](const std::uint32_t* from) {
        std::uint32_t sum = 0;
        for (int pixel = 0; pixel < side * side; ++pixel) {
            sum += from[pixel] >> 24U;
        }
        return sum;
    };
    for (const Mark mark : {Mark::Warning, Mark::Error}) {
        if (opacity(MarkPicture(mark, side, 0, 0).data()) == opacity(pixels)) {
            return mark;
        }
    }
    ADD_FAILURE() << "a picture of nothing that is known";
    return Mark::None;
}

int CALLBACK TakeDown(HDC, HANDLETABLE*, const ENHMETARECORD* record, int, LPARAM cookie) {
    Drawn& drawn = *std::bit_cast<Drawn*>(cookie);
    const char* const start = reinterpret_cast<const char*>(record);
    if (record->iType == EMR_EXTTEXTOUTW) {
        const EMRTEXT& text = reinterpret_cast<const EMREXTTEXTOUTW*>(record)->emrtext;
        if (text.nChars > 0) {
            drawn.texts.push_back(
                {text.ptlReference.y, {reinterpret_cast<const wchar_t*>(start + text.offString), text.nChars}});
        }
    } else if (record->iType == EMR_ALPHABLEND) {
        const auto& blend = *reinterpret_cast<const EMRALPHABLEND*>(record);
        drawn.pictures.push_back(
            {blend.yDest, blend.cyDest,
             MarkOf(reinterpret_cast<const std::uint32_t*>(start + blend.offBitsSrc), blend.cxSrc)});
    }
    return 1;
}

} // namespace

// From the corner of the pane's window.
RECT Win32Driver::MarginPlace() const {
    const HWND pane = Control(win32::ControlId::FuncBody);
    RECT outer = {};
    GetWindowRect(pane, &outer);
    RECT client = {};
    GetClientRect(pane, &client);
    MapWindowPoints(pane, nullptr, reinterpret_cast<POINT*>(&client), 2);
    OffsetRect(&client, -outer.left, -outer.top);
    return {GetSystemMetrics(SM_CXEDGE), client.top, client.left, client.bottom};
}

std::vector<std::string> Win32Driver::MarginShown() {
    Settle();
    const HWND pane = Control(win32::ControlId::FuncBody);
    HDC file = CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
    SendMessageW(pane, WM_PRINT, reinterpret_cast<WPARAM>(file), PRF_NONCLIENT);
    HENHMETAFILE taken = CloseEnhMetaFile(file);
    Drawn drawn;
    EnumEnhMetaFile(nullptr, taken, TakeDown, &drawn, nullptr);
    DeleteEnhMetaFile(taken);

    RECT outer = {};
    GetWindowRect(pane, &outer);
    const Pixels screen(SizeOf(outer));
    HDC window = GetWindowDC(pane);
    BitBlt(screen.Drawing(), 0, 0, SizeOf(outer).cx, SizeOf(outer).cy, window, 0, 0, SRCCOPY);
    ReleaseDC(pane, window);
    const Pixels printed(SizeOf(outer));
    SendMessageW(pane, WM_PRINT, reinterpret_cast<WPARAM>(printed.Drawing()), PRF_NONCLIENT);
    EXPECT_FALSE(IsShown() && screen.Differs(printed, MarginPlace())) << "the margin on the screen is an old one";

    std::vector<std::string> lines;
    for (const Drawn::Text& text : drawn.texts) {
        lines.push_back(win32::ToUtf8(text.text));
        for (const Drawn::Picture& picture : drawn.pictures) {
            if (picture.top >= text.top && picture.top < text.top + picture.height) {
                lines.back() += " " + NameOf(picture.mark);
            }
        }
    }
    return lines;
}

// A character is underlined where its lowest pixels have the colour of a mark.
std::vector<std::string> Win32Driver::Underlined() {
    Settle();
    const HWND pane = Control(win32::ControlId::FuncBody);
    RECT client = {};
    GetClientRect(pane, &client);
    const Pixels screen(SizeOf(client));
    HDC window = GetDC(pane);
    BitBlt(screen.Drawing(), 0, 0, client.right, client.bottom, window, 0, 0, SRCCOPY);
    ReleaseDC(pane, window);
    const std::wstring text = Shown();
    const auto placeOf = [pane](std::size_t character) {
        POINTL place = {};
        SendMessageW(pane, EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&place), static_cast<LPARAM>(character));
        return place;
    };
    const auto isUnderlined = [&](std::size_t character) {
        const POINTL begin = placeOf(character);
        const POINTL end = placeOf(character + 1);
        const LONG bottom = std::min(begin.y + win32::ToPixels(300, win32::WindowDpi(pane)), client.bottom);
        for (LONG x = std::max(begin.x + 1, 0L); x < std::min(end.x - 1, client.right); ++x) {
            for (LONG y = std::max(begin.y + win32::ToPixels(150, win32::WindowDpi(pane)), 0L); y < bottom; ++y) {
                if (screen.At(x, y) == win32::ColourOf(Mark::Error) ||
                    screen.At(x, y) == win32::ColourOf(Mark::Warning)) {
                    return true;
                }
            }
        }
        return false;
    };
    std::vector<std::string> texts;
    bool isGoingOn = false;
    for (std::size_t character = 0; character < text.size(); ++character) {
        const bool isIn = text[character] != L'\r' && isUnderlined(character);
        if (isIn && !isGoingOn) {
            texts.emplace_back();
        }
        if (isIn) {
            texts.back() += win32::ToUtf8(std::wstring(1, text[character]));
        }
        isGoingOn = isIn;
    }
    return texts;
}

// Most of its cell.
std::string Win32Driver::PaneSaid() {
    HWND pane = Control(win32::ControlId::FuncBody);
    if (!mSpoken) {
        mSpoken = std::make_unique<SpokenService>();
        SendMessageW(pane, WM_GETOBJECT, 0, OBJID_CLIENT); // as the library of screen readers asks
    }
    std::wstring said;
    for (const ToldToReader& told : mSpoken->Told()) {
        if (told.window == pane && !told.isName) {
            said = told.text;
        }
    }
    return said == L"nothing" ? "" : win32::ToUtf8(said);
}

std::uint32_t Win32Driver::ColourBehind(std::size_t position) {
    Settle();
    const HWND pane = Control(win32::ControlId::FuncBody);
    POINTL place = {};
    SendMessageW(pane, EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&place),
                 static_cast<LPARAM>(win32::ToWide(PaneShown().substr(0, position)).size()));
    const int dpi = win32::WindowDpi(pane);
    const int width = win32::ToPixels(TheDesktop().FuncBody().CharacterWidth(), dpi);
    HDC window = GetDC(pane);
    std::map<COLORREF, int> counts;
    for (LONG x = place.x + 1; x < place.x + width; ++x) {
        for (LONG y = place.y + 1; y < place.y + win32::ToPixels(200, dpi); ++y) {
            ++counts[GetPixel(window, x, y)];
        }
    }
    ReleaseDC(pane, window);
    const auto most = std::max_element(counts.begin(), counts.end(),
                                       [](const auto& a, const auto& b) { return a.second < b.second; });
    return most->first;
}

// The window under the mouse is asked first what the place is.
void Win32Driver::ClickMargin() {
    Settle();
    const HWND pane = Control(win32::ControlId::FuncBody);
    const RECT margin = MarginPlace();
    RECT outer = {};
    GetWindowRect(pane, &outer);
    POINT place = {outer.left + (margin.left + margin.right) / 2, outer.top + (margin.top + margin.bottom) / 2};
    const LRESULT hit = SendMessageW(pane, WM_NCHITTEST, 0, MAKELPARAM(place.x, place.y));
    if (hit == HTCLIENT) {
        ScreenToClient(pane, &place);
        Click(pane, place);
        return;
    }
    Post(pane, WM_NCLBUTTONDOWN, static_cast<WPARAM>(hit), MAKELPARAM(place.x, place.y));
    Post(pane, WM_NCLBUTTONUP, static_cast<WPARAM>(hit), MAKELPARAM(place.x, place.y));
    Settle();
}

// The tree asks for the font of an item, too.
bool Win32Driver::IsItalic(TreeItem item) const {
    const HDC screen = GetDC(Tree());
    NMTVCUSTOMDRAW asked = {};
    asked.nmcd.hdr = {Tree(), win32::ControlId::CodeTree, NM_CUSTOMDRAW};
    asked.nmcd.dwDrawStage = CDDS_ITEMPREPAINT;
    asked.nmcd.hdc = screen;
    asked.nmcd.lItemlParam = static_cast<LPARAM>(item);
    const HGDIOBJ before = GetCurrentObject(screen, OBJ_FONT);
    const LRESULT answer =
        SendMessageW(mFrame, WM_NOTIFY, win32::ControlId::CodeTree, reinterpret_cast<LPARAM>(&asked));
    LOGFONTW font = {};
    GetObjectW(GetCurrentObject(screen, OBJ_FONT), sizeof font, &font);
    SelectObject(screen, before);
    ReleaseDC(Tree(), screen);
    return answer == CDRF_NEWFONT && font.lfItalic != 0;
}

// The tree asks for the tool tip, and a screen reader gets the same.
std::string Win32Driver::MarkShown(TreeItem item) {
    Settle();
    const HTREEITEM node = Node(item);
    const LRESULT state = SendMessageW(Tree(), TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(node), TVIS_STATEIMAGEMASK);
    const int image = static_cast<int>((state & TVIS_STATEIMAGEMASK) >> 12U);
    std::array<wchar_t, 200> tip = {};
    NMTVGETINFOTIPW asked = {};
    asked.hdr = {Tree(), win32::ControlId::CodeTree, TVN_GETINFOTIPW};
    asked.hItem = node;
    asked.lParam = static_cast<LPARAM>(item);
    asked.pszText = tip.data();
    asked.cchTextMax = static_cast<int>(tip.size());
    SendMessageW(mFrame, WM_NOTIFY, win32::ControlId::CodeTree, reinterpret_cast<LPARAM>(&asked));
    const std::string description = win32::ToUtf8(tip.data());
    if (image == 0) {
        return LookShown(Mark::None, IsItalic(item), description);
    }
    const auto list = std::bit_cast<HIMAGELIST>(SendMessageW(Tree(), TVM_GETIMAGELIST, TVSIL_STATE, 0));
    int side = 0;
    int height = 0;
    ImageList_GetIconSize(list, &side, &height);
    const Pixels shown({side, side});
    ImageList_Draw(list, image, shown.Drawing(), 0, 0, ILD_NORMAL);
    const win32::ImageListOwner known = win32::PicturesOfMarks(side);
    for (const Mark mark : {Mark::Warning, Mark::Error}) {
        const Pixels expected({side, side});
        ImageList_Draw(known.get(), static_cast<int>(mark), expected.Drawing(), 0, 0, ILD_NORMAL);
        if (!shown.Differs(expected, {0, 0, side, side})) {
            return LookShown(mark, IsItalic(item), description);
        }
    }
    ADD_FAILURE() << "a picture of nothing that is known";
    return "";
}

} // namespace tessaly
