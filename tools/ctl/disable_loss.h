#ifndef DOZEWELL_CTL_DISABLE_LOSS_H_
#define DOZEWELL_CTL_DISABLE_LOSS_H_

#include <string>

namespace dozewell::ctl {

// What the service throws away when its feature is switched off, and how to keep it, in sentences.
// The service saves once a day and when it stops, but not when it is switched off.
std::string DisableLossText();

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_DISABLE_LOSS_H_
