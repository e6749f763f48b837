; The two kinds of files that Quillon makes, known to Windows for whom it is installed.

!macro RegisterFileType extension type description
  WriteRegStr SHCTX "Software\Classes\${extension}" "" "${type}"
  WriteRegStr SHCTX "Software\Classes\${type}" "" "${description}"
  WriteRegStr SHCTX "Software\Classes\${type}\shell\open\command" "" "$INSTDIR\Larkmoor.exe %1"
  WriteRegStr SHCTX "Software\Classes\${type}\DefaultIcon" "" "$INSTDIR\Larkmoor.exe,0"
!macroend

; Another installation may have made them its own since.
!macro ForgetFileType root extension type
  ReadRegStr $0 ${root} "Software\Classes\${type}\shell\open\command" ""
  ${If} $0 == "$INSTDIR\Larkmoor.exe %1"
    DeleteRegKey ${root} "Software\Classes\${type}"
    ReadRegStr $0 ${root} "Software\Classes\${extension}" ""
    ${If} $0 == "${type}"
      DeleteRegValue ${root} "Software\Classes\${extension}" ""
      DeleteRegKey /ifempty ${root} "Software\Classes\${extension}"
    ${EndIf}
  ${EndIf}
!macroend

!macro ForEachFileType do
  !insertmacro ${do} .qnz Larkmoor.Compressed.Route "Larkmoor Compressed Route File"
  !insertmacro ${do} .qnc Larkmoor.Terrain.Cache "Larkmoor Compressed Terrain File"
  System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'  ; SHCNE_ASSOCCHANGED
!macroend

; The program itself may have registered them for its user.
!macro ForgetFileTypeEverywhere extension type description
  !insertmacro ForgetFileType HKCU ${extension} ${type}
  !insertmacro ForgetFileType HKLM ${extension} ${type}
!macroend
