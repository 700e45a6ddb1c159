#pragma once

#include <cstdint>

#include "platform/values/object.h"

namespace quorvel {

/// The local date and time of the call of `Constructor`.
class Date : public Object {
 public:
  void Constructor();

  [[nodiscard]] int32_t Year() const { return mYear; }
  [[nodiscard]] int32_t Month() const { return mMonth; }  ///< 1 to 12
  [[nodiscard]] int32_t Day() const { return mDay; }      ///< from 1
  [[nodiscard]] int32_t Hour() const { return mHour; }    ///< 0 to 23
  [[nodiscard]] int32_t Minute() const { return mMinute; }

 private:
  int32_t mYear = 0;
  int32_t mMonth = 0;
  int32_t mDay = 0;
  int32_t mHour = 0;
  int32_t mMinute = 0;
};

}  // namespace quorvel
