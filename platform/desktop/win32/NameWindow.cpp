#include "platform/desktop/win32/NameWindow.h"

#include "platform/desktop/win32/ControlIds.h"
#include "platform/desktop/win32/Raise.h"
#include "platform/system/win32/Text.h"

#include <array>

namespace tessaly::win32 {

namespace {

// In twips. The label has room for two lines: some languages need them.
constexpr float ClientWidth = 5400;
constexpr float ClientHeight = 1800;
constexpr Extent LabelPlace = {150, 150, 5100, 480};
constexpr Extent BoxPlace = {150, 660, 5100, 345};
constexpr Extent OkPlace = {2580, 1245, 1260, 375};
constexpr Extent CancelPlace = {3990, 1245, 1260, 375};

// The number of the text in Windows' own message boxes, so that the button speaks the language of theirs.
constexpr UINT OkText = 800;

std::wstring SystemText(UINT number, const wchar_t* otherwise) {
    std::array<wchar_t, 64> text = {};
    const int length = LoadStringW(GetModuleHandleW(L"user32.dll"), number, text.data(), static_cast<int>(text.size()));
    return length > 0 ? text.data() : otherwise;
}

} // namespace

NameWindow::NameWindow(EventLoop& loop, HWND owner)
    : win32::ModalWindow(loop, owner, L"UserFuncVarFrm", ClientWidth, ClientHeight),
      mLabel(*this, ControlId::NameLabel),
      mBox(*this, {WC_EDITW, ES_AUTOHSCROLL | WS_TABSTOP, WS_EX_CLIENTEDGE, ControlId::FuncVarName}),
      mOk(*this, {WC_BUTTONW, BS_DEFPUSHBUTTON | WS_TABSTOP, 0, IDOK, SystemText(OkText, L"OK")}),
      mCancel(*this, {WC_BUTTONW, BS_PUSHBUTTON | WS_TABSTOP, 0, IDCANCEL}) {
    mLabel.SetPlace(LabelPlace);
    mBox.SetPlace(BoxPlace);
    mOk.SetPlace(OkPlace);
    mCancel.SetPlace(CancelPlace);
}

void NameWindow::SetCancelCaption(std::string_view caption) {
    SetWindowTextW(mCancel.Handle(), ToWide(caption).c_str());
}

std::string NameWindow::FuncVarName() const {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(mBox.Handle())) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(mBox.Handle(), text.data(), static_cast<int>(text.size()))));
    return ToUtf8(text);
}

void NameWindow::Closed() {
    Raise(onCancel);
}

void NameWindow::Commanded(int id) {
    if (id == IDOK) {
        Raise(onOk);
    } else if (id == IDCANCEL) {
        Raise(onCancel);
    }
}

} // namespace tessaly::win32
