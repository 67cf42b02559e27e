#include "vorix-host/HostCommands.h"

#include <exception>
#include <new>

#include "vorix-host/ArgumentList.h"
#include "vorix-host/FourCharacterIds.h"
#include "vorix-host/HelpTexts.h"
#include "vorix-host/HostError.h"
#include "vorix-host/InsertCommands.h"
#include "vorix-host/PlugInModule.h"

namespace vorix {
namespace {

void RunTypes(ArgumentList& args, PlugInModule& module, std::ostream& out) {
    if (!args.TakePositionals().empty()) throw UsageError("The command types takes no arguments.");
    for (const EffectTypeInfo& type : module.EffectTypes()) {
        out << IdText(type.id) << '\t' << type.FirstName() << '\t' << type.pageTables << '\n';
    }
}

int Run(const std::vector<std::string>& words, std::ostream& out, std::ostream& err,
        const std::string& defaultModule) {
    ArgumentList args(words);
    const std::string modulePath = args.TakeOption("--module").value_or(defaultModule);
    const bool help = args.TakeFlag("--help") || args.TakeFlag("-h");
    const std::string command = args.TakeCommand().value_or("");
    if (HelpFor(command) == nullptr) throw UsageError("There is no command " + command + ".");
    if (help) {
        out << HelpFor(command);
        return kExitSuccess;
    }
    if (command.empty()) throw UsageError("Give a command: types, controls or render.");
    PlugInModule module(modulePath);
    module.Open();
    if (command == "types") RunTypes(args, module, out);
    if (command == "controls") RunControls(args, module, out, err);
    if (command == "render") RunRender(args, module, out, err);
    return kExitSuccess;
}

}  // namespace

int RunHostCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
                   const std::string& defaultModule) {
    try {
        return Run(args, out, err, defaultModule);
    } catch (const UsageError& error) {
        err << error.what() << " See vorix-host --help.\n";
        return kExitUsage;
    } catch (const HostError& error) {
        err << error.what() << '\n';
    } catch (const std::bad_alloc&) {
        err << "The host ran out of memory.\n";
    } catch (const std::exception& error) {
        err << "The host failed: " << error.what() << ".\n";
    }
    return kExitFailure;
}

}  // namespace vorix
