#include "core/LSSglobal.h"

#include <gtest/gtest.h>

#include <limits>

#include "core/catalogue.h"
#include "core/messages.h"
#include "tests/support/recorder.h"

namespace warpline {
namespace {

TEST(Language, OfSystemAndCommandLine) {
  const std::tuple<bool, int, std::vector<const char*>> rows[] = {
      {true, 1, {"", "E file.wlt", "a/E", "-X -J"}},  // the last switch wins
      {true, 0, {"/E", "-X", "/JA", "-", "--J"}},     // any other switch is English
      {false, 1, {"-J", "-j", "/j", " \t /J\t\tfile.wlt  "}},
      {false, 0, {"", "J", "/J /E"}},
  };
  for (const auto& [japanese_system, language, command_lines] : rows) {
    for (const char* line : command_lines) {
      EXPECT_EQ(DecideLanguage(japanese_system, line), language)
          << line << (japanese_system ? ", Japanese system" : ", other system");
    }
  }
}

TEST(Language, OneAloneIsJapanese) {
  for (const auto language : std::to_array<std::int16_t>({1, 0, 2, -1})) {
    SCOPED_TRACE(language);
    LSSglobal global;
    ApplyLanguage(global, language);
    EXPECT_EQ(global.Language, language);
    EXPECT_EQ(global.EnglishMode, language == 1 ? 0 : 1);
    EXPECT_EQ(TextOf(global, 199),
              language == 1 ? "変更を保存しますか？" : "Do you want to save the change?");
  }
}

LSSglobal Used() {
  LSSglobal global;
  ApplyLanguage(global, 1);
  global.Settings.ComPort = 4;
  global.CurrentFile = "wall.wlt";
  global.Correction.ScreenType = kOtherScreens;
  global.Correction.Projection = {1, 1};
  for (const Axis axis : {kHorizontal, kVertical}) {
    global.Correction.Axes[axis] = {50, 10, -7, 8, 900, 1};
    global.SecondCopy[axis] = {1, 2, 3, 4, 5, 1};
    global.Correction.Curves[axis] = {0, 1, kMaxCurvePoints, kBSpline, {}};
    global.Correction.Curves[axis].CorreDataPts.fill({0.3, 0.9});
  }
  return global;
}

TEST(ResetModel, GivesTheStartStateOfTheModelAlone) {
  LSSglobal global = Used();
  ResetModel(global);

  EXPECT_EQ(global.Correction.ScreenType, 0);
  EXPECT_EQ(global.Correction.Projection, (std::array<std::int16_t, 2>{0, 0}));
  const AxisParameters reset{0, -32, 0, 0, 0, 0};
  for (const Axis axis : {kHorizontal, kVertical}) {
    EXPECT_EQ(global.Correction.Axes[axis], reset);
    EXPECT_EQ(global.SecondCopy[axis], reset);
  }
  const CurveDefinition diagonal{1, 0, 2, kStraightLine, {{{0.0, 0.75}, {1.0, 1.0}}}};
  const CurveDefinition arch{1, 0, 3, kQuadratic, {{{0.0, 0.8}, {0.5, 1.0}, {1.0, 0.8}}}};
  EXPECT_EQ(global.Correction.Curves[kHorizontal], diagonal);
  EXPECT_EQ(global.Correction.Curves[kVertical], arch);

  EXPECT_EQ(global.Language, 1) << "the rest stays";
  EXPECT_EQ(global.MessageOffset, 0);
  EXPECT_EQ(global.Settings.ComPort, 4);
  EXPECT_EQ(global.CurrentFile, "wall.wlt");
}

TEST(ScreenTypeReset, SeedsTheShapesOfTheType) {
  const std::array<CurveShape, kAxisCount> shapes[] = {
      {kDiagonalLine, kArch},     {kArch, kDiagonalLine},     {kArch, kArch},
      {kDiagonalLine, kTriangle}, {kTriangle, kDiagonalLine}, {kDiagonalLine, kDiagonalLine},
  };
  CorrectionData correction = Used().Correction;
  correction.Projection = {0, 1};
  for (correction.ScreenType = 0; correction.ScreenType < 6; ++correction.ScreenType) {
    ResetToScreenType(correction);
    for (const Axis axis : {kHorizontal, kVertical}) {
      CurveDefinition seeded;
      ResetCurveDefinition(seeded, shapes[correction.ScreenType][axis]);
      EXPECT_EQ(correction.Curves[axis], seeded) << correction.ScreenType << ", " << axis;
    }
  }
  EXPECT_EQ(correction.Axes[kHorizontal].Optical, -32);
  EXPECT_EQ(correction.Axes[kVertical].Optical, 32) << "projected from the ceiling";
}

TEST(CurveReset, TriangleAndUnknownShape) {
  const CurveDefinition triangle{1, 0, 3, kStraightLine, {{{0.0, 0.75}, {0.5, 1.0}, {1.0, 0.75}}}};
  CurveDefinition curve = Used().Correction.Curves[kHorizontal];
  ResetCurveDefinition(curve, kTriangle);
  EXPECT_EQ(curve, triangle);

  ResetCurveDefinition(curve, 3);
  const CurveDefinition cleared{1, 0, 3, kStraightLine, {}};
  EXPECT_EQ(curve, cleared) << "count and type stay, the points go";
}

using enum MessageCategory;

constexpr MessageCategory kUnknown = static_cast<MessageCategory>(6);
constexpr int kLowest = std::numeric_limits<int>::min();
constexpr int kHighest = std::numeric_limits<int>::max();

// The texts are in English, without the code.
const std::tuple<MessageCategory, std::vector<int>, const char*> kCases[]{
    {kOpen, {-2}, "Specified COM port is not supported."},
    {kOpen, {-3}, "Specified communications device is being used by another application."},
    {kOpen, {-4}, "Failure in the initialization of WinSock."},
    {kOpen, {-5}, "Failure in creating the socket."},
    {kOpen, {-6}, "Failure in the address assignment of the socket."},
    {kOpen, {-7}, "Failure in detection of the host. Or, the network environment is incorrect."},
    {kOpen, {-8}, "Failure in the connection."},
    {kOpen, {-9}, "Failure in the selection of the synchronous input/output."},
    {kOpen, {-99}, "The user has cancelled the opening process."},
    {kOpen, {-1, -10, kLowest}, "Invalid communications device ID."},
    {kClose, {-1}, "Communications device ID is invalid."},
    {kClose, {-2}, "Communications device has already been closed."},
    {kClose, {-3, 0}, "Failure in closing the communications device."},
    {kTimeOut, {-1, -3, 7}, "A send error has occurred."},
    {kExchange,
     {-1},
     "There has been specification of a communications device for which initialization processing "
     "has not been executed."},
    {kExchange, {-2}, "Communications device ID is invalid."},
    {kExchange, {-3}, "There is no projector response."},
    {kExchange, {-4}, "A send error has occurred."},
    {kExchange, {-5}, "A receive error has occurred."},
    {kExchange, {-6, -20, kHighest}, "The projector has failed in command execution."},
    {kReply, {1}, "Cannot be done. This is not supported by the currently connected projectors."},
    {kReply, {3}, "Cannot send. Switch on the power of the projector."},
    {kReply, {2, 0, -1, kHighest}, "The projector has failed in command execution."},
    {kUnknown, {3}, "Cannot send. Switch on the power of the projector."},
    {kUnknown, {2, 99}, "The projector has failed in command execution."},
    {kFile, {-1}, "The file name is not correct."},
    {kFile, {-2}, "The file format is corrupted."},
    {kFile, {-3}, "File version is different. Loading is not possible."},
    {kFile, {-4}, "There is not enough free disk space."},
    {kFile, {-5}, "Failed saving the ini file."},
    {kFile, {-6}, "Failed loading the ini file."},
    {kFile, {-7}, "Failed writing file."},
    {kFile, {-8}, "The parameter value is not correct."},
};

class MessagesTest : public testing::Test, protected Recorded {
 protected:
  void ExpectShown(const std::string& text, MessageIcon icon = MessageIcon::kCritical) {
    const std::vector<RecordedMessage> expected{{"Warpline Tool 3.0", text, icon}};
    EXPECT_EQ(display.messages, expected) << text;
    display.messages.clear();
  }
};

TEST_F(MessagesTest, FailuresOfTheProjectorCarryTheirCodeAndThoseOfFilesDoNot) {
  for (const auto& [category, codes, text] : kCases) {
    for (const int code : codes) {
      SCOPED_TRACE(testing::Message() << static_cast<int>(category) << ", " << code);
      messages.ShowMessage(category, code);
      const std::string end = category == kFile ? "" : "  Error : " + std::to_string(code);
      ExpectShown(text + end);
    }
  }
}

TEST_F(MessagesTest, FollowTheLanguage) {
  ApplyLanguage(global, 1);
  messages.ShowMessage(kOpen, -8);
  messages.ShowMessage(kFile, -4);
  EXPECT_EQ(display.Texts(), (std::vector<std::string>{"接続に失敗しました。  Error : -8",
                                                       "ディスクの空き容量が不足しています。"}));
  EXPECT_EQ(display.messages[0].title, "Warpline ツール 3.0");
}

TEST_F(MessagesTest, OtherBoxes) {
  messages.ShowText(kMsgSaveFailed);
  ExpectShown("Failed to save the file.");
  messages.ShowText(kMsgParameterLength, MessageIcon::kWarning);
  ExpectShown("The length of parameter is not correct.", MessageIcon::kWarning);
  messages.ShowText(kMsgLibraryMissing);
  ExpectShown("A required file cannot be found. (Raydeck.dll) \nReinstallation is necessary.");
  messages.ShowSystemError("ディスクがありません");
  ExpectShown("ディスクがありません");
  messages.ShowFault(FaultCode::kDoesNotFit);
  ExpectShown("[1] Wrong value.");
  messages.ShowFault(FaultCode::kNotANumber);
  ExpectShown("[3] Wrong value.");
  display.answers = {MessageAnswer::kNo};
  EXPECT_EQ(messages.Ask(kMsgSaveChange), MessageAnswer::kNo);
  ExpectShown("Do you want to save the change?", MessageIcon::kQuestion);
}

}  // namespace
}  // namespace warpline
