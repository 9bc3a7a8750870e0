; The five settings of the program. What the installer wrote is noted in the uninstall entry as "Setting NAME": a value
; that differs from its note is somebody else's (another target's compiler, say) and is neither replaced nor removed.

; $0 name, $1 value
Function WriteSetting
  ReadRegStr $2 HKLM "${SETTINGS}" $0
  ReadRegStr $3 HKLM "${UNINSTALL}" "Setting $0"
  ${If} $2 != ""
  ${AndIf} $2 != $3
    StrCpy $Kept "$Kept$\r$\n$0 = $2"
    Return
  ${EndIf}
  WriteRegStr HKLM "${SETTINGS}" $0 $1
  WriteRegStr HKLM "${UNINSTALL}" "Setting $0" $1
FunctionEnd

Function WriteSettings
  ; The program puts this in front of the output name as it is: the quotes make one word of a path with spaces.
  StrCpy $0 "FCompBat"
  StrCpy $1 '"$INSTDIR\kit\compile.bat"'
  Call WriteSetting
  ; One file for all users, as the setting is one for all: the last one to build owns what is in it.
  StrCpy $0 "FCompFileName"
  StrCpy $1 "$Work\program.c"
  Call WriteSetting
  StrCpy $0 "FHelp"
  StrCpy $1 "$INSTDIR\help\$(TextHelpFile)"
  Call WriteSetting
  StrCpy $0 "FProgBlkIcon"
  StrCpy $1 "$INSTDIR\Tessaly.ico"
  Call WriteSetting
  ; Chosen in this installation, so it is set in any case; it goes with the program unless it was there before.
  ClearErrors
  ReadRegDWORD $0 HKLM "${SETTINGS}" "Language"
  ${If} ${Errors}
    WriteRegStr HKLM "${UNINSTALL}" "Setting Language" "new"
  ${EndIf}
  ${If} $LANGUAGE == ${LANG_GERMAN}
    WriteRegDWORD HKLM "${SETTINGS}" "Language" 1
  ${Else}
    WriteRegDWORD HKLM "${SETTINGS}" "Language" 0
  ${EndIf}
FunctionEnd

; $0 name
Function un.RemoveSetting
  ReadRegStr $2 HKLM "${SETTINGS}" $0
  ReadRegStr $3 HKLM "${UNINSTALL}" "Setting $0"
  ${If} $2 == $3
    DeleteRegValue HKLM "${SETTINGS}" $0
  ${EndIf}
FunctionEnd

Function un.RemoveSettings
  StrCpy $0 "FCompBat"
  Call un.RemoveSetting
  StrCpy $0 "FCompFileName"
  Call un.RemoveSetting
  StrCpy $0 "FHelp"
  Call un.RemoveSetting
  StrCpy $0 "FProgBlkIcon"
  Call un.RemoveSetting
  ReadRegStr $0 HKLM "${UNINSTALL}" "Setting Language"
  ${If} $0 == "new"
    DeleteRegValue HKLM "${SETTINGS}" "Language"
  ${EndIf}
  DeleteRegKey /ifempty HKLM "${SETTINGS}"
  DeleteRegKey /ifempty HKLM "SOFTWARE\Ostrel"
FunctionEnd
