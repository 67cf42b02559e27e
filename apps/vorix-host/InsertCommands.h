#pragma once

#include <cstdint>
#include <ostream>
#include <string>

#include "vorix-host/ArgumentList.h"
#include "vorix-host/PlugInModule.h"

namespace vorix {

// The sample rate of an insert made without audio to set it.
inline constexpr std::int32_t kDefaultSampleRate = 48000;

// The command line's effect type id and sample rate; UsageError for anything else.
std::int32_t ParseTypeId(const std::string& text);
std::int32_t ParseSampleRate(const std::string& text);

// The commands that make an insert, with their arguments (the words after the command's name):
// see their help texts. Results go to `out`, the insert's messages to `err`; failures are
// HostError. Main thread.
void RunControls(ArgumentList& args, PlugInModule& module, std::ostream& out, std::ostream& err);
void RunRender(ArgumentList& args, PlugInModule& module, std::ostream& out, std::ostream& err);

}  // namespace vorix
