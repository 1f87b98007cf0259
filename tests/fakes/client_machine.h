#ifndef DOZEWELL_TESTS_FAKES_CLIENT_MACHINE_H_
#define DOZEWELL_TESTS_FAKES_CLIENT_MACHINE_H_

#include <string>
#include <vector>

#include "support/temp_folder.h"

namespace dozewell::fakes {

// A machine on which the client finds what the fakes hold, all good at first: the service runs, and
// its settings and data folder are empty. UTC is its local time.
class ClientMachine {
 public:
  ClientMachine();
  ~ClientMachine();
  ClientMachine(const ClientMachine&) = delete;
  ClientMachine& operator=(const ClientMachine&) = delete;

  // Lays down settings: a day of half hours, and a start gate that is open.
  static void Provision();

  // What is, or is to be, the service's data folder.
  const TempFolder& Folder() const { return folder_; }

  bool answer = false;  // to every question

 private:
  TempFolder folder_;
};

// What a run of the client said.
struct ClientRun {
  int exitCode;
  std::string output;
  std::vector<std::string> messages;
  std::vector<std::string> questions;
};

ClientRun Ctl(const ClientMachine& machine, const std::vector<std::string>& arguments);

// Checks that a run does nothing but print this, or fails with this and prints nothing.
void Works(const ClientMachine& machine, const std::vector<std::string>& arguments,
           const std::string& output);
void Fails(const ClientMachine& machine, const std::vector<std::string>& arguments, int exitCode,
           const std::string& message);

}  // namespace dozewell::fakes

#endif  // DOZEWELL_TESTS_FAKES_CLIENT_MACHINE_H_
