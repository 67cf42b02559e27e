// The framework's archive text: through the archive reader alone, and as the settings form of a
// core that keeps the framework's own reader.

#include <sstream>

#include "FuzzSupport.h"
#include "core/PluginCore.h"
#include "serialization/XMLArchive.h"

using namespace vorix;


extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static fuzz::QuietPlatform platform;
    static fuzz::ArchiveCore core = (fuzz::HoldMetaClass(), fuzz::ArchiveCore(&platform));
    const std::string text(fuzz::Text(data, size));
    try {
        Serialization::XMLArchive archive(text.c_str(), text.size());
        archive.BeginReading();
    } catch (...) {
        // Refused with the reader's own text: what a bad archive must give.
    }
    core.LoadSettings(text);
    std::string written;
    core.CaptureSettings(written);
    platform.messages.Clear();
    platform.reports.clear();
    return 0;
}
