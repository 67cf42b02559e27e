#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "vorix/CommandLine.h"
#include "vorix/EngineSession.h"
#include "vorix/ParameterSettings.h"

namespace vorix::cli {

// One audio file through the plug-in, as `vorix render` gives it.
struct RenderJob {
    std::string inputPath;
    std::string outputPath;
    std::optional<std::int32_t> program;  // a factory program, resolved
    std::string settingsPath;             // a settings file instead
    std::vector<ParameterSetting> parameters;
    std::int32_t blockSize = kDefaultBlockSize;
    bool asFloat = false;
    bool quiet = false;
};

// What a finished render measured.
struct RenderReport {
    std::int64_t frames = 0;
    double sampleRate = 0.0;
    double seconds = 0.0;  // wall-clock time of the whole render
};

// Renders the input file into the output file: the file's rate and channels (1 or 2), the core
// made and set up as a host does, the audio in blocks of the job's size in mode 0, the output in
// the input's format (or 32-bit float). The output appears only when complete. Each render
// starts the process-wide guard noise where a fresh process starts it, so that the same job
// gives the same bits alone or after others. Throws UsageError and ToolFailure as the commands
// do. Main thread.
RenderReport RenderFile(const RenderJob& job, ToolContext& context, const std::string& prefix);

}  // namespace vorix::cli
