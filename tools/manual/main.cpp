#include <fstream>
#include <iostream>
#include <string>

#include "ctl/command_line.h"
#include "manual/documents.h"
#include "replay/command_line.h"

// Writes the manual pages and completions of both tools into a folder, which exists:
// dozewell-manual FOLDER DATE

namespace {

void Write(const std::string& path, const std::string& text) {
  std::ofstream file(path, std::ios::binary);
  if (!(file << text).flush()) throw std::ios_base::failure(path);
}

void WriteAllOf(const dozewell::ProgramSyntax& syntax, const std::string& folder,
                const std::string& date, const std::string& related) {
  const std::string path = folder + "/" + syntax.name;
  Write(path + ".1", dozewell::manual::ManPage(syntax, date, related));
  Write(path + ".bash", dozewell::manual::BashCompletion(syntax));
  Write(path + ".completion.ps1", dozewell::manual::PowerShellCompletion(syntax));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "Usage: dozewell-manual FOLDER DATE\n";
    return 2;
  }
  try {
    dozewell::replay::Options replayOptions;
    dozewell::ctl::Options ctlOptions;
    WriteAllOf(dozewell::replay::Syntax(replayOptions), argv[1], argv[2],
               dozewell::ctl::kProgramName);
    WriteAllOf(dozewell::ctl::Syntax(ctlOptions), argv[1], argv[2], dozewell::replay::kProgramName);
  } catch (const std::exception& error) {
    std::cerr << "dozewell-manual: " << error.what() << "\n";
    return 1;
  }
  return 0;
}
