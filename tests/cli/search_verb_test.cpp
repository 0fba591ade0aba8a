#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "sim/line/discovery.h"
#include "tests/cli/cli_run.h"
#include "tests/support/environment.h"

// The whole way: the command line, the stand-in search library from the program's folder,
// datagrams, projectors that answer.

namespace warpline {
namespace {

using Responder = std::unique_ptr<sim::DiscoveryResponder>;

constexpr std::uint32_t kLeft = 0x7F000002;   // 127.0.0.2
constexpr std::uint32_t kRight = 0x7F000003;  // 127.0.0.3

constexpr const char* kFoundJson =
    R"({"verb":"search","ok":true,"projectors":[)"
    R"({"address":"127.0.0.2","name":"Left wall","selectable":true},)"
    R"({"address":"127.0.0.3","name":"Right wall","selectable":false}],"messages":[]})"
    "\n";

// Puts the search on a port of this test's own.
class SearchVerbTest : public testing::Test {
 protected:
  std::uint16_t Port() const { return left_->Where().Port; }

  Responder left_ = sim::DiscoveryResponder::Open({kLeft, 0}, {7142, 5, 1, true, "Left wall"});
  EnvironmentValue port_{"WARPLINE_DISCOVERY_PORT", std::to_string(Port())};
};

TEST_F(SearchVerbTest, ListsWhatAnswers) {
  const Responder right =
      sim::DiscoveryResponder::Open({kRight, Port()}, {7143, 5, 1, true, "Right wall"});
  ASSERT_TRUE(right);
  const CliResult english = RunCli({"search"});
  EXPECT_EQ(english.exit_code, 0) << english;
  EXPECT_EQ(english.out,
            "127.0.0.2\tLeft wall\tcan be chosen\tyes\n"
            "127.0.0.3\tRight wall\tcannot be chosen\tno\n");
  EXPECT_EQ(english.err, "");
  const CliResult japanese = RunCli({"search", "--timeout", "7000"}, "ja");
  EXPECT_EQ(japanese.out,
            "127.0.0.2\tLeft wall\t選択可\tyes\n127.0.0.3\tRight wall\t選択不可\tno\n");
  EXPECT_EQ(RunCli({"search", "--json"}, "ja").out, kFoundJson);
}

TEST_F(SearchVerbTest, SaysWhenNothingAnswers) {
  left_.reset();
  const CliResult result = RunCli({"search"});
  EXPECT_EQ(result.exit_code, 1) << result;
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "No projector was found.\n");
}

}  // namespace
}  // namespace warpline
