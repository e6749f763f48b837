; For whom Quillon is installed: for one user, who needs no rights for it, or for all users of the computer, which
; needs an administrator's. SHCTX and the shell's folders go by it.
!include FileFunc.nsh
!include nsDialogs.nsh

Var ForAll       ; 1: for all users; 0: for this one
Var Elevated     ; 1: started anew by an installer or uninstaller that had no rights
Var Given        ; the folder that the command line named, or ""
Var ForMeButton
Var ForAllButton
Var RenewalLabel

!macro HasSwitch name  ; $R9 becomes 1 or 0
  ${GetParameters} $R8
  ClearErrors
  ${GetOptions} $R8 "${name}" $R9
  StrCpy $R9 1
  ${If} ${Errors}
    StrCpy $R9 0
  ${EndIf}
!macroend

!macro KindFunctions un
Function ${un}UseKind
  ${If} $ForAll = 1
    SetShellVarContext all
  ${Else}
    SetShellVarContext current
  ${EndIf}
FunctionEnd

; Are rights still missing for all users? $0 is 1 or 0.
Function ${un}LacksRights
  UserInfo::GetAccountType
  Pop $0
  ${If} $ForAll = 1
  ${AndIf} $0 != "Admin"
    StrCpy $0 1
  ${Else}
    StrCpy $0 0
  ${EndIf}
FunctionEnd

; Starts this program as an administrator, with the switches $1, and ends this process. Comes back when Windows
; gives no rights, or the user refuses them.
Function ${un}StartElevated
  ${If} $Elevated = 1
    Return
  ${EndIf}
  StrCpy $1 "/Elevated $1"
  ${If} ${Silent}
    StrCpy $1 "/S $1"
  ${EndIf}
  ; SHELLEXECUTEINFOW with SEE_MASK_NOCLOSEPROCESS
  System::Call '*(i 112, i 0x40, p $HWNDPARENT, w "runas", w "$EXEPATH", w r1, p 0, i 1, i 0, p 0, p 0, p 0, p 0, i 0, \
i 0, p 0, p 0) p .r2'
  System::Call 'shell32::ShellExecuteExW(p r2) i .r0'
  System::Call '*$2(i, i, p, p, p, p, p, i, i, p, p, p, p, i, i, p, p .r3)'
  System::Free $2
  ${If} $0 = 0
    Return
  ${EndIf}
  ; Who installs without a window waits for the result.
  ${If} ${Silent}
    System::Call 'kernel32::WaitForSingleObject(p r3, i -1)'
    System::Call 'kernel32::GetExitCodeProcess(p r3, *i .r0)'
    SetErrorLevel $0
  ${EndIf}
  System::Call 'kernel32::CloseHandle(p r3)'
  Quit
FunctionEnd
!macroend
!insertmacro KindFunctions ""
!insertmacro KindFunctions un.

!define NO_RIGHTS "Windows gave no administrator's rights, so nothing was changed."

; An upgrade is of the kind that is there already.
Function FindKind
  StrCpy $Given $INSTDIR
  ${If} $INSTDIR == "$LOCALAPPDATA\Quillon"
    StrCpy $Given ""
  ${EndIf}
  StrCpy $ForAll 0
  ReadRegStr $0 HKCU "${UNINSTALL_KEY}" InstallLocation
  ReadRegStr $1 HKLM "${UNINSTALL_KEY}" InstallLocation
  ${If} $0 == ""
  ${AndIf} $1 != ""
    StrCpy $ForAll 1
  ${EndIf}
  !insertmacro HasSwitch /AllUsers
  ${If} $R9 = 1
    StrCpy $ForAll 1
  ${EndIf}
  !insertmacro HasSwitch /CurrentUser
  ${If} $R9 = 1
    StrCpy $ForAll 0
  ${EndIf}
  !insertmacro HasSwitch /Elevated
  StrCpy $Elevated $R9
FunctionEnd

; The folder: as given, where this kind lies already, or where its users may write.
Function ChooseFolder
  Call UseKind
  StrCpy $INSTDIR $Given
  ${If} $INSTDIR == ""
    ReadRegStr $INSTDIR SHCTX "${UNINSTALL_KEY}" InstallLocation
  ${EndIf}
  ${If} $INSTDIR == ""
    StrCpy $INSTDIR "$LOCALAPPDATA\Quillon"
    ${If} $ForAll = 1
      StrCpy $0 $WINDIR 2
      StrCpy $INSTDIR "$0\Quillon"
    ${EndIf}
  ${EndIf}
FunctionEnd

; Comes back without rights only.
Function StartElevatedInstaller
  StrCpy $1 "/AllUsers"
  ${If} $Given != ""
    StrCpy $1 "$1 /D=$Given"
  ${EndIf}
  Call StartElevated
FunctionEnd

; What was answered before the rights came is not asked again.
Function SkipWhenElevated
  ${If} $Elevated = 1
    Abort
  ${EndIf}
FunctionEnd

Function NoWayBackWhenElevated
  ${If} $Elevated = 1
    GetDlgItem $0 $HWNDPARENT 3
    EnableWindow $0 0
  ${EndIf}
FunctionEnd

Function ForWhomPage
  Call SkipWhenElevated
  !insertmacro MUI_HEADER_TEXT "For whom?" "Choose who is to use Quillon on this computer."
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateRadioButton} 0 4u 100% 12u "Just for &me"
  Pop $ForMeButton
  ${NSD_CreateLabel} 12u 18u 280u 20u "No administrator is needed. Quillon and your routes lie in a folder of your own."
  Pop $0
  ${NSD_CreateRadioButton} 0 48u 100% 12u "For &everyone who uses this computer"
  Pop $ForAllButton
  ${NSD_CreateLabel} 12u 62u 280u 20u "Windows asks for an administrator. All users share one collection of routes and one game."
  Pop $0
  ${NSD_CreateLabel} 0 96u 100% 30u ""
  Pop $RenewalLabel
  StrCpy $1 $ForMeButton
  ${If} $ForAll = 1
    StrCpy $1 $ForAllButton
  ${EndIf}
  ${NSD_Check} $1
  ${NSD_OnClick} $ForMeButton ShowChoice
  ${NSD_OnClick} $ForAllButton ShowChoice
  Push $1
  Call ShowChoice
  ${NSD_SetFocus} $1
  nsDialogs::Show
FunctionEnd

; The shield on the button Next tells that Windows will ask.
Function ShowChoice
  Pop $0
  ${NSD_GetState} $ForAllButton $ForAll
  Call LacksRights
  GetDlgItem $2 $HWNDPARENT 1
  SendMessage $2 0x160C 0 $0  ; BCM_SETSHIELD
  Call ChooseFolder
  ReadRegStr $0 SHCTX "${UNINSTALL_KEY}" InstallLocation
  ${If} $0 == $INSTDIR
    ${NSD_SetText} $RenewalLabel "Quillon lies already in $INSTDIR. It will be renewed; your routes, zips and settings stay."
  ${Else}
    ${NSD_SetText} $RenewalLabel ""
  ${EndIf}
FunctionEnd

Function LeaveForWhomPage
  Call LacksRights
  ${If} $0 = 1
    Call StartElevatedInstaller
    MessageBox MB_OK|MB_ICONEXCLAMATION "${NO_RIGHTS} Choose $\"Just for me$\", or try again."
    Abort
  ${EndIf}
FunctionEnd
