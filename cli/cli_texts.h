#pragma once

#include <array>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

// The command line's own texts: help, usage errors, the wording of results. They come from one
// "key: text" file a language, embedded in the program; {0}, {1}... are filled in.

namespace warpline {

// Every key of the files, X(key); CliText::kKey is its identifier in code.
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
  X(VerbSearch)               \
  X(CorrectionFile)           \
  X(CorrectionOrShapeFile)    \
  X(CorrectionOrRegisterFile) \
  X(AnyFiles)                 \
  X(InputFile)                \
  X(OutputFile)               \
  X(RegisterOutput)           \
  X(PictureOutput)            \
  X(AuxOption)                \
  X(PanelOption)              \
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
  X(SerialOption)             \
  X(UsbOption)                \
  X(TimeOutOption)            \
  X(SearchTimeOutOption)      \
  X(ErrorPrefix)              \
  X(SeeHelp)                  \
  X(MissingVerb)              \
  X(UnknownVerb)              \
  X(UnknownOption)            \
  X(UnexpectedArgument)       \
  X(MissingArgument)          \
  X(MissingValue)             \
  X(OtherUsageError)          \
  X(BadLanguage)              \
  X(BadPanel)                 \
  X(BadAxis)                  \
  X(BadNumber)                \
  X(BadSend)                  \
  X(BadLan)                   \
  X(BadSerial)                \
  X(ManyConnections)          \
  X(UnknownKind)              \
  X(KindsDiffer)              \
  X(ShapeHasNoAxis)           \
  X(CorrectionFileNeeded)     \
  X(OutputFailed)             \
  X(DemoMode)                 \
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
  X(HorizontalRow)            \
  X(VerticalColumn)

enum class CliText : std::size_t {
#define WARPLINE_IDENTIFIER(key) k##key,
  WARPLINE_CLI_TEXTS(WARPLINE_IDENTIFIER)
#undef WARPLINE_IDENTIFIER
};

inline constexpr auto kCliTextKeys = std::to_array<std::string_view>({
#define WARPLINE_KEY(key) #key,
    WARPLINE_CLI_TEXTS(WARPLINE_KEY)
#undef WARPLINE_KEY
});

class CliTexts {
 public:
  explicit CliTexts(std::string_view file);

  // The text as the file has it; empty when the file lacks the key.
  const std::string& operator[](CliText key) const { return texts_[static_cast<std::size_t>(key)]; }

  // The text with {0}, {1}... replaced by the arguments.
  std::string Fill(CliText key, std::initializer_list<std::string> arguments) const;

 private:
  std::array<std::string, kCliTextKeys.size()> texts_;
};

// The embedded texts of a language (1 Japanese, else English).
const CliTexts& CliTextsOf(int language);

// The embedded file itself.
std::string_view CliTextFile(int language);

}  // namespace warpline
