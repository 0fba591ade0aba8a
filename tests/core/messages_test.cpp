#include "core/messages.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

#include "tests/support/recorder.h"

namespace warpline {
namespace {

struct MessageCase {
  MessageCategory category;
  int code;
  const char* text;  // in English, without the code
};

constexpr MessageCategory kUnknownCategory = static_cast<MessageCategory>(6);
constexpr int kLowestCode = std::numeric_limits<int>::min();
constexpr int kHighestCode = std::numeric_limits<int>::max();

constexpr const char* kOpenOther = "Invalid communications device ID.";
constexpr const char* kCloseOther = "Failure in closing the communications device.";
constexpr const char* kSendError = "A send error has occurred.";
constexpr const char* kCommandFailed = "The projector has failed in command execution.";

constexpr std::array<MessageCase, 37> kProjectorCases{{
    {MessageCategory::kOpen, -2, "Specified COM port is not supported."},
    {MessageCategory::kOpen, -3,
     "Specified communications device is being used by another application."},
    {MessageCategory::kOpen, -4, "Failure in the initialization of WinSock."},
    {MessageCategory::kOpen, -5, "Failure in creating the socket."},
    {MessageCategory::kOpen, -6, "Failure in the address assignment of the socket."},
    {MessageCategory::kOpen, -7,
     "Failure in detection of the host. Or, the network environment is incorrect."},
    {MessageCategory::kOpen, -8, "Failure in the connection."},
    {MessageCategory::kOpen, -9, "Failure in the selection of the synchronous input/output."},
    {MessageCategory::kOpen, -99, "The user has cancelled the opening process."},
    {MessageCategory::kOpen, -1, kOpenOther},
    {MessageCategory::kOpen, -10, kOpenOther},
    {MessageCategory::kOpen, kLowestCode, kOpenOther},
    {MessageCategory::kClose, -1, "Communications device ID is invalid."},
    {MessageCategory::kClose, -2, "Communications device has already been closed."},
    {MessageCategory::kClose, -3, kCloseOther},
    {MessageCategory::kClose, 0, kCloseOther},
    {MessageCategory::kTimeOut, -1, kSendError},
    {MessageCategory::kTimeOut, -3, kSendError},
    {MessageCategory::kTimeOut, 7, kSendError},
    {MessageCategory::kExchange, -1,
     "There has been specification of a communications device for which initialization processing "
     "has not been executed."},
    {MessageCategory::kExchange, -2, "Communications device ID is invalid."},
    {MessageCategory::kExchange, -3, "There is no projector response."},
    {MessageCategory::kExchange, -4, kSendError},
    {MessageCategory::kExchange, -5, "A receive error has occurred."},
    {MessageCategory::kExchange, -6, kCommandFailed},
    {MessageCategory::kExchange, -20, kCommandFailed},
    {MessageCategory::kExchange, kHighestCode, kCommandFailed},
    {MessageCategory::kReply, 1,
     "Cannot be done. This is not supported by the currently connected projectors."},
    {MessageCategory::kReply, 3, "Cannot send. Switch on the power of the projector."},
    {MessageCategory::kReply, 2, kCommandFailed},
    {MessageCategory::kReply, 0, kCommandFailed},
    {MessageCategory::kReply, -1, kCommandFailed},
    {MessageCategory::kReply, kHighestCode, kCommandFailed},
    {kUnknownCategory, 1,
     "Cannot be done. This is not supported by the currently connected projectors."},
    {kUnknownCategory, 3, "Cannot send. Switch on the power of the projector."},
    {kUnknownCategory, 99, kCommandFailed},
    {static_cast<MessageCategory>(-1), 2, kCommandFailed},
}};

constexpr std::array<MessageCase, 8> kFileCases{{
    {MessageCategory::kFile, -1, "The file name is not correct."},
    {MessageCategory::kFile, -2, "The file format is corrupted."},
    {MessageCategory::kFile, -3, "File version is different. Loading is not possible."},
    {MessageCategory::kFile, -4, "There is not enough free disk space."},
    {MessageCategory::kFile, -5, "Failed saving the ini file."},
    {MessageCategory::kFile, -6, "Failed loading the ini file."},
    {MessageCategory::kFile, -7, "Failed writing file."},
    {MessageCategory::kFile, -8, "The parameter value is not correct."},
}};

// What a run in English or Japanese shows.
class MessagesTest : public testing::Test {
 protected:
  void ExpectShown(const std::string& text, MessageIcon icon = MessageIcon::kCritical) {
    const RecordedMessage expected{"Warpline Tool 3.0", text, icon};
    EXPECT_EQ(display_.messages.size(), 1u);
    if (!display_.messages.empty()) {
      EXPECT_EQ(display_.messages[0], expected) << display_.messages[0].text;
    }
    display_.messages.clear();
  }

  LSSglobal global_;
  RecordingDisplay display_;
  Messages messages_{global_, display_};
};

TEST_F(MessagesTest, ProjectorFailuresCarryTheirCode) {
  for (const MessageCase& row : kProjectorCases) {
    SCOPED_TRACE(testing::Message() << static_cast<int>(row.category) << ", " << row.code);
    messages_.ShowMessage(row.category, row.code);
    ExpectShown(std::string(row.text) + "  Error : " + std::to_string(row.code));
  }
}

TEST_F(MessagesTest, FileFailuresShowTheTextAlone) {
  for (const MessageCase& row : kFileCases) {
    SCOPED_TRACE(row.code);
    messages_.ShowMessage(row.category, row.code);
    ExpectShown(row.text);
  }
}

TEST_F(MessagesTest, EveryCaseHasAJapaneseText) {
  LSSglobal japanese;
  ApplyLanguage(japanese, 1);
  const Messages messages(japanese, display_);
  messages.ShowMessage(MessageCategory::kOpen, -8);
  messages.ShowMessage(MessageCategory::kFile, -4);
  EXPECT_EQ(display_.Texts(), (std::vector<std::string>{"接続に失敗しました。  Error : -8",
                                                        "ディスクの空き容量が不足しています。"}));
  EXPECT_EQ(display_.messages[0].title, "Warpline ツール 3.0");
}

TEST_F(MessagesTest, TheNumberAloneIsKnownToo) {
  EXPECT_EQ(MessageNumber(MessageCategory::kExchange, -4), 140);
  EXPECT_EQ(MessageNumber(MessageCategory::kTimeOut, -4), 140);
  EXPECT_EQ(MessageNumber(MessageCategory::kClose, -1), 134);
  EXPECT_EQ(MessageNumber(MessageCategory::kExchange, -2), 138) << "same text as 134";
  EXPECT_EQ(MessageNumber(MessageCategory::kReply, kReplyPowerOff), 75) << "same text as 77";
}

TEST_F(MessagesTest, OtherBoxes) {
  messages_.ShowText(kMsgSaveFailed);
  ExpectShown("Failed to save the file.");
  messages_.ShowText(kMsgParameterLength, MessageIcon::kWarning);
  ExpectShown("The length of parameter is not correct.", MessageIcon::kWarning);
  messages_.ShowText(kMsgLibraryMissing);
  ExpectShown("A required file cannot be found. (Raydeck.dll) \nReinstallation is necessary.");
  messages_.ShowSystemError("ディスクがありません");
  ExpectShown("ディスクがありません");
  messages_.ShowFault(FaultCode::kDoesNotFit);
  ExpectShown("[1] Wrong value.");
  messages_.ShowFault(FaultCode::kNotANumber);
  ExpectShown("[3] Wrong value.");
}

TEST_F(MessagesTest, QuestionsReturnTheAnswer) {
  for (const MessageAnswer answer :
       {MessageAnswer::kYes, MessageAnswer::kNo, MessageAnswer::kCancel}) {
    display_.answers.push_back(answer);
    EXPECT_EQ(messages_.Ask(kMsgSaveChange), answer);
    ExpectShown("Do you want to save the change?", MessageIcon::kQuestion);
  }
}

}  // namespace
}  // namespace warpline
