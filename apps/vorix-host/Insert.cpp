#include "vorix-host/Insert.h"

#include <array>
#include <charconv>
#include <climits>
#include <memory>

#include "hostlib/LibraryErrors.h"
#include "vorix-host/FourCharacterIds.h"
#include "vorix-host/HostEntries.h"
#include "vorix-host/HostError.h"

namespace vorix {
namespace {

// Room for any text a control or meter shows, terminator included.
constexpr std::int32_t kTextCapacity = 64;

template <typename Call>
std::string ReadText(Call&& call) {
    std::array<char, kTextCapacity> buffer{};
    call(buffer.data(), kTextCapacity);
    return buffer.data();
}

}  // namespace

Insert::Insert(IProcessType& type, const InsertSetup& setup)
    : messages_(setup.messageEcho),
      echoReports_(setup.echoReports),
      typeId_(type.GetTypeID()),
      sampleRate_(setup.sampleRate),
      process_(MakeProcess(type, ProcessSetup{setup.sampleRate, true, this}, messages_)) {
    process_.GetChannelCounts(inputs_, outputs_);
    RouteMessages(&process_, &messages_);
}

IProcess& Insert::MakeProcess(IProcessType& type, const ProcessSetup& setup, MessageLog& log) {
    // What the process shows while it is made comes here, before it can be routed by name.
    RouteUnknownMessages(&log);
    IProcess* process = nullptr;
    const std::int32_t result = type.NewProcess(setup, process);
    RouteUnknownMessages(nullptr);
    if (result != kNoErr || process == nullptr) {
        throw HostError("The plug-in could not make a " + IdText(type.GetTypeID()) +
                        " insert: error " + std::to_string(result) + ".");
    }
    return *process;
}

Insert::~Insert() {
    RouteMessages(&process_, nullptr);
    process_.Release();
}

void Insert::Check(std::int32_t result, const std::string& what) const {
    if (result < 0) {
        throw HostError("The insert refused " + what + ": error " + std::to_string(result) + ".");
    }
}

// ---- controls ----

std::int32_t Insert::FindControl(std::string_view numberOrId) const {
    std::int32_t number = 0;
    const auto* end = numberOrId.data() + numberOrId.size();
    if (const auto [last, error] = std::from_chars(numberOrId.data(), end, number);
        error == std::errc() && last == end) {
        if (number >= 1 && number <= CountControls()) return number;
    } else if (const auto id = ParseId(numberOrId)) {
        if (const std::int32_t found = process_.FindControl(*id); found != 0) return found;
    }
    throw UsageError("The insert has no control " + std::string(numberOrId) +
                     "; give a number from 1 to " + std::to_string(CountControls()) +
                     " or a four-character id.");
}

ControlInfo Insert::DescribeControl(std::int32_t control) const {
    ControlDescription description;
    Check(process_.DescribeControl(control, description),
          "to describe control " + std::to_string(control));
    ControlInfo info;
    info.number = control;
    info.id = description.id;
    info.continuous = description.continuous;
    info.automatable = description.automatable;
    info.steps = description.numSteps;
    info.defaultValue = description.defaultValue;
    info.value = ReadControl(control);
    info.name = ReadText([&](char* buffer, std::int32_t size) {
        Check(process_.ControlName(control, buffer, size), "to name a control");
    });
    info.minimumText = ControlText(control, INT32_MIN);
    info.maximumText = ControlText(control, INT32_MAX);
    info.valueText = ControlText(control, info.value);
    return info;
}

std::int32_t Insert::ReadControl(std::int32_t control) const {
    std::int32_t value = 0;
    Check(process_.ReadControlValue(control, value), "to read control " + std::to_string(control));
    return value;
}

std::string Insert::ControlText(std::int32_t control, std::int32_t value) const {
    return ReadText([&](char* buffer, std::int32_t size) {
        Check(process_.ControlValueText(control, value, buffer, size),
              "to show a value of control " + std::to_string(control));
    });
}

std::int32_t Insert::ControlTextValue(std::int32_t control, std::string_view text) const {
    const std::string terminated(text);
    std::int32_t value = 0;
    const std::int32_t result = process_.ControlTextValue(control, terminated.c_str(), value);
    if (result == kErrBadText) {
        throw UsageError("Control " + std::to_string(control) + " reads no value in \"" +
                         terminated + "\".");
    }
    Check(result, "to read a value of control " + std::to_string(control));
    return value;
}

void Insert::WriteControl(std::int32_t control, std::int32_t value) {
    Check(process_.WriteControlValue(control, value),
          "a change of control " + std::to_string(control));
}

void Insert::ControlValueChanged(IProcess& process, std::int32_t control,
                                 std::int32_t value) noexcept {
    try {
        reports_.push_back({control, value});
    } catch (...) {
        // A report the host has no room for goes unrecorded, as a full automation lane would.
    }
    if (echoReports_) process.WriteControlValue(control, value);
}

void Insert::ControlTouched(IProcess& /*process*/, std::int32_t /*control*/) noexcept {}

void Insert::ControlReleased(IProcess& /*process*/, std::int32_t /*control*/) noexcept {}

// ---- audio ----

void Insert::StartProcessing() {
    Check(process_.StartProcessing(), "to start processing");
}

void Insert::StopProcessing() {
    Check(process_.StopProcessing(), "to stop processing");
}

std::int32_t Insert::Render(std::span<float* const> inputs, std::span<float* const> outputs,
                            std::int32_t frames, bool bypass, float* sideChain) noexcept {
    RenderBlock block;
    block.inputs = inputs.data();
    block.inputCount = static_cast<std::int32_t>(inputs.size());
    block.outputs = outputs.data();
    block.outputCount = static_cast<std::int32_t>(outputs.size());
    block.sideChain = sideChain;
    block.frames = frames;
    block.bypass = bypass;
    return process_.GetRenderInterface().Render(block);
}

// ---- what the host reads back ----

std::int32_t Insert::ReadLatency() {
    std::int32_t samples = 0;
    Check(process_.ReadLatency(samples), "to tell its latency");
    return samples;
}

std::vector<MeterReading> Insert::ReadMeters() {
    const std::int32_t count = process_.CountMeters();
    std::vector<std::int32_t> values(static_cast<std::size_t>(count));
    std::unique_ptr<bool[]> clipped(new bool[static_cast<std::size_t>(count)]());
    Check(process_.ReadMeters(values.data(), clipped.get(), count), "to read its meters");
    std::vector<MeterReading> readings;
    for (std::int32_t meter = 0; meter < count; ++meter) {
        const std::string name = ReadText([&](char* buffer, std::int32_t size) {
            Check(process_.MeterName(meter, buffer, size), "to name a meter");
        });
        readings.push_back({name, values[static_cast<std::size_t>(meter)],
                            clipped[static_cast<std::size_t>(meter)]});
    }
    return readings;
}

void Insert::ClearClipIndicators() {
    Check(process_.ClearClipIndicators(), "to clear its clip indicators");
}

// ---- chunks ----

std::vector<SavedChunk> Insert::SaveChunks() {
    std::vector<SavedChunk> chunks;
    for (std::int32_t position = 0; position < process_.CountChunks(); ++position) {
        SavedChunk chunk;
        Check(process_.ChunkIdAt(position, chunk.id), "to list its chunks");
        const std::string what = "to save its chunk " + IdText(chunk.id);
        std::int32_t size = 0;
        Check(process_.MeasureChunk(chunk.id, size), what);
        // The plug-in makes the chunk again; it may have grown since it was measured.
        for (std::int32_t written = 0;; size = written) {
            chunk.bytes.resize(static_cast<std::size_t>(size));
            const std::int32_t result =
                process_.SaveChunk(chunk.id, chunk.bytes.data(), size, written);
            if (result == kErrBufferTooSmall && written > size) continue;
            Check(result, what);
            chunk.bytes.resize(static_cast<std::size_t>(written));
            break;
        }
        chunks.push_back(std::move(chunk));
    }
    return chunks;
}

std::int32_t Insert::LoadChunk(const SavedChunk& chunk) {
    return process_.LoadChunk(chunk.id, chunk.bytes.data(),
                              static_cast<std::int32_t>(chunk.bytes.size()));
}

void Insert::RestoreChunks(const std::vector<SavedChunk>& chunks) {
    const std::size_t messagesBefore = Messages().size();
    for (const SavedChunk& chunk : chunks) {
        Check(LoadChunk(chunk), "its saved chunk " + IdText(chunk.id));
        if (Messages().size() != messagesBefore) {
            throw HostError("The insert could not read its saved chunk " + IdText(chunk.id) + ".");
        }
    }
}

}  // namespace vorix
