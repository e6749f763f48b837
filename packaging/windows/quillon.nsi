; The installer. `package` defines VERSION, NUMBERS (four of them), TREE (the folder to install), TARGET (the
; installer to write), PROGRAMS (SIZE in KB) and PICTURE (the side of the first page).
Target amd64-unicode
SetCompressor /SOLID lzma
ManifestDPIAware true

!include MUI2.nsh
!include LogicLib.nsh

Name "Quillon"
Caption "Quillon ${VERSION}"
BrandingText "Quillon ${VERSION}"
OutFile "${TARGET}"
; The program keeps its routes beside itself, so it must not lie where only administrators may write.
InstallDir "C:\Quillon"
; For the registry and the programs' menu.
RequestExecutionLevel admin

VIProductVersion "${NUMBERS}"
VIAddVersionKey CompanyName "Ostrand"
VIAddVersionKey FileDescription "Quillon, a route manager for Microsoft Train Simulator"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey LegalCopyright "2026 the Quillon developers, MIT License"
VIAddVersionKey ProductName "Quillon"
VIAddVersionKey ProductVersion "${VERSION}"

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Quillon"
!define GROUP "$SMPROGRAMS\Ostrand\Quillon"

!define MUI_ICON quillon.ico
!define MUI_UNICON quillon.ico
!define MUI_WELCOMEFINISHPAGE_BITMAP "${PICTURE}"
!define MUI_ABORTWARNING
!define MUI_WELCOMEPAGE_TITLE "Welcome to Quillon!"
!define MUI_WELCOMEPAGE_TEXT "Quillon takes in your downloaded routes for Microsoft Train Simulator, keeps each \
as one compressed file, and puts exactly one at a time into the game.$\r$\n$\r$\nIf Quillon is running, please \
close it now.$\r$\n$\r$\nClick Next to continue."
!define MUI_DIRECTORYPAGE_TEXT_TOP "Quillon keeps your routes in its own folder. Choose a place with enough room, \
where you may write; not below Program Files."
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_TEXT "Start Quillon"
!define MUI_FINISHPAGE_RUN_FUNCTION StartQuillon

!insertmacro MUI_PAGE_WELCOME
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE CheckFolder
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!define MUI_UNCONFIRMPAGE_TEXT_TOP "Quillon's programs will be removed. Your routes, downloads, original zips and \
settings stay in this folder."
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

Function .onInit
  ${If} $INSTDIR == "C:\Quillon"  ; not chosen on the command line
    ReadRegStr $0 HKLM "${UNINSTALL_KEY}" InstallLocation
    ${If} $0 == ""
      StrCpy $0 $WINDIR 2
      StrCpy $0 "$0\Quillon"
    ${EndIf}
    StrCpy $INSTDIR $0
  ${EndIf}
FunctionEnd

!macro RefuseBelow folder
  StrLen $0 "${folder}"
  StrCpy $1 "$INSTDIR\" $0
  StrCpy $2 "$INSTDIR\" 1 $0
  ${If} $1 == "${folder}"
  ${AndIf} $2 == "\"
    MessageBox MB_OK|MB_ICONEXCLAMATION "Quillon keeps your routes in its own folder, and Windows lets no program \
write below ${folder}. Please choose another place, for example C:\Quillon."
    Abort
  ${EndIf}
!macroend

Function CheckFolder
  !insertmacro RefuseBelow $PROGRAMFILES64
  !insertmacro RefuseBelow $PROGRAMFILES32
  !insertmacro RefuseBelow $WINDIR
FunctionEnd

; By way of the explorer, so that the program doesn't run as administrator.
Function StartQuillon
  Exec '"$WINDIR\explorer.exe" "$INSTDIR\Larkmoor.exe"'
FunctionEnd

; The program keeps in the registry where the game lies: whoever uses it may change that. $1 is a security descriptor.
!macro OpenRegistryKey key
  ; HKEY_LOCAL_MACHINE, WRITE_DAC; DACL_SECURITY_INFORMATION
  System::Call 'advapi32::RegOpenKeyExW(p -2147483646, w "${key}", i 0, i 0x40000, *p .r2) i .r0'
  ${If} $0 = 0
    System::Call 'advapi32::RegSetKeySecurity(p r2, i 4, p r1) i .r0'
    System::Call 'advapi32::RegCloseKey(p r2)'
  ${EndIf}
!macroend

Function OpenRegistry
  !define RIGHTS "D:(A;CI;KA;;;SY)(A;CI;KA;;;BA)(A;CI;KRKW;;;BU)"
  System::Call 'advapi32::ConvertStringSecurityDescriptorToSecurityDescriptorW(w "${RIGHTS}", i 1, *p .r1, p 0) i .r0'
  ${If} $0 <> 0
    !insertmacro OpenRegistryKey Software\Ostrand\Larkmoor
    !insertmacro OpenRegistryKey Software\Ostrand\Larkmoor\Quillon
    System::Call 'kernel32::LocalFree(p r1)'
  ${EndIf}
FunctionEnd

Section
  SetOutPath "$INSTDIR"
  ; What an older version delivered and this one doesn't.
  ${If} ${FileExists} "$INSTDIR\Larkmoor.exe"
    RMDir /r "$INSTDIR\delivered"
    RMDir /r "$INSTDIR\licences"
  ${EndIf}
  File /r "${TREE}\*.*"
  WriteUninstaller "$INSTDIR\Uninstall.exe"

  DetailPrint "Laying out Quillon's folder"
  nsExec::ExecToLog '"$INSTDIR\quillon.exe" --app "$INSTDIR" setup'
  Pop $0
  ${If} $0 != 0
    MessageBox MB_OK|MB_ICONSTOP "Quillon's folder could not be laid out. Click Show details to see why." /SD IDOK
    SetErrorLevel 1
    Abort
  ${EndIf}
  Call OpenRegistry

  CreateDirectory "${GROUP}"
  CreateShortcut "${GROUP}\Quillon.lnk" "$INSTDIR\Larkmoor.exe"

  WriteRegStr HKLM "${UNINSTALL_KEY}" DisplayName "Quillon"
  WriteRegStr HKLM "${UNINSTALL_KEY}" DisplayVersion "${VERSION}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" Publisher "Ostrand"
  WriteRegStr HKLM "${UNINSTALL_KEY}" DisplayIcon "$INSTDIR\Larkmoor.exe"
  WriteRegStr HKLM "${UNINSTALL_KEY}" InstallLocation "$INSTDIR"
  WriteRegStr HKLM "${UNINSTALL_KEY}" UninstallString '"$INSTDIR\Uninstall.exe"'
  WriteRegStr HKLM "${UNINSTALL_KEY}" QuietUninstallString '"$INSTDIR\Uninstall.exe" /S'
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" EstimatedSize ${SIZE}
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" NoModify 1
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" NoRepair 1
SectionEnd

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

!macro RemoveEmpty folder
  StrCpy $R0 "$INSTDIR\${folder}"
  Call un.RemoveEmpty
!macroend

!macro ForgetFileType extension type
  ReadRegStr $0 HKCR "${extension}" ""
  ${If} $0 == "${type}"
    DeleteRegKey HKCR "${extension}"
  ${EndIf}
  DeleteRegKey HKCR "${type}"
!macroend

Section Uninstall
  Delete "$INSTDIR\Larkmoor.exe"
  Delete "$INSTDIR\quillon.exe"
  Delete "$INSTDIR\README.txt"
  RMDir /r "$INSTDIR\licences"
  StrCpy $R0 "$INSTDIR\delivered\resources"
  StrCpy $R1 "$INSTDIR\resources"
  Call un.RemoveDelivered
  RMDir /r "$INSTDIR\delivered"
  Delete "$INSTDIR\Uninstall.exe"
  SetOutPath "$TEMP"  ; a current folder can't be removed
  !insertmacro RemoveEmpty downloaded_routes
  !insertmacro RemoveEmpty original_zips
  !insertmacro RemoveEmpty resources
  !insertmacro RemoveEmpty routes
  RMDir "$INSTDIR"

  Delete "${GROUP}\Quillon.lnk"
  Delete "${GROUP}\Downloaded MSTS routes.lnk"
  Delete "$DESKTOP\Downloaded MSTS routes.lnk"
  RMDir "${GROUP}"
  RMDir "$SMPROGRAMS\Ostrand"

  !insertmacro ForgetFileType .qnz Larkmoor.Compressed.Route
  !insertmacro ForgetFileType .qnc Larkmoor.Terrain.Cache
  ; So that the next installation makes them known again. Where the game lies is the user's setting and stays.
  DeleteRegValue HKLM "Software\Ostrand\Larkmoor\Quillon" Associated
  DeleteRegKey HKLM "${UNINSTALL_KEY}"
SectionEnd
