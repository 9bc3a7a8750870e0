// The identifiers of controls and commands, by which a test finds them from outside: never change one.
#pragma once

namespace tessaly::win32::ControlId {

// The main window, of the class VornMainFrm.
inline constexpr int CodeTree = 101;
inline constexpr int LblcodeTreeViewer = 102;
inline constexpr int FuncLabel = 103;
inline constexpr int FuncBody = 104;
inline constexpr int VornToolBar = 105;
inline constexpr int StatusBar1 = 106;

// The bar over the pane, in the main window.
inline constexpr int WantedLabel = 111;
inline constexpr int Wanted = 112;
inline constexpr int Count = 113;
inline constexpr int MatchCase = 114;
inline constexpr int WholeWord = 115;
inline constexpr int Previous = 116;
inline constexpr int Next = 117;
inline constexpr int Close = 118;
inline constexpr int ReplacementLabel = 119;
inline constexpr int Replacement = 120;
inline constexpr int ReplaceOne = 121;
inline constexpr int ReplaceAll = 122;

// The name window, of the class UserFuncVarFrm; its buttons are IDOK and IDCANCEL.
inline constexpr int NameLabel = 201;
inline constexpr int FuncVarName = 202;

// The splash window, of the class frmSplash.
inline constexpr int Frame1 = 301;
inline constexpr int LblVersion = 302;
inline constexpr int LblPlatform = 303;
inline constexpr int LblCompany = 304;
inline constexpr int LblCopyright = 305;
inline constexpr int LblCompanyProduct = 306;
inline constexpr int LblProductName = 307;

// The messages window, of the class Messages.
inline constexpr int RowsLabel = 401;
inline constexpr int Rows = 402;
inline constexpr int PrintedLabel = 403;
inline constexpr int Printed = 404;
inline constexpr int Pages = 405;

// Commands: the buttons of the tool bar, and the menus in the order in which they are added.
inline constexpr int FirstButton = 501;
inline constexpr int FirstMenu = 1000;

} // namespace tessaly::win32::ControlId
