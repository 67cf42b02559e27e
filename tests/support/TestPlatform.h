#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "core/PluginCore.h"
#include "core/PluginPlatform.h"
#include "core/RecordingErrorMessageService.h"

namespace vorix::test {

// A host that keeps what the core tells it instead of showing it: reports and messages, with a
// host's echo of a report on request. The tests' host, and the fuzz targets' too (they clear it
// after every input).
class TestPlatform : public PluginPlatform {
  public:
    std::string GetHostName() const override { return "Test Host"; }
    std::int32_t GetInitialDelay() const override { return 0; }
    float GetSampleRate() const override { return 48000.0f; }
    std::int32_t GetBlockSize() const override { return 512; }
    void SetInitialDelay(std::int32_t) override {}
    void SetTailDelay(std::int32_t) override {}
    bool IsInputConnected(std::int32_t) const override { return true; }
    bool IsOutputConnected(std::int32_t) const override { return true; }
    std::int32_t GetOutputCount() const override { return 2; }
    std::int32_t GetInputCount() const override { return 2; }
    bool IsHostInitialized() const override { return true; }
    bool IsEditorOpen() const override { return editorOpen; }
    bool IsHostProcessing() const override { return false; }
    void ParameterChanged(std::int32_t index, float value) override {
        reports.emplace_back(index, value);
        if (echoTo != nullptr) echoTo->SetParameterByIndex(index, value);
    }
    ErrorMessageService* GetErrorMessageService() const override {
        return silent ? nullptr : &messages;
    }

    std::vector<std::pair<std::int32_t, float>> reports;
    PluginCore* echoTo = nullptr;
    bool editorOpen = false;
    bool silent = false;  // names no message service of its own
    mutable RecordingErrorMessageService messages;
};

}  // namespace vorix::test
