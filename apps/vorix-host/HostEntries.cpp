#include "vorix-host/HostEntries.h"

#include <map>
#include <type_traits>

#include "host/HostMessageHook.h"

namespace vorix {
namespace {

struct HostEntryState {
    RegisteredProcs registered;
    std::map<const IProcess*, ErrorMessageService*> routes;
    ErrorMessageService* unknown = nullptr;
};

HostEntryState& State() {
    static HostEntryState state;
    return state;
}

const char* TextOrEmpty(const char* text) {
    return text != nullptr ? text : "";
}

}  // namespace

RegisteredProcs TakeRegisteredProcs() noexcept {
    const RegisteredProcs taken = State().registered;
    State().registered = {};
    return taken;
}

void RouteMessages(const IProcess* process, ErrorMessageService* service) {
    if (service == nullptr) {
        State().routes.erase(process);
    } else {
        State().routes[process] = service;
    }
}

void RouteUnknownMessages(ErrorMessageService* service) noexcept {
    State().unknown = service;
}

}  // namespace vorix

// The file registers its open and close routines while the host loads it.
extern "C" void SetPlugInOpenAndCloseProcs(vorix::PlugInOpenProc open,
                                           vorix::PlugInCloseProc close) {
    vorix::State().registered = {open, close};
}

// An insert shows the user a message; it goes to the insert's log.
extern "C" void ShowPlugInMessage(vorix::IProcess* process, const char* first, const char* second,
                                  const char* third, std::int32_t kind) {
    auto& state = vorix::State();
    const auto route = state.routes.find(process);
    vorix::ErrorMessageService* service =
        route != state.routes.end() ? route->second : state.unknown;
    if (service == nullptr) service = &vorix::DefaultErrorMessageService();
    try {
        service->ShowError(vorix::TextOrEmpty(first), vorix::TextOrEmpty(second),
                           vorix::TextOrEmpty(third), kind);
    } catch (...) {
        // A message that cannot be shown is lost; the insert goes on.
    }
}

// The entries' types are the ones the files look up.
static_assert(
    std::is_same_v<decltype(&SetPlugInOpenAndCloseProcs), vorix::SetPlugInOpenAndCloseProcsProc>);
static_assert(std::is_same_v<decltype(&ShowPlugInMessage), vorix::ShowPlugInMessageProc>);
