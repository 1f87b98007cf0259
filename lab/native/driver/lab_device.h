#ifndef DOZEWELL_LAB_DRIVER_LAB_DEVICE_H_
#define DOZEWELL_LAB_DRIVER_LAB_DEVICE_H_

/* The lab's driver: the device with a wake timer that the service looks for, and a private one,
   \\.\DozewellLab, through which a test reads and sets all that the first one knows. The test's
   half is machine/lab_device.py. */

enum lab_control { LAB_WRITE_TIMER, LAB_READ_TIMER, LAB_READ_STATUS, LAB_CONTROLS };

/* Calls are counted from 1, and those from fail_from to fail_to end with the NTSTATUS; none does
   while fail_from is 0. */
struct lab_control_state {
  unsigned int made;
  unsigned int fail_from;
  unsigned int fail_to;
  unsigned int ntstatus;
};

struct lab_device_state {
  unsigned int timer_words[2];
  unsigned int previous_sleep_status;
  unsigned int present; /* 0: the device cannot be found; handles that are open go on working */
  struct lab_control_state controls[LAB_CONTROLS];
};

/* Device type 0x9C40, buffered, for any access. */
#define LAB_IOCTL_WRITE_TIMER 0x9C402404u /* timer_words in */
#define LAB_IOCTL_READ_TIMER 0x9C402408u  /* timer_words out */
#define LAB_IOCTL_READ_STATUS 0x9C402410u /* previous_sleep_status out */

/* On the private device only. */
#define LAB_IOCTL_GET_STATE 0x9C403C00u /* struct lab_device_state out */
#define LAB_IOCTL_SET_STATE 0x9C403C04u /* struct lab_device_state in */

#endif /* DOZEWELL_LAB_DRIVER_LAB_DEVICE_H_ */
