// Construction of the core, the forwards to the host layer, the audio configuration and the
// attribute map.

#include "core/PluginCore.h"

#include <algorithm>

#include "core/AudioLock.h"
#include "core/CoreMessages.h"
#include "core/ErrorDisplay.h"
#include "core/PluginPlatform.h"
#include "core/ZORPluginMetaClass.h"
#include "framework/MessagingServer.h"
#include "framework/TimerManager.h"

namespace vorix {
namespace {

constexpr const char* kUserProgramPrefix = "User Config ";

const std::string& EmptyText() {
    static const std::string empty;
    return empty;
}

}  // namespace

PluginCore::PluginCore(PluginPlatform* platform, const ChannelConfig& config)
    : PluginCore(platform, config, std::make_unique<TimerManager>()) {}

PluginCore::PluginCore(PluginPlatform* platform, const ChannelConfig& config, TickSource clock)
    : PluginCore(platform, config, std::make_unique<TimerManager>(std::move(clock))) {}

PluginCore::PluginCore(PluginPlatform* platform, const ChannelConfig& config,
                       std::unique_ptr<TimerManager> timers)
    : PluginServices(std::move(timers), std::make_unique<MessagingServer>()),
      MessagePublisher(static_cast<PluginServices*>(this)),
      platform_(platform),
      channelConfig_(config) {
    const auto programCount = static_cast<std::size_t>(std::max(0, MetaClass().GetProgramCount()));
    programNames_.resize(programCount);
    programSettings_.resize(programCount);
    Publish(kConfigMsgClass);
    Publish(kClipMsgClass);
    productName_ = MetaClass().GetProductName();
    MetaClass().GetPreferencesName(preferencesName_);
    NameProgramsForProduct();
    LoadFactoryPrograms();
    ResetParameterRecords();
    const std::size_t channels = static_cast<std::size_t>(std::max(config.inputs, config.outputs));
    inputPieces_.resize(channels);
    outputPieces_.resize(channels);
    BuildAccumulateBuffers();
}

PluginCore::~PluginCore() = default;

void PluginCore::NameProgramsForProduct() {
    if (programNames_.size() == 1) {
        programNames_[0] = productName_;
        return;
    }
    for (std::size_t i = 0; i < programNames_.size(); ++i) {
        programNames_[i] = kUserProgramPrefix + std::to_string(i + 1);
    }
}

void PluginCore::LoadFactoryPrograms() {
    try {
        LoadProgramDocument(MetaClass().GetFactoryPrograms());
    } catch (const ProgramDocumentRefused&) {
        // The user has been told; the instance goes on with the programs named for the product.
    }
}

void PluginCore::ResetParameterRecords() {
    parameterCount_ = std::max(0, MetaClass().GetParameterCount());
    const auto count = static_cast<std::size_t>(parameterCount_);
    pendingSeen_ = 0;
    pendingCount_.store(0, std::memory_order_relaxed);
    pendingValues_ = std::make_unique<PendingValue[]>(count);
    lastReported_ = std::make_unique<std::atomic<float>[]>(count);
    for (std::size_t i = 0; i < count; ++i) {
        lastReported_[i].store(kUnknownValue, std::memory_order_relaxed);
    }
}

// Main thread, under an AudioLock or before audio runs: the audio call reads these buffers.
void PluginCore::BuildAccumulateBuffers() {
    const auto channels = static_cast<std::size_t>(std::max(0, channelConfig_.outputs));
    accumulateBuffers_.assign(channels, std::vector<float>(static_cast<std::size_t>(blockSize_)));
}

std::int32_t PluginCore::ProgramCount() const noexcept {
    return static_cast<std::int32_t>(programNames_.size());
}

// ---- Forwards to the host layer ----

std::string PluginCore::GetHostName() const {
    return platform_ != nullptr ? platform_->GetHostName() : std::string();
}

std::string PluginCore::GetPreferencesName() const {
    return preferencesName_;
}

void PluginCore::SetInitialDelay(std::int32_t samples) {
    if (platform_ != nullptr) platform_->SetInitialDelay(samples);
}

void PluginCore::SetTailDelay(std::int32_t samples) {
    if (platform_ != nullptr) platform_->SetTailDelay(samples);
}

void PluginCore::UnusedForward1() {
    if (platform_ != nullptr) platform_->UnusedHostCall1();
}

void PluginCore::UnusedForward2() {
    if (platform_ != nullptr) platform_->UnusedHostCall2();
}

std::int32_t PluginCore::GetInitialDelay() const {
    return platform_ != nullptr ? platform_->GetInitialDelay() : 0;
}

bool PluginCore::IsInputConnected(std::int32_t channel) const {
    return platform_ != nullptr && platform_->IsInputConnected(channel);
}

bool PluginCore::IsOutputConnected(std::int32_t channel) const {
    return platform_ != nullptr && platform_->IsOutputConnected(channel);
}

bool PluginCore::IsHostInitialized() const {
    return platform_ != nullptr && platform_->IsHostInitialized();
}

bool PluginCore::IsHostProcessing() const {
    return platform_ != nullptr && platform_->IsHostProcessing();
}

bool PluginCore::IsEditorOpen() const {
    return platform_ != nullptr && platform_->IsEditorOpen();
}

// ---- Programs by name ----

void PluginCore::SetProgramName(const char* name) {
    if (currentProgram_ < 0 || currentProgram_ >= ProgramCount()) return;
    programNames_[static_cast<std::size_t>(currentProgram_)] = name != nullptr ? name : "";
}

const std::string& PluginCore::GetProgramName(std::int32_t index) const {
    if (index < 0 || index >= ProgramCount()) return EmptyText();
    return programNames_[static_cast<std::size_t>(index)];
}

const std::string& PluginCore::GetCurrentProgramName() const {
    return GetProgramName(currentProgram_);
}

// ---- Audio configuration ----

void PluginCore::SetSampleRate(float rate) {
    const InternalChange internal(*this);
    WillChangeSampleRate(rate);
    sampleRate_ = rate;
    DidChangeSampleRate(rate);
    Send(kConfigMsgClass, kSampleRateChangedMsg, 0, 0, nullptr);
    DidChangeSampleRateAndNotified();
}

// The size is stored before any hook runs, unlike the sample rate: the hooks see the new size.
void PluginCore::SetBlockSize(std::int32_t size) {
    if (size < 1) VORIX_THROW(AppFrame::BadParameter);
    const InternalChange internal(*this);
    const AudioLock lock(*this);
    blockSize_ = size;
    DidChangeBlockSize(size);
    Send(kConfigMsgClass, kBlockSizeChangedMsg, 0, 0, nullptr);
    DidChangeBlockSizeAndNotified();
    BuildAccumulateBuffers();
}

void PluginCore::ResetClipIndicators() {
    Send(kClipMsgClass, kClipClearedMsg, 0, 0, nullptr);
}

// ---- Errors ----

void PluginCore::ShowErrorOnce(const char* first, const char* second, const char* third,
                               std::int32_t kind) noexcept {
    if (errorShown_) return;
    errorShown_ = true;
    ReportError(this, first, second, third, kind);
}

// ---- Attributes ----

std::string& PluginCore::GetAttribute(const std::string& key) {
    return attributes_[key];
}

void PluginCore::SetAttribute(const std::string& key, const std::string& value) {
    attributes_.insert_or_assign(key, value);
}

bool PluginCore::HasAttribute(const std::string& key) const {
    return attributes_.contains(key);
}

std::int32_t PluginCore::GetIntAttribute(const std::string& key) const {
    const auto found = attributes_.find(key);
    if (found == attributes_.end()) return 0;
    return ParseLineInteger(found->second);
}

std::int32_t PluginCore::GetIntAttribute(std::string_view line, std::string_view name) {
    return GetIntLineAttribute(line, name);
}

std::string PluginCore::FormatAttributes() const {
    return FormatAttributeLine(attributes_);
}

void PluginCore::ParseAttributes(std::string_view line) {
    ParseAttributeLine(line, attributes_);
}

}  // namespace vorix
