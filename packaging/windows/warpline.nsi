; The installer: for one user, without an administrator's rights, in English and Japanese. An older version is replaced;
; settings and data lie elsewhere and are never touched.
;   makensis -DVERSION=3.0.0 -DBITS=64 -DINPUT=folder -DFILES=file -DOUTPUT=file -DICON=file -DCOMPANY=text \
;     -DLICENCE=text warpline.nsi
; INPUT holds what is installed, FILES the uninstaller's list of its folders docs and examples.
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
!include FileFunc.nsh
!include LogicLib.nsh

!define KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\WarplineTool"
!define EXTENSION "Software\Classes\.wlt"
!define TYPE "WarplineTool.Correction"

Name "Warpline Tool ${VERSION}"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\Warpline Tool"
InstallDirRegKey HKCU "${KEY}" "InstallLocation"
BrandingText "${COMPANY}"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_FINISHPAGE_RUN "$INSTDIR\WarplineTool.exe"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
; The first is taken when the user's language is neither.
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "Japanese"

LangString Running ${LANG_ENGLISH} "Warpline Tool is running. Please close it, then try again."
LangString Running ${LANG_JAPANESE} "Warpline Tool が実行中です。終了してから再試行してください。"
LangString Command ${LANG_ENGLISH} "Uninstall Warpline Tool"
LangString Command ${LANG_JAPANESE} "Warpline Tool のアンインストール"
LangString English ${LANG_ENGLISH} "Read Me (English)"
LangString English ${LANG_JAPANESE} "お読みください (英語)"
LangString Japanese ${LANG_ENGLISH} "Read Me (Japanese)"
LangString Japanese ${LANG_JAPANESE} "お読みください (日本語)"
LangString Guide ${LANG_ENGLISH} "User's Guide"
LangString Guide ${LANG_JAPANESE} "ユーザーズガイド"
LangString GuideFile ${LANG_ENGLISH} "guide_en.html"
LangString GuideFile ${LANG_JAPANESE} "guide_ja.html"
LangString ReadMeFile ${LANG_ENGLISH} "ReadMe(English).txt"
LangString ReadMeFile ${LANG_JAPANESE} "ReadMe(Japanese).txt"
LangString About ${LANG_ENGLISH} "Corrects a projector's picture on curved and folded screens"
LangString About ${LANG_JAPANESE} "曲面や角のあるスクリーンに投写した映像の歪みを補正します"
LangString Correction ${LANG_ENGLISH} "Warpline Tool correction data"
LangString Correction ${LANG_JAPANESE} "Warpline ツール補正データ"

VIProductVersion "${VERSION}.0"
!macro FileVersion language
  VIAddVersionKey /LANG=${language} "ProductName" "Warpline Tool"
  VIAddVersionKey /LANG=${language} "CompanyName" "${COMPANY}"
  VIAddVersionKey /LANG=${language} "FileDescription" "Warpline Tool ${VERSION}"
  VIAddVersionKey /LANG=${language} "FileVersion" "${VERSION}"
  VIAddVersionKey /LANG=${language} "ProductVersion" "${VERSION}"
  VIAddVersionKey /LANG=${language} "InternalName" "WarplineTool-setup"
  VIAddVersionKey /LANG=${language} "OriginalFilename" "WarplineTool-${VERSION}-windows${BITS}-setup.exe"
  VIAddVersionKey /LANG=${language} "LegalCopyright" "${LICENCE}"
!macroend
!insertmacro FileVersion ${LANG_ENGLISH}
!insertmacro FileVersion ${LANG_JAPANESE}

; A program that runs cannot be replaced: asks until it is closed or the user gives up; unattended, gives up with code 2 after
; two seconds, for the file of a program that has just ended may be held a moment longer.
!macro WaitForProgram prefix
Function ${prefix}WaitForProgram
  StrCpy $1 0
  again:
    IfFileExists "$INSTDIR\WarplineTool.exe" 0 done
    ClearErrors
    FileOpen $0 "$INSTDIR\WarplineTool.exe" a
    IfErrors running
    FileClose $0
    Goto done
  running:
    IfSilent unattended
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(Running)" IDRETRY again
    Goto give_up
  unattended:
    IntOp $1 $1 + 1
    Sleep 100
    IntCmp $1 20 give_up again give_up
  give_up:
    SetErrorLevel 2
    Quit
  done:
FunctionEnd
!macroend
!insertmacro WaitForProgram ""
!insertmacro WaitForProgram "un."

; The shell looks at the kinds of files anew.
!macro FileTypesChanged
  System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
!macroend

Section
  Call WaitForProgram
  SetOutPath "$INSTDIR"
  File "${INPUT}\WarplineTool.exe"
  File "${INPUT}\warpline.exe"
  File "${INPUT}\ReadMe(English).txt"
  File "${INPUT}\ReadMe(Japanese).txt"
  File "${INPUT}\Licence.txt"
  File "${INPUT}\ThirdParty.txt"
  ; An older version's pages and pictures, of which this one may lack some.
  Delete "$INSTDIR\docs\*.html"
  Delete "$INSTDIR\docs\images\*.png"
  SetOutPath "$INSTDIR\docs"
  File /r "${INPUT}\docs\*.*"
  SetOutPath "$INSTDIR\examples"
  File /r "${INPUT}\examples\*.*"
  SetOutPath "$INSTDIR"
  WriteUninstaller "$INSTDIR\Uninstall.exe"

  RMDir /r "$SMPROGRAMS\Warpline Tool"
  CreateDirectory "$SMPROGRAMS\Warpline Tool"
  CreateShortCut "$SMPROGRAMS\Warpline Tool\Warpline Tool.lnk" "$INSTDIR\WarplineTool.exe"
  CreateShortCut "$SMPROGRAMS\Warpline Tool\$(Guide).lnk" "$INSTDIR\docs\$(GuideFile)"
  CreateShortCut "$SMPROGRAMS\Warpline Tool\$(English).lnk" "$INSTDIR\ReadMe(English).txt"
  CreateShortCut "$SMPROGRAMS\Warpline Tool\$(Japanese).lnk" "$INSTDIR\ReadMe(Japanese).txt"
  CreateShortCut "$SMPROGRAMS\Warpline Tool\$(Command).lnk" "$INSTDIR\Uninstall.exe"
  CreateShortCut "$DESKTOP\Warpline Tool.lnk" "$INSTDIR\WarplineTool.exe"

  ; What opened these files before is kept, and is put back when the tool goes.
  ReadRegStr $0 HKCU "${EXTENSION}" ""
  ${If} $0 != ""
  ${AndIf} $0 != "${TYPE}"
    WriteRegStr HKCU "${EXTENSION}" "${TYPE}.before" "$0"
  ${EndIf}
  WriteRegStr HKCU "${EXTENSION}" "" "${TYPE}"
  WriteRegStr HKCU "Software\Classes\${TYPE}" "" "$(Correction)"
  WriteRegStr HKCU "Software\Classes\${TYPE}\DefaultIcon" "" "$INSTDIR\WarplineTool.exe,0"
  WriteRegStr HKCU "Software\Classes\${TYPE}\shell\open\command" "" '"$INSTDIR\WarplineTool.exe" "%1"'
  !insertmacro FileTypesChanged

  WriteRegStr HKCU "${KEY}" "DisplayName" "Warpline Tool"
  WriteRegStr HKCU "${KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${KEY}" "DisplayIcon" "$INSTDIR\WarplineTool.exe"
  WriteRegStr HKCU "${KEY}" "Publisher" "${COMPANY}"
  WriteRegStr HKCU "${KEY}" "Comments" "$(About)"
  WriteRegStr HKCU "${KEY}" "HelpLink" "$INSTDIR\docs\$(GuideFile)"
  WriteRegStr HKCU "${KEY}" "Readme" "$INSTDIR\$(ReadMeFile)"
  WriteRegStr HKCU "${KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${KEY}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
  WriteRegStr HKCU "${KEY}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
  WriteRegDWORD HKCU "${KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${KEY}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD HKCU "${KEY}" "EstimatedSize" $0
SectionEnd

; Takes away what the installer brought and nothing else: the maker's libraries and the user's own files stay.
Section Uninstall
  Call un.WaitForProgram
  Delete "$INSTDIR\WarplineTool.exe"
  Delete "$INSTDIR\warpline.exe"
  Delete "$INSTDIR\ReadMe(English).txt"
  Delete "$INSTDIR\ReadMe(Japanese).txt"
  Delete "$INSTDIR\Licence.txt"
  Delete "$INSTDIR\ThirdParty.txt"
  !include "${FILES}"
  Delete "$INSTDIR\Uninstall.exe"
  RMDir "$INSTDIR"
  RMDir /r "$SMPROGRAMS\Warpline Tool"
  Delete "$DESKTOP\Warpline Tool.lnk"
  ReadRegStr $0 HKCU "${EXTENSION}" ""
  ReadRegStr $1 HKCU "${EXTENSION}" "${TYPE}.before"
  DeleteRegValue HKCU "${EXTENSION}" "${TYPE}.before"
  ${If} $0 == "${TYPE}"
    DeleteRegValue HKCU "${EXTENSION}" ""
    ${If} $1 != ""
      WriteRegStr HKCU "${EXTENSION}" "" "$1"
    ${EndIf}
  ${EndIf}
  DeleteRegKey /ifnosubkeys /ifnovalues HKCU "${EXTENSION}"
  DeleteRegKey HKCU "Software\Classes\${TYPE}"
  !insertmacro FileTypesChanged
  DeleteRegKey HKCU "${KEY}"
SectionEnd
