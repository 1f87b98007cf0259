"""The machine that the lab tests on, as the test's side sees and moves it."""
