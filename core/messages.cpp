#include "core/messages.h"

#include <algorithm>
#include <array>
#include <limits>

#include "core/catalogue.h"

namespace warpline {
namespace {

// Stands for every code that the category's rows above it do not name.
constexpr int kAnyCode = std::numeric_limits<int>::max();

struct MessageRow {
  MessageCategory category;
  int code;
  int number;
};

// The first row that fits counts. Opening has no row for -1, and a failed time-out is always
// reported as a send error; both are the product's behaviour.
constexpr std::array<MessageRow, 32> kMessageRows{{
    {MessageCategory::kOpen, -2, 120},
    {MessageCategory::kOpen, -3, 121},
    {MessageCategory::kOpen, -4, 122},
    {MessageCategory::kOpen, -5, 123},
    {MessageCategory::kOpen, -6, 124},
    {MessageCategory::kOpen, -7, 125},
    {MessageCategory::kOpen, -8, 126},
    {MessageCategory::kOpen, -9, 127},
    {MessageCategory::kOpen, -99, 133},
    {MessageCategory::kOpen, kAnyCode, 128},
    {MessageCategory::kClose, -1, 134},
    {MessageCategory::kClose, -2, 135},
    {MessageCategory::kClose, kAnyCode, 136},
    {MessageCategory::kTimeOut, kAnyCode, 140},
    {MessageCategory::kExchange, -1, 137},
    {MessageCategory::kExchange, -2, 138},
    {MessageCategory::kExchange, -3, 139},
    {MessageCategory::kExchange, -4, 140},
    {MessageCategory::kExchange, -5, 141},
    {MessageCategory::kExchange, kAnyCode, 142},
    {MessageCategory::kFile, kFileNameWrong, 147},
    {MessageCategory::kFile, kFileCorrupted, 148},
    {MessageCategory::kFile, kFileVersionDiffers, 203},
    {MessageCategory::kFile, kFileNoSpace, 204},
    {MessageCategory::kFile, kFileIniSaveFailed, 201},
    {MessageCategory::kFile, kFileIniLoadFailed, 202},
    {MessageCategory::kFile, kFileWriteFailed, 206},
    {MessageCategory::kFile, kFileValueWrong, kMsgParameterValue},
    {MessageCategory::kFile, kAnyCode, kMsgWrongValue},
    {MessageCategory::kReply, kReplyNotSupported, 74},
    {MessageCategory::kReply, kReplyPowerOff, 75},
    {MessageCategory::kReply, kAnyCode, 142},
}};

}  // namespace

int MessageNumber(MessageCategory category, int code) {
  const auto fits = [code](MessageCategory wanted) {
    return [code, wanted](const MessageRow& row) {
      return row.category == wanted && (row.code == code || row.code == kAnyCode);
    };
  };
  auto row = std::find_if(kMessageRows.begin(), kMessageRows.end(), fits(category));
  if (row == kMessageRows.end()) {
    row = std::find_if(kMessageRows.begin(), kMessageRows.end(), fits(MessageCategory::kReply));
  }
  return row->number;
}

void Messages::ShowMessage(MessageCategory category, int code) const {
  std::string text = TextOf(global_, MessageNumber(category, code));
  if (category != MessageCategory::kFile) text += "  Error : " + std::to_string(code);
  display_.Show(TextOf(global_, kMsgTitle), text, MessageIcon::kCritical);
}

void Messages::ShowText(int number, MessageIcon icon) const {
  display_.Show(TextOf(global_, kMsgTitle), TextOf(global_, number), icon);
}

void Messages::ShowSystemError(const std::string& description) const {
  display_.Show(TextOf(global_, kMsgTitle), description, MessageIcon::kCritical);
}

void Messages::ShowFault(FaultCode code) const {
  std::string report = "[";
  report.append(std::to_string(static_cast<int>(code))).append("] ");
  report.append(TextOf(global_, kMsgWrongValue));
  display_.Show(TextOf(global_, kMsgTitle), report, MessageIcon::kCritical);
}

MessageAnswer Messages::Ask(int number) const {
  return display_.Ask(TextOf(global_, kMsgTitle), TextOf(global_, number));
}

}  // namespace warpline
