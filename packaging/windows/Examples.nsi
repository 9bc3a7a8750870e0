; The start menu's entry for the examples: copies them into the user's own documents, where they can be changed, and
; opens the folder. What is there stays as it is. script/package windows calls makensis on it with
;   VERSION  the version, STAGE  the folder with the folder examples, OUTPUT  the program's path.

Unicode true
SetCompressor /SOLID lzma
RequestExecutionLevel user
ManifestSupportedOS all
SilentInstall silent

Name "Tessaly"
OutFile "${OUTPUT}"
Icon "${STAGE}/Tessaly.ico"
VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "Tessaly"
VIAddVersionKey CompanyName "Ostrel"
VIAddVersionKey FileDescription "Tessaly Examples"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey LegalCopyright "Copyright Ostrel"

Section
  SetOutPath "$DOCUMENTS\Tessaly Examples"
  SetOverwrite off
  File /r "${STAGE}/examples/*"
  ExecShell open "$DOCUMENTS\Tessaly Examples"
SectionEnd
