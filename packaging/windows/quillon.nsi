; The installer. `package` defines VERSION, NUMBERS (four of them), TREE (the folder to install), TARGET (the
; installer to write), SIZE (of the tree, in KB) and PICTURES (the folder with side.bmp and header.bmp).
; Without a window: setup.exe /S [/AllUsers | /CurrentUser] [/D=FOLDER], Uninstall.exe /S [/DeleteMyFiles].
; It ends with 0, 1 when Quillon's folder could not be laid out, 2 when nothing could be done, 3 when Quillon runs.
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
InstallDir "$LOCALAPPDATA\Quillon"
RequestExecutionLevel user
AllowSkipFiles off

VIProductVersion "${NUMBERS}"
VIAddVersionKey CompanyName "Ostrand"
VIAddVersionKey FileDescription "Quillon, a route manager for Microsoft Train Simulator"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey LegalCopyright "2026 the Quillon developers, MIT License"
VIAddVersionKey ProductName "Quillon"
VIAddVersionKey ProductVersion "${VERSION}"

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Quillon"
!define GROUP "$SMPROGRAMS\Ostrand\Quillon"
!define DOWNLOADS_LINK "Downloaded MSTS routes.lnk"

!define MUI_ICON quillon.ico
!define MUI_UNICON quillon.ico
!define MUI_WELCOMEFINISHPAGE_BITMAP "${PICTURES}/side.bmp"
!define MUI_HEADERIMAGE
!define MUI_HEADERIMAGE_RIGHT
!define MUI_HEADERIMAGE_BITMAP "${PICTURES}/header.bmp"
!define MUI_ABORTWARNING
!define MUI_WELCOMEPAGE_TITLE "Welcome to Quillon!"
!define MUI_WELCOMEPAGE_TEXT "Quillon takes in your downloaded routes for Microsoft Train Simulator, keeps each \
as one compressed file, and puts exactly one at a time into the game.$\r$\n$\r$\nIf Quillon is running, please \
close it now.$\r$\n$\r$\nClick Next to continue."
!define MUI_DIRECTORYPAGE_TEXT_TOP "Quillon keeps your routes in its own folder. Choose a place with enough room, \
where you may write; not below Program Files."
!define MUI_FINISHPAGE_TITLE "Quillon is ready"
!define MUI_FINISHPAGE_TEXT "Start Quillon and show it where Train Simulator lies. Then drop your downloaded route \
zips on its window.$\r$\n$\r$\nYou find it in the Start menu, in Ostrand. F1 opens the help on every screen."
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_TEXT "Start Quillon"
!define MUI_FINISHPAGE_RUN_FUNCTION StartQuillon

!macro RemoveMenu
  Delete "${GROUP}\Quillon.lnk"
  Delete "${GROUP}\${DOWNLOADS_LINK}"
  RMDir "${GROUP}"
  RMDir "$SMPROGRAMS\Ostrand"
!macroend

!include for_whom.nsh
!include removal.nsh
!include file_types.nsh

!define MUI_PAGE_CUSTOMFUNCTION_PRE SkipWhenElevated
!insertmacro MUI_PAGE_WELCOME
Page custom ForWhomPage LeaveForWhomPage
!define MUI_PAGE_CUSTOMFUNCTION_SHOW NoWayBackWhenElevated
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE CheckFolder
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
UninstPage custom un.ConfirmPage un.LeaveConfirmPage
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

Function .onInit
  Call FindKind
  Call ChooseFolder
  Call LacksRights
  ${If} $0 = 1
    ${If} ${Silent}
      Call StartElevatedInstaller
    ${ElseIf} $Elevated = 1
      MessageBox MB_OK|MB_ICONEXCLAMATION "${NO_RIGHTS}"
    ${Else}
      Return  ; the page asks
    ${EndIf}
    SetErrorLevel 2
    Quit
  ${EndIf}
  ${If} ${Silent}
    Call CheckFolder
  ${EndIf}
FunctionEnd

; Says the fault of the folder, and stays on the page; without a window ends.
!macro RefuseFolder text
  MessageBox MB_OK|MB_ICONEXCLAMATION "${text}" /SD IDOK
  SetErrorLevel 2
  Abort
!macroend

!macro RefuseBelow folder
  StrLen $0 "${folder}"
  StrCpy $1 "$INSTDIR\" $0
  StrCpy $2 "$INSTDIR\" 1 $0
  ${If} $1 == "${folder}"
  ${AndIf} $2 == "\"
    !insertmacro RefuseFolder "Quillon keeps your routes in its own folder, and Windows lets no program write below \
${folder}. Please choose another place, for example C:\Quillon."
  ${EndIf}
!macroend

!macro RefuseThatOf hive whose
  ReadRegStr $0 ${hive} "${UNINSTALL_KEY}" InstallLocation
  ${If} $0 == $INSTDIR
    !insertmacro RefuseFolder "In $INSTDIR lies the Quillon that is installed for ${whose}. Please choose another folder, \
or go back and renew that one."
  ${EndIf}
!macroend

!macro RefuseStranger folder
  ${If} ${FileExists} "$INSTDIR\${folder}\*.*"
    !insertmacro RefuseFolder "$INSTDIR already holds a folder ${folder} that is not Quillon's. Please choose another place, or a \
new folder in it."
  ${EndIf}
!macroend

Function CheckFolder
  !insertmacro RefuseBelow $PROGRAMFILES64
  !insertmacro RefuseBelow $PROGRAMFILES32
  !insertmacro RefuseBelow $WINDIR
  ${If} $ForAll = 1
    !insertmacro RefuseThatOf HKCU "you alone"
  ${Else}
    !insertmacro RefuseThatOf HKLM "everyone"
  ${EndIf}
  ${If} ${FileExists} "$INSTDIR\train.exe"
    !insertmacro RefuseFolder "$INSTDIR is the game's own folder. Please choose another one: Quillon is shown later where the \
game lies."
  ${EndIf}
  ; Folders of these names become Quillon's own, to be deleted with it.
  ${IfNot} ${FileExists} "$INSTDIR\Larkmoor.exe"
  ${AndIfNot} ${FileExists} "$INSTDIR\resources\Do_Not_Delete!\*.*"
    !insertmacro RefuseStranger routes
    !insertmacro RefuseStranger resources
    !insertmacro RefuseStranger rescued
    !insertmacro RefuseStranger original_zips
    !insertmacro RefuseStranger downloaded_routes
    !insertmacro RefuseStranger delivered
    !insertmacro RefuseStranger licences
    !insertmacro RefuseStranger qt
  ${EndIf}
  CreateDirectory $INSTDIR
  ClearErrors
  GetTempFileName $0 $INSTDIR
  Delete $0
  ${If} ${Errors}
    !insertmacro RefuseFolder "You may not write into $INSTDIR. Please choose another folder."
  ${EndIf}
  RMDir $INSTDIR  ; an empty one: the user may choose another still
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

; Laying out the folder for all users, and older versions, made entries in the menu of whoever installs.
Function TidyOwnMenu
  SetShellVarContext current
  ReadRegStr $0 HKCU "${UNINSTALL_KEY}" InstallLocation
  ${If} $0 == ""
    !insertmacro RemoveMenu
  ${Else}
    CreateShortcut "${GROUP}\${DOWNLOADS_LINK}" "$0\downloaded_routes"
  ${EndIf}
  SetShellVarContext all
FunctionEnd

Section
  Call AwaitClosed
  SetOutPath "$INSTDIR"
  ; What an older version delivered and this one doesn't.
  ${If} ${FileExists} "$INSTDIR\Larkmoor.exe"
    !insertmacro RemoveTree "" delivered
    !insertmacro RemoveTree "" licences
    !insertmacro RemoveTree "" qt
    Delete "$INSTDIR\Qt6*.dll"
  ${EndIf}
  File /r "${TREE}\*.*"
  WriteUninstaller "$INSTDIR\Uninstall.exe"

  ; Where one user's key is, the program makes none for all.
  WriteRegStr SHCTX "Software\Ostrand\Larkmoor\Quillon" Associated Yes
  DetailPrint "Laying out Quillon's folder"
  nsExec::ExecToLog '"$INSTDIR\quillon.exe" --app "$INSTDIR" setup'
  Pop $0
  ${If} $0 != 0
    MessageBox MB_OK|MB_ICONSTOP "Quillon's folder could not be laid out. Click Show details to see why." /SD IDOK
    SetErrorLevel 1
    Abort
  ${EndIf}

  ${If} $ForAll = 1
    ; A game that this user has chosen for a Quillon that is gone would hide the one of all.
    ReadRegStr $0 HKCU "${UNINSTALL_KEY}" InstallLocation
    ${If} $0 == ""
      DeleteRegValue HKCU "Software\Ostrand\Larkmoor" TrainSimPath
      DeleteRegKey /ifempty HKCU "Software\Ostrand\Larkmoor\Quillon"
      DeleteRegKey /ifempty HKCU "Software\Ostrand\Larkmoor"
    ${EndIf}
    Call OpenRegistry
    Call TidyOwnMenu
    CreateDirectory "${GROUP}"
    CreateShortcut "${GROUP}\${DOWNLOADS_LINK}" "$INSTDIR\downloaded_routes"
  ${EndIf}
  CreateDirectory "${GROUP}"
  CreateShortcut "${GROUP}\Quillon.lnk" "$INSTDIR\Larkmoor.exe"
  !insertmacro ForEachFileType RegisterFileType

  WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayName "Quillon"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayVersion "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" Publisher "Ostrand"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayIcon "$INSTDIR\Larkmoor.exe"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" InstallLocation "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" UninstallString '"$INSTDIR\Uninstall.exe"'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" QuietUninstallString '"$INSTDIR\Uninstall.exe" /S'
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" EstimatedSize ${SIZE}
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" NoModify 1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" NoRepair 1
SectionEnd

Var DeleteFiles  ; 1: the user's routes, zips, rescued files and settings go, too
Var DeleteFilesBox

Function un.onInit
  StrCpy $ForAll 0
  ReadRegStr $0 HKLM "${UNINSTALL_KEY}" InstallLocation
  ${If} $0 == $INSTDIR
    StrCpy $ForAll 1
  ${EndIf}
  !insertmacro HasSwitch /Elevated
  StrCpy $Elevated $R9
  !insertmacro HasSwitch /DeleteMyFiles
  StrCpy $DeleteFiles $R9
  Call un.LacksRights
  ${If} $0 = 1
    StrCpy $1 ""
    ${If} $DeleteFiles = 1
      StrCpy $1 "/DeleteMyFiles "
    ${EndIf}
    StrCpy $1 "$1_?=$INSTDIR"
    Call un.StartElevated
    MessageBox MB_OK|MB_ICONEXCLAMATION "${NO_RIGHTS}" /SD IDOK
    SetErrorLevel 2
    Quit
  ${EndIf}
  Call un.UseKind
FunctionEnd

Function un.ConfirmPage
  !insertmacro MUI_HEADER_TEXT "Uninstall Quillon" "Remove Quillon's programs from your computer."
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateLabel} 0 4u 100% 40u "Quillon's programs will be removed from $INSTDIR.$\r$\n$\r$\nA route that is to stay \
in the game must have been made permanent before, in the route manager."
  Pop $0
  ${NSD_CreateCheckBox} 0 52u 100% 12u "&Delete my routes, zips and rescued files, too"
  Pop $DeleteFilesBox
  ${NSD_SetState} $DeleteFilesBox $DeleteFiles
  ${NSD_CreateLabel} 12u 66u 280u 30u "Without this they stay in their folder with your settings, and another \
installation in the same folder finds them again. With it all of that is gone for good."
  Pop $0
  GetDlgItem $0 $HWNDPARENT 1
  SendMessage $0 ${WM_SETTEXT} 0 "STR:&Uninstall"
  nsDialogs::Show
FunctionEnd

Function un.LeaveConfirmPage
  ${NSD_GetState} $DeleteFilesBox $DeleteFiles
FunctionEnd

Section Uninstall
  Call un.AwaitClosed
  ; What lies in a game's folder, or where no Quillon was laid out, may be anybody's.
  ${If} ${FileExists} "$INSTDIR\train.exe"
  ${OrIfNot} ${FileExists} "$INSTDIR\resources\Do_Not_Delete!\*.*"
    StrCpy $DeleteFiles 0
  ${EndIf}
  Delete "$INSTDIR\Larkmoor.exe"
  Delete "$INSTDIR\quillon.exe"
  Delete "$INSTDIR\README.txt"
  Delete "$INSTDIR\Qt6*.dll"
  Delete "$INSTDIR\qt.conf"
  Delete "$INSTDIR\quillon.lock"
  !insertmacro RemoveTree un. qt
  !insertmacro RemoveTree un. licences
  StrCpy $R0 "$INSTDIR\delivered\resources"
  StrCpy $R1 "$INSTDIR\resources"
  Call un.RemoveDelivered
  !insertmacro RemoveTree un. delivered
  Delete "$INSTDIR\Uninstall.exe"
  SetOutPath "$TEMP"  ; a current folder can't be removed
  ${If} $DeleteFiles = 1
    DetailPrint "Deleting routes, zips, rescued files and settings"
    !insertmacro ForEachFolder RemoveTree
    Delete "$INSTDIR\intake.log"
  ${Else}
    !insertmacro ForEachFolder RemoveEmpty
  ${EndIf}
  RMDir "$INSTDIR"

  ; The one on the desktop is a copy of the one in the menu, or another Quillon's.
  StrCpy $R0 "${GROUP}\${DOWNLOADS_LINK}"
  SetShellVarContext current
  StrCpy $R1 "$DESKTOP\${DOWNLOADS_LINK}"
  Call un.SameFile
  ${If} $0 = 1
    Delete $R1
  ${EndIf}
  Call un.UseKind
  !insertmacro RemoveMenu
  !insertmacro ForEachFileType ForgetFileTypeEverywhere
  ; So that the next installation makes them known again. Where the game lies is the user's setting and stays.
  DeleteRegValue HKCU "Software\Ostrand\Larkmoor\Quillon" Associated
  DeleteRegKey /ifempty HKCU "Software\Ostrand\Larkmoor\Quillon"
  DeleteRegValue HKLM "Software\Ostrand\Larkmoor\Quillon" Associated
  DeleteRegKey SHCTX "${UNINSTALL_KEY}"
SectionEnd
