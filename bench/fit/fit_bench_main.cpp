#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <numbers>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bench/fit/measured_fit.h"
#include "bench/fit/random_cameras.h"
#include "core/conversions.h"

// How straight the fit gets the picture on every kind of wall: projected exactly, fitted, projected
// again. Fails when a figure misses its target.

namespace warpline {
namespace {

constexpr const char* kAxes[] = {"bottom", "middle"};

// The same for all photographs of a table.
struct Table {
  std::string Title;
  Condition Given;
  bool AllPanels = false;
};

struct Figures {
  double Before = 0;  // the worst of several cameras and panels, all as seen on the wall
  double After = 0;
  double Disagreement = 0;
  double Worse = -100;
  double Outside = 0;  // pixels
  double Bound = 0;
  double Area = 1;  // share of the largest rectangle that the picture keeps, the least
  double Seconds = 0;
  int Missed = 0;
};

std::vector<WallScene> ScenesOf(const Wall& wall, PanelSize panel) {
  std::vector<WallScene> scenes;
  for (const double aside : {0.0, 1.5}) {
    for (const double lower : {0.0, 1.0 / 6}) {
      WallScene scene{wall, panel, {}};
      scene.Seen.X = aside;
      scene.Seen.Y = scene.Middle() + lower * scene.Height();
      scene.Seen.Z = scene.Wall.Distance - 8;
      scene.Seen.Photo = {4000, 3000};
      scenes.push_back(scene);
    }
  }
  return scenes;
}

// A ball that comes towards the lens is met by light up to a tangent only.
void TellPassedBy(const std::string& wall, const WallScene& scene) {
  constexpr double kDegrees = 180 / std::numbers::pi;
  const double across = 0.5 / kThrowRatio;
  const double up =
      scene.Height() / scene.Wall.Distance / 2 + std::abs(scene.Middle()) / scene.Wall.Distance;
  const double radius = 1 / scene.Wall.Curvature;
  std::printf(
      "%s is not lit by %dx%d: the light of its farthest corners leaves the lens %.1f\n"
      "degrees off the axis, the ball ends at %.1f.\n",
      wall.c_str(), scene.Panel.Width, scene.Panel.Height,
      std::atan(std::hypot(across, up)) * kDegrees,
      std::asin(radius / (radius + scene.Wall.Distance)) * kDegrees);
}

void Add(const std::optional<MeasuredFit>& fit, Figures& figures) {
  figures.Missed += fit && fit->Reaches() ? 0 : 1;
  if (!fit) return;
  figures.Before = std::max(figures.Before, fit->Before);
  figures.After = std::max(figures.After, fit->After);
  figures.Disagreement = std::max(figures.Disagreement, std::abs(fit->After - fit->Told));
  figures.Worse = std::max(figures.Worse, fit->After - fit->Before);
  figures.Outside = std::max(figures.Outside, fit->Outside);
  figures.Bound = std::max(figures.Bound, fit->LensBound);
  figures.Seconds = std::max(figures.Seconds, fit->Seconds);
  figures.Area = std::min(figures.Area, fit->Chosen.Area);
}

// Of the panels whose light all meets the wall: of each one, or of the first.
Figures FiguresOf(const std::string& wall, const Table& table) {
  Figures figures;
  for (const PanelSize& panel : kPanels) {
    const std::vector<WallScene> scenes = ScenesOf(*WallOf(wall), panel);
    if (!std::ranges::all_of(scenes, IsLit)) {
      TellPassedBy(wall, scenes[0]);
      continue;
    }
    for (const WallScene& scene : scenes) Add(MeasureFit(scene, table.Given), figures);
    if (!table.AllPanels) break;
  }
  return figures;
}

int RunTable(const Table& table) {
  std::printf("\n%s\n%-9s %-7s %9s %8s %8s %8s %8s %8s %8s %8s %7s\n", table.Title.c_str(), "wall",
              "axis", "curvature", "before", "after", "told off", "worse by", "bound", "area",
              "outside", "seconds");
  int missed = 0;
  for (const char* axis : kAxes) {
    for (const char* shape : kShapes) {
      for (const char* curvature : {"-0.25", "-0.1", "0.1", "0.25"}) {
        const Figures figures =
            FiguresOf(std::string(shape) + ":4:" + curvature + ":" + axis, table);
        std::printf("%-9s %-7s %9s %8.3f %8.3f %8.3f %8.3f %8.3f %8.3f %8.3f %7.2f %s\n", shape,
                    axis, curvature, figures.Before, figures.After, figures.Disagreement,
                    figures.Worse, figures.Bound, figures.Area, figures.Outside, figures.Seconds,
                    figures.Missed > 0 ? "MISSED" : "");
        std::fflush(stdout);
        missed += figures.Missed;
      }
    }
  }
  std::printf("missed: %d\n", missed);
  return missed;
}

int RunTables(bool short_run) {
  const Table tables[] = {
      {"exact marks", {}, !short_run},
      {"marks off by half a pixel", {.NoisePixels = 0.5}},
      {"K1 = 0.02, three lines laid", {.K1 = 0.02}},
      {"K1 = -0.02, three lines laid", {.K1 = -0.02}},
      {"K1 = 0.02, lens unknown", {.K1 = 0.02, .Laid = Lines::kNone}},
      {"K1 = -0.02, lens unknown", {.K1 = -0.02, .Laid = Lines::kNone}},
  };
  std::printf(
      "Percent of the picture's height, seconds of processor time; the worst of all cameras and\n"
      "panels. told off: how far what is told is from what is seen on the wall; outside: "
      "pixels.\n");
  int missed = 0;
  for (const Table& table : tables) missed += RunTable(table);
  return missed;
}

// What the command line asks for.
struct Work {
  bool Short = false;
  int Cameras = 0;  // 0: the tables
  unsigned Seed = 1;
};

std::optional<Work> WorkOf(const std::vector<std::string_view>& words) {
  if (words.empty()) return Work{};
  if (words.size() == 1 && words[0] == "--short") return Work{.Short = true};
  const bool seeded = words.size() == 4 && words[2] == "--seed";
  if (words[0] != "--random" || !(words.size() == 2 || seeded)) return std::nullopt;
  const auto cameras = WholeNumber(words[1], 1, std::numeric_limits<int>::max());
  const auto seed = WholeNumber(seeded ? words[3] : "1", 0U, std::numeric_limits<unsigned>::max());
  if (!cameras || !seed) return std::nullopt;
  return Work{.Cameras = *cameras, .Seed = *seed};
}

}  // namespace
}  // namespace warpline

int main(int count, char** words) {
  const auto work = warpline::WorkOf({words + 1, words + count});
  if (!work) {
    std::fputs(
        "Give nothing, --short, or --random N [--seed S]: N cameras, a whole number from 1; S a\n"
        "whole number from 0, 1 if not given.\n",
        stderr);
    return 2;
  }
  const int missed = work->Cameras > 0 ? warpline::RunRandomCameras(work->Cameras, work->Seed)
                                       : warpline::RunTables(work->Short);
  return missed == 0 ? 0 : 1;
}
