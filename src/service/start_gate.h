#ifndef DOZEWELL_SERVICE_START_GATE_H_
#define DOZEWELL_SERVICE_START_GATE_H_

namespace dozewell {

// Counts a start of the service, or a resume that finds no controller, as an attempt. Once the
// attempts have reached their total, starts the controller on a thread of its own, unless the
// feature is off or the controller runs or is being started. A counter that the settings do not
// have keeps the gate shut, which is reported. Any thread.
void TryStartController();

}  // namespace dozewell

#endif  // DOZEWELL_SERVICE_START_GATE_H_
