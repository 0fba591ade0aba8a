#include <memory>
#include <utility>

#include "tests/support/environment.h"
#include "tests/ui/window_rig.h"
#include "toolkit/native/open_file.h"

namespace warpline {
namespace {

TEST(OpenedFile, IsToldByTheEventLoopWhenNoProgramTakesIt) {
  const TempFolder temp;
  const EnvironmentValue path("PATH", temp.Path().string());
  const auto told = [] {
    int calls = 0;
    auto running = std::make_shared<int*>(&calls);
    EXPECT_TRUE(OpenInBrowser("/read me", [running] { ++**running; }));
    const std::weak_ptr<int*> ended = std::exchange(running, nullptr);
    EXPECT_TRUE(SettleUntil([&] { return ended.expired(); }));
    return calls;
  };
  EXPECT_EQ(told(), 1) << "the system's opener is not there";
  for (const auto& [code, calls] : {std::pair(0, 0), {3, 1}, {4, 1}}) {
    const fs::path opener = temp.Write(
        "xdg-open", "#!/bin/sh\n[ \"$1\" = '/read me' ] && exit " + std::to_string(code) + "\n");
    fs::permissions(opener, fs::perms::owner_all);
    EXPECT_EQ(told(), calls) << code;
  }
}

}  // namespace
}  // namespace warpline
