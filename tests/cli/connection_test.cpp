#include "cli/connection.h"

#include <tuple>

#include "cli/verb_input.h"
#include "tests/cli/cli_run.h"
#include "tests/support/environment.h"

namespace warpline {
namespace {

using ConnectionTest = FilesTest;

TEST_F(ConnectionTest, OptionsBecomeSettings) {
  const OwnSettings own(folder_.Path());
  Settings first_port, last_port, usb, lan, patient;
  first_port.ConnectDevice = last_port.ConnectDevice = kSerial;
  std::tie(first_port.ComPort, first_port.ComSpeed) = std::tuple(0, 0);
  std::tie(last_port.ComPort, last_port.ComSpeed) = std::tuple(7, 3);
  std::tie(usb.ConnectDevice, usb.USBPort) = std::tuple(kUsb, 7);
  std::tie(lan.IPAddress, lan.LANPort) = std::tuple("1234567890123456", "65535");
  patient.SerialTimeOut = patient.LANTimeOut = patient.USBTimeOut = 7000;
  const std::tuple<const char*, const char*, Settings> rows[] = {
      {"--serial", "1:4800", first_port},
      {"--serial", "8:38400", last_port},
      {"--usb", "8", usb},
      {"--lan", "1234567890123456:65535", lan},
      {"--timeout", "7000", patient},
  };
  for (const auto& [option, value, expected] : rows) {
    std::ostringstream out, err;
    Session session(out, err, 0);
    VerbInput input(session);
    input.Set(option, {value});
    EXPECT_TRUE(ChooseConnection(input, session)) << err.str();
    EXPECT_EQ(session.global.Settings, expected) << option << " " << value;
  }
}

}  // namespace
}  // namespace warpline
