"""What scenarios and played histories are written in: days, nights, states, and what is expected."""
