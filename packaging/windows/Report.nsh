; What the last page says: whether psf is in the PATH, which C compiler the kit finds, and which settings were kept.

; Adds a paragraph.
!macro Say text
  StrCpy $Report "$Report$\r$\n$\r$\n${text}"
!macroend

Function WriteReport
  StrCpy $Report "$(TextInstalled)"
  ReadRegStr $0 HKLM "${UNINSTALL}" "Path"
  ${If} $0 != ""
    !insertmacro Say "$(TextInPath)"
  ${ElseIf} ${SectionIsSelected} ${InPath}
    !insertmacro Say "$(TextNotInPath)"
  ${EndIf}
  ; The kit looks itself, so that this is what a build will find. It looks nowhere but where programs are installed.
  nsExec::ExecToStack /OEM /TIMEOUT=60000 '"$SYSDIR\cmd.exe" /d /c ""$INSTDIR\kit\compile.bat" /compiler"'
  Pop $0
  Pop $1
  ${If} $0 == 0
    StrCpy $1 $1 -2 ; without its line end
    !insertmacro Say "$(TextCompiler) $1"
  ${Else}
    !insertmacro Say "$(TextNoCompiler)"
  ${EndIf}
  ${If} $Kept != ""
    !insertmacro Say "$(TextSettingsKept)$Kept"
  ${EndIf}
FunctionEnd

; A path may have an "&", which would underline the next letter.
Function ShowReport
  ${NSD_AddStyle} $mui.FinishPage.Text 0x80 ; SS_NOPREFIX
FunctionEnd
