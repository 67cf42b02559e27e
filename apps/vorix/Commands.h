#pragma once

#include <span>
#include <string>

#include "vorix/CommandLine.h"

namespace vorix::cli {

// The tool's commands. Each takes the words after its name, throws UsageError for a wrong command
// line and ToolFailure when it cannot do its work, and returns the exit status otherwise. Main
// thread.
using CommandWords = std::span<const std::string>;

int RunRenderCommand(CommandWords words, ToolContext& context);
int RunProgramsCommand(CommandWords words, ToolContext& context);
int RunShowProgramCommand(CommandWords words, ToolContext& context);
int RunResponseCommand(CommandWords words, ToolContext& context);
int RunDemoCommand(CommandWords words, ToolContext& context);

}  // namespace vorix::cli
