// Owners of what the graphics and the window calls of Windows hand out.
#pragma once

#include "platform/desktop/win32/Headers.h"

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
