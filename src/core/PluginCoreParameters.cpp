// Parameter traffic in both directions: host changes into the engine and, later, the editor;
// engine changes out to the host, with the host's echo dropped.

#include "core/PluginCore.h"
#include "core/PluginPlatform.h"
#include "core/ZORPluginMetaClass.h"
#include "framework/ScopeGuards.h"

namespace vorix {

void PluginCore::SetParameter(const ZORParameterInfo* info, float value) {
    if (info == nullptr) return;
    // The host answers a report with a control change of the same value: that echo stops here.
    const std::int32_t echo = echoParameter_.load(std::memory_order_relaxed);
    if (echo != kNoParameter && echo == info->id) return;
    const InternalChange internal(*this);
    if ((info->flags & kParamFlagEditorOnly) != 0 && !IsEditorOpen()) return;
    const bool known = info->index >= 0 && info->index < parameterCount_;
    if (ApplyParameter(info, value) && known) {
        pendingValues_[static_cast<std::size_t>(info->index)].latest.store(
            value, std::memory_order_relaxed);
        pendingCount_.fetch_add(1, std::memory_order_release);
    }
    // Whatever the engine reports next for this parameter must reach the host.
    if (known) {
        lastReported_[static_cast<std::size_t>(info->index)].store(kUnknownValue,
                                                                   std::memory_order_relaxed);
    }
}

void PluginCore::SetParameterByIndex(std::int32_t index, float value) {
    const ZORParameterInfo* info = MetaClass().GetParameterInfo(index);
    if (info != nullptr) SetParameter(info, value);
}

double PluginCore::GetParameterByIndex(std::int32_t index) {
    const ZORParameterInfo* info = MetaClass().GetParameterInfo(index);
    return info != nullptr ? GetParameter(info) : 0.0;
}

void PluginCore::DispatchPendingParameters() {
    const std::int32_t count = pendingCount_.load(std::memory_order_acquire);
    if (count == pendingSeen_) return;
    pendingSeen_ = count;
    for (std::int32_t index = 0; index < parameterCount_; ++index) {
        PendingValue& pending = pendingValues_[static_cast<std::size_t>(index)];
        const float latest = pending.latest.load(std::memory_order_relaxed);
        if (latest == pending.applied) continue;  // a NaN never equals, and always goes through
        {
            const InternalChange internal(*this);
            ApplyParameterToEditor(MetaClass().GetParameterInfo(index), latest);
        }
        pending.applied = latest;
    }
}

void PluginCore::ReportParameter(std::int32_t id, float value, bool force) {
    echoParameter_.store(id, std::memory_order_relaxed);
    const ScopeExit endOfReport(
        [this] { echoParameter_.store(kNoParameter, std::memory_order_relaxed); });
    const ZORParameterInfo* info = MetaClass().FindParameterInfo(id);
    // A parameter without a place in the table has nothing to tell the host by.
    if (info == nullptr || info->index < 0 || info->index >= parameterCount_) return;
    if (value < info->min) value = info->min;
    if (value > info->max) value = info->max;  // a NaN passes both tests unchanged
    const bool forced = forceReportDepth_.IsRaised();
    if (internalDepth_.IsRaised() && !forced) return;
    std::atomic<float>& reported = lastReported_[static_cast<std::size_t>(info->index)];
    if (!force && !forced && value == reported.load(std::memory_order_relaxed)) return;
    reported.store(value, std::memory_order_relaxed);
    if (platform_ != nullptr) platform_->ParameterChanged(info->index, value);
}

void PluginCore::SetForceReport(bool force) {
    if (force) {
        forceReportDepth_.Raise();
    } else {
        forceReportDepth_.Lower();
    }
}

void PluginCore::SuspendAudio(bool suspend) noexcept {
    if (suspend) {
        audioSuspendDepth_.Raise();
    } else {
        audioSuspendDepth_.Lower();
    }
}

}  // namespace vorix
