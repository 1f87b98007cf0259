#ifndef DOZEWELL_SETTINGS_SETTING_NAMES_H_
#define DOZEWELL_SETTINGS_SETTING_NAMES_H_

#include <cstdint>

namespace dozewell {

// The keys and values in the registry, below HKEY_LOCAL_MACHINE, by name, and what a reader takes
// for a value that none of the keys has.

inline constexpr wchar_t kVendorKey[] = L"SOFTWARE\\Corisk";
inline constexpr wchar_t kProductKey[] = L"SOFTWARE\\Corisk\\Z7";
inline constexpr wchar_t kCurrentKey[] = L"SOFTWARE\\Corisk\\Z7\\Current";
inline constexpr wchar_t kBrandingKey[] = L"SOFTWARE\\Corisk\\Z7\\Branding";
inline constexpr wchar_t kDefaultKey[] = L"SOFTWARE\\Corisk\\Z7\\Default";
inline constexpr char kPredictorsSubkey[] = "Predictors";
// The same key twice: the registry ignores case, and readers deliberately spell it in capitals.
inline constexpr char kPredictorsForReading[] = "SOFTWARE\\Corisk\\Z7\\CURRENT\\Predictors";
inline constexpr char kPredictorsForWriting[] = "SOFTWARE\\Corisk\\Z7\\Current\\Predictors";

// 1 is on, any other number off.
inline constexpr wchar_t kEnableZ7FeatureName[] = L"EnableZ7Feature";
inline constexpr uint32_t kDefaultEnableZ7Feature = 1;
inline constexpr wchar_t kDebugLoggingName[] = L"DebugLogging";
inline constexpr uint32_t kDefaultDebugLogging = 0;
inline constexpr wchar_t kDisablePredictionName[] = L"DisablePrediction";
inline constexpr uint32_t kDefaultDisablePrediction = 0;
inline constexpr wchar_t kEnableDynamicHAName[] = L"EnableDynamicHA";
inline constexpr uint32_t kDefaultEnableDynamicHA = 0;

// The counters of the start gate, which has no defaults: it stays shut while one is absent. Only
// SetFeatureEnabled, a client's switch, takes these numbers instead.
inline constexpr wchar_t kTotalAttemptsName[] = L"TotalAttempts";
inline constexpr uint32_t kClientSwitchTotalAttempts = 10;
inline constexpr wchar_t kCurrentAttemptName[] = L"CurrentAttempt";
inline constexpr uint32_t kClientSwitchCurrentAttempt = 0;
// The gate's last pass; only written.
inline constexpr wchar_t kStartTimeName[] = L"StartTime";

// What settings clients show. The first is only written.
inline constexpr wchar_t kServiceStatusName[] = L"ServiceStatus";
inline constexpr wchar_t kServiceFeedbackName[] = L"ServiceFeedback";
inline constexpr uint32_t kDefaultServiceFeedback = 0;

// What settings clients show while the system's timer is in the driver's place; absent otherwise.
inline constexpr wchar_t kWindowsTimerStateName[] = L"WindowsTimerState";
inline constexpr uint32_t kWindowsTimerWakes = 1;
inline constexpr uint32_t kWindowsTimerCannotWake = 2;

// The user's own HA, in minutes, while a predicted one is in force. Absent at all other times.
inline constexpr wchar_t kCachedHAForACName[] = L"HA_AC";
inline constexpr wchar_t kCachedHAForDCName[] = L"HA_DC";

inline constexpr wchar_t kHistoryLimitName[] = L"HistoryLimit";
inline constexpr uint32_t kDefaultHistoryLimitDays = 60;

// Without a time resolution there is no predictor.
inline constexpr wchar_t kTimeResolutionName[] = L"TimeResolution";
inline constexpr uint32_t kNoTimeResolution = 0xFFFFFFFF;

inline constexpr wchar_t kOptimizerIntervalName[] = L"OptimizerInterval";
inline constexpr uint32_t kDefaultOptimizerIntervalDays = 30;
inline constexpr wchar_t kOptimizerDelayName[] = L"OptimizerDelay";
inline constexpr uint32_t kDefaultOptimizerDelayMinutes = 30;
// The counters of launches on battery have no defaults: nothing runs on battery without them.
inline constexpr wchar_t kTotalBatteryAttemptsName[] = L"TotalOptimizerAttemptsInDCmode";
inline constexpr wchar_t kCurrentBatteryAttemptsName[] = L"CurrentOptimizerAttemptsInDCmode";
inline constexpr wchar_t kLastOptimizerRunName[] = L"LastOptimizerRun";
inline constexpr int64_t kNoOptimizerRun = 0;

// The section of the predictor's values, and these. They are texts, and an absent one is empty.
inline constexpr char kPredictorSection[] = "CyclicProbabilityPredictor";

inline constexpr char kDaysInCycleName[] = "DaysInCycle";
inline constexpr char kMinutesInDayName[] = "MinutesInDay";

inline constexpr char kFirstLastWeightName[] = "FirstLastWeight";
inline constexpr char kSecondLastWeightName[] = "SecondLastWeight";
inline constexpr char kAgregationWeightName[] = "AgregationWeight";
inline constexpr char kStrengthHighName[] = "StrengthHigh";
inline constexpr char kStrengthLowName[] = "StrengthLow";
inline constexpr char kDayGroupingName[] = "DayGrouping";
inline constexpr int32_t kDefaultDayGrouping = 0;
inline constexpr char kUseDualStrengthName[] = "UseDualStrength";

// What an optimizer run tries.
inline constexpr char kFirstLastWeightRangeName[] = "FirstLastWeightRange";
inline constexpr char kSecondLastWeightRangeName[] = "SecondLastWeightRange";
inline constexpr char kStrengthHighRangeName[] = "StrengthHighRange";
inline constexpr char kStrengthLowRangeName[] = "StrengthLowRange";
inline constexpr char kDayGroupingRangeName[] = "DayGroupingRange";

// The scoring weights of a run. Its best set for each is stored under the prefix and the weight's
// index, and the strength is the index of the set that applies.
inline constexpr char kScoringWeightsName[] = "WR";
inline constexpr char kBestSetPrefix[] = "Best";
inline constexpr char kStrengthName[] = "Strength";

// Which predictor works. Without a value, or with any other, it is kSlotsPredictor.
inline constexpr char kPredictorName[] = "Predictor";
inline constexpr char kSlotsPredictor[] = "slots";
inline constexpr char kRatesPredictor[] = "rates";

// What wakes the machine where there is no driver: kWindowsWakeTimer. Any other value, or none, is
// nothing.
inline constexpr char kWakeTimerName[] = "WakeTimer";
inline constexpr char kWindowsWakeTimer[] = "windows";

}  // namespace dozewell

#endif  // DOZEWELL_SETTINGS_SETTING_NAMES_H_
