#pragma once

#include "core/texts.h"

// The command line's own texts: help, usage errors, the wording of results.

namespace warpline {

#define WARPLINE_CLI_TEXTS(X) \
  X(Program)                  \
  X(UsageLabel)               \
  X(OptionsLabel)             \
  X(OptionsGroup)             \
  X(ArgumentsGroup)           \
  X(VerbsGroup)               \
  X(VerbLabel)                \
  X(RequiredLabel)            \
  X(HelpOption)               \
  X(VersionOption)            \
  X(LanguageOption)           \
  X(VerbRegisters)            \
  X(VerbProfile)              \
  X(VerbCurve)                \
  X(VerbFrames)               \
  X(VerbCheck)                \
  X(VerbConvert)              \
  X(VerbApply)                \
  X(VerbStore)                \
  X(VerbInitialize)           \
  X(VerbMode)                 \
  X(VerbVerify)               \
  X(VerbPreview)              \
  X(VerbPicture)              \
  X(VerbSheet)                \
  X(VerbSearch)               \
  X(VerbDoctor)               \
  X(CorrectionFile)           \
  X(CorrectionOrShapeFile)    \
  X(CorrectionOrRegisterFile) \
  X(AnyFiles)                 \
  X(InputFile)                \
  X(OutputFile)               \
  X(RegisterOutput)           \
  X(PictureOutput)            \
  X(PngOutput)                \
  X(PictureName)              \
  X(SheetOutput)              \
  X(NoteOption)               \
  X(ImageOption)              \
  X(AuxOption)                \
  X(PanelOption)              \
  X(CheckPanelOption)         \
  X(AxisOption)               \
  X(CurveAxisOption)          \
  X(PreviewOption)            \
  X(SamplesOption)            \
  X(SendOption)               \
  X(ClassOption)              \
  X(ReplyOption)              \
  X(ModeOption)               \
  X(ModeArgument)             \
  X(StateOption)              \
  X(LanOption)                \
  X(LansOption)               \
  X(ProjectorsOption)         \
  X(SerialOption)             \
  X(UsbOption)                \
  X(TimeOutOption)            \
  X(RecordOption)             \
  X(RedactOption)             \
  X(AndStoreOption)           \
  X(JsonOption)               \
  X(SearchTimeOutOption)      \
  X(ErrorPrefix)              \
  X(SeeHelp)                  \
  X(MissingVerb)              \
  X(UnknownVerb)              \
  X(UnknownOption)            \
  X(DidYouMean)               \
  X(UnexpectedArgument)       \
  X(MissingArgument)          \
  X(MissingValue)             \
  X(OtherUsageError)          \
  X(BadLanguage)              \
  X(BadPanel)                 \
  X(BadAxis)                  \
  X(BadNumber)                \
  X(BadSend)                  \
  X(BadPicture)               \
  X(BadLan)                   \
  X(BadSerial)                \
  X(ManyConnections)          \
  X(RedactAlone)              \
  X(GivenTwice)               \
  X(NameNotUtf8)              \
  X(NoProjectors)             \
  X(InputForOne)              \
  X(OutputTwice)              \
  X(RecordedTwice)            \
  X(NoProcess)                \
  X(ProcessEnded)             \
  X(Done)                     \
  X(UnknownKind)              \
  X(KindsDiffer)              \
  X(ShapeHasNoAxis)           \
  X(CorrectionFileNeeded)     \
  X(OutputFailed)             \
  X(DemoMode)                 \
  X(StoreKeepsShown)          \
  X(Selectable)               \
  X(NotSelectable)            \
  X(NothingFound)             \
  X(SearchTooLong)            \
  X(CheckOk)                  \
  X(CheckFailed)              \
  X(StateFileWrong)           \
  X(VerifyResult)             \
  X(VerifyAgrees)             \
  X(VerifyBeyondEncoding)     \
  X(VerifyDiffers)            \
  X(VerifyMisfit)             \
  X(VerbFit)                  \
  X(MarksFile)                \
  X(FitOutput)                \
  X(PhotoOption)              \
  X(ScreenOption)             \
  X(CornersOption)            \
  X(StraightOption)           \
  X(ProjectionHOption)        \
  X(ProjectionVOption)        \
  X(BadCorners)               \
  X(BadStraight)              \
  X(BadPhoto)                 \
  X(FitResult)                \
  X(VerbMarks)                \
  X(PhotoFile)                \
  X(MarksOutput)              \
  X(HorizontalRow)            \
  X(VerticalColumn)
WARPLINE_TEXT_KEYS(CliText, WARPLINE_CLI_TEXTS)

using CliTexts = TextTable<CliText>;

const CliTexts& CliTextsOf(Language language);

}  // namespace warpline
