#include "engine/FactoryPrograms.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <iomanip>
#include <memory>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "FilterTestHelpers.h"
#include "core/PluginCore.h"
#include "engine/ExternalFilter.h"
#include "engine/FilterResponse.h"
#include "engine/FilterTypes.h"
#include "engine/ZORVorixMetaClass.h"

namespace vorix {
namespace {

// ---- A strict reader of the settings line format: text that a careless edit bent is refused,
// where the product's substring-based reader would still accept it ----

using Sections = std::vector<std::array<float, 6>>;  // b0 b1 b2 a0 a1 a2 of each section

struct Program {
    int number = -1;
    std::string name, gain;
    std::vector<std::vector<Sections>> elements;  // filters by element
};

// Blanks as the writer puts them: one after enabled and selected, none after channel, one ahead
// of every later attribute, and one behind bwLock.
const std::regex kFilterLine(
    R"RE(\t\t<filter enabled="(true|false)" (selected="true" )?channel="(both|left|right)")RE"
    R"RE(( freqLock="1")?( gainLock="1")?( bwLock="1" )?( QLock="1")?( slopeLock="1")?)RE"
    R"RE(( auto_ctl="\d+")?>)RE");

// A single-precision value as the settings stream writes it, with nine significant digits.
bool IsStreamNumber(const std::string& text) {
    char* end = nullptr;
    const float value = std::strtof(text.c_str(), &end);
    std::ostringstream written;
    written << std::setprecision(9) << value;
    return !text.empty() && *end == '\0' && written.str() == text;
}

// Frequencies as "%.6f" in hertz, the three text parameters as words the writer uses.
bool IsParameterValue(FilterParameterId id, const std::string& text) {
    const std::string kWords =
        " constant decaying false true fundamental,, odd, even odd,even "
        "fundamental,odd, fundamental,,even fundamental,odd,even ";
    char hertz[64];
    std::snprintf(hertz, sizeof hertz, "%.6f", std::strtod(text.c_str(), nullptr));
    if (id == FilterParameterId::Frequency) return text == hertz;
    if (id == FilterParameterId::HarmonicComponents || id == FilterParameterId::ComponentGain ||
        id == FilterParameterId::ReverseGainDecay)
        return kWords.find(' ' + text + ' ') != std::string::npos;
    return IsStreamNumber(text);
}

class Lines {
  public:
    explicit Lines(std::string_view text) {
        if (!text.ends_with('\n')) Fail("no line feed at the end");
        for (std::size_t at = 0, end; (end = text.find('\n', at)) != text.npos; at = end + 1) {
            const std::string& line = lines_.emplace_back(text.substr(at, end - at));
            // The program reader takes lines through a 256-byte buffer.
            if (line.size() >= 255) Fail("line too long");
            for (char c : line)
                if (c != '\t' && (c < 0x20 || c > 0x7E)) Fail("control or non-ASCII byte");
        }
    }
    bool AtEnd() const { return next_ >= lines_.size(); }
    bool NextIs(const std::string& line) const { return !AtEnd() && lines_[next_] == line; }
    const std::string& Take() {
        if (AtEnd()) Fail("the document ends early");
        return lines_[next_++];
    }
    std::smatch Match(const std::regex& pattern) {
        std::smatch match;
        const std::string& line = Take();
        if (!std::regex_match(line, match, pattern)) Fail("unexpected \"" + line + "\"");
        return match;
    }
    void Exactly(std::initializer_list<std::string> lines) {
        for (const std::string& line : lines)
            if (Take() != line) Fail("\"" + line + "\" expected");
    }
    std::string Element(int tabs, const std::string& tag) {
        const std::string open = std::string(static_cast<std::size_t>(tabs), '\t') + "<" + tag;
        return Match(std::regex(open + ">([^<]*)</" + tag + ">"))[1].str();
    }
    std::string Number(int tabs, const std::string& tag) {
        std::string text = Element(tabs, tag);
        if (!IsStreamNumber(text)) Fail("bad number " + text);
        return text;
    }
    [[noreturn]] void Fail(const std::string& what) const {
        throw std::runtime_error("line " + std::to_string(next_) + ": " + what);
    }

  private:
    std::vector<std::string> lines_;
    std::size_t next_ = 0;
};

void ReadSections(Lines& in, Sections& sections) {
    in.Exactly({"\t\t\t\t\t<section_list>"});
    while (in.NextIs("\t\t\t\t\t\t<section>")) {
        in.Take();
        std::array<float, 6>& section = sections.emplace_back();
        for (int k = 0; k < 6; ++k) {
            const char tag[] = {"ba"[k / 3], static_cast<char>('0' + k % 3), '\0'};
            section[k] = std::strtof(in.Number(7, tag).c_str(), nullptr);
        }
        in.Exactly({"\t\t\t\t\t\t</section>"});
    }
    in.Exactly({"\t\t\t\t\t</section_list>"});
}

Sections ReadFilter(Lines& in) {
    Sections sections;
    in.Match(kFilterLine);
    in.Exactly({"\t\t\t<filter_description>"});
    const std::string key = in.Element(4, "type");
    const FilterType type = FilterTypeFromKey(key.c_str());
    if (type == kNoFilterType) in.Fail("unknown type " + key);
    in.Element(4, "name");
    in.Exactly({"\t\t\t\t<param_list>"});
    if (type == kExternalFilter) ReadSections(in, sections);
    // Exactly the parameters of the type, in ascending bit order.
    for (FilterParameterId id : kAllFilterParameters) {
        if ((FilterParameterMask(type) & Bit(id)) == 0) continue;
        const std::string value = in.Element(5, FilterParameterKey(id));
        if (!IsParameterValue(id, value)) in.Fail("bad value " + value);
    }
    in.Exactly({"\t\t\t\t</param_list>", "\t\t\t</filter_description>", "\t\t</filter>"});
    return sections;
}

Program ReadProgram(Lines& in) {
    Program program;
    const std::smatch open = in.Match(std::regex(R"RE(<program number="(\d+)" name="([^"]*)">)RE"));
    program.number = std::stoi(open[1].str());
    program.name = open[2].str();
    // A preset chunk is refused unless the maker's full name stands in its first 500 bytes.
    in.Exactly({"<!-- Copyright (c) Zorvane Sound Works, 2026 -->",
                "<vorix_filter_settings version=\"Zorvane Sound Works Vorix Settings v1.0\">"});
    in.Element(1, "attributes");
    program.gain = in.Number(1, "compensation_gain");
    while (!in.NextIs("</vorix_filter_settings>")) {
        const int number =
            std::stoi(in.Match(std::regex("\t<filter_element number=\"(\\d+)\">"))[1].str());
        if (number != static_cast<int>(program.elements.size()) + 1) in.Fail("element skipped");
        std::vector<Sections>& element = program.elements.emplace_back();
        while (!in.NextIs("\t</filter_element>"))
            element.push_back(ReadFilter(in));
        in.Take();
    }
    in.Exactly({"</vorix_filter_settings>", "</program>"});
    return program;
}

std::vector<Program> CheckProgramDocument(std::string_view text) {
    Lines in(text);
    in.Exactly({"<!-- Zorvane Sound Works Vorix Program Settings -->"});
    std::vector<Program> programs;
    while (!in.AtEnd())
        programs.push_back(ReadProgram(in));
    return programs;
}

// ---- The factory document ----

// clang-format off
const char* const kNames[] = {"Basic EQ", "Channel EQ", "10-Band ISO", "Controlled Bass Boost",
    "Low Cut", "High Cut", "Infrasonics Filter", "Pseudo Stereo", "Half-Band Steep Rolloff",
    "Hum Suppression (50Hz)", "Hum Suppression (60Hz)", "Custom Hum Rem (50Hz)",
    "Custom Hum Rem (60Hz)", "Super Hum Rem (50Hz)", "Super Hum Rem (60Hz)", "AM Radio",
    "Telephone (44.1k)", "Telephone (48k)", "Telephone (96k)"};
// Per program: compensation gain, elements, filters (Pseudo Stereo splits every element).
const char* const kGains[std::size(kNames)] = {"0", "0", "0", "0", "0", "0", "0", "-3", "-0.5", "0", "0", "0", "0",
    "0", "0", "-0.5", "-0.5", "-0.5", "-0.5"};
// clang-format on
constexpr std::size_t kProgramCount = std::size(kNames);
const int kElements[kProgramCount] = {3, 7, 10, 3, 2, 1, 2, 6, 4, 1, 1, 3, 3, 3, 3, 8, 1, 1, 1};
const int kFilters[kProgramCount] = {3, 7, 10, 3, 2, 1, 2, 12, 4, 1, 1, 3, 3, 3, 3, 8, 1, 1, 1};

std::string Document() {
    return {FactoryProgramsDocument(), FactoryProgramsDocumentLength()};
}

TEST(FactoryProgramsTest, EachProgramHasItsNumberNameGainAndCounts) {
    EXPECT_EQ(std::strlen(FactoryProgramsDocument()), FactoryProgramsDocumentLength());
    std::vector<Program> programs;
    ASSERT_NO_THROW(programs = CheckProgramDocument(Document()));
    ASSERT_EQ(programs.size(), kProgramCount);
    for (std::size_t i = 0; i < kProgramCount; ++i) {
        SCOPED_TRACE(kNames[i]);
        EXPECT_EQ(programs[i].number, static_cast<int>(i));
        EXPECT_EQ(programs[i].name, kNames[i]);
        EXPECT_EQ(programs[i].gain, kGains[i]);
        EXPECT_EQ(static_cast<int>(programs[i].elements.size()), kElements[i]);
        int filters = 0;
        for (const auto& element : programs[i].elements)
            filters += static_cast<int>(element.size());
        EXPECT_EQ(filters, kFilters[i]);
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
    std::vector<Program> programs;
    ASSERT_NO_THROW(programs = CheckProgramDocument(Document()));
    ASSERT_EQ(programs.size(), kProgramCount);
    for (const auto& [number, rate] : {std::pair{16, 44100.0}, {17, 48000.0}, {18, 96000.0}}) {
        SCOPED_TRACE(programs[number].name);
        const Sections& telephone = programs[number].elements.at(0).at(0);
        ASSERT_EQ(telephone.size(), 4u);
        FilterDescription description;
        description.type = kExternalFilter;
        for (const auto& s : telephone) {
            EXPECT_LT(std::fabs(s[5]), 1.0f);  // both poles inside the unit circle
            EXPECT_LT(std::fabs(s[4]), 1.0f + s[5]);
            description.numerators.push_back({s[0], s[1], s[2]});
            description.denominators.push_back({s[3], s[4], s[5]});
        }
        test::PoolWithChain pc;
        ExternalFilterData* filter = pc.AddExternal();
        LoadExternalSections(filter, description);
        for (double hz = 300.0; hz <= 3300.0; hz += 100.0)
            EXPECT_NEAR(ResponseDecibels(filter, hz, rate), 0.0, 3.0) << hz;
        for (double hz : {250.0, 3500.0})
            EXPECT_LT(ResponseDecibels(filter, hz, rate), -3.0) << hz;
        for (double hz : {50.0, 10000.0})
            EXPECT_LT(ResponseDecibels(filter, hz, rate), -50.0) << hz;
    }
}

// The strict reader must itself refuse bent text, or the format check above could not fail.
TEST(FactoryProgramsTest, FormatCheckRefusesADocumentWithOneLineBent) {
    const std::pair<const char*, const char*> kBends[] = {
        {"<filter enabled=\"true\" selected=\"true\"",
         "<filter selected=\"true\" enabled=\"true\""},
        {"<q_factor>0.707000017<", "<q_factor>0.707<"},
        {"\t\t\t\t\t<gain_db>0</gain_db>\n\t\t\t\t\t<frequency_hz>100.000000</frequency_hz>",
         "\t\t\t\t\t<frequency_hz>100.000000</frequency_hz>\n\t\t\t\t\t<gain_db>0</gain_db>"},
    };
    for (const auto& [from, to] : kBends) {
        SCOPED_TRACE(to);
        std::string text = Document();
        const std::size_t at = text.find(from);
        ASSERT_NE(at, std::string::npos);
        text.replace(at, std::strlen(from), to);
        EXPECT_THROW(CheckProgramDocument(text), std::runtime_error);
    }
}

// ---- The program list of a core ----

// A core with no engine behind it: enough to hold the program list.
class ProgramListCore : public PluginCore {
  public:
    ProgramListCore(PluginPlatform* platform, const ChannelConfig& config)
        : PluginCore(platform, config) {}
    double GetParameter(const ZORParameterInfo*) override { return 0.0; }
    Frame* CreateEditorFrame(PluginUIRoot&, Frame*) override { return nullptr; }
    Frame* CreateAboutFrame(PluginUIRoot&, Frame*) override { return nullptr; }
    EditorSize GetEditorSize() const override { return {}; }

  protected:
    bool ApplyParameter(const ZORParameterInfo*, float) override { return false; }
    void ApplyParameterToEditor(const ZORParameterInfo*, float) override {}
    void ProcessAudio(float**, float**, std::int32_t, std::int32_t) noexcept override {}
};

class VorixWithProgramList : public ZORVorixMetaClass {
  public:
    std::unique_ptr<PluginCore> CreateCore(PluginPlatform* platform,
                                           const ChannelConfig& config) override {
        return std::make_unique<ProgramListCore>(platform, config);
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
    EXPECT_EQ(names.size(), kProgramCount);
    for (std::size_t i = 0; i < std::min(names.size(), kProgramCount); ++i) {
        EXPECT_EQ(names[i], kNames[i]);
        EXPECT_EQ(core->GetProgramName(static_cast<std::int32_t>(i)), kNames[i]);
    }
    EXPECT_EQ(core->GetCurrentProgramName(), "Basic EQ");
    EXPECT_EQ(core->FormatProgramDocument(), Document());
    core.reset();
    ReleaseMetaClass();
    SetMetaClassMaker(nullptr);
}

}  // namespace
}  // namespace vorix
