#include "vorix/ProgramLookup.h"

#include <algorithm>
#include <cctype>
#include <numeric>

#include "core/ZORPluginMetaClass.h"
#include "vorix/Arguments.h"
#include "vorix/ToolErrors.h"

namespace vorix::cli {
namespace {

// The programs whose External filters hold coefficients for one sample rate: their names say
// which, and on a file of another rate they shape the sound differently from what they promise.
struct FixedRateProgram {
    const char* name;
    float sampleRate;
};
constexpr FixedRateProgram kFixedRatePrograms[] = {
    {"Telephone (44.1k)", 44100.0f},
    {"Telephone (48k)", 48000.0f},
    {"Telephone (96k)", 96000.0f},
};

// At most this many names are offered when a name fits none or several.
constexpr std::size_t kMostNamesOffered = 6;

std::string Lower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return lower;
}

std::size_t EditDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t above = row[j];
            row[j] =
                std::min({row[j] + 1, row[j - 1] + 1, diagonal + (a[i - 1] == b[j - 1] ? 0u : 1u)});
            diagonal = above;
        }
    }
    return row[b.size()];
}

// How far a typed name is from a program's name: a misspelt whole name, or a misspelt start.
std::size_t Distance(const std::string& typed, const std::string& name) {
    return std::min(EditDistance(typed, name), EditDistance(typed, name.substr(0, typed.size())));
}

std::string QuotedList(const std::vector<std::string>& names) {
    std::string list;
    for (const std::string& name : names) {
        if (!list.empty()) list += ", ";
        list += "\"" + name + "\"";
    }
    return list;
}

}  // namespace

ProgramCatalog::ProgramCatalog(const ZORPluginMetaClass& metaClass) {
    metaClass.GetFactoryProgramNames(names_);
}

std::int32_t ProgramCatalog::Resolve(std::string_view text) const {
    if (text.empty()) throw UsageError("a program is given by its number or its name");
    if (!IsWholeNumber(text)) return ResolveName(text);
    const auto highest = static_cast<std::int64_t>(names_.size()) - 1;
    return static_cast<std::int32_t>(ParseWholeNumber(text, "the program number", 0, highest));
}

std::int32_t ProgramCatalog::ResolveName(std::string_view text) const {
    const std::string typed = Lower(text);
    std::vector<std::int32_t> prefixed;
    for (std::size_t i = 0; i < names_.size(); ++i) {
        if (names_[i] == text) return static_cast<std::int32_t>(i);
        const std::string name = Lower(names_[i]);
        // A name typed in full wins over the longer names it begins.
        if (name == typed) return static_cast<std::int32_t>(i);
        if (!typed.empty() && name.rfind(typed, 0) == 0) {
            prefixed.push_back(static_cast<std::int32_t>(i));
        }
    }
    if (prefixed.size() == 1) return prefixed.front();
    if (prefixed.size() > 1) {
        std::vector<std::string> fitting;
        for (std::int32_t i : prefixed)
            fitting.push_back(names_[static_cast<std::size_t>(i)]);
        if (fitting.size() > kMostNamesOffered) fitting.resize(kMostNamesOffered);
        throw UsageError("\"" + std::string(text) + "\" begins several program names (" +
                         QuotedList(fitting) + "); give more of the name or its number");
    }
    const std::vector<std::string> near = NearNames(text);
    if (near.empty()) {
        throw UsageError("there is no factory program called \"" + std::string(text) +
                         "\"; \"vorix programs\" lists them");
    }
    throw UsageError("there is no factory program called \"" + std::string(text) +
                     "\"; near names are " + QuotedList(near));
}

// Names that contain what was typed, then names within a few typing mistakes of it, nearest first.
std::vector<std::string> ProgramCatalog::NearNames(std::string_view text) const {
    const std::string typed = Lower(text);
    const std::size_t allowed = std::max<std::size_t>(2, typed.size() / 3);
    std::vector<std::pair<std::size_t, std::string>> scored;
    for (const std::string& name : names_) {
        const std::string lower = Lower(name);
        const std::size_t distance =
            lower.find(typed) != std::string::npos ? 0 : Distance(typed, lower);
        if (distance <= allowed) scored.emplace_back(distance, name);
    }
    std::stable_sort(scored.begin(), scored.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::string> near;
    for (const auto& entry : scored) {
        if (near.size() == kMostNamesOffered) break;
        near.push_back(entry.second);
    }
    return near;
}

std::optional<float> ProgramCatalog::MadeForRate(std::string_view programName) {
    for (const FixedRateProgram& program : kFixedRatePrograms) {
        if (programName == program.name) return program.sampleRate;
    }
    return std::nullopt;
}

}  // namespace vorix::cli
