#include "engine/FactoryPrograms.h"

#include <cstdio>
#include <regex>
#include <stdexcept>

#include <gtest/gtest.h>

#include "FilterTestHelpers.h"
#include "core/CoreTestSupport.h"
#include "dsp/ExternalFilter.h"
#include "dsp/FilterDescription.h"
#include "host/ZORVorixMetaClass.h"

namespace vorix {
namespace {

// A strict reader of the settings line format: it refuses text that a careless edit bent, where
// the product's substring-based reader would still accept it.
struct Program {
    int elements = 0;
    std::string name, gain;
    std::vector<FilterDescription> filters;  // type and sections only
};

// A single-precision value as the settings stream writes it, with nine significant digits.
bool IsStreamNumber(const std::string& text) {
    char* end = nullptr;
    char written[32];
    std::snprintf(written, sizeof written, "%.9g", std::strtof(text.c_str(), &end));
    return !text.empty() && *end == '\0' && written == text;
}

// Frequencies as "%.6f" in hertz, the three text parameters as words the writer uses.
bool IsParameterValue(FilterParameterId id, const std::string& text) {
    char hertz[64];
    std::snprintf(hertz, sizeof hertz, "%.6f", std::strtod(text.c_str(), nullptr));
    if (id == FilterParameterId::Frequency) return text == hertz;
    if (id == FilterParameterId::HarmonicComponents || id == FilterParameterId::ComponentGain ||
        id == FilterParameterId::ReverseGainDecay)
        return std::string(
                   " constant decaying false true fundamental,, odd, even odd,even "
                   "fundamental,odd, fundamental,,even fundamental,odd,even ")
                   .find(' ' + text + ' ') != std::string::npos;
    return IsStreamNumber(text);
}

struct Reader {
    std::vector<std::string> lines;
    std::size_t next = 0;

    [[noreturn]] void Fail(const std::string& what) const {
        throw std::runtime_error("line " + std::to_string(next) + ": " + what);
    }
    bool NextIs(const std::string& line) const {
        return next < lines.size() && lines[next] == line;
    }
    void Take(std::initializer_list<std::string> expected) {
        for (const std::string& line : expected) {
            if (!NextIs(line)) Fail("\"" + line + "\" expected");
            ++next;
        }
    }
    std::smatch Match(const std::string& pattern) {
        std::smatch match;
        if (next >= lines.size() || !std::regex_match(lines[next], match, std::regex(pattern)))
            Fail("no match for " + pattern);
        ++next;
        return match;
    }
    std::string Value(int tabs, const std::string& tag, bool number = false) {
        std::string text = Match(std::string(static_cast<std::size_t>(tabs), '\t') + "<" + tag +
                                 ">([^<]*)</" + tag + ">")[1];
        if (number && !IsStreamNumber(text)) Fail("bad number " + text);
        return text;
    }
};

FilterDescription ReadFilter(Reader& in) {
    // Blanks as the writer puts them: one after enabled and selected, none after channel, one
    // ahead of every later attribute, and one behind bwLock.
    in.Match(
        R"RE(\t\t<filter enabled="(true|false)" (selected="true" )?channel="(both|left|right)")RE"
        R"RE(( freqLock="1")?( gainLock="1")?( bwLock="1" )?( QLock="1")?( slopeLock="1")?)RE"
        R"RE(( auto_ctl="\d+")?>)RE");
    in.Take({"\t\t\t<filter_description>"});
    FilterDescription filter;
    filter.type = FilterTypeFromKey(in.Value(4, "type").c_str());
    if (filter.type == kNoFilterType) in.Fail("unknown type");
    in.Value(4, "name");
    in.Take({"\t\t\t\t<param_list>"});
    if (filter.type == kExternalFilter) in.Take({"\t\t\t\t\t<section_list>"});
    while (filter.type == kExternalFilter && in.NextIs("\t\t\t\t\t\t<section>")) {
        in.Take({"\t\t\t\t\t\t<section>"});
        auto& b = filter.numerators.emplace_back();
        auto& a = filter.denominators.emplace_back();
        for (int k = 0; k < 6; ++k)
            (k < 3 ? b : a)[k % 3] = std::stof(in.Value(7, {"ba"[k / 3], char('0' + k % 3)}, true));
        in.Take({"\t\t\t\t\t\t</section>"});
    }
    if (filter.type == kExternalFilter) in.Take({"\t\t\t\t\t</section_list>"});
    // Exactly the parameters of the type, in ascending bit order.
    for (FilterParameterId id : kAllFilterParameters) {
        if ((FilterParameterMask(filter.type) & Bit(id)) == 0) continue;
        const std::string value = in.Value(5, FilterParameterKey(id));
        if (!IsParameterValue(id, value)) in.Fail("bad value " + value);
    }
    in.Take({"\t\t\t\t</param_list>", "\t\t\t</filter_description>", "\t\t</filter>"});
    return filter;
}

Program ReadProgram(Reader& in, std::size_t number) {
    Program program;
    program.name =
        in.Match("<program number=\"" + std::to_string(number) + "\" name=\"([^\"]*)\">")[1];
    // A preset chunk is refused unless the maker's full name stands in its first 500 bytes.
    in.Take({"<!-- Copyright (c) Zorvane Sound Works, 2026 -->",
             "<vorix_filter_settings version=\"Zorvane Sound Works Vorix Settings v1.0\">"});
    in.Value(1, "attributes");
    program.gain = in.Value(1, "compensation_gain", true);
    while (!in.NextIs("</vorix_filter_settings>")) {
        in.Take({"\t<filter_element number=\"" + std::to_string(++program.elements) + "\">"});
        while (!in.NextIs("\t</filter_element>"))
            program.filters.push_back(ReadFilter(in));
        in.Take({"\t</filter_element>"});
    }
    in.Take({"</vorix_filter_settings>", "</program>"});
    return program;
}

std::string Document() {
    return {FactoryProgramsDocument(), FactoryProgramsDocumentLength()};
}

std::vector<Program> ReadFactoryPrograms() {
    const std::string text = Document();
    Reader in;
    // Every line ends in a line feed and fits the program reader's 256-byte buffer.
    for (std::size_t at = 0, end; (end = text.find('\n', at)) != text.npos; at = end + 1) {
        const std::string& line = in.lines.emplace_back(text.substr(at, end - at));
        if (line.size() >= 255 || std::regex_search(line, std::regex("[^\t\\x20-\\x7E]")))
            in.Fail("control byte, non-ASCII byte or long line in " + line);
    }
    if (!text.ends_with('\n')) in.Fail("no line feed at the end");
    in.Take({"<!-- Zorvane Sound Works Vorix Program Settings -->"});
    std::vector<Program> programs;
    while (in.next < in.lines.size())
        programs.push_back(ReadProgram(in, programs.size()));
    return programs;
}

// clang-format off
// Pseudo Stereo splits every element into two filters.
struct Expected { const char *name, *gain; int elements, filters; };
const Expected kPrograms[] = {
    {"Basic EQ", "0", 3, 3}, {"Channel EQ", "0", 7, 7}, {"10-Band ISO", "0", 10, 10},
    {"Controlled Bass Boost", "0", 3, 3}, {"Low Cut", "0", 2, 2}, {"High Cut", "0", 1, 1},
    {"Infrasonics Filter", "0", 2, 2}, {"Pseudo Stereo", "-3", 6, 12},
    {"Half-Band Steep Rolloff", "-0.5", 4, 4}, {"Hum Suppression (50Hz)", "0", 1, 1},
    {"Hum Suppression (60Hz)", "0", 1, 1}, {"Custom Hum Rem (50Hz)", "0", 3, 3},
    {"Custom Hum Rem (60Hz)", "0", 3, 3}, {"Super Hum Rem (50Hz)", "0", 3, 3},
    {"Super Hum Rem (60Hz)", "0", 3, 3}, {"AM Radio", "-0.5", 8, 8},
    {"Telephone (44.1k)", "-0.5", 1, 1}, {"Telephone (48k)", "-0.5", 1, 1},
    {"Telephone (96k)", "-0.5", 1, 1}};
// clang-format on
constexpr std::size_t kProgramCount = std::size(kPrograms);

TEST(FactoryProgramsTest, EachProgramHasItsNumberNameGainAndCounts) {
    EXPECT_EQ(std::strlen(FactoryProgramsDocument()), FactoryProgramsDocumentLength());
    const std::vector<Program> programs = ReadFactoryPrograms();
    ASSERT_EQ(programs.size(), kProgramCount);
    for (std::size_t i = 0; i < kProgramCount; ++i) {
        SCOPED_TRACE(kPrograms[i].name);
        EXPECT_EQ(programs[i].name, kPrograms[i].name);
        EXPECT_EQ(programs[i].gain, kPrograms[i].gain);
        EXPECT_EQ(programs[i].elements, kPrograms[i].elements);
        EXPECT_EQ(programs[i].filters.size(), static_cast<std::size_t>(kPrograms[i].filters));
    }
}

double ResponseDecibels(const OpaqueFilterData* filter, double hz, double rate) {
    float magnitude = 0.0f;
    EvaluateFilterResponse(filter, hz / rate, &magnitude, nullptr);
    return 20.0 * std::log10(static_cast<double>(magnitude));
}

// The coefficients do not follow the sample rate, so each set is made for the rate in its
// program's name: there it passes the telephone band of 300 to 3300 Hz, with stable poles.
TEST(FactoryProgramsTest, TelephoneProgramsPassTheVoiceBandAtTheRateOfTheirName) {
    const std::vector<Program> programs = ReadFactoryPrograms();
    for (const auto& [number, rate] : {std::pair{16, 44100.0}, {17, 48000.0}, {18, 96000.0}}) {
        SCOPED_TRACE(programs.at(number).name);
        const FilterDescription& telephone = programs[number].filters.at(0);
        ASSERT_EQ(telephone.denominators.size(), 4u);
        for (const auto& a : telephone.denominators) {
            EXPECT_LT(std::fabs(a[2]), 1.0f);  // both poles inside the unit circle
            EXPECT_LT(std::fabs(a[1]), 1.0f + a[2]);
        }
        test::PoolWithChain pc;
        ExternalFilterData* filter = pc.AddExternal();
        LoadExternalSections(filter, telephone);
        for (double hz = 300.0; hz <= 3300.0; hz += 100.0)
            EXPECT_NEAR(ResponseDecibels(filter, hz, rate), 0.0, 3.0) << hz;
        for (const auto& [hz, below] :
             {std::pair{250.0, -3.0}, {3500.0, -3.0}, {50.0, -50.0}, {10000.0, -50.0}})
            EXPECT_LT(ResponseDecibels(filter, hz, rate), below) << hz;
    }
}

// The probe core of the core tests holds the program list; no engine is needed for it.
class VorixWithProgramList : public ZORVorixMetaClass {
  public:
    std::unique_ptr<PluginCore> CreateCore(PluginPlatform* platform,
                                           const ChannelConfig& config) override {
        return std::make_unique<test::TestCore>(platform, config);
    }
};

// Made as the host layer makes one; every program's text is taken whole, so written out again
// the list gives the document back byte for byte.
TEST(FactoryProgramsLoadTest, CoreNamesTheFactoryProgramsAndWritesTheDocumentBack) {
    SetMetaClassMaker([] { return std::make_unique<VorixWithProgramList>(); });
    ZORPluginMetaClass* meta = AcquireMetaClass();
    std::unique_ptr<PluginCore> core = meta->CreateCore(nullptr, ChannelConfig{2, 2});
    std::vector<std::string> names;
    meta->GetFactoryProgramNames(names);
    EXPECT_EQ(meta->GetProgramCount(), static_cast<std::int32_t>(kProgramCount));
    ASSERT_EQ(names.size(), kProgramCount);
    for (std::size_t i = 0; i < kProgramCount; ++i) {
        EXPECT_EQ(names[i], kPrograms[i].name);
        EXPECT_EQ(core->GetProgramName(static_cast<std::int32_t>(i)), kPrograms[i].name);
    }
    EXPECT_EQ(core->GetCurrentProgramName(), "Basic EQ");
    EXPECT_EQ(core->FormatProgramDocument(), Document());
    core.reset();
    ReleaseMetaClass();
    SetMetaClassMaker(nullptr);
}

}  // namespace
}  // namespace vorix
