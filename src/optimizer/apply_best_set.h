#ifndef DOZEWELL_OPTIMIZER_APPLY_BEST_SET_H_
#define DOZEWELL_OPTIMIZER_APPLY_BEST_SET_H_

namespace dozewell {

// Applies the stored set that kStrengthName chooses to the live settings: writes its parameters,
// whether prediction is disabled, and the feedback. A setting that cannot be written is skipped
// without a message. Any thread.
void ApplyBestPredictorParameters();

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_APPLY_BEST_SET_H_
