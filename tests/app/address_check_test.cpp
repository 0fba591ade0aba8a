#include "app/address_check.h"

#include <gtest/gtest.h>

#include <string>

namespace warpline {
namespace {

TEST(IsValidProjectorAddress, TakesOnlyWhatAProjectorCanHave) {
  for (const char* text : {"192.168.10.10", "1.0.0.1", "223.255.255.254", "127.0.0.2",
                           "010.000.000.001", "00000000000000000000010.0.0.1"}) {
    EXPECT_TRUE(IsValidProjectorAddress(text)) << text;
  }
  const std::string refused[] = {
      "0.1.2.3", "224.0.0.1", "10.0.0.0", "10.0.0.255", "10.256.0.1", "10.0.256.1", "300.0.0.1",
      "127.0.0.1", "127.00.0.01",
      // Numbers that come back into range in 8, 32 or 64 bits.
      "10.0.0.257", "10.0.0.4294967297", "10.0.0.18446744073709551617",
      "99999999999999999999999999999999.0.0.1",
      // No four numbers.
      "", "...", "10", "10.0.0", "10.0.0.", ".0.0.1", "10..0.1", "10.0.0.1.5", "10.0.0.1.",
      "10.0.0.1 ", " 10.0.0.1", "10.0.0.-1", "10.0.+0.1", "10.0.0x1.1", "projector",
      std::string("10.0.0.1\0", 9),
      "\xef\xbc\x91\xef\xbc\x90.0.0.1",  // full-width digits
  };
  for (const std::string& text : refused) EXPECT_FALSE(IsValidProjectorAddress(text)) << text;
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
