// The headers of Windows' windows and controls, in the order that they need: most do not include what they build on.
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
