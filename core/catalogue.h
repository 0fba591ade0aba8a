#pragma once

#include <string>

#include "core/LSSglobal.h"
#include "core/texts.h"

// The tool's texts: the messages and captions that the product numbers (1..219), and behind them
// those that it does not, by name. "&" marks an access key, "&&" is an ampersand.

namespace warpline {

inline constexpr int kMessageCount = 219;

#define WARPLINE_TOOL_TEXTS(X) \
  X(FileTypes)                 \
  X(FileMissing)               \
  X(FileChanged)               \
  X(Overwrite)                 \
  X(StartHelp)                 \
  X(ToolBusy)                  \
  X(RealTimeOn)                \
  X(RealTimeOff)               \
  X(Yes)                       \
  X(No)                        \
  X(Close)                     \
  X(SendAgain)                 \
  X(TryAgain)                  \
  X(StoreQuestion)             \
  X(SendAndStore)              \
  X(StoreShown)                \
  X(LinkSerial)                \
  X(LinkLan)                   \
  X(LinkUsb)                   \
  X(ShownUnknown)              \
  X(ShownNone)                 \
  X(ShownThis)                 \
  X(ShownOlder)                \
  X(ShownRegisters)            \
  X(Kept)                      \
  X(NotKept)                   \
  X(ShownAndKept)              \
  X(NothingSent)               \
  X(Connecting)                \
  X(SendingStep)               \
  X(SendingStopped)            \
  X(RecordingRuns)             \
  X(RecordingNotBegun)         \
  X(RecordingLost)             \
  X(MenuRecord)                \
  X(MenuCheck)                 \
  X(RecordTitle)               \
  X(RecordRedact)              \
  X(CheckTitle)                \
  X(CheckSave)                 \
  X(CheckCopy)                 \
  X(CheckRuns)                 \
  X(CheckStopped)              \
  X(CheckAllGood)              \
  X(CheckVerdict)              \
  X(CheckGroupProgram)         \
  X(CheckGroupLibraries)       \
  X(CheckGroupSettings)        \
  X(CheckGroupProjector)       \
  X(CheckColumnGroup)          \
  X(CheckColumnStep)           \
  X(CheckColumnState)          \
  X(CheckColumnTime)           \
  X(CheckColumnCode)           \
  X(CheckColumnText)           \
  X(CheckColumnAdvice)         \
  X(CheckGood)                 \
  X(CheckNote)                 \
  X(CheckFailed)               \
  X(CheckStepVersion)          \
  X(CheckStepFile)             \
  X(CheckStepKind)             \
  X(CheckStepLoad)             \
  X(CheckStepEntry)            \
  X(CheckStepOthers)           \
  X(CheckStepFolder)           \
  X(CheckStepSettings)         \
  X(CheckStepValues)           \
  X(CheckStepOpen)             \
  X(CheckStepRunning)          \
  X(CheckStepProbe)            \
  X(CheckStepClass)            \
  X(CheckStepPanel)            \
  X(CheckStepMode)             \
  X(CheckStepClose)            \
  X(CheckVersion)              \
  X(CheckBits)                 \
  X(CheckValues)               \
  X(CheckNoFile)               \
  X(CheckNoLibrary)            \
  X(CheckOtherKind)            \
  X(CheckEntryMissing)         \
  X(CheckOthersMissing)        \
  X(CheckCrashed)              \
  X(CheckHung)                 \
  X(CheckNoProcess)            \
  X(CheckDefaults)             \
  X(CheckUnreadable)           \
  X(CheckNotWritable)          \
  X(CheckDemo)                 \
  X(CheckPowerStandby)         \
  X(CheckPowerOn)              \
  X(CheckPowerWarming)         \
  X(CheckPowerCooling)         \
  X(CheckPowerOther)           \
  X(CheckPanelHidden)          \
  X(CheckNoClass)              \
  X(CheckNoStore)              \
  X(AdviceLibraryCopy)         \
  X(AdviceLibraryKind)         \
  X(AdviceLibraryLoad)         \
  X(AdviceLibraryVersion)      \
  X(AdviceFolder)              \
  X(AdviceSettings)            \
  X(AdviceDemo)                \
  X(AdvicePort)                \
  X(AdviceInUse)               \
  X(AdviceSockets)             \
  X(AdviceAddress)             \
  X(AdviceConnect)             \
  X(AdviceConnection)          \
  X(AdviceNoResponse)          \
  X(AdviceLine)                \
  X(AdviceRestart)             \
  X(AdvicePower)               \
  X(AdviceOtherModel)          \
  X(DeviationHorizontal)       \
  X(DeviationVertical)         \
  X(DeviationNote)             \
  X(MenuEdit)                  \
  X(MenuUndo)                  \
  X(MenuRedo)                  \
  X(MenuCopyVertical)          \
  X(MenuCopyHorizontal)        \
  X(MenuSwap)                  \
  X(MenuCompare)               \
  X(StepCurve)                 \
  X(StepCopyVertical)          \
  X(StepCopyHorizontal)        \
  X(StepSwap)                  \
  X(EdgeStays)                 \
  X(EdgeDrawnIn)               \
  X(EdgeStaysAtLowest)         \
  X(CurveFaulty)               \
  X(CoordinateWanted)          \
  X(Live)                      \
  X(LiveHint)                  \
  X(Undo)                      \
  X(Redo)                      \
  X(PutOpticalBack)            \
  X(NumberBounds)              \
  X(NumberWrong)               \
  X(RecoveryQuestion)          \
  X(RecoveryNoFile)            \
  X(TakeUp)                    \
  X(PutAside)                  \
  X(MarksHeaderWrong)          \
  X(MarksLineWrong)            \
  X(MarksTooMany)              \
  X(PhotoFormatUnknown)        \
  X(PhotoHeic)                 \
  X(PhotoSize)                 \
  X(PhotoDamaged)              \
  X(MenuPicture)               \
  X(MenuPictureOff)            \
  X(PictureDisplay)            \
  X(PictureLabelSize)          \
  X(PictureLabelPlace)         \
  X(PictureNoName)             \
  X(PictureTitle)              \
  X(PictureCard)               \
  X(PictureGrid)               \
  X(PictureCheckerboard)       \
  X(PictureCircles)            \
  X(PictureWhite)              \
  X(PictureMarks)              \
  X(PictureOwn)                \
  X(PictureNotExact)           \
  X(PictureHint)               \
  X(PictureKeysTitle)          \
  X(PictureKeys)               \
  X(PictureStore)              \
  X(PictureStoreKeys)          \
  X(PictureScaled)             \
  X(PicturePanelDiffers)       \
  X(MenuSheet)                 \
  X(SheetTitle)                \
  X(SheetFile)                 \
  X(SheetChanged)              \
  X(SheetDate)                 \
  X(SheetScreen)               \
  X(SheetProjector)            \
  X(SheetNotAsked)             \
  X(SheetPanel)                \
  X(SheetPixels)               \
  X(SheetModelClass)           \
  X(SheetMode)                 \
  X(SheetSave)                 \
  X(SheetParameters)           \
  X(SheetParameter)            \
  X(SheetValue)                \
  X(SheetRange)                \
  X(SheetBounds)               \
  X(SheetPreview)              \
  X(SheetNote)                 \
  X(SheetCurveHorizontal)      \
  X(SheetCurveVertical)        \
  X(SheetRegisters)            \
  X(SheetDigest)               \
  X(SheetNoteTooLong)          \
  X(SheetNoteLabel)            \
  X(SheetAsk)                  \
  X(SheetNotShown)             \
  X(FitTooFewMarks)            \
  X(FitUnevenGrid)             \
  X(FitGridInside)             \
  X(FitMarksMissing)           \
  X(FitMarksMirrored)          \
  X(FitMarksCrossed)           \
  X(FitMarksOutside)           \
  X(FitCornersWrong)           \
  X(FitCornersOutside)         \
  X(FitPictureWide)            \
  X(FitLensUnknown)            \
  X(FitLinesTellNothing)       \
  X(FitMarkDropped)            \
  X(FitStraightAlready)        \
  X(FitLensMayBeAll)           \
  X(FitEdgesBendAlike)         \
  X(FitSidesBendAlike)         \
  X(FitOrientationLimits)      \
  X(FitBendsTooMuch)           \
  X(FitShapeDiffers)           \
  X(FitBeyondProjector)        \
  X(PhotoNoMarks)              \
  X(PhotoPartly)               \
  X(PhotoBlurred)              \
  X(PhotoDark)                 \
  X(PhotoBurnt)                \
  X(PhotoMirrored)             \
  X(PhotoCoarse)               \
  X(PhotoFilled)               \
  X(PhotoMarksBurnt)           \
  X(PhotoMarksDark)            \
  X(PhotoMarksMissing)         \
  X(PhotoFewMarks)             \
  X(Simulator)
WARPLINE_TEXT_KEYS(ToolText, WARPLINE_TOOL_TEXTS)

// The text under an identifier: number for Japanese, number + 1000 for English. Empty when there is
// none.
const std::string& CatalogueText(int identifier);

// The text of a message number in the language in force. Empty when the number is outside 1..219.
const std::string& TextOf(const LSSglobal& global, int number);

// A text without a number in the language in force.
const std::string& TextOf(const LSSglobal& global, ToolText key);

// What somebody who knows no language has to say, in the language in force.
std::string TextOf(const LSSglobal& global, const NamedText& text);

}  // namespace warpline
