; What the installer put into its folder, by the list that lies there: files.txt has one path on each line, folders with
; a backslash at their end and behind what is in them. Whatever else is in the folder is the user's and stays.

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

; Reads a byte of the open files $6 and $7 into $8 and $9, "end" at the end of one.
Function un.ReadByteOfBoth
  ClearErrors
  FileReadByte $6 $8
  ${If} ${Errors}
    StrCpy $8 "end"
  ${EndIf}
  ClearErrors
  FileReadByte $7 $9
  ${If} ${Errors}
    StrCpy $9 "end"
  ${EndIf}
FunctionEnd

; Deletes $4 when it holds the same bytes as $3.
Function un.DeleteWhenSame
  ${IfNot} ${FileExists} $4
    Return
  ${EndIf}
  FileOpen $6 $3 r
  FileOpen $7 $4 r
  ${Do}
    Call un.ReadByteOfBoth
    ${If} $8 != $9
    ${OrIf} $8 == "end"
      ${Break}
    ${EndIf}
  ${Loop}
  FileClose $6
  FileClose $7
  ${If} $8 == $9
    Delete $4
  ${EndIf}
FunctionEnd

; The examples to work with that nobody has changed; called while those in the installation folder are still there.
Function un.RemoveUnchangedExamples
  ClearErrors
  FileOpen $0 "$INSTDIR\files.txt" r
  ${If} ${Errors}
    Return
  ${EndIf}
  ${Do}
    Call un.NextListed
    ${If} $1 == ""
      ${Break}
    ${EndIf}
    StrCpy $2 $1 9
    ${If} $2 == "examples\"
      StrCpy $2 $1 "" 9
      StrCpy $3 "$INSTDIR\$1"
      StrCpy $4 "$Examples\$2"
      StrCpy $5 $1 1 -1
      ${If} $5 == "\"
        RMDir $4
      ${Else}
        Call un.DeleteWhenSame
      ${EndIf}
    ${EndIf}
  ${Loop}
  FileClose $0
FunctionEnd
