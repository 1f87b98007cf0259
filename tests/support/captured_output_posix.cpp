#include <unistd.h>

#include <cstdio>

#include "base/file.h"
#include "support/captured_output.h"
#include "support/temp_folder.h"

namespace dozewell {
namespace {

// Redirects standard output into a file for its lifetime.
class Redirection {
 public:
  explicit Redirection(std::FILE* file) {
    std::fflush(stdout);
    dup2(fileno(file), output_);
  }
  ~Redirection() {
    std::fflush(stdout);
    dup2(kept_, output_);
    close(kept_);
  }
  Redirection(const Redirection&) = delete;
  Redirection& operator=(const Redirection&) = delete;

 private:
  const int output_ = fileno(stdout);
  const int kept_ = dup(output_);
};

}  // namespace

std::string OutputOf(const std::function<void()>& run) {
  const TempFolder folder;
  const File file = OpenFile(folder.File(L"output.txt"), "w+");
  {
    const Redirection redirection(file.get());
    run();
  }
  std::string text;
  std::rewind(file.get());
  for (int byte = std::fgetc(file.get()); byte != EOF; byte = std::fgetc(file.get())) {
    text += static_cast<char>(byte);
  }
  return text;
}

}  // namespace dozewell
