#ifndef DOZEWELL_TESTS_FAKES_CLIENT_MACHINE_H_
#define DOZEWELL_TESTS_FAKES_CLIENT_MACHINE_H_

#include <string>
#include <vector>

#include "prediction/time_line.h"
#include "support/temp_folder.h"

namespace dozewell::fakes {

// A machine made of fakes for the client. At first the service runs, and its settings and data
// folder are empty. Local time is UTC.
class ClientMachine {
 public:
  ClientMachine();
  ~ClientMachine();
  ClientMachine(const ClientMachine&) = delete;
  ClientMachine& operator=(const ClientMachine&) = delete;

  // Lays down settings: a day of half hours, and a start gate that is open.
  static void Provision();
  // Saves a data file of a service with these settings that has learnt these events.
  static void SaveLearnt(const std::vector<TimeLineEvent>& events);

  // The folder that the service's data folder is set to at first.
  const TempFolder& Folder() const { return folder_; }

  bool answer = false;     // to every question
  bool isTerminal = true;  // where the client runs

 private:
  TempFolder folder_;
};

// What one run of the client printed, reported and asked.
struct ClientRun {
  int exitCode;
  std::string output;    // without the machine's identity
  std::string identity;  // that of the last document with one, as JSON
  std::vector<std::string> messages;
  std::vector<std::string> questions;
};

ClientRun Ctl(const ClientMachine& machine, const std::vector<std::string>& arguments);

// Check that a run prints exactly this and nothing else, or that it fails with this message and
// prints nothing.
void Works(const ClientMachine& machine, const std::vector<std::string>& arguments,
           const std::string& output);
void Fails(const ClientMachine& machine, const std::vector<std::string>& arguments, int exitCode,
           const std::string& message);

}  // namespace dozewell::fakes

#endif  // DOZEWELL_TESTS_FAKES_CLIENT_MACHINE_H_
