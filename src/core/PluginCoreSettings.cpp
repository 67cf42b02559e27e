// Settings texts: capturing and loading the engine's settings, and the framework's own settings
// form over an XML archive.

#include <sstream>
#include <utility>

#include "core/ErrorDisplay.h"
#include "core/PluginCore.h"
#include "core/SettingsTexts.h"
#include "core/ZORPluginMetaClass.h"
#include "core/ZORPluginSettingsMetaData.h"
#include "framework/Exceptions.h"
#include "serialization/XMLArchive.h"

namespace vorix {

void PluginCore::CaptureSettings(std::string& out) {
    std::ostringstream text;
    WriteSettings(text);
    text << '\n';
    out = std::move(text).str();
}

// The attributes start empty for the new settings, and come back if the engine refuses them: a
// refused text changes nothing. A text beyond any real document's size is refused unread, shown
// and thrown as the engine's reader does with a document it refuses.
void PluginCore::LoadSettings(const std::string& text) {
    if (text.size() > kMaxSettingsTextBytes) {
        ReportError(this, kUnableToLoadSettings, kSettingsCorrupted, nullptr, kSettingsErrorKind);
        VORIX_THROW(InvalidSettingsData);
    }
    const InternalChange internal(*this);
    SettingsAttributes previous = std::exchange(attributes_, {});
    try {
        ReadSettings(text);
    } catch (...) {
        attributes_ = std::move(previous);
        throw;
    }
}

// The archive ends its text with a zero byte; it is left out here, since a settings text travels
// inside chunks and program documents, which a zero byte would cut short.
void PluginCore::WriteSettings(std::ostream& stream) {
    std::ostringstream archiveText;
    {
        Serialization::XMLArchive archive(
            archiveText,
            kSettingsArchiveTitleStart + MetaClass().GetCopyright() + kSettingsArchiveTitleEnd);
        archive.BeginWriting();
        ZORPluginSettingsMetaData metadata(*this);
        metadata.Save(archive, kSettingsMetadataName);
        WriteExtraSettings(archive);
        archive.EndWriting();
    }
    std::string text = std::move(archiveText).str();
    const std::size_t terminator = text.find('\0');
    if (terminator != std::string::npos) text.resize(terminator);
    stream << text;
}

void PluginCore::ReadSettings(const std::string& text) {
    try {
        Serialization::XMLArchive archive(text.c_str(), text.size());
        archive.BeginReading();
        ZORPluginSettingsMetaData metadata;
        metadata.Load(archive, kSettingsMetadataName);
        ReadExtraSettings(archive, metadata);
    } catch (const Serialization::XMLArchive::ParseException&) {
        ReportError(this, kUnableToLoadSettings, kSettingsCorrupted, nullptr, kSettingsErrorKind);
    } catch (...) {
        ReportError(this, kUnableToLoadSettings, "", nullptr, kSettingsErrorKind);
    }
}

}  // namespace vorix
