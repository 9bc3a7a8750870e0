; The folder of psf in the PATH of all users. What the installer put there is noted in the uninstall entry as "Path".
; A variable of NSIS holds 1,024 characters and a PATH may have more, so it stays in memory of Windows' own functions.

!define ENVIRONMENT "SYSTEM\CurrentControlSet\Control\Session Manager\Environment"
!define PSF_FOLDER "$INSTDIR\bin"

!macro PathFunctions un
; Reads the PATH as ";PATH;" into memory with room for one more folder. $1 is its address, 0 if there is no such text;
; $2 the open key, $3 the type of the value, $4 how many characters.
Function ${un}OpenPath
  StrCpy $1 0
  System::Call 'advapi32::RegOpenKeyExW(p 0x80000002, w "${ENVIRONMENT}", i 0, i 0x2001F, *p .r2) i .r0'
  ${If} $0 <> 0
    Return
  ${EndIf}
  System::Call 'advapi32::RegQueryValueExW(p r2, w "Path", p 0, *i .r3, p 0, *i .r4) i .r0'
  ${If} $0 <> 0
  ${OrIf} $3 < 1 ; REG_SZ
  ${OrIf} $3 > 2 ; REG_EXPAND_SZ
    System::Call 'advapi32::RegCloseKey(p r2)'
    Return
  ${EndIf}
  StrLen $5 ";${PSF_FOLDER};;"
  IntOp $5 $5 * 2
  IntOp $5 $5 + $4
  System::Alloc $5 ; all of it is 0
  Pop $1
  System::Call 'kernel32::lstrcpyW(p r1, w ";")'
  IntOp $5 $1 + 2
  System::Call 'advapi32::RegQueryValueExW(p r2, w "Path", p 0, *i .r3, p r5, *i r4) i .r0'
  ${If} $0 <> 0 ; it has just become longer
    Call ${un}ClosePath
    StrCpy $1 0
    Return
  ${EndIf}
  System::Call 'kernel32::lstrcatW(p r1, w ";")'
  System::Call 'kernel32::lstrlenW(p r1) i .r4'
FunctionEnd

; Writes what follows the first character at $1, and tells the programs that run.
Function ${un}WritePath
  IntOp $5 $1 + 2
  System::Call 'kernel32::lstrlenW(p r1) i .r4'
  IntOp $4 $4 * 2 ; the end counts, the first character does not
  System::Call 'advapi32::RegSetValueExW(p r2, w "Path", i 0, i r3, p r5, i r4) i .r0'
  SendMessage ${HWND_BROADCAST} ${WM_SETTINGCHANGE} 0 "STR:Environment" /TIMEOUT=5000
FunctionEnd

Function ${un}ClosePath
  System::Call 'advapi32::RegCloseKey(p r2)'
  System::Free $1
FunctionEnd

; Takes out what is noted, and nothing else.
Function ${un}RemoveFromPath
  ReadRegStr $7 HKLM "${UNINSTALL}" "Path"
  ${If} $7 == ""
    Return
  ${EndIf}
  DeleteRegValue HKLM "${UNINSTALL}" "Path"
  Call ${un}OpenPath
  ${If} $1 = 0
    Return
  ${EndIf}
  StrCpy $7 ";$7;"
  System::Call 'shlwapi::StrStrIW(p r1, w r7) p .r5'
  ${If} $5 <> 0
    StrLen $8 $7
    IntOp $8 $8 - 1
    IntOp $8 $8 * 2
    IntOp $8 $5 + $8 ; the ";" at its end
    System::Call 'kernel32::lstrlenW(p r8) i .r6'
    IntOp $6 $6 * 2
    System::Call 'kernel32::RtlMoveMemory(p r5, p r8, i r6)'
    IntOp $6 $5 + $6
    IntOp $6 $6 - 2 ; the last ";" of all
    System::Call '*$6(&i2 0)'
    Call ${un}WritePath
  ${EndIf}
  Call ${un}ClosePath
FunctionEnd
!macroend
!insertmacro PathFunctions ""
!insertmacro PathFunctions "un."

; Does nothing where it is in the PATH already, or where that would get longer than Windows allows.
Function AddToPath
  Call OpenPath
  ${If} $1 = 0
    Return
  ${EndIf}
  StrCpy $7 ";${PSF_FOLDER};"
  System::Call 'shlwapi::StrStrIW(p r1, w r7) p .r5'
  StrLen $8 $7
  IntOp $8 $8 + $4
  IntOp $8 $8 - 2 ; without the ";" at its ends, but with the end
  ${If} $5 = 0
  ${AndIf} $8 <= 32767
    StrCpy $7 "${PSF_FOLDER}"
    System::Call 'kernel32::lstrcatW(p r1, w r7)'
    Call WritePath
    ${If} $0 = 0
      WriteRegStr HKLM "${UNINSTALL}" "Path" "${PSF_FOLDER}"
    ${EndIf}
  ${EndIf}
  Call ClosePath
FunctionEnd
