#pragma once

#include <cstddef>

namespace vorix {

// The built-in programs as one program document: a header comment, then for each program a
// `<program number="N" name="NAME">` line, its filter settings document and a `</program>` line.
// The text is FactoryPrograms.vrx of the source tree, embedded by the build; it is zero-terminated
// and holds no carriage return. Any thread; the text is constant for the life of the process.
const char* FactoryProgramsDocument();

// The length of that text in bytes, without the terminating zero. Any thread.
std::size_t FactoryProgramsDocumentLength();

}  // namespace vorix
