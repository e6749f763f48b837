; How files and folders go. Links to other places are never followed.

!macro RemovalFunctions un
; Removes $R0, a folder, with all that it holds. What a link in it leads to stays.
Function ${un}RemoveTree
  System::Call 'kernel32::GetFileAttributesW(w R0) i .r0'
  ${If} $0 = -1
    Return
  ${EndIf}
  IntOp $1 $0 & 0x400
  ${If} $1 = 0
    Push $R2
    Push $R3
    FindFirst $R2 $R3 "$R0\*.*"
    ${DoWhile} $R3 != ""
      ${If} $R3 != "."
      ${AndIf} $R3 != ".."
        Push $R0
        StrCpy $R0 "$R0\$R3"
        ${If} ${FileExists} "$R0\*.*"
          Call ${un}RemoveTree
        ${Else}
          SetFileAttributes "$R0" NORMAL
          Delete "$R0"
        ${EndIf}
        Pop $R0
      ${EndIf}
      FindNext $R2 $R3
    ${Loop}
    FindClose $R2
    Pop $R3
    Pop $R2
  ${EndIf}
  SetFileAttributes "$R0" NORMAL
  RMDir "$R0"
FunctionEnd

; Waits until no program in the folder runs; without a window, or when the user gives up, nothing is changed.
Function ${un}AwaitClosed
  ${Do}
    StrCpy $R0 ""
    !insertmacro SeeWhetherUsed Larkmoor.exe
    !insertmacro SeeWhetherUsed quillon.exe
    !insertmacro SeeWhetherUsed quillon.lock
    ${If} $R0 == ""
      Return
    ${EndIf}
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "Quillon is running, or another program uses $INSTDIR\$R0.$\r$\n$\r$\n\
Please close it and click Retry. Nothing has been changed yet." /SD IDCANCEL IDRETRY +3
    SetErrorLevel 3
    Abort
  ${Loop}
FunctionEnd
!macroend

; A file that a program runs from, or holds, can't be opened for writing.
!macro SeeWhetherUsed file
  ${If} ${FileExists} "$INSTDIR\${file}"
    SetFileAttributes "$INSTDIR\${file}" NORMAL
    ClearErrors
    FileOpen $0 "$INSTDIR\${file}" a
    ${If} ${Errors}
      StrCpy $R0 ${file}
    ${Else}
      FileClose $0
    ${EndIf}
  ${EndIf}
!macroend

!insertmacro RemovalFunctions ""
!insertmacro RemovalFunctions un.

!macro RemoveTree un folder
  StrCpy $R0 "\\?\$INSTDIR\${folder}"
  StrCpy $0 $INSTDIR 2
  ${If} $0 == "\\"  ; a share
    StrCpy $R0 "$INSTDIR\${folder}"
  ${EndIf}
  Call ${un}RemoveTree
!macroend

; Are the files $R0 and $R1 the same? $0 is 1 or 0.
Function un.SameFile
  ClearErrors
  FileOpen $1 $R0 r
  FileOpen $2 $R1 r
  StrCpy $0 0
  ${IfNot} ${Errors}
    ${Do}
      ClearErrors
      FileReadByte $1 $3
      ${If} ${Errors}
        StrCpy $3 end
        ClearErrors
      ${EndIf}
      FileReadByte $2 $4
      ${If} ${Errors}
        StrCpy $4 end
      ${EndIf}
      ${If} $3 != $4
        ${Break}
      ${ElseIf} $3 == end
        StrCpy $0 1
        ${Break}
      ${EndIf}
    ${Loop}
  ${EndIf}
  FileClose $1
  FileClose $2
FunctionEnd

; Removes below $R1 what lies the same below $R0, the delivered tree. What the user changed stays.
Function un.RemoveDelivered
  Push $R2
  Push $R3
  FindFirst $R2 $R3 "$R0\*.*"
  ${DoWhile} $R3 != ""
    ${If} $R3 != "."
    ${AndIf} $R3 != ".."
      Push $R0
      Push $R1
      StrCpy $R0 "$R0\$R3"
      StrCpy $R1 "$R1\$R3"
      ${If} ${FileExists} "$R0\*.*"
        Call un.RemoveDelivered
      ${Else}
        Call un.SameFile
        ${If} $0 = 1
          Delete "$R1"
        ${EndIf}
      ${EndIf}
      Pop $R1
      Pop $R0
    ${EndIf}
    FindNext $R2 $R3
  ${Loop}
  FindClose $R2
  Pop $R3
  Pop $R2
FunctionEnd

; Removes the empty folders at and below $R0; one that leads elsewhere stays.
Function un.RemoveEmpty
  System::Call 'kernel32::GetFileAttributesW(w R0) i .r0'
  IntOp $1 $0 & 0x400
  ${If} $0 = -1
  ${OrIf} $1 <> 0
    Return
  ${EndIf}
  Push $R2
  Push $R3
  FindFirst $R2 $R3 "$R0\*.*"
  ${DoWhile} $R3 != ""
    ${If} $R3 != "."
    ${AndIf} $R3 != ".."
    ${AndIf} ${FileExists} "$R0\$R3\*.*"
      Push $R0
      StrCpy $R0 "$R0\$R3"
      Call un.RemoveEmpty
      Pop $R0
    ${EndIf}
    FindNext $R2 $R3
  ${Loop}
  FindClose $R2
  Pop $R3
  Pop $R2
  RMDir "$R0"
FunctionEnd

!macro RemoveEmpty un folder
  StrCpy $R0 "$INSTDIR\${folder}"
  Call ${un}RemoveEmpty
!macroend

; Those in which Quillon keeps what is the user's.
!macro ForEachFolder do
  !insertmacro ${do} un. downloaded_routes
  !insertmacro ${do} un. original_zips
  !insertmacro ${do} un. rescued
  !insertmacro ${do} un. resources
  !insertmacro ${do} un. routes
!macroend
