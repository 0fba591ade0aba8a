#pragma once

#include "files/curve_file.h"

// The shape file: one curve without an axis. Written as version 2.0; both versions are read.

namespace warpline {

class WlsFile : public CurveFileModule {
 public:
  explicit WlsFile(CurveDefinition& curve);

  bool CheckContents() override { return CurveAccepted(curve_); }
  bool Write(std::vector<std::string>& lines) const override;

 protected:
  bool StoreValue(const FieldKey& key, std::int64_t value) override;

 private:
  CurveDefinition& curve_;
};

}  // namespace warpline
