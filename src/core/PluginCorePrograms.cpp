// The program list: the program document, program switches and the host's settings chunks.

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <sstream>

#include "core/ErrorDisplay.h"
#include "core/PluginCore.h"
#include "core/ProgramDocumentReader.h"
#include "core/SettingsTexts.h"
#include "core/ZORPluginMetaClass.h"

namespace vorix {
namespace {

// The program number of a program line; a negative number counts as its absolute value.
std::int64_t ProgramNumber(const std::string& line) {
    return std::llabs(
        static_cast<std::int64_t>(GetIntLineAttribute(line, kProgramNumberAttribute)));
}

bool Contains(std::string_view text, const char* piece) {
    return text.find(piece) != std::string_view::npos;
}

}  // namespace

bool PluginCore::HasProgramBank() const {
    return MetaClass().HasProgramBank();
}

// The stored text of the settings program when the product keeps one per program; otherwise
// `local`, so that the current settings live in the engine alone.
std::string* PluginCore::SettingsTarget(std::string& local) {
    const std::int32_t program = GetSettingsProgram();
    if (!HasProgramBank() || program < 0 || program >= ProgramCount()) return &local;
    return &programSettings_[static_cast<std::size_t>(program)];
}

void PluginCore::CaptureDefaultSettings() {
    if (!defaultSettings_.empty()) return;
    CaptureSettings(defaultSettings_);
    if (!programSettings_.empty()) programSettings_[0] = defaultSettings_;
}

void PluginCore::LoadProgramDocument(const char* text) {
    if (text == nullptr || *text == '\0') return;
    // The document is read into copies and taken over only when all of it has been read: a
    // refused document leaves the program list as it was.
    std::vector<std::string> names = programNames_;
    std::vector<std::string> settings = programSettings_;
    LoadDocumentInto(text, names, settings);
    programNames_ = std::move(names);
    programSettings_ = std::move(settings);
    if (!programSettings_.empty() && !programSettings_[0].empty()) {
        defaultSettings_ = programSettings_[0];
    }
}

// A line of 255 characters or more is outside the format: the whole document is refused with the
// message for corrupted settings, shown always, as a missing header is.
void PluginCore::LoadDocumentInto(const char* text, std::vector<std::string>& names,
                                  std::vector<std::string>& settings) {
    ProgramDocumentReader reader{std::string_view(text)};
    if (!reader.FindHeader(productName_)) {
        const char* detail = reader.HitLongLine() ? kSettingsCorrupted : kSettingsHeaderMissing;
        ReportError(this, kUnableToLoadSettings, detail, nullptr, kSettingsErrorKind);
        throw ProgramDocumentRefused{};
    }
    std::string line;
    while (reader.NextLine(line)) {
        if (!Contains(line, kProgramOpening)) continue;
        const std::int64_t number = ProgramNumber(line);
        if (number >= ProgramCount()) continue;  // its inner lines hold no "<program" either
        const auto program = static_cast<std::size_t>(number);
        names[program] = GetLineAttribute(line, kProgramNameAttribute);
        std::string body;
        while (reader.NextLine(line) && !Contains(line, kProgramClosing)) {
            body += line;
            body += '\n';
        }
        settings[program] = std::move(body);
    }
    if (reader.HitLongLine()) {
        ReportError(this, kUnableToLoadSettings, kSettingsCorrupted, nullptr, kSettingsErrorKind);
        throw ProgramDocumentRefused{};
    }
}

std::string PluginCore::FormatProgramDocument() const {
    std::ostringstream document;
    document << kProgramHeaderStart << productName_ << kProgramHeaderEnd << '\n';
    for (std::int32_t i = 0; i < ProgramCount(); ++i) {
        const std::string& text = programSettings_[static_cast<std::size_t>(i)];
        document << kProgramOpening << " " << kProgramNumberAttribute << "=\"" << i << "\" "
                 << kProgramNameAttribute << "=\"" << programNames_[static_cast<std::size_t>(i)]
                 << "\">\n"
                 << text;
        // The closing line must stand on a line of its own, whatever the stored text ends with.
        if (!text.empty() && text.back() != '\n') document << '\n';
        document << kProgramClosing << '\n';
    }
    return document.str();
}

std::int32_t PluginCore::GetChunk(void** data, bool isPreset) {
    chunkBuffer_.reset();
    try {
        std::string local;
        std::string& target = *SettingsTarget(local);
        CaptureSettings(target);
        const std::string document = isPreset ? std::string() : FormatProgramDocument();
        const std::string& payload = isPreset ? target : document;
        const std::size_t size = payload.size() + kChunkTailBytes;
        if (size > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
            throw std::length_error("settings too large for a chunk");
        }
        auto buffer = std::make_unique<char[]>(size);
        std::memcpy(buffer.get(), payload.data(), payload.size());
        std::memset(buffer.get() + payload.size(), 0, kChunkTailBytes);
        chunkBuffer_ = std::move(buffer);
        *data = chunkBuffer_.get();
        return static_cast<std::int32_t>(size);
    } catch (const std::bad_alloc&) {
        ReportError(this, kNoMemoryToSaveSettings, "", nullptr, kSettingsErrorKind);
    } catch (...) {
        ReportError(this, kUnableToSaveSettings, kUnknownSaveError, nullptr, kSettingsErrorKind);
    }
    *data = nullptr;
    return 0;
}

void PluginCore::SetChunk(const void* data, std::int32_t size, bool isPreset) {
    if (data == nullptr || size <= 0) return;
    const std::string_view bytes(static_cast<const char*>(data), static_cast<std::size_t>(size));
    try {
        if (!Contains(bytes.substr(0, kMakerNameSearchBytes), kMakerName)) {
            ShowErrorOnce(kUnableToLoadSettings, kSettingsCorrupted, nullptr, kSettingsErrorKind);
            return;
        }
        // A chunk far beyond any real document is damage: refused before it is scanned or copied.
        if (bytes.size() > kMaxSettingsTextBytes + kChunkTailBytes) {
            ShowErrorOnce(kUnableToLoadSettings, kSettingsCorrupted, nullptr, kSettingsErrorKind);
            return;
        }
        if (bytes.find('\r') != std::string_view::npos) {
            ShowErrorOnce(kUnableToLoadSettings, kSettingsCarriageReturns, nullptr,
                          kSettingsErrorKind);
            return;
        }
        // The text ends at its first zero byte, and never beyond the chunk.
        const std::string_view text = bytes.substr(0, bytes.find('\0'));
        if (text.size() > kMaxSettingsTextBytes) {
            ShowErrorOnce(kUnableToLoadSettings, kSettingsCorrupted, nullptr, kSettingsErrorKind);
            return;
        }
        std::string local;
        if (isPreset) {
            SettingsTarget(local)->assign(text);
        } else {
            LoadProgramDocument(std::string(text).c_str());
        }
        // Looked up only now: a program document replaces the stored settings wholesale.
        const std::string& target = *SettingsTarget(local);
        if (!target.empty()) LoadSettings(target);
    } catch (const std::bad_alloc&) {
        ShowErrorOnce(kNoMemoryToLoadSettings, nullptr, nullptr, kSettingsErrorKind);
    } catch (...) {
        // Already shown where it arose, or nothing the user can act on.
    }
}

void PluginCore::SetProgram(std::int32_t index) {
    if (index == currentProgram_) return;
    if (index < 0 || index >= ProgramCount()) return;  // the host's mistake; nothing to switch to
    try {
        const std::int32_t old = currentProgram_;
        currentProgram_ = index;
        const std::int32_t target = GetProgram();
        if (HasProgramBank() && old >= 0 && old < ProgramCount()) {
            CaptureSettings(programSettings_[static_cast<std::size_t>(old)]);
        }
        if (target < 0 || target >= ProgramCount()) return;
        std::string& settings = programSettings_[static_cast<std::size_t>(target)];
        if (settings.empty()) settings = defaultSettings_;
        if (!settings.empty()) LoadSettings(settings);
    } catch (const std::bad_alloc&) {
        ReportError(this, kNoMemoryForProgram, nullptr, nullptr, kSettingsErrorKind);
    } catch (...) {
        // Nothing the user can act on; the engine keeps what it had.
    }
}

}  // namespace vorix
