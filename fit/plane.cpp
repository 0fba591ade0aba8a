#include "fit/plane.h"

#include <Eigen/Dense>
#include <cmath>

namespace warpline {
namespace {

using Matrix3 = Eigen::Matrix<double, 3, 3, Eigen::RowMajor>;

// Moves the points around the origin, about 1 away: the equations are then well conditioned.
Matrix3 Centred(std::span<const PlanePoint> points) {
  double x = 0;
  double y = 0;
  for (const PlanePoint& point : points) {
    x += point.X / static_cast<double>(points.size());
    y += point.Y / static_cast<double>(points.size());
  }
  double away = 0;
  for (const PlanePoint& point : points) {
    away += DistanceOf(point, {x, y}) / static_cast<double>(points.size());
  }
  const double scale = away > 0 ? 1 / away : 1;
  Matrix3 matrix;
  matrix << scale, 0, -scale * x, 0, scale, -scale * y, 0, 0, 1;
  return matrix;
}

Eigen::Vector3d Moved(const Matrix3& matrix, PlanePoint point) {
  return matrix * Eigen::Vector3d(point.X, point.Y, 1);
}

// Two equations a pair of points, nine unknowns of which one is a common factor.
Eigen::MatrixXd EquationsOf(std::span<const PlanePoint> from, std::span<const PlanePoint> to,
                            const Matrix3& from_centred, const Matrix3& to_centred) {
  Eigen::MatrixXd equations = Eigen::MatrixXd::Zero(2 * static_cast<Eigen::Index>(from.size()), 9);
  for (std::size_t i = 0; i < from.size(); ++i) {
    const Eigen::Vector3d a = Moved(from_centred, from[i]);
    const Eigen::Vector3d b = Moved(to_centred, to[i]);
    const auto row = 2 * static_cast<Eigen::Index>(i);
    equations.block<1, 3>(row, 0) = a.transpose();
    equations.block<1, 3>(row, 6) = -b.x() * a.transpose();
    equations.block<1, 3>(row + 1, 3) = a.transpose();
    equations.block<1, 3>(row + 1, 6) = -b.y() * a.transpose();
  }
  return equations;
}

// All points on the same side of the line that goes to infinity.
bool KeepsTogether(const Matrix3& matrix, std::span<const PlanePoint> points) {
  for (const PlanePoint& point : points) {
    if (!(Moved(matrix, point).z() * Moved(matrix, points[0]).z() > 0)) return false;
  }
  return true;
}

}  // namespace

double DistanceOf(PlanePoint a, PlanePoint b) {
  return std::hypot(a.X - b.X, a.Y - b.Y);
}

std::optional<Homography> Homography::Through(std::span<const PlanePoint> from,
                                              std::span<const PlanePoint> to) {
  if (from.size() < 4 || from.size() != to.size()) return std::nullopt;
  constexpr double kSingular = 1e-9;
  const Matrix3 from_centred = Centred(from);
  const Matrix3 to_centred = Centred(to);
  const Eigen::MatrixXd equations = EquationsOf(from, to, from_centred, to_centred);
  // The squares of nine columns lose no digits that matter here.
  const Eigen::MatrixXd normal = equations.transpose() * equations;
  const Eigen::SelfAdjointEigenSolver<Eigen::MatrixXd> solver(normal);
  if (!(solver.eigenvalues()(1) > kSingular * solver.eigenvalues()(8))) return std::nullopt;
  const Eigen::VectorXd best = solver.eigenvectors().col(0);
  const Matrix3 centred = Eigen::Map<const Matrix3>(best.data());
  if (!(std::abs(centred.determinant()) > kSingular)) return std::nullopt;
  const Matrix3 matrix = to_centred.inverse() * centred * from_centred;
  if (!matrix.allFinite() || !KeepsTogether(matrix, from)) return std::nullopt;
  Homography homography;
  Eigen::Map<Matrix3>(homography.rows_.data()) = matrix / matrix.norm();
  return homography;
}

PlanePoint Homography::operator()(PlanePoint point) const {
  const auto& h = rows_;
  const double w = h[6] * point.X + h[7] * point.Y + h[8];
  return {(h[0] * point.X + h[1] * point.Y + h[2]) / w,
          (h[3] * point.X + h[4] * point.Y + h[5]) / w};
}

Homography Homography::Inverse() const {
  const Matrix3 matrix = Eigen::Map<const Matrix3>(rows_.data()).inverse();
  Homography inverse;
  Eigen::Map<Matrix3>(inverse.rows_.data()) = matrix / matrix.norm();
  return inverse;
}

Homography Homography::After(const Homography& other) const {
  Homography both;
  Eigen::Map<Matrix3>(both.rows_.data()) =
      Eigen::Map<const Matrix3>(rows_.data()) * Eigen::Map<const Matrix3>(other.rows_.data());
  return both;
}

}  // namespace warpline
