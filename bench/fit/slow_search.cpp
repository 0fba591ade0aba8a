#include "bench/fit/slow_search.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "bench/fit/dice.h"
#include "core/parameters.h"
#include "fit/preparation.h"

namespace warpline {
namespace {

using Genes = std::vector<double>;  // each 0..1 of its range

constexpr double kLowestY = 0.75;

// Of one axis: optical centre with orientation, amplitude, distortion, position, curve points.
constexpr std::size_t kCommonGenes = 4;

struct Kind {
  std::int16_t ScreenType = 0;
  std::array<CurveDefinition, kAxisCount> Curves;

  bool Free() const { return ScreenType == kOtherScreens; }
  std::size_t GenesOf(Axis axis) const {
    return kCommonGenes + (Free() ? static_cast<std::size_t>(Curves[axis].CorrePointNum) : 0);
  }
};

double Share(double low, double high, double value) {
  return (value - low) / (high - low);
}

double Between(double low, double high, double share) {
  return low + (high - low) * std::clamp(share, 0.0, 1.0);
}

// The optical centre runs from -64 to 64; beyond what one orientation allows it is the other's.
// The flag that is fixed, if any, holds it.
void SetCentre(const FitInput& input, Axis axis, double share, CorrectionData& correction) {
  const double optical = std::nearbyint(Between(-64, 64, share));
  const std::int16_t flag = input.Projection[axis].value_or(optical > 0 ? 1 : 0);
  const Range range = WindowRange(ParameterField::kOptical, flag);
  correction.Projection[axis] = flag;
  correction.Axes[axis].Optical =
      static_cast<std::int16_t>(std::clamp<double>(optical, range.low, range.high));
}

Range DistortionOf(const Kind& kind) {
  return {kind.Free() ? 0 : -150, 150};
}

CorrectionData CorrectionOf(const FitInput& input, const Kind& kind, const Genes& genes) {
  CorrectionData correction;
  correction.ScreenType = kind.ScreenType;
  correction.Curves = kind.Curves;
  const double* gene = genes.data();
  for (const Axis axis : {kHorizontal, kVertical}) {
    AxisParameters& parameters = correction.Axes[axis];
    SetCentre(input, axis, *gene++, correction);
    parameters.Amplitude = static_cast<std::int16_t>(std::nearbyint(Between(-127, 127, *gene++)));
    const Range range = DistortionOf(kind);
    parameters.Distortion =
        static_cast<std::int16_t>(std::nearbyint(Between(range.low, range.high, *gene++)));
    parameters.Position =
        static_cast<std::int32_t>(std::nearbyint(Between(-32767, 32767, *gene++)));
    for (int i = 0; kind.Free() && i < kind.Curves[axis].CorrePointNum; ++i) {
      correction.Curves[axis].CorreDataPts[static_cast<std::size_t>(i)].Y =
          Between(kLowestY, 1, *gene++);
    }
  }
  return correction;
}

Genes GenesOf(const Kind& kind, const CorrectionData& correction) {
  Genes genes;
  for (const Axis axis : {kHorizontal, kVertical}) {
    const AxisParameters& parameters = correction.Axes[axis];
    const Range range = DistortionOf(kind);
    genes.push_back(Share(-64, 64, parameters.Optical));
    genes.push_back(Share(-127, 127, parameters.Amplitude));
    genes.push_back(Share(range.low, range.high, parameters.Distortion));
    genes.push_back(Share(-32767, 32767, parameters.Position));
    for (int i = 0; kind.Free() && i < kind.Curves[axis].CorrePointNum; ++i) {
      genes.push_back(
          Share(kLowestY, 1, correction.Curves[axis].CorreDataPts[static_cast<std::size_t>(i)].Y));
    }
  }
  return genes;
}

struct Member {
  Genes At;
  double Score = 0;
};

// Percent of the height: by the edges and hardly anything else, for these have a target. A picture
// that is folded over or torn apart is none.
double SlowScoreOf(const Candidate& candidate) {
  constexpr double kGridShare = 0.02;
  constexpr double kLargestArea = 2;
  const double score = candidate.Off.Edges + kGridShare * candidate.Off.Grid + candidate.Unfit;
  const bool whole = candidate.Area > 0 && candidate.Area < kLargestArea;
  return whole && std::isfinite(score) ? score : 1e9;
}

// Differential evolution: each member tries a step towards one of the best ones and along the
// difference of two others, and takes it where that is better.
class Evolution {
 public:
  Evolution(const FitInput& input, const FitTask& task, const Kind& kind)
      : input_(input), task_(task), kind_(kind) {}

  Candidate Run(const std::vector<Genes>& begin, unsigned seed) {
    Dice dice(seed);
    const std::size_t genes = kind_.GenesOf(kHorizontal) + kind_.GenesOf(kVertical);
    for (const Genes& at : begin) Join(at);
    while (members_.size() < kMembersAGene * genes) {
      Genes at(genes);
      for (double& gene : at) gene = dice.Between(0, 1);
      Join(at);
    }
    for (int generation = 0; generation < kGenerations; ++generation) {
      std::ranges::sort(members_, {}, &Member::Score);
      if (members_.back().Score - members_.front().Score < kSettled) break;
      for (Member& member : members_) Evolve(member, dice);
    }
    return JudgeCorrection(
        task_, CorrectionOf(input_, kind_, std::ranges::min(members_, {}, &Member::Score).At));
  }

 private:
  static constexpr std::size_t kMembersAGene = 5;
  static constexpr int kGenerations = 400;
  static constexpr double kSettled = 1e-3;  // percent

  double ScoreOf(const Genes& at) const {
    return SlowScoreOf(JudgeCorrection(task_, CorrectionOf(input_, kind_, at)));
  }
  void Join(const Genes& at) { members_.push_back({at, ScoreOf(at)}); }

  const Genes& Any(Dice& dice, std::size_t count) const {
    return members_[static_cast<std::size_t>(dice.Below(static_cast<int>(count)))].At;
  }

  void Evolve(Member& member, Dice& dice) const {
    const Genes& good = Any(dice, members_.size() / 8 + 1);
    const Genes& one = Any(dice, members_.size());
    const Genes& other = Any(dice, members_.size());
    const double factor = dice.Between(0.3, 0.9);
    const double crossing = dice.Between(0.3, 1);
    Genes next = member.At;
    for (std::size_t i = 0; i < next.size(); ++i) {
      if (dice.Between(0, 1) > crossing) continue;
      const double moved = next[i] + factor * (good[i] - next[i] + one[i] - other[i]);
      next[i] = moved < 0 ? next[i] / 2 : moved > 1 ? (1 + next[i]) / 2 : moved;
    }
    const double score = ScoreOf(next);
    if (score <= member.Score) member = {next, score};
  }

  const FitInput& input_;
  const FitTask& task_;
  const Kind& kind_;
  std::vector<Member> members_;
};

// The screen types with their own curves, and nine points joined by straight lines.
std::vector<Kind> KindsOf() {
  constexpr int kPoints = 9;
  std::vector<Kind> kinds;
  for (const ScreenTypeRow& row : kScreenTypes) {
    CorrectionData correction;
    correction.ScreenType = row.type;
    ResetToScreenType(correction);
    kinds.push_back({row.type, correction.Curves});
  }
  for (CurveDefinition& curve : kinds.back().Curves) {
    curve = {.CorrePointNum = kPoints, .CorreInterp = kStraightLine, .CorreDataPts = {}};
    for (std::size_t i = 0; i < kPoints; ++i) {
      curve.CorreDataPts[i].X = static_cast<double>(i) / (kPoints - 1);
    }
  }
  return kinds;
}

}  // namespace

Candidate SlowBest(const FitInput& input, const CorrectionData& answer) {
  NamedText reason;
  const FitTask task = PrepareFit(input, reason).value().Task;
  const Kind own{answer.ScreenType, answer.Curves};
  Candidate best = Evolution(input, task, own).Run({GenesOf(own, answer)}, 1);
  for (const Kind& kind : KindsOf()) {
    const Candidate found = Evolution(input, task, kind).Run({}, 2);
    if (SlowScoreOf(found) < SlowScoreOf(best)) best = found;
  }
  return best;
}

}  // namespace warpline
