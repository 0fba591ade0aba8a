#pragma once

#include <cmath>
#include <cstdint>
#include <exception>
#include <limits>
#include <type_traits>

namespace warpline {

// The code that the run-time error report shows.
enum class FaultCode : int {
  kDoesNotFit = 1,       // a value does not fit its 16-bit or 32-bit field
  kIndexOutOfRange = 2,  // an index lies outside its table
  kNotANumber = 3,       // division by zero, or a result that is not a finite number
};

// The one exception of the arithmetic. It ends the command in progress; only the commands' outer
// edge catches it and shows the run-time error report.
class Fault : public std::exception {
 public:
  explicit Fault(FaultCode code) : code_(code) {}
  FaultCode code() const { return code_; }
  const char* what() const noexcept override { return "arithmetic fault"; }

 private:
  FaultCode code_;
};

// The value itself when it is finite. Throws Fault(kNotANumber) otherwise.
inline double RequireFinite(double value) {
  if (!std::isfinite(value)) throw Fault(FaultCode::kNotANumber);
  return value;
}

// The nearest integer, halves to even. Throws Fault when the value is not finite or the integer
// does not fit.
template <typename Integer>
Integer RoundTo(double value) {
  const double rounded = std::nearbyint(RequireFinite(value));
  if (rounded < static_cast<double>(std::numeric_limits<Integer>::min()) ||
      rounded > static_cast<double>(std::numeric_limits<Integer>::max())) {
    throw Fault(FaultCode::kDoesNotFit);
  }
  return static_cast<Integer>(rounded);
}

// The value in a narrower integer type. Throws Fault(kDoesNotFit) when it does not fit.
template <typename Integer>
Integer NarrowTo(std::int64_t value) {
  if (value < std::int64_t{std::numeric_limits<Integer>::min()} ||
      value > std::int64_t{std::numeric_limits<Integer>::max()}) {
    throw Fault(FaultCode::kDoesNotFit);
  }
  return static_cast<Integer>(value);
}

}  // namespace warpline
