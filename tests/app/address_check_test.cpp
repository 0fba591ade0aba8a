#include "app/address_check.h"

#include <gtest/gtest.h>

#include <string>

namespace warpline {
namespace {

struct AddressCase {
  std::string text;
  bool valid;
};

TEST(IsValidProjectorAddress, TakesOnlyWhatAProjectorCanHave) {
  const AddressCase cases[] = {
      {"192.168.10.10", true},
      {"1.0.0.1", true},
      {"223.255.255.254", true},
      {"127.0.0.2", true},
      {"010.000.000.001", true},
      {"00000000000000000000010.0.0.1", true},
      {"0.1.2.3", false},
      {"224.0.0.1", false},
      {"10.0.0.0", false},
      {"10.0.0.255", false},
      {"10.256.0.1", false},
      {"10.0.256.1", false},
      {"300.0.0.1", false},
      {"127.0.0.1", false},
      {"127.00.0.01", false},
      // Numbers that come back into range in 8, 32 or 64 bits.
      {"10.0.0.257", false},
      {"10.0.0.4294967297", false},
      {"10.0.0.18446744073709551617", false},
      {"99999999999999999999999999999999.0.0.1", false},
      {"", false},
      {"...", false},
      {"10", false},
      {"10.0.0", false},
      {"10.0.0.", false},
      {".0.0.1", false},
      {"10..0.1", false},
      {"10.0.0.1.5", false},
      {"10.0.0.1.", false},
      {"10.0.0.1 ", false},
      {" 10.0.0.1", false},
      {"10.0.0.-1", false},
      {"10.0.+0.1", false},
      {"10.0.0x1.1", false},
      {"projector", false},
      {std::string("10.0.0.1\0", 9), false},
      {"\xef\xbc\x91\xef\xbc\x90.0.0.1", false},  // full-width digits
  };
  for (const AddressCase& row : cases) {
    EXPECT_EQ(IsValidProjectorAddress(row.text), row.valid) << row.text;
  }
}

TEST(IsAddressCharacter, IsADigitOrADot) {
  std::string accepted;
  for (int c = -128; c < 128; ++c) {
    if (IsAddressCharacter(static_cast<char>(c))) accepted += static_cast<char>(c);
  }
  EXPECT_EQ(accepted, ".0123456789");
}

}  // namespace
}  // namespace warpline
