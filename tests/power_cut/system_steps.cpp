#include "power_cut/system_steps.h"

namespace dozewell::power_cut {
namespace {

bool counting = false;
Trouble trouble = Trouble::None;
int wanted = 0;
int made = 0;

}  // namespace

void BeginSteps(Trouble newTrouble, int wantedCall) {
  trouble = newTrouble;
  wanted = wantedCall;
  made = 0;
  counting = true;
}

int EndSteps() {
  counting = false;
  return made;
}

Turn NextTurn(bool reads) {
  if (!counting) return Turn::Go;
  ++made;
  switch (trouble) {
    case Trouble::None:
      return Turn::Go;
    case Trouble::End:
      return made == wanted ? Turn::End : Turn::Go;
    case Trouble::Fail:
      return made == wanted ? Turn::Fail : Turn::Go;
    case Trouble::ReadsFail:
      return reads && made >= wanted ? Turn::Fail : Turn::Go;
  }
  return Turn::Go;
}

}  // namespace dozewell::power_cut
