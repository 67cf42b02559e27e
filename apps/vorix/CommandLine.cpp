#include "vorix/CommandLine.h"

#include <algorithm>
#include <memory>
#include <new>
#include <span>

#include "core/ZORPluginMetaClass.h"
#include "host/ZORVorixMetaClass.h"
#include "vorix/Commands.h"
#include "vorix/HelpTexts.h"
#include "vorix/Interrupt.h"
#include "vorix/ToolErrors.h"

namespace vorix::cli {
namespace {

struct Command {
    std::string_view name;
    int (*run)(CommandWords, ToolContext&);
};

constexpr Command kCommands[] = {
    {"render", RunRenderCommand},
    {"programs", RunProgramsCommand},
    {"show-program", RunShowProgramCommand},
    {"response", RunResponseCommand},
    {"demo", RunDemoCommand},
};

bool IsHelpWord(std::string_view word) {
    return word == "--help" || word == "-h" || word == "help";
}

// "--help" anywhere among the options asks for the command's help instead of running it.
bool AsksForHelp(CommandWords words) {
    for (const std::string& word : words) {
        if (word == "--") return false;
        if (word == "--help" || word == "-h") return true;
    }
    return false;
}

int Usage(std::ostream& err, std::string_view command, const std::string& sentence) {
    const std::string help =
        command.empty() ? "vorix --help" : "vorix " + std::string(command) + " --help";
    err << "vorix" << (command.empty() ? "" : " ") << command << ": " << sentence << "; see \""
        << help << "\".\n";
    return kExitUsage;
}

int Failure(std::ostream& err, std::string_view command, const std::string& sentence) {
    err << "vorix " << command << ": " << sentence << ".\n";
    return kExitFailure;
}

// Runs a command with the product's description held for its whole length; every error ends here.
int RunCommand(const Command& command, CommandWords words, std::ostream& out, std::ostream& err,
               bool errIsTerminal) {
    SetInterruptedCommand(command.name);
    try {
        SetMetaClassMaker([] { return std::make_unique<ZORVorixMetaClass>(); });
        MetaClassReference product;
        ToolContext context{*product, out, err, errIsTerminal};
        return command.run(words, context);
    } catch (const UsageError& e) {
        return Usage(err, command.name, e.what());
    } catch (const FailureAlreadyShown&) {
        return kExitFailure;
    } catch (const ToolFailure& e) {
        return Failure(err, command.name, e.what());
    } catch (const std::bad_alloc&) {
        return Failure(err, command.name, "there is not enough memory for this work");
    } catch (const std::exception& e) {
        return Failure(err, command.name,
                       std::string("an unexpected error stopped it: ") + e.what());
    } catch (...) {
        return Failure(err, command.name, "an unexpected error stopped it");
    }
}

}  // namespace

int RunVorix(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
             bool errIsTerminal) {
    if (args.empty()) return Usage(err, "", "a command is missing");
    const std::string& name = args[0];
    if (IsHelpWord(name)) {
        const std::string_view help = HelpFor(args.size() > 1 ? args[1] : "");
        if (help.empty()) return Usage(err, "", "there is no command \"" + args[1] + "\"");
        out << help;
        return kExitSuccess;
    }
    const auto* command = std::find_if(std::begin(kCommands), std::end(kCommands),
                                       [&](const Command& c) { return c.name == name; });
    if (command == std::end(kCommands))
        return Usage(err, "", "there is no command \"" + name + "\"");
    const CommandWords words(args.begin() + 1, args.end());
    if (AsksForHelp(words)) {
        out << HelpFor(command->name);
        return kExitSuccess;
    }
    return RunCommand(*command, words, out, err, errIsTerminal);
}

}  // namespace vorix::cli
