; What the installer put into its folder, by the list in it: files.txt has one path on each line, folders with
; a backslash at their end and after what is in them. Whatever else is in the folder is the user's and stays.

!macro FileFunctions un
; Windows locks a running program against writing, whoever runs it.
Function ${un}StopWhileRunning
  ${DoWhile} ${FileExists} "$INSTDIR\Tessaly.exe"
    ClearErrors
    FileOpen $0 "$INSTDIR\Tessaly.exe" a
    ${IfNot} ${Errors}
      FileClose $0
      Return
    ${EndIf}
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(TextStillRunning)" /SD IDCANCEL IDRETRY again
    SetErrorLevel 2
    Abort "$(TextStillRunning)"
    again:
  ${Loop}
FunctionEnd

; Reads the next line of the open list $0 into $1, "" at its end.
Function ${un}NextListed
  FileRead $0 $1
  ${Do}
    StrCpy $2 $1 1 -1
    ${If} $2 != "$\r"
    ${AndIf} $2 != "$\n"
      Return
    ${EndIf}
    StrCpy $1 $1 -1
  ${Loop}
FunctionEnd

Function ${un}RemoveInstalledFiles
  ClearErrors
  FileOpen $0 "$INSTDIR\files.txt" r
  ${If} ${Errors}
    Return
  ${EndIf}
  ${Do}
    Call ${un}NextListed
    ${If} $1 == ""
      ${Break}
    ${EndIf}
    StrCpy $2 $1 1 -1
    ${If} $2 == "\"
      RMDir "$INSTDIR\$1"
    ${Else}
      Delete "$INSTDIR\$1"
    ${EndIf}
  ${Loop}
  FileClose $0
  Delete "$INSTDIR\files.txt"
FunctionEnd
!macroend
!insertmacro FileFunctions ""
!insertmacro FileFunctions "un."
