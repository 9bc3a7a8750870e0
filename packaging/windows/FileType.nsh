; The file type .PSF: a ProgID of our own, which becomes the default only where no other program holds the type.
; The program takes its command line as it is, so the open command has no quotes around %1.

!define PROGID "Ostrel.Tessaly.PSF"
!define CLASSES "SOFTWARE\Classes"

; Tells Explorer that file types have changed: SHCNE_ASSOCCHANGED.
!macro RefreshFileTypes
  System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
!macroend

Function RegisterFileType
  WriteRegStr HKLM "${CLASSES}\${PROGID}" "" "$(TextFileType)"
  WriteRegStr HKLM "${CLASSES}\${PROGID}\DefaultIcon" "" "$INSTDIR\Tessaly.ico"
  WriteRegStr HKLM "${CLASSES}\${PROGID}\shell\open\command" "" '"$INSTDIR\Tessaly.exe" %1'
  WriteRegStr HKLM "${CLASSES}\.psf\OpenWithProgids" "${PROGID}" ""
  ReadRegStr $0 HKLM "${CLASSES}\.psf" ""
  ${If} $0 == ""
    WriteRegStr HKLM "${CLASSES}\.psf" "" "${PROGID}"
  ${EndIf}
  !insertmacro RefreshFileTypes
FunctionEnd

Function un.UnregisterFileType
  ReadRegStr $0 HKLM "${CLASSES}\.psf" ""
  ${If} $0 == "${PROGID}"
    DeleteRegValue HKLM "${CLASSES}\.psf" ""
  ${EndIf}
  DeleteRegValue HKLM "${CLASSES}\.psf\OpenWithProgids" "${PROGID}"
  DeleteRegKey /ifempty HKLM "${CLASSES}\.psf\OpenWithProgids"
  DeleteRegKey /ifempty HKLM "${CLASSES}\.psf"
  DeleteRegKey HKLM "${CLASSES}\${PROGID}"
  !insertmacro RefreshFileTypes
FunctionEnd
