"""What scenarios are written in: days, nights, states, expectations, played histories."""
