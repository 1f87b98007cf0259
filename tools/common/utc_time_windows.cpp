#include <windows.h>

#include "common/utc_time.h"

namespace dozewell {

bool LocalTimeFromUtc(int64_t utcSeconds, tm& time) {
  tm utc;
  if (!TmFromSeconds(utcSeconds, utc)) return false;
  SYSTEMTIME system = {};
  system.wYear = static_cast<WORD>(utc.tm_year + 1900);
  system.wMonth = static_cast<WORD>(utc.tm_mon + 1);
  system.wDay = static_cast<WORD>(utc.tm_mday);
  system.wHour = static_cast<WORD>(utc.tm_hour);
  system.wMinute = static_cast<WORD>(utc.tm_min);
  system.wSecond = static_cast<WORD>(utc.tm_sec);
  SYSTEMTIME local;
  if (SystemTimeToTzSpecificLocalTime(nullptr, &system, &local) == 0) return false;
  tm fields = {};
  fields.tm_year = local.wYear - 1900;
  fields.tm_mon = local.wMonth - 1;
  fields.tm_mday = local.wDay;
  fields.tm_hour = local.wHour;
  fields.tm_min = local.wMinute;
  fields.tm_sec = local.wSecond;
  // Adds week day and year day.
  return TmFromSeconds(SecondsFromTm(fields), time);
}

}  // namespace dozewell
