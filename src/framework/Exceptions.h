#pragma once

namespace vorix::AppFrame {

// Root of the framework's failures. An exception carries no text: its class says what went wrong,
// and its construction notes where, in two process-wide words that a debugger or a crash report
// can read. No logic reads them back.
class Exception {
  public:
    // Any thread; allocates nothing, so it can be raised when memory is short.
    Exception(const char* file, int line) noexcept;
    Exception(const Exception&) noexcept = default;
    Exception& operator=(const Exception&) noexcept = default;
    virtual ~Exception();
};

// A framework call with an impossible argument.
class BadParameter : public Exception {
  public:
    using Exception::Exception;
};

// An id or key that must be unique is already taken.
class DuplicateEntry : public Exception {
  public:
    using Exception::Exception;
};

// A window-system resource could not be allocated.
class ResAlloc : public Exception {
  public:
    using Exception::Exception;
};

// Waiting for another thread took too long.
class TimeOut : public Exception {
  public:
    using Exception::Exception;
};

// The source file of the most recently constructed framework exception, or null. Any thread.
const char* LastExceptionFile() noexcept;

// The source line of the most recently constructed framework exception, or 0. Any thread.
int LastExceptionLine() noexcept;

}  // namespace vorix::AppFrame

// Raises a framework exception stamped with the place of the throw.
#define VORIX_THROW(ExceptionClass) throw ExceptionClass(__FILE__, __LINE__)
