#include "fit/surface.h"

#include <Eigen/Dense>
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace warpline {
namespace {

constexpr int kMostDegree = 6;
using Powers = std::array<double, kMostDegree + 1>;

// Legendre polynomials of t in -1..1: terms that hardly depend on each other.
Powers LegendreOf(double t, int degree) {
  Powers p{1, t};
  for (int n = 2; n <= degree; ++n) {
    const auto i = static_cast<std::size_t>(n);
    p[i] = ((2 * n - 1) * t * p[i - 1] - (n - 1) * p[i - 2]) / n;
  }
  return p;
}

// Calls add(term) for each term: all products up to the degree, and where there is a fold those of
// one degree less, times the distance from it.
template <typename Add>
void ForEachTerm(double u, double v, int degree, Fold fold, Add add) {
  const double s = 2 * u - 1;
  const double t = 2 * v - 1;
  const Powers a = LegendreOf(s, degree);
  const Powers b = LegendreOf(t, degree);
  const auto most = static_cast<std::size_t>(degree);
  for (std::size_t i = 0; i <= most; ++i) {
    for (std::size_t j = 0; i + j <= most; ++j) add(a[i] * b[j]);
  }
  if (fold == Fold::kNone) return;
  const double away = std::abs(fold == Fold::kUpright ? s : t);
  for (std::size_t i = 0; i < most; ++i) {
    for (std::size_t j = 0; i + j < most; ++j) add(away * a[i] * b[j]);
  }
}

int TermCount(int degree, Fold fold) {
  const int smooth = (degree + 1) * (degree + 2) / 2;
  return fold == Fold::kNone ? smooth : smooth + degree * (degree + 1) / 2;
}

struct Kind {
  int Degree;
  Fold Folded;
};

// From simple to rich. A degree needs some lines more than that; a fold, that many on each side.
std::vector<Kind> KindsFor(int lines, int places) {
  std::vector<Kind> kinds;
  for (int degree = 2; degree <= kMostDegree; ++degree) {
    for (const Fold fold : {Fold::kNone, Fold::kUpright, Fold::kLevel}) {
      const int needed = fold == Fold::kNone ? degree + 2 : 2 * degree;
      const bool enough = lines >= needed && 3 * TermCount(degree, fold) <= 2 * places;
      if (enough) kinds.push_back({degree, fold});
    }
  }
  std::ranges::stable_sort(kinds, {},
                           [](const Kind& kind) { return TermCount(kind.Degree, kind.Folded); });
  return kinds;
}

// The mean square of all but the largest tenth: what one wrong place does to its neighbours does
// not choose the kind.
double TrimmedSquare(std::vector<double> misfits) {
  std::ranges::sort(misfits);
  const std::size_t counted = misfits.size() - misfits.size() / 10;
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

  Eigen::MatrixXd TermsOf(const Kind& kind) const {
    Eigen::MatrixXd terms(static_cast<Eigen::Index>(used.size()),
                          TermCount(kind.Degree, kind.Folded));
    for (std::size_t i = 0; i < used.size(); ++i) {
      Eigen::Index column = 0;
      const PlanePoint& place = places[used[i]];
      ForEachTerm(place.X, place.Y, kind.Degree, kind.Folded,
                  [&](double term) { terms(static_cast<Eigen::Index>(i), column++) = term; });
    }
    return terms;
  }

  // The standard error that unit errors of the places leave at the panel's corners and at the
  // middles of its edges, root mean square.
  static double EdgeGain(const Kind& kind, const Eigen::MatrixXd& inverse) {
    constexpr std::array<PlanePoint, 8> kOnEdges{
        {{0, 0}, {0.5, 0}, {1, 0}, {1, 0.5}, {1, 1}, {0.5, 1}, {0, 1}, {0, 0.5}}};
    double sum = 0;
    for (const PlanePoint& place : kOnEdges) {
      Eigen::VectorXd term(inverse.rows());
      Eigen::Index at = 0;
      ForEachTerm(place.X, place.Y, kind.Degree, kind.Folded,
                  [&](double value) { term(at++) = value; });
      sum += term.dot(inverse * term);
    }
    return std::sqrt(sum / kOnEdges.size());
  }

  SurfaceFit Fit(const Kind& kind) const {
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
    fit.Shape.degree_ = kind.Degree;
    fit.Shape.fold_ = kind.Folded;
    fit.Shape.x_.assign(coefficients.col(0).begin(), coefficients.col(0).end());
    fit.Shape.y_.assign(coefficients.col(1).begin(), coefficients.col(1).end());
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
  std::size_t i = 0;
  ForEachTerm(u, v, degree_, fold_, [&](double term) {
    point.X += x_[i] * term;
    point.Y += y_[i] * term;
    ++i;
  });
  return point;
}

SurfaceFit FitSurface(std::span<const PlanePoint> places, std::span<const PlanePoint> landed,
                      const std::vector<bool>& kept, int lines) {
  constexpr double kClearlyBetter = 0.8;  // of the square that a simpler kind leaves
  SurfaceFitter fitter{places, landed, {}};
  for (std::size_t i = 0; i < places.size(); ++i) {
    if (kept[i]) fitter.used.push_back(i);
  }
  SurfaceFit best;
  double least = std::numeric_limits<double>::infinity();
  for (const Kind& kind : KindsFor(lines, static_cast<int>(fitter.used.size()))) {
    SurfaceFit fit = fitter.Fit(kind);
    const double square = TrimmedSquare(fitter.MisfitsUsed(fit));
    if (square >= least * kClearlyBetter) continue;
    least = square;
    best = std::move(fit);
  }
  return best;
}

SurfaceFit FitSurfaceWithoutStrays(std::span<const PlanePoint> places,
                                   std::span<const PlanePoint> landed, int lines, double least,
                                   std::vector<bool>& kept) {
  constexpr double kStray = 8;  // times the usual misfit
  SurfaceFit fit = FitSurface(places, landed, kept, lines);
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
    fit = FitSurface(places, landed, kept, lines);
  }
  return fit;
}

}  // namespace warpline
