#ifndef DOZEWELL_BASE_EXCEPTION_H_
#define DOZEWELL_BASE_EXCEPTION_H_

#include <exception>

namespace dozewell {

// What the engine throws: a std::exception whose message is one fixed text. The text must outlive
// the exception (string literals do).
class FixedTextException : public std::exception {
 public:
  explicit FixedTextException(const char* text) noexcept : text_(text) {}
  const char* what() const noexcept override { return text_; }

 private:
  const char* text_;
};

}  // namespace dozewell

#endif  // DOZEWELL_BASE_EXCEPTION_H_
