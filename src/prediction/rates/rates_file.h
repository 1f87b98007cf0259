#ifndef DOZEWELL_PREDICTION_RATES_RATES_FILE_H_
#define DOZEWELL_PREDICTION_RATES_RATES_FILE_H_

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "prediction/rates/rates_state.h"

namespace dozewell {

// The name of the rate predictor's file in the data folder.
constexpr const wchar_t* kRatesFileName = L"rates.z7";

// The bytes of the file for a state: a header with version and checksum, and the state.
std::vector<unsigned char> RatesFileOf(const RatesState& state);

// The state in a file; null when the file is damaged, of another version, or holds what no learning
// gives.
std::unique_ptr<RatesState> ReadRatesFile(std::span<const unsigned char> file);

struct LoadedRates {
  std::unique_ptr<RatesState> state;  // null when the file is missing, unread or no good
  bool isUnread;                      // there is a file, and it could not be read
};

LoadedRates LoadRates(const std::wstring& path);

// Writes the file; false, without a report, when that failed. With `isOfUnreadFile` an existing
// file is kept, unless the disk cannot read it and it was set aside.
bool SaveRates(const RatesState& state, const std::wstring& path, bool isOfUnreadFile);

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_RATES_RATES_FILE_H_
