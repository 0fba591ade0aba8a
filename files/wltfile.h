#pragma once

#include "files/curve_file.h"

// The correction data file: a whole correction. Always written as version 3.0. Version 2.0 is
// converted (its Distortion counts thirds), version 1.0 is refused.

namespace warpline {

class WltFile : public CurveFileModule {
 public:
  explicit WltFile(CorrectionData& correction);

  bool CheckContents() override;
  bool Write(std::vector<std::string>& lines) const override;

 protected:
  bool StoreValue(const FieldKey& key, std::int64_t value) override;

 private:
  bool StoreDistortion(Axis axis, std::int32_t value);

  CorrectionData& correction_;
};

}  // namespace warpline
