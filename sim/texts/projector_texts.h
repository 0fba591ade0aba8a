#pragma once

#include "core/texts.h"

// The texts of the simulated projector: its help, its complaints and its window. What other
// programs read (rules of faults and why one is wrong, lines of the control port, the answers of a
// replay, the line that tells where it listens) is the same in every language and stands in code.

namespace warpline::sim {

#define WARPLINE_PROJECTOR_TEXTS(X) \
  X(Program)                        \
  X(HelpOption)                     \
  X(UsageLabel)                     \
  X(OptionsLabel)                   \
  X(OptionsGroup)                   \
  X(NeedsLabel)                     \
  X(ExcludesLabel)                  \
  X(TextLabel)                      \
  X(NumberLabel)                    \
  X(RangeLabel)                     \
  X(Footer)                         \
  X(OptionListen)                   \
  X(OptionUsb)                      \
  X(OptionSerial)                   \
  X(OptionFastSerial)               \
  X(OptionProfile)                  \
  X(OptionPanel)                    \
  X(OptionNoPanelInfo)              \
  X(OptionClass)                    \
  X(OptionReply5)                   \
  X(OptionPower)                    \
  X(OptionSpeedUp)                  \
  X(OptionNoDiscovery)              \
  X(OptionHeadless)                 \
  X(OptionLanguage)                 \
  X(OptionState)                    \
  X(OptionPicture)                  \
  X(OptionFault)                    \
  X(OptionSeed)                     \
  X(OptionControl)                  \
  X(OptionRecord)                   \
  X(OptionReplay)                   \
  X(OptionReplayTo)                 \
  X(SeeHelp)                        \
  X(UnexpectedWord)                 \
  X(MissingValue)                   \
  X(GivenTwice)                     \
  X(NotANumber)                     \
  X(NotInRange)                     \
  X(NotAChoice)                     \
  X(Excludes)                       \
  X(Requires)                       \
  X(OtherUsageError)                \
  X(NotLoopback)                    \
  X(BadPort)                        \
  X(BadPanel)                       \
  X(BadProfile)                     \
  X(BadFault)                       \
  X(RecordingUnusable)              \
  X(RecordingNotWritable)           \
  X(RecordingIncomplete)            \
  X(NoWindow)                       \
  X(Title)                          \
  X(MenuPicture)                    \
  X(MenuView)                       \
  X(MenuProjector)                  \
  X(MenuHelp)                       \
  X(ItemCard)                       \
  X(ItemGrid)                       \
  X(ItemChecker)                    \
  X(ItemWhite)                      \
  X(ItemOpen)                       \
  X(ItemSave)                       \
  X(ItemExit)                       \
  X(ItemPanel)                      \
  X(ItemWall)                       \
  X(ItemFit)                        \
  X(ItemActual)                     \
  X(ItemDouble)                     \
  X(ItemEightfold)                  \
  X(ItemMarks)                      \
  X(ItemFullScreen)                 \
  X(ItemPowerOn)                    \
  X(ItemStandby)                    \
  X(ItemSpeedUp)                    \
  X(ItemRestart)                    \
  X(ItemClearFaults)                \
  X(ItemKeys)                       \
  X(KeysTitle)                      \
  X(KeysText)                       \
  X(TabState)                       \
  X(TabRegisters)                   \
  X(TabFrames)                      \
  X(TabFaults)                      \
  X(Power)                          \
  X(PowerStandby)                   \
  X(PowerOn)                        \
  X(PowerWarmingUp)                 \
  X(PowerCoolingDown)               \
  X(Input)                          \
  X(Mode)                           \
  X(Panel)                          \
  X(ModelClass)                     \
  X(Reply5)                         \
  X(Frames)                         \
  X(BytesIn)                        \
  X(BytesOut)                       \
  X(Refusals)                       \
  X(Shows)                          \
  X(Stores)                         \
  X(Links)                          \
  X(RowsAtLimit)                    \
  X(ColumnsAtLimit)                 \
  X(Seed)                           \
  X(Mismatches)                     \
  X(Register)                       \
  X(Working)                        \
  X(Stored)                         \
  X(Number)                         \
  X(Name)                           \
  X(Request)                        \
  X(Reply)                          \
  X(Fault)                          \
  X(FrameProbe)                     \
  X(FrameClass)                     \
  X(FrameRunning)                   \
  X(FramePanel)                     \
  X(FrameStatus)                    \
  X(FrameInput)                     \
  X(FrameEcho)                      \
  X(FramePrepare)                   \
  X(FrameMode)                      \
  X(FrameBlock)                     \
  X(FrameClear)                     \
  X(FrameShow)                      \
  X(FrameStore)                     \
  X(FrameRegisters)                 \
  X(FrameUnknown)                   \
  X(WallShape)                      \
  X(WallFlat)                       \
  X(WallCylinder)                   \
  X(WallCylinderUpright)            \
  X(WallSphere)                     \
  X(WallCorner)                     \
  X(WallCeiling)                    \
  X(Distance)                       \
  X(Metres)                         \
  X(Curvature)                      \
  X(Radius)                         \
  X(Angle)                          \
  X(LensAxis)                       \
  X(AxisTop)                        \
  X(AxisMiddle)                     \
  X(AxisBottom)                     \
  X(FaultBanner)                    \
  X(ClearAll)                       \
  X(ActiveFaults)                   \
  X(Strikes)                        \
  X(Remove)                         \
  X(AddFault)                       \
  X(What)                           \
  X(When)                           \
  X(Kind)                           \
  X(Delay)                          \
  X(KindAny)                        \
  X(WhenAlways)                     \
  X(WhenOnce)                       \
  X(WhenEvery)                      \
  X(WhenChance)                     \
  X(FaultTimeout)                   \
  X(FaultRefuse)                    \
  X(FaultUnkept)                    \
  X(FaultShort)                     \
  X(FaultLong)                      \
  X(FaultDuplicate)                 \
  X(FaultChecksum)                  \
  X(FaultLate)                      \
  X(FaultSlow)                      \
  X(FaultCut)                       \
  X(FaultCutmid)                    \
  X(FaultRestart)                   \
  X(FaultRefuselink)                \
  X(FaultHalfopen)                  \
  X(FaultSingle)                    \
  X(OpenTitle)                      \
  X(SaveTitle)                      \
  X(PngFiles)                       \
  X(CannotOpen)                     \
  X(CannotSave)
WARPLINE_TEXT_KEYS(ProjectorText, WARPLINE_PROJECTOR_TEXTS)

using ProjectorTexts = TextTable<ProjectorText>;

const ProjectorTexts& ProjectorTextsOf(Language language);

// The key so many places behind another, for rows of texts that stand in the order of an enum.
constexpr ProjectorText Behind(ProjectorText first, int places) {
  return static_cast<ProjectorText>(static_cast<std::size_t>(first) +
                                    static_cast<std::size_t>(places));
}

}  // namespace warpline::sim
