#pragma once

#include <stdexcept>
#include <string>

namespace vorix::cli {

// The command line was wrong: a missing or unknown argument, a value out of range. The text is one
// plain sentence for the user; the tool exits with status 1.
class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// The command was right but could not be carried out: a file that cannot be read or written, a
// settings file the engine refused. One plain sentence; the tool exits with status 2.
class ToolFailure : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// A failure whose message the plug-in core has already shown through the tool's message service;
// the tool adds nothing and exits with status 2.
class FailureAlreadyShown : public ToolFailure {
  public:
    FailureAlreadyShown() : ToolFailure(std::string()) {}
};

// The system's words for an error number, as the middle of a sentence: "no such file or
// directory". Any thread.
std::string SystemReason(int errorNumber);

}  // namespace vorix::cli
