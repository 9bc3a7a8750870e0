; The Windows installer: Tessaly for all users of a machine. script/package windows calls makensis on it with
;   VERSION  the version, STAGE  the folder with the files to install, OUTPUT  the installer's path,
;   CONTACT  where to report a problem, SIGN  a command that signs the file named after it (may be missing).
; Options: /S silent, /LANG=en or /LANG=de, /PATH=yes or /PATH=no, /D=FOLDER as the last one.
; Exit status 0 done, 1 cancelled, 2 failed.

Unicode true
SetCompressor /SOLID lzma
RequestExecutionLevel admin
ManifestSupportedOS all
ManifestDPIAware true

!include LogicLib.nsh
!include FileFunc.nsh
!include MUI2.nsh
!include Sections.nsh

!define SETTINGS "SOFTWARE\Ostrel\OstrelCompiler"
!define UNINSTALL "SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall\Tessaly"
!define APP_PATH "SOFTWARE\Microsoft\Windows\CurrentVersion\App Paths\Tessaly.exe"

; As platform/system/win32/PrivateFiles.cpp and recovery/KeptDocuments.cpp call it.
!define KEPT "%LOCALAPPDATA%\Ostrel\Tessaly\Recovery\kept"

Var Work   ; the generated C file's folder, which all users share; set by Places
Var Kept   ; a line for each setting that somebody else had made, by WriteSettings
Var Report ; what the last page says

Name "Tessaly"
OutFile "${OUTPUT}"
InstallDir "$PROGRAMFILES32\Ostrel\Tessaly"
BrandingText "Tessaly ${VERSION}"
ShowInstDetails nevershow
ShowUninstDetails nevershow
!ifdef SIGN
!finalize '${SIGN} "%1"' = 0
!uninstfinalize '${SIGN} "%1"' = 0
!endif

!define MUI_ICON "${STAGE}/Tessaly.ico"
!define MUI_UNICON "${STAGE}/Tessaly.ico"
!define MUI_ABORTWARNING
; The language of the texts is also that of the program, so it is asked for each time.
!define MUI_LANGDLL_ALLLANGUAGES
!insertmacro MUI_PAGE_WELCOME
!define MUI_COMPONENTSPAGE_NODESC
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_NOREBOOTSUPPORT
!define MUI_FINISHPAGE_TEXT $Report
!define MUI_PAGE_CUSTOMFUNCTION_PRE WriteReport
!define MUI_PAGE_CUSTOMFUNCTION_SHOW ShowReport
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "German"
!insertmacro MUI_RESERVEFILE_LANGDLL
!include Texts.nsh

!macro Places un
Function ${un}Places
  ; The program is a 32-bit one: what it reads is in that view on 64-bit Windows, too.
  SetRegView 32
  SetShellVarContext all
  StrCpy $Work "$APPDATA\Ostrel\Tessaly"
FunctionEnd
!macroend
!insertmacro Places ""
!insertmacro Places "un."

!include Files.nsh
!include Settings.nsh
!include FileType.nsh
!include Path.nsh

!macro Version language
VIAddVersionKey /LANG=${language} ProductName "Tessaly"
VIAddVersionKey /LANG=${language} CompanyName "Ostrel"
VIAddVersionKey /LANG=${language} FileVersion "${VERSION}"
VIAddVersionKey /LANG=${language} ProductVersion "${VERSION}"
VIAddVersionKey /LANG=${language} LegalCopyright "Copyright Ostrel"
!macroend
VIProductVersion "${VERSION}.0"
!insertmacro Version ${LANG_ENGLISH}
VIAddVersionKey /LANG=${LANG_ENGLISH} FileDescription "Tessaly Setup"
!insertmacro Version ${LANG_GERMAN}
VIAddVersionKey /LANG=${LANG_GERMAN} FileDescription "Tessaly-Installation"

; The language: as the option says; else, when nobody can be asked, as it is set; else as Windows speaks.
Function ChooseLanguage
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/LANG=" $1
  ${IfNot} ${Errors}
    ${If} $1 == "en"
      StrCpy $LANGUAGE ${LANG_ENGLISH}
    ${ElseIf} $1 == "de"
      StrCpy $LANGUAGE ${LANG_GERMAN}
    ${Else}
      MessageBox MB_OK|MB_ICONSTOP "/LANG=en | /LANG=de" /SD IDOK
      SetErrorLevel 2
      Quit
    ${EndIf}
  ${ElseIf} ${Silent}
    ClearErrors
    ReadRegDWORD $1 HKLM "${SETTINGS}" "Language"
    ${If} ${Errors}
      Return
    ${EndIf}
    ${If} $1 == 1
      StrCpy $LANGUAGE ${LANG_GERMAN}
    ${Else}
      StrCpy $LANGUAGE ${LANG_ENGLISH}
    ${EndIf}
  ${Else}
    !insertmacro MUI_LANGDLL_DISPLAY
  ${EndIf}
FunctionEnd

; Every user may write there. *S-1-5-32-545 is the group of the users, whatever its name is in the machine's language.
Function ShareFolder ; $0 folder
  CreateDirectory "$0"
  nsExec::Exec '"$SYSDIR\icacls.exe" "$0" /grant *S-1-5-32-545:(OI)(CI)M'
  Pop $1
FunctionEnd

!macro RemoveFromStartMenu un
Function ${un}RemoveFromStartMenu
  Delete "$SMPROGRAMS\Tessaly\Tessaly.lnk"
  ; In either language: the last installation may have been in the other one.
  Delete "$SMPROGRAMS\Tessaly\Tessaly Help.lnk"
  Delete "$SMPROGRAMS\Tessaly\Tessaly-Hilfe.lnk"
  Delete "$SMPROGRAMS\Tessaly\Examples.lnk"
  Delete "$SMPROGRAMS\Tessaly\Beispiele.lnk"
  Delete "$SMPROGRAMS\Tessaly\Kept texts.lnk"
  Delete "$SMPROGRAMS\Tessaly\Aufbewahrte Texte.lnk"
  RMDir "$SMPROGRAMS\Tessaly"
FunctionEnd
!macroend
!insertmacro RemoveFromStartMenu ""
!insertmacro RemoveFromStartMenu "un."

Function AddToStartMenu
  Call RemoveFromStartMenu
  CreateDirectory "$SMPROGRAMS\Tessaly"
  StrCpy $OUTDIR "%HOMEDRIVE%%HOMEPATH%" ; where the program starts: each user's own folder
  CreateShortCut "$SMPROGRAMS\Tessaly\Tessaly.lnk" "$INSTDIR\Tessaly.exe"
  SetOutPath $INSTDIR
  CreateShortCut "$SMPROGRAMS\Tessaly\$(TextHelpEntry).lnk" "$INSTDIR\help\$(TextHelpFile)"
  CreateShortCut "$SMPROGRAMS\Tessaly\$(TextExamplesEntry).lnk" "$INSTDIR\examples.exe"
  ; Each user has a folder of his own, which need not be there yet: only cmd.exe knows it and can make it.
  CreateShortCut "$SMPROGRAMS\Tessaly\$(TextKeptEntry).lnk" "$SYSDIR\cmd.exe" \
    '/c md "${KEPT}" 2>nul & "$WINDIR\explorer.exe" "${KEPT}"' "$SYSDIR\shell32.dll" 3 SW_SHOWMINIMIZED
FunctionEnd

; The entry in the list of installed programs.
Function WriteUninstallEntry
  WriteRegStr HKLM "${UNINSTALL}" "DisplayName" "Tessaly"
  WriteRegStr HKLM "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKLM "${UNINSTALL}" "DisplayIcon" "$INSTDIR\Tessaly.ico"
  WriteRegStr HKLM "${UNINSTALL}" "Publisher" "Ostrel"
  WriteRegStr HKLM "${UNINSTALL}" "Contact" "${CONTACT}"
  WriteRegStr HKLM "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKLM "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKLM "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegStr HKLM "${UNINSTALL}" "InstallLanguage" $LANGUAGE
  ${GetTime} "" "L" $0 $1 $2 $3 $4 $5 $6
  WriteRegStr HKLM "${UNINSTALL}" "InstallDate" "$2$1$0"
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD HKLM "${UNINSTALL}" "EstimatedSize" $0
  WriteRegDWORD HKLM "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKLM "${UNINSTALL}" "NoRepair" 1
FunctionEnd

Section "Tessaly"
  SectionIn RO
  Call StopWhileRunning
  Call RemoveInstalledFiles ; an older version's
  SetOutPath $INSTDIR
  SetOverwrite on
  File /r "${STAGE}/*"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  StrCpy $0 $Work
  Call ShareFolder
  Call AddToStartMenu
  WriteRegStr HKLM "${APP_PATH}" "" "$INSTDIR\Tessaly.exe"
  WriteRegStr HKLM "${APP_PATH}" "Path" "$INSTDIR"
  Call WriteSettings
  Call RegisterFileType
  Call WriteUninstallEntry
  Call RemoveFromPath ; that of an older version may have been another
SectionEnd

Section "$(TextPathSection)" InPath
  Call AddToPath
SectionEnd

!include Report.nsh

; Whether psf comes into the PATH: as the option says; else, in an update, as it is.
Function ChoosePath
  ${GetParameters} $0
  ${GetOptions} $0 "/PATH=" $1
  ReadRegStr $2 HKLM "${UNINSTALL}" "DisplayName"
  ReadRegStr $3 HKLM "${UNINSTALL}" "Path"
  ${If} $1$3 == ""
  ${AndIf} $2 != ""
    StrCpy $1 "no"
  ${EndIf}
  ${If} $1 == "no"
    !insertmacro UnselectSection ${InPath}
  ${ElseIf} $1 != ""
  ${AndIf} $1 != "yes"
    MessageBox MB_OK|MB_ICONSTOP "/PATH=yes | /PATH=no" /SD IDOK
    SetErrorLevel 2
    Quit
  ${EndIf}
FunctionEnd

Function .onInit
  Call Places
  Call ChooseLanguage
  Call ChoosePath
  ; An update goes where the program is, unless /D says otherwise.
  ReadRegStr $0 HKLM "${UNINSTALL}" "InstallLocation"
  ${If} $0 != ""
  ${AndIf} $INSTDIR == "$PROGRAMFILES32\Ostrel\Tessaly"
    StrCpy $INSTDIR $0
  ${EndIf}
FunctionEnd

Function un.onInit
  Call un.Places
  ReadRegStr $0 HKLM "${UNINSTALL}" "InstallLanguage"
  ${If} $0 != ""
    StrCpy $LANGUAGE $0
  ${EndIf}
FunctionEnd

Section "Uninstall"
  Call un.StopWhileRunning
  Call un.RemoveFromPath
  Call un.RemoveInstalledFiles
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  RMDir "$PROGRAMFILES32\Ostrel"
  ; Generated from the PSF on every build; a C file elsewhere is the user's own.
  Delete "$Work\program.c"
  Delete "$Work\program.c.log"
  RMDir "$Work"
  RMDir "$APPDATA\Ostrel"
  Call un.RemoveFromStartMenu
  DeleteRegKey HKLM "${APP_PATH}"
  Call un.RemoveSettings
  Call un.UnregisterFileType
  DeleteRegKey HKLM "${UNINSTALL}"
SectionEnd
