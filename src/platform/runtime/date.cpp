#include "platform/runtime/date.h"

#include <chrono>
#include <ctime>

#include "native/native.h"
#include "platform/runtime/runtime.h"

namespace quorvel {

void Date::Constructor() {
  const std::time_t now = std::chrono::system_clock::to_time_t(Native().Desktop().Now());
  std::tm local{};
  localtime_r(&now, &local);
  mYear = local.tm_year + 1900;
  mMonth = local.tm_mon + 1;
  mDay = local.tm_mday;
  mHour = local.tm_hour;
  mMinute = local.tm_min;
}

}  // namespace quorvel
