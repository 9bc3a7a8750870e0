// Owners of what the graphics and the window calls of Windows hand out.
#pragma once

#include "platform/desktop/win32/Headers.h"

#include <memory>
#include <type_traits>

namespace tessaly {

template <auto Free>
struct Win32Deleter {
    template <class Handle>
    void operator()(Handle* handle) const {
        Free(handle);
    }
};

template <class Handle, auto Free>
using Win32Owner = std::unique_ptr<std::remove_pointer_t<Handle>, Win32Deleter<Free>>;

using Win32Font = Win32Owner<HFONT, &DeleteObject>;
using Win32Bitmap = Win32Owner<HBITMAP, &DeleteObject>;
using Win32Region = Win32Owner<HRGN, &DeleteObject>;
using Win32Icon = Win32Owner<HICON, &DestroyIcon>;
using Win32ImageListOwner = Win32Owner<HIMAGELIST, &ImageList_Destroy>;

// For a COM object: releases it.
struct Win32Release {
    template <class Interface>
    void operator()(Interface* object) const {
        object->Release();
    }
};

template <class Interface>
using Win32Com = std::unique_ptr<Interface, Win32Release>;

} // namespace tessaly
