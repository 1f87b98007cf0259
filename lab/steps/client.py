"""Runs of dozewellctl, whose words are expected exactly."""

from steps.expect import expect

DONE, NOT_DONE, MISUSED, NOT_REACHABLE, NOTHING_LEARNT = range(5)

NO_DRIVER = "the service has no driver device, or the driver does not answer"
NO_RESULT = "the optimizer has stored nothing for strength {} yet"
NO_CONTROLLER = ("the history was not reset, since the controller does not run; "
                 "dozewellctl status shows why")


def done(machine, command, output, warning=None):
    """Expects that a command succeeds with this output, and with a warning if there is one. What
    the service did meanwhile."""
    answer = machine.client.run(command)
    error = f"dozewellctl: warning: {warning}\n" if warning else ""
    expect((answer.exit_code, answer.output, answer.error), (DONE, output, error),
           f"exit code, output and error of {command}")
    return answer.step


def failed(machine, command, why, code=NOT_DONE):
    """Expects that a command fails and says why in one line. What the service did meanwhile."""
    answer = machine.client.run(command)
    expect((answer.exit_code, answer.output, answer.error), (code, "", f"dozewellctl: {why}\n"),
           f"exit code, output and error of {command}")
    return answer.step
