// `vorix programs` and `vorix show-program`: the factory programs by number and name, and the
// settings document the engine writes once it has loaded one.

#include <string>

#include "core/PluginCore.h"
#include "vorix/Arguments.h"
#include "vorix/Commands.h"
#include "vorix/EngineOptions.h"
#include "vorix/EngineSession.h"
#include "vorix/ProgramLookup.h"
#include "vorix/ToolErrors.h"

namespace vorix::cli {
namespace {

constexpr const char* kShowProgramPrefix = "vorix show-program: ";

constexpr OptionDefinition kShowProgramOptions[] = {kRateOption, kChannelsOption};

}  // namespace

int RunProgramsCommand(CommandWords words, ToolContext& context) {
    const ParsedArguments parsed = ParseArguments(words, {});
    if (!parsed.positionals.empty()) {
        throw UsageError("programs takes nothing more, and \"" + parsed.positionals[0] +
                         "\" is too much");
    }
    const ProgramCatalog catalog(context.product);
    for (std::size_t i = 0; i < catalog.Names().size(); ++i) {
        context.out << i << '\t' << catalog.Names()[i] << '\n';
    }
    return kExitSuccess;
}

int RunShowProgramCommand(CommandWords words, ToolContext& context) {
    const ParsedArguments parsed = ParseArguments(words, kShowProgramOptions);
    if (parsed.positionals.size() != 1) {
        throw UsageError("show-program needs one program, by number or name");
    }
    EngineSetup setup = ParseEngineFormat(parsed);
    setup.program = ProgramCatalog(context.product).Resolve(parsed.positionals[0]);
    EngineSession session(context.product, setup, context.err, kShowProgramPrefix);
    std::string document;
    session.Core().CaptureSettings(document);
    if (document.empty()) throw FailureAlreadyShown();  // the core has told why it wrote nothing
    context.out << document;
    return kExitSuccess;
}

}  // namespace vorix::cli
