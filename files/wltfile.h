#pragma once

#include "files/curve_file.h"

// The correction data file: a whole correction. Read into the staging copy, written from the live
// one, always as version 3.0. Version 2.0 is converted (its Distortion counts thirds), version 1.0
// is refused.

namespace warpline {

class WltFile : public CurveFileModule {
 public:
  explicit WltFile(const FormatTargets& targets);

  bool CheckContents() override;
  bool Write(std::vector<std::string>& lines) const override;

 protected:
  bool StoreValue(const FieldKey& key, std::int64_t value) override;

 private:
  bool StoreDistortion(Axis axis, std::int32_t value);

  CorrectionData& staging_;
  const CorrectionData& live_;
};

}  // namespace warpline
