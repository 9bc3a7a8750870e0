// The headers of Windows' windows and controls, in the order that they need: most do not include what they build on.
// And owners of what their calls hand out.
#pragma once

// clang-format off
#include <windows.h>
#include <commctrl.h>
#include <commdlg.h>
#include <cderr.h>
#include <ole2.h>
#include <shellapi.h>
#include <richedit.h>
#include <richole.h>
#include <tom.h>
// clang-format on

#include <memory>
#include <type_traits>

namespace tessaly::win32 {

template <auto Free>
struct Deleter {
    template <class Handle>
    void operator()(Handle* handle) const {
        Free(handle);
    }
};

template <class Handle, auto Free>
using Owner = std::unique_ptr<std::remove_pointer_t<Handle>, Deleter<Free>>;

using FontOwner = Owner<HFONT, &DeleteObject>;
using BitmapOwner = Owner<HBITMAP, &DeleteObject>;
using RegionOwner = Owner<HRGN, &DeleteObject>;
using IconOwner = Owner<HICON, &DestroyIcon>;
using ImageListOwner = Owner<HIMAGELIST, &ImageList_Destroy>;

// For a COM object: releases it.
struct Release {
    template <class Interface>
    void operator()(Interface* object) const {
        object->Release();
    }
};

template <class Interface>
using Com = std::unique_ptr<Interface, Release>;

} // namespace tessaly::win32
