#include "fit/surface.h"

#include <Eigen/Dense>
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace warpline {
namespace {

constexpr int kMostDegree = 8;
using Powers = std::array<double, kMostDegree + 1>;

// Legendre polynomials of t in -1..1: terms that hardly depend on each other.
Powers LegendreOf(double t, int degree) {
  static constexpr auto kShares = [] {
    Powers shares{};
    for (int n = 1; n <= kMostDegree; ++n) shares[static_cast<std::size_t>(n)] = (n - 1.0) / n;
    return shares;
  }();
  Powers p{1, t};
  for (std::size_t i = 2; i <= static_cast<std::size_t>(degree); ++i) {
    p[i] = (1 + kShares[i]) * t * p[i - 1] - kShares[i] * p[i - 2];
  }
  return p;
}

// Calls add(factor, products) for terms that are a factor times each of some products: all products
// up to the degrees, and where there is a fold those of one degree less, times the distance from
// it.
template <typename Add>
void ForEachFactor(double u, double v, const SurfaceKind& kind, Add add) {
  const double s = 2 * u - 1;
  const double t = 2 * v - 1;
  const Powers a = LegendreOf(s, kind.Across);
  const Powers b = LegendreOf(t, kind.Down);
  const auto products = [&](int across, int down, int both, double factor) {
    for (int i = 0; i <= across; ++i) {
      const int count = std::min(down, both - i) + 1;
      add(factor * a[static_cast<std::size_t>(i)],
          std::span(b).first(static_cast<std::size_t>(std::max(count, 0))));
    }
  };
  products(kind.Across, kind.Down, kind.Both, 1);
  if (kind.Folded == Fold::kUpright) {
    products(kind.Across - 1, kind.Down, kind.Both - 1, std::abs(s));
  } else if (kind.Folded == Fold::kLevel) {
    products(kind.Across, kind.Down - 1, kind.Both - 1, std::abs(t));
  }
}

template <typename Add>
void ForEachTerm(double u, double v, const SurfaceKind& kind, Add add) {
  ForEachFactor(u, v, kind, [&](double factor, std::span<const double> products) {
    for (const double product : products) add(factor * product);
  });
}

int TermCount(const SurfaceKind& kind) {
  int count = 0;
  ForEachTerm(0, 0, kind, [&](double) { ++count; });
  return count;
}

// From simple to rich. A degree needs some lines more than that; a fold, that many on each side.
std::vector<SurfaceKind> KindsFor(MarkLines lines, int places) {
  std::vector<SurfaceKind> kinds;
  for (int degree = 2; degree <= kMostDegree; ++degree) {
    for (const Fold fold : {Fold::kNone, Fold::kUpright, Fold::kLevel}) {
      const int across = fold == Fold::kUpright ? lines.Columns / 2 : lines.Columns - 2;
      const int down = fold == Fold::kLevel ? lines.Rows / 2 : lines.Rows - 2;
      const SurfaceKind kind{std::min(across, degree), std::min(down, degree), degree, fold};
      const bool more = degree <= std::max(across, down);
      if (more && 3 * TermCount(kind) <= 2 * places) kinds.push_back(kind);
    }
  }
  std::ranges::stable_sort(kinds, {}, TermCount);
  return kinds;
}

// The mean square of all but the largest ones.
double MeanSquare(std::vector<double> misfits, std::size_t left_out) {
  std::ranges::sort(misfits);
  const std::size_t counted = misfits.size() - left_out;
  double sum = 0;
  for (std::size_t i = 0; i < counted; ++i) sum += misfits[i] * misfits[i];
  return sum / static_cast<double>(counted);
}

double MedianOf(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

}  // namespace

struct SurfaceFitter {
  std::span<const PlanePoint> places;
  std::span<const PlanePoint> landed;
  std::vector<std::size_t> used;

  Eigen::MatrixXd TermsOf(const SurfaceKind& kind) const {
    Eigen::MatrixXd terms(static_cast<Eigen::Index>(used.size()), TermCount(kind));
    for (std::size_t i = 0; i < used.size(); ++i) {
      Eigen::Index column = 0;
      const PlanePoint& place = places[used[i]];
      ForEachTerm(place.X, place.Y, kind,
                  [&](double term) { terms(static_cast<Eigen::Index>(i), column++) = term; });
    }
    return terms;
  }

  // The standard error that unit errors of the places leave at the panel's corners and at the
  // middles of its edges, root mean square.
  static double EdgeGain(const SurfaceKind& kind, const Eigen::MatrixXd& inverse) {
    constexpr std::array<PlanePoint, 8> kOnEdges{
        {{0, 0}, {0.5, 0}, {1, 0}, {1, 0.5}, {1, 1}, {0.5, 1}, {0, 1}, {0, 0.5}}};
    double sum = 0;
    for (const PlanePoint& place : kOnEdges) {
      Eigen::VectorXd term(inverse.rows());
      Eigen::Index at = 0;
      ForEachTerm(place.X, place.Y, kind, [&](double value) { term(at++) = value; });
      sum += term.dot(inverse * term);
    }
    return std::sqrt(sum / kOnEdges.size());
  }

  SurfaceFit Fit(const SurfaceKind& kind) const {
    const Eigen::MatrixXd terms = TermsOf(kind);
    Eigen::MatrixXd landing(terms.rows(), 2);
    for (std::size_t i = 0; i < used.size(); ++i) {
      landing.row(static_cast<Eigen::Index>(i)) << landed[used[i]].X, landed[used[i]].Y;
    }
    const Eigen::MatrixXd inverse =
        (terms.transpose() * terms)
            .ldlt()
            .solve(Eigen::MatrixXd::Identity(terms.cols(), terms.cols()));
    const Eigen::MatrixXd coefficients = terms.colPivHouseholderQr().solve(landing);
    const Eigen::MatrixXd rest = landing - terms * coefficients;
    SurfaceFit fit;
    fit.Shape.kind_ = kind;
    for (const auto& row : coefficients.rowwise()) fit.Shape.terms_.push_back({row(0), row(1)});
    fit.Misfit.resize(places.size());
    for (std::size_t i = 0; i < places.size(); ++i) {
      const PlanePoint at = fit.Shape.At(places[i].X, places[i].Y);
      fit.Misfit[i] = DistanceOf(at, landed[i]);
    }
    for (std::size_t i = 0; i < used.size(); ++i) {
      const auto row = static_cast<Eigen::Index>(i);
      const double own = terms.row(row).dot(inverse * terms.row(row).transpose());
      fit.Misfit[used[i]] /= std::max(1 - own, 0.01);
    }
    const double free = static_cast<double>(2 * (terms.rows() - terms.cols()));
    fit.EdgeError = std::sqrt(rest.squaredNorm() / free) * EdgeGain(kind, inverse);
    return fit;
  }

  std::vector<double> MisfitsUsed(const SurfaceFit& fit) const {
    std::vector<double> misfits;
    for (const std::size_t i : used) misfits.push_back(fit.Misfit[i]);
    return misfits;
  }
};

PlanePoint Surface::At(double u, double v) const {
  PlanePoint point;
  const PlanePoint* term = terms_.data();
  ForEachFactor(u, v, kind_, [&](double factor, std::span<const double> products) {
    PlanePoint sum;
    for (const double product : products) {
      sum.X += term->X * product;
      sum.Y += term->Y * product;
      ++term;
    }
    point.X += factor * sum.X;
    point.Y += factor * sum.Y;
  });
  return point;
}

SurfaceFit FitSurface(std::span<const PlanePoint> places, std::span<const PlanePoint> landed,
                      const std::vector<bool>& kept, MarkLines lines, Strays strays) {
  constexpr double kClearlyBetter = 0.8;  // of the square that a simpler kind leaves
  SurfaceFitter fitter{places, landed, {}};
  for (std::size_t i = 0; i < places.size(); ++i) {
    if (kept[i]) fitter.used.push_back(i);
  }
  // What one wrong place does to its neighbours does not choose the kind.
  const std::size_t left_out = strays == Strays::kMaybe ? fitter.used.size() / 10 : 0;
  SurfaceFit best;
  double least = std::numeric_limits<double>::infinity();
  for (const SurfaceKind& kind : KindsFor(lines, static_cast<int>(fitter.used.size()))) {
    SurfaceFit fit = fitter.Fit(kind);
    const double square = MeanSquare(fitter.MisfitsUsed(fit), left_out);
    if (square >= least * kClearlyBetter) continue;
    least = square;
    best = std::move(fit);
  }
  return best;
}

namespace {

// An outer place is foretold from one side only: where the wall bends hard, several of them lie off
// about as far, here and on another side, and none is wrong.
bool AgreesWithOuterOnes(std::span<const PlanePoint> places, const SurfaceFit& without,
                         const std::vector<bool>& kept, MarkLines lines, std::size_t stray) {
  constexpr double kBeside = 2.5;   // lines
  constexpr double kAlike = 0.333;  // of the misfit
  constexpr int kEnough = 2;
  if (!IsOuter(places[stray])) return false;
  int alike = 0;
  for (std::size_t i = 0; i < places.size(); ++i) {
    const double columns = std::abs(places[i].X - places[stray].X) * (lines.Columns - 1);
    const double rows = std::abs(places[i].Y - places[stray].Y) * (lines.Rows - 1);
    const bool counts = kept[i] && IsOuter(places[i]) && std::max(columns, rows) > kBeside;
    if (counts && without.Misfit[i] > kAlike * without.Misfit[stray]) ++alike;
  }
  return alike >= kEnough;
}

}  // namespace

bool IsOuter(const PlanePoint& place) {
  constexpr double kOuter = 0.06;  // of the panel, from its edge
  return std::min({place.X, 1 - place.X, place.Y, 1 - place.Y}) < kOuter;
}

SurfaceFit FitSurfaceWithoutStrays(std::span<const PlanePoint> places,
                                   std::span<const PlanePoint> landed, MarkLines lines,
                                   double least, std::vector<bool>& kept) {
  constexpr double kStray = 8;  // times the usual misfit
  SurfaceFit fit = FitSurface(places, landed, kept, lines, Strays::kMaybe);
  for (std::size_t left = 1 + places.size() / 20; left > 0; --left) {
    std::vector<double> misfits;
    std::size_t worst = 0;
    for (std::size_t i = 0; i < places.size(); ++i) {
      if (!kept[i]) continue;
      misfits.push_back(fit.Misfit[i]);
      if (!kept[worst] || fit.Misfit[i] > fit.Misfit[worst]) worst = i;
    }
    if (fit.Misfit[worst] < std::max(least, kStray * MedianOf(misfits))) break;
    kept[worst] = false;
    SurfaceFit without = FitSurface(places, landed, kept, lines, Strays::kMaybe);
    if (AgreesWithOuterOnes(places, without, kept, lines, worst)) {
      kept[worst] = true;
      break;
    }
    fit = std::move(without);
  }
  return fit;
}

}  // namespace warpline
