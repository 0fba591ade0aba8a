#pragma once

#include <array>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

// The texts of the simulated projector's window. They come from one "key: text" file a language,
// embedded in the program; {0}, {1} are filled in, \n and \t stand for a line end and a tab.

namespace warpline::sim {

// Every key of the files, X(key); WindowText::kKey is its identifier in code.
#define WARPLINE_WINDOW_TEXTS(X) \
  X(Title)                       \
  X(MenuPicture)                 \
  X(MenuView)                    \
  X(MenuProjector)               \
  X(MenuHelp)                    \
  X(ItemCard)                    \
  X(ItemGrid)                    \
  X(ItemChecker)                 \
  X(ItemWhite)                   \
  X(ItemOpen)                    \
  X(ItemSave)                    \
  X(ItemExit)                    \
  X(ItemPanel)                   \
  X(ItemWall)                    \
  X(ItemFit)                     \
  X(ItemActual)                  \
  X(ItemDouble)                  \
  X(ItemEightfold)               \
  X(ItemMarks)                   \
  X(ItemFullScreen)              \
  X(ItemPowerOn)                 \
  X(ItemStandby)                 \
  X(ItemSpeedUp)                 \
  X(ItemRestart)                 \
  X(ItemClearFaults)             \
  X(ItemKeys)                    \
  X(KeysTitle)                   \
  X(KeysText)                    \
  X(TabState)                    \
  X(TabRegisters)                \
  X(TabFrames)                   \
  X(TabFaults)                   \
  X(Power)                       \
  X(PowerStandby)                \
  X(PowerOn)                     \
  X(PowerWarmingUp)              \
  X(PowerCoolingDown)            \
  X(Input)                       \
  X(Mode)                        \
  X(Panel)                       \
  X(ModelClass)                  \
  X(Reply5)                      \
  X(Frames)                      \
  X(BytesIn)                     \
  X(BytesOut)                    \
  X(Refusals)                    \
  X(Shows)                       \
  X(Stores)                      \
  X(Links)                       \
  X(RowsAtLimit)                 \
  X(ColumnsAtLimit)              \
  X(Seed)                        \
  X(Mismatches)                  \
  X(Register)                    \
  X(Working)                     \
  X(Stored)                      \
  X(Number)                      \
  X(Name)                        \
  X(Request)                     \
  X(Reply)                       \
  X(Fault)                       \
  X(FrameProbe)                  \
  X(FrameClass)                  \
  X(FrameRunning)                \
  X(FramePanel)                  \
  X(FrameStatus)                 \
  X(FrameInput)                  \
  X(FrameEcho)                   \
  X(FramePrepare)                \
  X(FrameMode)                   \
  X(FrameBlock)                  \
  X(FrameClear)                  \
  X(FrameShow)                   \
  X(FrameStore)                  \
  X(FrameRegisters)              \
  X(FrameUnknown)                \
  X(WallShape)                   \
  X(WallFlat)                    \
  X(WallCylinder)                \
  X(WallCylinderUpright)         \
  X(WallSphere)                  \
  X(WallCorner)                  \
  X(WallCeiling)                 \
  X(Distance)                    \
  X(Metres)                      \
  X(Curvature)                   \
  X(Radius)                      \
  X(Angle)                       \
  X(LensAxis)                    \
  X(AxisTop)                     \
  X(AxisMiddle)                  \
  X(AxisBottom)                  \
  X(FaultBanner)                 \
  X(ClearAll)                    \
  X(ActiveFaults)                \
  X(Strikes)                     \
  X(Remove)                      \
  X(AddFault)                    \
  X(What)                        \
  X(When)                        \
  X(Kind)                        \
  X(Delay)                       \
  X(WhenAlways)                  \
  X(WhenOnce)                    \
  X(WhenEvery)                   \
  X(WhenChance)                  \
  X(FaultTimeout)                \
  X(FaultRefuse)                 \
  X(FaultUnkept)                 \
  X(FaultShort)                  \
  X(FaultLong)                   \
  X(FaultDuplicate)              \
  X(FaultChecksum)               \
  X(FaultLate)                   \
  X(FaultSlow)                   \
  X(FaultCut)                    \
  X(FaultCutmid)                 \
  X(FaultRestart)                \
  X(FaultRefuselink)             \
  X(FaultHalfopen)               \
  X(FaultSingle)                 \
  X(OpenTitle)                   \
  X(SaveTitle)                   \
  X(PngFiles)                    \
  X(CannotOpen)                  \
  X(CannotSave)

enum class WindowText : std::size_t {
#define WARPLINE_IDENTIFIER(key) k##key,
  WARPLINE_WINDOW_TEXTS(WARPLINE_IDENTIFIER)
#undef WARPLINE_IDENTIFIER
};

inline constexpr auto kWindowTextKeys = std::to_array<std::string_view>({
#define WARPLINE_KEY(key) #key,
    WARPLINE_WINDOW_TEXTS(WARPLINE_KEY)
#undef WARPLINE_KEY
});

// The key so many places behind another, for rows of texts that stand in the order of an enum.
constexpr WindowText Behind(WindowText first, int places) {
  return static_cast<WindowText>(static_cast<std::size_t>(first) +
                                 static_cast<std::size_t>(places));
}

class WindowTexts {
 public:
  explicit WindowTexts(std::string_view file);

  // The text; empty when the file lacks the key.
  const std::string& operator[](WindowText key) const {
    return texts_[static_cast<std::size_t>(key)];
  }

  // The text with {0}, {1} replaced by the arguments.
  std::string Fill(WindowText key, std::initializer_list<std::string> arguments) const;

 private:
  std::array<std::string, kWindowTextKeys.size()> texts_;
};

// The embedded file of a language.
std::string_view WindowTextFile(bool japanese);

}  // namespace warpline::sim
