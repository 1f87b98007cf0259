#ifndef DOZEWELL_OPTIMIZER_APPLY_BEST_SET_H_
#define DOZEWELL_OPTIMIZER_APPLY_BEST_SET_H_

namespace dozewell {

// Applies the stored set that kStrengthName chooses to the live settings: its parameters, or that
// prediction is off, and how that went. A setting that cannot be written is left at that. Any
// thread.
void ApplyBestPredictorParameters();

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_APPLY_BEST_SET_H_
