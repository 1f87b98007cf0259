#include "lab_device.h"

#include <ntddk.h>

/* {72C9587E-F669-4F17-9912-0CE152C2472F} */
static const GUID timer_interface = {
    0x72C9587E, 0xF669, 0x4F17, {0x99, 0x12, 0x0C, 0xE1, 0x52, 0xC2, 0x47, 0x2F}};

struct timer_extension {
  DEVICE_OBJECT* lower;
  UNICODE_STRING interface_name;
};

static DEVICE_OBJECT* private_device;
static DEVICE_OBJECT* timer_device; /* NULL until the root bus has found it */

/* Both devices may be asked at the same time. */
static KSPIN_LOCK state_lock;
static struct lab_device_state state = {.present = 1};

static NTSTATUS complete(IRP* irp, NTSTATUS status, ULONG_PTR size) {
  irp->IoStatus.Status = status;
  irp->IoStatus.Information = size;
  IoCompleteRequest(irp, IO_NO_INCREMENT);
  return status;
}

static NTSTATUS NTAPI open_or_close(DEVICE_OBJECT* device, IRP* irp) {
  (void)device;
  return complete(irp, STATUS_SUCCESS, 0);
}

/* Counts a call and returns the status that it is to end with. Needs the lock. */
static NTSTATUS count_call(enum lab_control control) {
  struct lab_control_state* calls = &state.controls[control];
  ++calls->made;
  if (calls->fail_from != 0 && calls->made >= calls->fail_from && calls->made <= calls->fail_to) {
    return (NTSTATUS)calls->ntstatus;
  }
  return STATUS_SUCCESS;
}

struct request {
  void* buffer;
  ULONG input;
  ULONG output;
  ULONG_PTR returned;
};

static NTSTATUS take(struct request* request, void* target, ULONG size) {
  if (request->input < size) return STATUS_BUFFER_TOO_SMALL;
  RtlCopyMemory(target, request->buffer, size);
  return STATUS_SUCCESS;
}

static NTSTATUS give(struct request* request, const void* source, ULONG size) {
  if (request->output < size) return STATUS_BUFFER_TOO_SMALL;
  RtlCopyMemory(request->buffer, source, size);
  request->returned = size;
  return STATUS_SUCCESS;
}

static NTSTATUS timer_control(ULONG code, struct request* request) {
  NTSTATUS status;
  switch (code) {
    case LAB_IOCTL_WRITE_TIMER:
      status = count_call(LAB_WRITE_TIMER);
      return status ? status : take(request, state.timer_words, sizeof(state.timer_words));
    case LAB_IOCTL_READ_TIMER:
      status = count_call(LAB_READ_TIMER);
      return status ? status : give(request, state.timer_words, sizeof(state.timer_words));
    case LAB_IOCTL_READ_STATUS:
      status = count_call(LAB_READ_STATUS);
      return status
                 ? status
                 : give(request, &state.previous_sleep_status, sizeof(state.previous_sleep_status));
  }
  return STATUS_INVALID_DEVICE_REQUEST;
}

static NTSTATUS private_control(ULONG code, struct request* request) {
  switch (code) {
    case LAB_IOCTL_GET_STATE:
      return give(request, &state, sizeof(state));
    case LAB_IOCTL_SET_STATE:
      return take(request, &state, sizeof(state));
  }
  return STATUS_INVALID_DEVICE_REQUEST;
}

/* Waits for the system, so the lock must not be held. */
static NTSTATUS show_or_hide_timer(void) {
  static unsigned int shown;
  if (timer_device == NULL) return STATUS_NO_SUCH_DEVICE;
  if (state.present == shown) return STATUS_SUCCESS;
  struct timer_extension* extension = timer_device->DeviceExtension;
  NTSTATUS status = IoSetDeviceInterfaceState(&extension->interface_name, state.present != 0);
  if (status == STATUS_SUCCESS) shown = state.present;
  return status;
}

static NTSTATUS NTAPI device_control(DEVICE_OBJECT* device, IRP* irp) {
  const IO_STACK_LOCATION* stack = IoGetCurrentIrpStackLocation(irp);
  const ULONG code = stack->Parameters.DeviceIoControl.IoControlCode;
  struct request request = {
      .buffer = irp->AssociatedIrp.SystemBuffer,
      .input = stack->Parameters.DeviceIoControl.InputBufferLength,
      .output = stack->Parameters.DeviceIoControl.OutputBufferLength,
  };
  KIRQL irql;
  KeAcquireSpinLock(&state_lock, &irql);
  NTSTATUS status =
      device == private_device ? private_control(code, &request) : timer_control(code, &request);
  KeReleaseSpinLock(&state_lock, irql);
  if (status == STATUS_SUCCESS && device == private_device && code == LAB_IOCTL_SET_STATE) {
    status = show_or_hide_timer();
  }
  return complete(irp, status, request.returned);
}

static NTSTATUS NTAPI plug_and_play(DEVICE_OBJECT* device, IRP* irp) {
  struct timer_extension* extension = device->DeviceExtension;
  if (IoGetCurrentIrpStackLocation(irp)->MinorFunction == IRP_MN_START_DEVICE) {
    timer_device = device;
    show_or_hide_timer();
    irp->IoStatus.Status = STATUS_SUCCESS;
  }
  IoSkipCurrentIrpStackLocation(irp);
  return IoCallDriver(extension->lower, irp);
}

static NTSTATUS NTAPI add_timer_device(DRIVER_OBJECT* driver, DEVICE_OBJECT* physical) {
  DEVICE_OBJECT* device;
  NTSTATUS status =
      IoCreateDevice(driver, sizeof(struct timer_extension), NULL, 0x9C40, 0, FALSE, &device);
  if (status) return status;
  struct timer_extension* extension = device->DeviceExtension;
  status = IoRegisterDeviceInterface(physical, &timer_interface, NULL, &extension->interface_name);
  if (status) {
    IoDeleteDevice(device);
    return status;
  }
  extension->lower = IoAttachDeviceToDeviceStack(device, physical);
  device->Flags |= DO_BUFFERED_IO;
  device->Flags &= ~(ULONG)DO_DEVICE_INITIALIZING;
  return STATUS_SUCCESS;
}

static NTSTATUS create_private_device(DRIVER_OBJECT* driver) {
  UNICODE_STRING name = RTL_CONSTANT_STRING(L"\\Device\\DozewellLab");
  UNICODE_STRING link = RTL_CONSTANT_STRING(L"\\??\\DozewellLab");
  NTSTATUS status =
      IoCreateDevice(driver, 0, &name, FILE_DEVICE_UNKNOWN, 0, FALSE, &private_device);
  if (status) return status;
  private_device->Flags |= DO_BUFFERED_IO;
  private_device->Flags &= ~(ULONG)DO_DEVICE_INITIALIZING;
  return IoCreateSymbolicLink(&link, &name);
}

/* Cannot be unloaded: it stays until the machine is switched off. */
NTSTATUS NTAPI DriverEntry(DRIVER_OBJECT* driver, UNICODE_STRING* registry_path) {
  (void)registry_path;
  KeInitializeSpinLock(&state_lock);
  driver->MajorFunction[IRP_MJ_CREATE] = open_or_close;
  driver->MajorFunction[IRP_MJ_CLOSE] = open_or_close;
  driver->MajorFunction[IRP_MJ_DEVICE_CONTROL] = device_control;
  driver->MajorFunction[IRP_MJ_PNP] = plug_and_play;
  driver->DriverExtension->AddDevice = add_timer_device;
  return create_private_device(driver);
}
