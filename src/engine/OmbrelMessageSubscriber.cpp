#include "engine/OmbrelMessageSubscriber.h"

#include "core/CoreMessages.h"
#include "engine/Ombrel.h"
#include "engine/OmbrelMessages.h"

namespace vorix {

namespace {

// Subscription keys of the two classes.
constexpr int32_t kFilterKey = 1;
constexpr int32_t kConfigKey = 2;

}  // namespace

OmbrelMessageSubscriber::OmbrelMessageSubscriber(Ombrel* engine)
    : MessageSubscriber(static_cast<PluginServices*>(engine)), engine_(engine) {
    Subscribe(engine->GetMsgClass(kFilterMsgClass), kFilterKey,
              &OmbrelMessageSubscriber::OnFilterMessage, false);
    Subscribe(engine->GetMsgClass(kConfigMsgClass), kConfigKey,
              &OmbrelMessageSubscriber::OnConfigMessage, false);
}

}  // namespace vorix
