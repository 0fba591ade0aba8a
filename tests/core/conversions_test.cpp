#include "core/conversions.h"

#include <gtest/gtest.h>

#include <limits>

#include "core/sha256.h"
#include "tests/support/fault_of.h"

namespace warpline {
namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(HexText, ByteOrders) {
  const std::tuple<const char*, std::uint32_t, int, const char*, const char*> rows[] = {
      {"20-bit value", 0x45000, 8, "00500400", "00045000"},
      {"small word", 2, 4, "0200", "0002"},
      {"one byte", 0xAB, 2, "AB", "AB"},
      {"byte of a longer value", 0x1234, 2, "34", "34"},
      {"word of a longer value", 0x12345678, 4, "7856", "5678"},
      {"all four bytes", 0x12345678, 8, "78563412", "12345678"},
      {"minus one as a word", static_cast<std::uint32_t>(-1), 4, "FFFF", "FFFF"},
      {"minus 32 as a byte", static_cast<std::uint32_t>(-32), 2, "E0", "E0"},
  };
  for (const auto& [name, value, digits, lsb_first, msb_first] : rows) {
    SCOPED_TRACE(name);
    EXPECT_EQ(HexTextLsbFirst(value, digits), lsb_first);
    EXPECT_EQ(HexTextMsbFirst(value, digits), msb_first);
    EXPECT_EQ(HexTextByGroups(value, 2, digits), lsb_first);
  }
  EXPECT_EQ(HexTextMsbFirst(0xABCDEF, 1), "F");
  EXPECT_EQ(HexTextByGroups(0x123456, 2, 6), "563412");
}

TEST(HexTextToBytes, AppendsInPiecesAndSumsEverythingBefore) {
  Bytes buffer(8, 0xEE);
  std::size_t end = HexTextToBytes(buffer, 0, "01DF00");
  EXPECT_EQ(end, 3u);
  end = HexTextToBytes(buffer, end, "0000cs");
  EXPECT_EQ(end, 6u);
  EXPECT_EQ(buffer, (Bytes{0x01, 0xDF, 0x00, 0x00, 0x00, 0xE0, 0xEE, 0xEE}));
  EXPECT_EQ(HexTextToBytes(buffer, end, "ffCS"), 8u);
  EXPECT_EQ(buffer[7], 0xBF) << "sum 0x2BF: only the low byte stays";
  EXPECT_EQ(HexTextToBytes(buffer, 8, ""), 8u);
}

TEST(HexTextToBytes, RefusesBadPairsAndShortBuffers) {
  const struct {
    const char* name;
    std::size_t start;
    const char* text;
    FaultCode code;
  } rows[] = {
      {"mixed case is no checksum", 0, "Cs", FaultCode::kNotANumber},
      {"nor the other way round", 0, "cS", FaultCode::kNotANumber},
      {"letters behind F", 0, "0G", FaultCode::kNotANumber},
      {"one byte too many", 1, "0102", FaultCode::kIndexOutOfRange},
      {"start outside", 3, "01", FaultCode::kIndexOutOfRange},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Bytes buffer(2);
    EXPECT_EQ(FaultOf([&] { HexTextToBytes(buffer, row.start, row.text); }), row.code);
  }
  EXPECT_EQ(FaultOf([] { Checksum(Bytes(2), 3); }), FaultCode::kIndexOutOfRange);
}

TEST(HexTextToBytesBackward, FillsDownToIndexZeroAndNoFurther) {
  Bytes buffer(4, 0xEE);
  EXPECT_EQ(HexTextToBytesBackward(buffer, 2, "0A0B"), 0);
  EXPECT_EQ(buffer, (Bytes{0xEE, 0x0B, 0x0A, 0xEE}));
  EXPECT_EQ(HexTextToBytesBackward(buffer, 1, "1122"), -1);
  EXPECT_EQ(buffer, (Bytes{0x22, 0x11, 0x0A, 0xEE}));
  EXPECT_EQ(FaultOf([&] { HexTextToBytesBackward(buffer, 0, "1122"); }),
            FaultCode::kIndexOutOfRange);
  EXPECT_EQ(FaultOf([&] { HexTextToBytesBackward(buffer, 4, "11"); }), FaultCode::kIndexOutOfRange);
  EXPECT_EQ(FaultOf([&] { HexTextToBytesBackward(buffer, 3, "cs"); }), FaultCode::kNotANumber);
}

TEST(CleanIntegerText, KeepsDigitsAndALeadingMinus) {
  const std::tuple<const char*, const char*, const char*, std::size_t, const char*> rows[] = {
      {"letters and a later minus", "12a-3", "0", 0, "123"},
      {"lone minus", "-", "3000", 0, "3000"},
      {"negative", "-5", "0", 0, "-5"},
      {"minus behind dropped characters", " x-5", "0", 0, "-5"},
      {"second minus", "--5", "0", 0, "-5"},
      {"decimal point", "1.5", "0", 0, "15"},
      {"only a point", "-.", "7", 0, "7"},
      {"empty", "", "3", 0, "3"},
      {"cut to length", "123456", "0", 4, "1234"},
      {"fallback cut to length", "-", "123456", 4, "1234"},
      {"leading zeros stay", "007", "0", 0, "007"},
  };
  for (const auto& [name, text, fallback, max_length, cleaned] : rows) {
    SCOPED_TRACE(name);
    EXPECT_EQ(CleanIntegerText(text, fallback, max_length), cleaned);
  }
}

TEST(IntegerOf, HoldsSixtyFourBits) {
  EXPECT_EQ(IntegerOf("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(IntegerOf("007"), 7);
  EXPECT_EQ(FaultOf([] { IntegerOf("9223372036854775808"); }), FaultCode::kDoesNotFit);
  EXPECT_EQ(FaultOf([] { IntegerOf(""); }), FaultCode::kNotANumber);
}

std::string Accepted(bool (*test)(char)) {
  std::string accepted;
  for (int c = -128; c < 128; ++c) {
    if (test(static_cast<char>(c))) accepted += static_cast<char>(c);
  }
  return accepted;
}

TEST(RoundTo, EndsAtTheBoundsOfItsInteger) {
  EXPECT_EQ(RoundTo<std::int16_t>(32767.4), 32767);
  EXPECT_EQ(RoundTo<std::int16_t>(-32768.5), -32768);
  for (const double beyond : {32768.0, -32769.0}) {
    EXPECT_EQ(FaultOf([=] { RoundTo<std::int16_t>(beyond); }), FaultCode::kDoesNotFit) << beyond;
  }
}

TEST(Characters, OfEachKind) {
  EXPECT_EQ(Accepted(IsHexDigit), "0123456789ABCDEFabcdef");
  EXPECT_EQ(Accepted(IsIntegerCharacter), "-0123456789");
  EXPECT_EQ(Accepted(IsWhiteSpace), "\t ");
  EXPECT_TRUE(IsIntegerText(""));
  EXPECT_TRUE(IsIntegerText("12-3"));
  EXPECT_FALSE(IsIntegerText("1.2"));
}

TEST(Texts, BlanksGoAndNumbersReadBack) {
  EXPECT_EQ(WithoutBlanks(" a b\t c "), "ab\tc");
  EXPECT_EQ(ShortestText(0.1), "0.1");
  EXPECT_EQ(ShortestText(1024.0), "1024");
  EXPECT_EQ(ShortestText(-2.5e-7), "-2.5e-07");
  EXPECT_EQ(std::stod(ShortestText(1.0 / 3.0)), 1.0 / 3.0);
}

// The published vectors of FIPS 180-4 and RFC 4648.
TEST(Digests, OfThePublishedTexts) {
  const std::pair<std::string, const char*> digests[] = {
      {"", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
      {"abc", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
      {"abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq",
       "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1"},
      {std::string(1000000, 'a'),
       "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"},
  };
  for (const auto& [text, digest] : digests) EXPECT_EQ(Sha256Of(text), digest);
  const std::pair<const char*, const char*> codes[] = {
      {"", ""},        {"f", "Zg=="},        {"fo", "Zm8="},
      {"foo", "Zm9v"}, {"foob", "Zm9vYg=="}, {"\xfb\xff\xfe", "+//+"}};
  for (const auto& [text, code] : codes) EXPECT_EQ(Base64Of(text), code);
}

}  // namespace
}  // namespace warpline
