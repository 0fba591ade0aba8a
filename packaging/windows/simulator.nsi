; Puts the stand-ins for the maker's libraries into the tool's folder, and a program that takes them out again. Where a library
; is that is none of them, nothing is changed. For one user, in English and Japanese.
;   makensis -DVERSION=3.0.0 -DBITS=64 -DINPUT=folder -DOUTPUT=file -DICON=file -DCOMPANY=text -DLICENCE=text simulator.nsi
; INPUT holds the stand-ins. Unattended: /S, and /D=FOLDER as the last word.
Unicode true
!if ${BITS} == 64
  Target amd64-unicode
!else
  Target x86-unicode
!endif
SetCompressor /SOLID lzma
SetDateSave off
ManifestSupportedOS Win10
ManifestDPIAware true
RequestExecutionLevel user

!include MUI2.nsh
!include LogicLib.nsh

Name "$(StandIns)"
OutFile "${OUTPUT}"
BrandingText "${COMPANY}"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_DIRECTORYPAGE_TEXT_TOP "$(WhichFolder)"
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE StayInWrongFolder
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
; The first is taken when the user's language is neither.
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "Japanese"

LangString StandIns ${LANG_ENGLISH} "Stand-in libraries for Warpline Tool"
LangString StandIns ${LANG_JAPANESE} "Warpline ツールの代用ライブラリー"
LangString WhichFolder ${LANG_ENGLISH} "Warpline Tool will work with the simulated projector. Choose the folder that holds WarplineTool.exe."
LangString WhichFolder ${LANG_JAPANESE} "Warpline ツールを擬似プロジェクターで使えるようにします。WarplineTool.exe のあるフォルダーを選んでください。"
LangString NoTool ${LANG_ENGLISH} "WarplineTool.exe is not in this folder. Nothing was changed."
LangString NoTool ${LANG_JAPANESE} "このフォルダーに WarplineTool.exe がありません。何も変更していません。"
LangString Makers ${LANG_ENGLISH} "The projector maker's library is in this folder, and it stays. To try the simulated projector, use a copy of the tool in another folder. Nothing was changed."
LangString Makers ${LANG_JAPANESE} "このフォルダーにはメーカー製ライブラリーがあるため、そのまま残します。擬似プロジェクターは、別のフォルダーにコピーしたツールで使用してください。何も変更していません。"

VIProductVersion "${VERSION}.0"
!macro FileVersion language
  VIAddVersionKey /LANG=${language} "ProductName" "Warpline Tool"
  VIAddVersionKey /LANG=${language} "CompanyName" "${COMPANY}"
  VIAddVersionKey /LANG=${language} "FileDescription" "Simulated projector for Warpline Tool"
  VIAddVersionKey /LANG=${language} "FileVersion" "${VERSION}"
  VIAddVersionKey /LANG=${language} "ProductVersion" "${VERSION}"
  VIAddVersionKey /LANG=${language} "InternalName" "UseSimulator"
  VIAddVersionKey /LANG=${language} "OriginalFilename" "UseSimulator.exe"
  VIAddVersionKey /LANG=${language} "LegalCopyright" "${LICENCE}"
!macroend
!insertmacro FileVersion ${LANG_ENGLISH}
!insertmacro FileVersion ${LANG_JAPANESE}

; $3 says whether the file that the stack names may go: it is not there, or has the mark of a stand-in. The library is looked
; at without running any of its code; what cannot be looked at stays.
!macro MayGo prefix
Function ${prefix}MayGo
  Pop $0
  StrCpy $3 1
  IfFileExists "$0" 0 done
  StrCpy $3 0
  System::Call 'kernel32::LoadLibraryExW(w r0, p 0, i 1) p .r1'
  ${If} $1 P<> 0
    System::Call 'kernel32::GetProcAddress(p r1, m "WarplineStandIn") p .r2'
    ${If} $2 P<> 0
      StrCpy $3 1
    ${EndIf}
    System::Call 'kernel32::FreeLibrary(p r1)'
  ${EndIf}
  done:
FunctionEnd
!macroend
!insertmacro MayGo ""
!insertmacro MayGo "un."

; $4 says what speaks against the chosen folder; nothing when it is right.
!macro Look library
  Push "$INSTDIR\${library}"
  Call MayGo
  ${If} $3 == 0
    StrCpy $4 "$(Makers)"
  ${EndIf}
!macroend
Function LookAtFolder
  StrCpy $4 ""
  !insertmacro Look "Beamlink.dll"
  !insertmacro Look "Beamseek2.dll"
  ${IfNot} ${FileExists} "$INSTDIR\WarplineTool.exe"
    StrCpy $4 "$(NoTool)"
  ${EndIf}
FunctionEnd

; The page stays until the folder is right.
Function StayInWrongFolder
  Call LookAtFolder
  ${If} $4 != ""
    MessageBox MB_OK|MB_ICONEXCLAMATION "$4"
    Abort
  ${EndIf}
FunctionEnd

Function .onInit
  ${If} $INSTDIR == ""
    ReadRegStr $INSTDIR HKCU "Software\Microsoft\Windows\CurrentVersion\Uninstall\WarplineTool" "InstallLocation"
  ${EndIf}
  ${If} $INSTDIR == ""
    StrCpy $INSTDIR $EXEDIR
  ${EndIf}
FunctionEnd

; Unattended there was no page.
Section
  Call LookAtFolder
  ${If} $4 != ""
    SetErrorLevel 2
    Quit
  ${EndIf}
  SetOutPath "$INSTDIR"
  File "${INPUT}\Beamlink.dll"
  File "${INPUT}\Beamseek2.dll"
  WriteUninstaller "$INSTDIR\RemoveSimulator.exe"
SectionEnd

; A library of the maker's that has been put over a stand-in stays.
Section Uninstall
  !macro TakeOut library
    Push "$INSTDIR\${library}"
    Call un.MayGo
    ${If} $3 == 1
      Delete "$INSTDIR\${library}"
    ${EndIf}
  !macroend
  !insertmacro TakeOut "Beamlink.dll"
  !insertmacro TakeOut "Beamseek2.dll"
  Delete "$INSTDIR\RemoveSimulator.exe"
  RMDir "$INSTDIR"  ; when nothing else is left in it
SectionEnd
