#pragma once

#include <stdexcept>
#include <string>

namespace vorix {

// A failure of the reference host's work, told in one sentence for the user: a file that does
// not load, an insert that cannot be made, a damaged session.
class HostError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// A command line the host cannot follow; also one sentence.
class UsageError : public HostError {
  public:
    using HostError::HostError;
};

}  // namespace vorix
