#pragma once

#include <cstdint>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hostlib/GroupInterfaces.h"
#include "vorix-host/MessageLog.h"

namespace vorix {

// A control as the host shows it.
struct ControlInfo {
    std::int32_t number = 0;
    std::int32_t id = 0;
    std::string name;  // the longest of its names
    bool continuous = false;
    bool automatable = false;
    std::int32_t steps = 0;
    std::int32_t defaultValue = 0;
    std::int32_t value = 0;
    // The texts of the bottom and top of its range and of its present value.
    std::string minimumText;
    std::string maximumText;
    std::string valueText;
};

// A control change the plug-in made itself, which a host records as automation.
struct ControlReport {
    std::int32_t control = 0;
    std::int32_t value = 0;
    friend bool operator==(const ControlReport&, const ControlReport&) = default;
};

// One meter reading: 0 to 2^31, or -1 with the clip mark.
struct MeterReading {
    std::string name;
    std::int32_t value = 0;
    bool clipped = false;
};

// A chunk as the host keeps it with the insert: the whole chunk, 56-byte header first.
struct SavedChunk {
    std::int32_t id = 0;
    std::vector<std::uint8_t> bytes;
    friend bool operator==(const SavedChunk&, const SavedChunk&) = default;
};

// How the host connects an insert.
struct InsertSetup {
    std::int32_t sampleRate = 48000;
    // Like a host writing automation, answer each control change the plug-in reports with the
    // same change of the host's own.
    bool echoReports = true;
    // Where the insert's messages are printed besides being kept; null keeps them only.
    std::ostream* messageEcho = nullptr;
};

// One insert of a plug-in: a process made by an effect type, driven through the host protocol
// only. It hears the plug-in's control reports and messages. The module must outlive it. Main
// thread, apart from Render.
class Insert final : private IHostCallbacks {
  public:
    // Main thread. Makes, connects and initialises a process of `type`; throws HostError when the
    // plug-in refuses.
    Insert(IProcessType& type, const InsertSetup& setup);
    // Main thread, after the last render: releases the process.
    ~Insert();
    Insert(const Insert&) = delete;
    Insert& operator=(const Insert&) = delete;

    // Main thread. The process itself, for what the host library does not wrap.
    IProcess& Process() noexcept { return process_; }
    std::int32_t TypeId() const noexcept { return typeId_; }
    std::int32_t SampleRate() const noexcept { return sampleRate_; }
    std::int32_t Inputs() const noexcept { return inputs_; }
    std::int32_t Outputs() const noexcept { return outputs_; }

    // ---- controls, numbered from 1; each throws HostError for a number without control ----
    std::int32_t CountControls() const noexcept { return process_.CountControls(); }
    // Main thread. The control a user names by its number or its four-character id; throws
    // UsageError, the user's mistake, for a name without control.
    std::int32_t FindControl(std::string_view numberOrId) const;
    ControlInfo DescribeControl(std::int32_t control) const;
    std::int32_t ReadControl(std::int32_t control) const;
    std::string ControlText(std::int32_t control, std::int32_t value) const;
    // Main thread. The value a typed text stands for; throws UsageError when it stands for none.
    std::int32_t ControlTextValue(std::int32_t control, std::string_view text) const;
    // Main thread: a host control change, as automation or a control surface makes it.
    void WriteControl(std::int32_t control, std::int32_t value);

    // Main thread. The plug-in's own control changes so far, oldest first.
    const std::vector<ControlReport>& Reports() const noexcept { return reports_; }
    void ClearReports() noexcept { reports_.clear(); }
    // Main thread. The messages the insert showed the user, oldest first.
    const std::vector<RecordedError>& Messages() const noexcept { return messages_.Messages(); }

    // ---- audio ----
    // Main thread, around a run of Render calls.
    void StartProcessing();
    void StopProcessing();
    // Audio thread: one block of `frames` samples; a null buffer is an unconnected channel.
    // Answers the frames rendered or a negative library error; never allocates or throws.
    std::int32_t Render(std::span<float* const> inputs, std::span<float* const> outputs,
                        std::int32_t frames, bool bypass = false,
                        float* sideChain = nullptr) noexcept;

    // ---- what the host reads back ----
    std::int32_t ReadLatency();
    std::vector<MeterReading> ReadMeters();
    bool IsClipIndicatorSet() const noexcept { return process_.IsClipIndicatorSet(); }
    void ClearClipIndicators();

    // ---- chunks ----
    // Main thread. Every chunk of the insert, in the order a host saves them; throws HostError
    // when the plug-in cannot make one.
    std::vector<SavedChunk> SaveChunks();
    // Main thread. Hands one saved chunk back; answers the library's result.
    std::int32_t LoadChunk(const SavedChunk& chunk);
    // Main thread. Hands saved chunks back in their order; throws HostError at the first one
    // the plug-in refuses, or when the plug-in showed a message while it read them.
    void RestoreChunks(const std::vector<SavedChunk>& chunks);

  private:
    void ControlValueChanged(IProcess& process, std::int32_t control,
                             std::int32_t value) noexcept override;
    // Touch and release frame an edit in the plug-in's editor; this host records every report
    // as it comes, so it needs neither.
    void ControlTouched(IProcess& process, std::int32_t control) noexcept override;
    void ControlReleased(IProcess& process, std::int32_t control) noexcept override;

    static IProcess& MakeProcess(IProcessType& type, const ProcessSetup& setup, MessageLog& log);
    void Check(std::int32_t result, const std::string& what) const;

    MessageLog messages_;
    bool echoReports_;
    std::int32_t typeId_;
    std::int32_t sampleRate_;
    std::int32_t inputs_ = 0;
    std::int32_t outputs_ = 0;
    std::vector<ControlReport> reports_;
    IProcess& process_;
};

}  // namespace vorix
