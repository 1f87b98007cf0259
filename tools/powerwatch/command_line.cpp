#include "powerwatch/command_line.h"

#include <exception>

namespace dozewell::powerwatch {
namespace {

constexpr char kUsage[] =
    "Writes down what Windows tells a service of sleep and power, and does nothing else.\n"
    "As administrator:\n"
    "  dozewell-powerwatch install   begins, now and at each start of Windows\n"
    "  dozewell-powerwatch remove    ends, and deletes the service, its folder and what it wrote\n";

int Try(const std::function<std::string()>& action, const Printers& printers) {
  try {
    printers.output(action());
    return 0;
  } catch (const std::exception& error) {
    printers.error(error.what());
    return 1;
  }
}

}  // namespace

int RunPowerwatch(const std::vector<std::string>& arguments, const Actions& actions,
                  const Printers& printers) {
  if (arguments.empty() && actions.serve() == 0) return 0;
  if (arguments.size() == 1 && arguments.front() == "install") {
    return Try(actions.install, printers);
  }
  if (arguments.size() == 1 && arguments.front() == "remove") return Try(actions.remove, printers);
  Try([] { return std::string(kUsage); }, printers);
  return 2;
}

}  // namespace dozewell::powerwatch
