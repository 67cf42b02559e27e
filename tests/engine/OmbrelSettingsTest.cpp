#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <cmath>
#include <sstream>
#include <thread>

#include "EngineTestSupport.h"
#include "engine/FactoryPrograms.h"
#include "dsp/FilterDescription.h"
#include "engine/FilterSettingsReader.h"
#include "support/AudioPathFixture.h"

namespace vorix::test {
namespace {

using F = FilterFlags;
using P = FilterParameterId;

constexpr const char* kHeader =
    "<!-- Copyright (c) Zorvane Sound Works, 2026 -->\n"
    "<vorix_filter_settings version=\"Zorvane Sound Works Vorix Settings v1.0\">\n";
constexpr const char* kFooter = "</vorix_filter_settings>\n";
constexpr const char* kCorrupted =
    "These are not valid settings or the settings have been corrupted.  ";

std::string Filter(const std::string& attributes, const std::string& type,
                   const std::string& params, const std::string& name = "") {
    return "\t\t<filter " + attributes + ">\n\t\t\t<filter_description>\n\t\t\t\t<type>" + type +
           "</type>\n\t\t\t\t<name>" + name + "</name>\n\t\t\t\t<param_list>\n" + params +
           "\t\t\t\t</param_list>\n\t\t\t</filter_description>\n\t\t</filter>\n";
}

std::string Element(int number, const std::string& filters) {
    return "\t<filter_element number=\"" + std::to_string(number) + "\">\n" + filters +
           "\t</filter_element>\n";
}

std::string Document(const std::string& body) {
    return std::string(kHeader) + body + kFooter;
}

const std::string kPeak = Filter("enabled=\"true\" channel=\"both\"", "ParametricEQ",
                                 "\t\t\t\t\t<gain_db>-6</gain_db>\n"
                                 "\t\t\t\t\t<frequency_hz>250.000000</frequency_hz>\n");

// The text of factory program `n`, as its document stands in the program list.
std::string FactoryProgram(int n) {
    const std::string all = FactoryProgramsDocument();
    const size_t start = all.find("<program number=\"" + std::to_string(n) + "\"");
    const size_t body = all.find('\n', start) + 1;
    return all.substr(body, all.find("</program>", body) - body);
}

FilterSettingsDocument Parse(const std::string& text, float rate, int channels) {
    std::istringstream stream(text);
    std::string failure;
    return ReadFilterSettingsDocument(stream, rate, channels, failure);
}

std::string Written(EngineHarness& h) {
    std::string text;
    h.engine->CaptureSettings(text);
    return text;
}

// Everything a filter is, as the document holds it, for comparing configurations.
std::vector<FilterDescription> Describe(EngineHarness& h, int channel) {
    std::vector<FilterDescription> all;
    for (OpaqueFilterData* f : h.Filters(channel))
        all.push_back(DescribeFilter(f));
    return all;
}

void ExpectSameFilters(const FilterDescription& a, const FilterDescription& b) {
    EXPECT_EQ(a.type, b.type);
    EXPECT_EQ(a.flags, b.flags);
    EXPECT_EQ(a.name, b.name);
    ASSERT_EQ(a.parameters.size(), b.parameters.size());
    for (size_t i = 0; i < a.parameters.size(); ++i) {
        EXPECT_EQ(a.parameters[i].first, b.parameters[i].first);
        EXPECT_NEAR(a.parameters[i].second, b.parameters[i].second,
                    1e-6 * std::max(1.0f, std::fabs(a.parameters[i].second)));
    }
}

// ---- Factory programs through the engine ----

class FactoryProgramLoadTest : public ::testing::TestWithParam<std::tuple<float, ChannelConfig>> {};

TEST_P(FactoryProgramLoadTest, EveryProgramBuildsItsFiltersAndWritesItselfBack) {
    const auto [rate, config] = GetParam();
    EngineHarness h(config, rate);
    const int channels = config.outputs;
    for (int n = 0; n < 19; ++n) {
        SCOPED_TRACE("program " + std::to_string(n));
        const std::string text = FactoryProgram(n);
        h.engine->LoadSettings(text);
        const FilterSettingsDocument expected = Parse(text, rate, channels);
        std::vector<OpaqueFilterData*> left = h.Filters(0);
        ASSERT_EQ(left.size(), expected.elements.size());
        for (size_t e = 0; e < left.size(); ++e) {
            for (int c = 0; c < channels; ++c) {
                const FilterSettingsSlot& slot = expected.elements[e].slots[c];
                OpaqueFilterData* record = c == 0 ? left[e] : left[e]->partner.load();
                ASSERT_NE(record, nullptr);
                EXPECT_EQ(record->type.Load(), slot.description.type);
                // The selection is always the left record of a both-channel pair.
                const uint32_t ignored = c == 1 ? F::Selected : 0u;
                EXPECT_EQ(record->flags.Load() & ~ignored, slot.description.flags & ~ignored);
                EXPECT_EQ(record->name, slot.description.name);
                // A both-channel pair is bound through its left record only.
                const bool bound = (slot.description.flags & F::ChannelDeleted) == 0 &&
                                   (c == 0 || (slot.description.flags & F::RightOnly) != 0);
                EXPECT_EQ(h.engine->ControlManager().SlotOfFilter(record),
                          bound ? slot.controlSlot : -1);
                EXPECT_EQ(h.engine->FilterNumber(record), static_cast<int>(e) + 1);
            }
        }
        // Written again and read back, the program is the same, up to the last float digits.
        const FilterSettingsDocument again = Parse(Written(h), rate, channels);
        EXPECT_EQ(again.gainsUnlinked, expected.gainsUnlinked);
        EXPECT_EQ(again.leftGain, expected.leftGain);
        ASSERT_EQ(again.elements.size(), expected.elements.size());
        for (size_t e = 0; e < again.elements.size(); ++e) {
            for (int c = 0; c < channels; ++c) {
                EXPECT_EQ(again.elements[e].slots[c].controlSlot,
                          expected.elements[e].slots[c].controlSlot);
                ExpectSameFilters(again.elements[e].slots[c].description,
                                  expected.elements[e].slots[c].description);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(RatesAndLayouts, FactoryProgramLoadTest,
                         ::testing::Combine(::testing::Values(32000.0f, 44100.0f, 48000.0f,
                                                              96000.0f),
                                            ::testing::Values(kStereo, kMono)));

// ---- Documents built to break the reader ----

struct BrokenDocument {
    const char* what;
    std::string text;
    std::string message;
};

TEST(OmbrelSettingsFailureTest, EachBrokenDocumentShowsItsMessageAndKeepsThePreviousFilters) {
    const std::string withoutNumber =
        Document("\t<filter_element number=1>\n" + kPeak + "\t</filter_element>\n");
    const std::string section =
        Filter("enabled=\"true\" channel=\"both\"", "External",
               "\t\t\t\t\t<section_list>\n\t\t\t\t\t\t<section>\n\t\t\t\t\t\t\t<b3>1</b3>\n"
               "\t\t\t\t\t\t</section>\n\t\t\t\t\t</section_list>\n");
    const std::vector<BrokenDocument> cases = {
        {"version",
         "<vorix_filter_settings version=\"Zorvane Sound Works Vorix Settings v1.1\">\n" +
             Element(1, kPeak) + kFooter,
         "These settings are not readable by this version of Vorix."},
        {"nothing", "just some text\n", std::string(kCorrupted) + "(No settings found.)"},
        {"number", withoutNumber, kCorrupted},
        {"enabled", Document(Element(1, Filter("channel=\"both\"", "ParametricEQ", ""))), kCorrupted},
        {"channel", Document(Element(1, Filter("enabled=\"true\"", "ParametricEQ", ""))), kCorrupted},
        {"section index", Document(Element(1, section)), kCorrupted},
    };
    for (const BrokenDocument& broken : cases) {
        SCOPED_TRACE(broken.what);
        EngineHarness h;
        h.engine->NewFilter(kNotch);
        h.engine->SetAttribute("zoom", "3");
        FilterChain* chain = h.Chain(0);
        const std::vector<FilterDescription> before = Describe(h, 0);
        EXPECT_THROW(h.engine->LoadSettings(broken.text), PluginCore::InvalidSettingsData);
        ASSERT_EQ(h.platform.messages.Messages().size(), 1u);
        EXPECT_EQ(h.platform.messages.Messages()[0].first, "Unable to load settings.");
        EXPECT_EQ(h.platform.messages.Messages()[0].second, broken.message);
        EXPECT_EQ(h.Chain(0), chain);
        EXPECT_EQ(h.engine->FormatAttributes(), "<attributes>zoom=3</attributes>");
        const std::vector<FilterDescription> after = Describe(h, 0);
        ASSERT_EQ(after.size(), before.size());
        for (size_t i = 0; i < after.size(); ++i)
            ExpectSameFilters(after[i], before[i]);
        const Block out = h.Process({std::vector<float>(256, 0.5f), std::vector<float>(256, 0.5f)});
        EXPECT_TRUE(std::isfinite(out[0][255]) && std::fabs(out[0][255]) > 0.1f);
    }
}

TEST(OmbrelSettingsToleranceTest, GarbageNumbersReadAsZeroAndUnknownLinesAreSkipped) {
    EngineHarness h;
    const std::string peak = Filter("enabled=\"true\" channel=\"both\" auto_ctl=\"7\"",
                                    "ParametricEQ",
                                    "\t\t\t\t\t<gain_db>loud</gain_db>\n"
                                    "\t\t\t\t\t<whatever>1</whatever>\n"
                                    "\t\t\t\t\t<frequency_hz>250.000000</frequency_hz>\n");
    h.engine->LoadSettings(Document("\t<mystery/>\n" + Element(1, peak)));
    ASSERT_EQ(h.Filters().size(), 1u);
    EXPECT_NEAR(GetFilterParameter(h.Filter(0), P::Gain), 0.0, 1e-6);
    EXPECT_NEAR(h.Hz(h.Filter(0)), 250.0, 1e-3);
    EXPECT_EQ(h.engine->ControlManager().SlotOfFilter(h.Filter(0)), 7);
    EXPECT_EQ(h.engine->ControlManager().FirstFreeSlot(), 0);
}

TEST(OmbrelSettingsToleranceTest, ARightOnlyFilterIsHollowOnTheLeftOfStereoAndWholeOnMono) {
    const std::string right = Element(
        1, Filter("enabled=\"true\" channel=\"right\"", "ParametricEQ",
                  "\t\t\t\t\t<gain_db>4</gain_db>\n\t\t\t\t\t<frequency_hz>700.000000</frequency_hz>\n"));
    EngineHarness stereo;
    stereo.engine->LoadSettings(Document(right));
    OpaqueFilterData* hollow = stereo.Filter(0);
    EXPECT_EQ(hollow->flags.Load() & ~F::Selected, F::ChannelDeleted | F::Disabled | F::LeftOnly);
    EXPECT_EQ(stereo.Filter(0, 1)->flags.Load() & ~F::Selected, F::RightOnly);
    EXPECT_NEAR(GetFilterParameter(stereo.Filter(0, 1), P::Gain), 4.0, 1e-5);
    // The hollow half is never shown, so it is never the selection.
    EXPECT_NE(stereo.engine->SelectedFilter(), hollow);
    EXPECT_EQ(hollow->flags.Load() & F::Selected, 0u);
    // Written out again, only the right filter is there.
    const std::string written = Written(stereo);
    EXPECT_EQ(written.find("channel=\"left\""), std::string::npos);
    EXPECT_NE(written.find("channel=\"right\""), std::string::npos);

    // A selected right filter stays the selection; its hollow copy does not take it.
    stereo.engine->LoadSettings(Document(Element(
        1, Filter("enabled=\"true\" selected=\"true\" channel=\"right\"", "ParametricEQ", ""))));
    EXPECT_EQ(stereo.engine->SelectedFilter(), stereo.Filter(0, 1));

    EngineHarness mono(kMono);
    mono.engine->LoadSettings(Document(right));
    EXPECT_EQ(mono.Filter(0)->flags.Load() & (F::LeftOnly | F::RightOnly | F::Disabled), 0u);
    EXPECT_NEAR(mono.Hz(mono.Filter(0)), 700.0, 1e-3);
}

TEST(OmbrelSettingsToleranceTest, FrequenciesBeyondTheLimitLoadAtTheLimitOrOutOfRange) {
    const std::string high = Document(Element(
        1, Filter("enabled=\"true\" channel=\"both\"", "2ndOrdLowpass",
                  "\t\t\t\t\t<frequency_hz>25000</frequency_hz>\n")));
    EngineHarness at48(kStereo, 48000.0f);
    at48.engine->LoadSettings(high);
    EXPECT_NEAR(at48.Hz(at48.Filter(0)), 20000.0, 1e-2);
    EXPECT_FALSE(at48.Filter(0)->flags.Load() & F::OutOfRange);

    EngineHarness at32(kStereo, 32000.0f);
    at32.engine->LoadSettings(high);
    EXPECT_TRUE(at32.Filter(0)->flags.Load() & F::OutOfRange);
    EXPECT_EQ(at32.engine->ControlManager().SlotOfFilter(at32.Filter(0)), -1);
    // An out-of-range low pass does not process: a tone above its corner passes whole.
    Block tone(2, std::vector<float>(4096));
    for (size_t i = 0; i < 4096; ++i)
        tone[0][i] = tone[1][i] = static_cast<float>(0.5 * std::sin(0.9 * static_cast<double>(i)));
    const Block out = at32.Process(tone);
    EXPECT_NEAR(out[0][4000], tone[0][4000], 1e-3);
}

// Each input once broke an invariant: a refused document must change nothing (its view options
// included), and an accepted one must play finite audio and write a document that, loaded once
// more to clamp what its types give back as their own parameters, then reloads to itself.
TEST(OmbrelSettingsRegressionTest, FoundDocumentsKeepTheLoadInvariants) {
    for (const auto& entry :
         std::filesystem::directory_iterator(std::string(VORIX_REGRESSIONS_DIR) + "/settings")) {
        SCOPED_TRACE(entry.path().filename().string());
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        EngineHarness h;
        h.engine->SetAttribute("zoom", "2");
        const std::string before = Written(h);
        try {
            h.engine->LoadSettings(text);
        } catch (const PluginCore::InvalidSettingsData&) {
            EXPECT_EQ(Written(h), before);
            continue;
        }
        h.engine->LoadSettings(Written(h));
        const std::string settled = Written(h);
        h.engine->LoadSettings(settled);
        EXPECT_EQ(Written(h), settled);
        for (int block = 0; block < 8; ++block) {
            const Block out = h.Process({std::vector<float>(512, 0.5f), std::vector<float>(512, -0.5f)});
            ASSERT_TRUE(std::isfinite(out[0][511]) && std::isfinite(out[1][511]));
        }
    }
}

// Parameters go through SetFilterParameter whatever the type's mask says, and one left out keeps
// the record's default as it stands.
TEST(OmbrelSettingsToleranceTest, ParametersApplyAsGivenAndAnOmittedOneKeepsTheRecordDefault) {
    EngineHarness h;
    h.engine->LoadSettings(Document(
        Element(1, Filter("enabled=\"true\" channel=\"both\"", "4HarmonicParEQ",
                          "\t\t\t\t\t<frequency_hz>50</frequency_hz>\n")) +
        Element(2, Filter("enabled=\"true\" channel=\"both\"", "2ndOrdLowpass",
                          "\t\t\t\t\t<frequency_hz>1000</frequency_hz>\n"
                          "\t\t\t\t\t<bandwidth_oct>0.035</bandwidth_oct>\n")) +
        Element(3, Filter("enabled=\"true\" channel=\"both\"", "2ndOrdBandReject",
                          "\t\t\t\t\t<frequency_hz>1000</frequency_hz>\n"
                          "\t\t\t\t\t<q_factor>3</q_factor>\n"))));
    EXPECT_FLOAT_EQ(GetFilterParameter(h.Filter(0), P::Bandwidth), 1.0f);
    // A Q from a bandwidth, beyond the range a Q given as such would be held to.
    EXPECT_NEAR(GetFilterParameter(h.Filter(1), P::Q), 14.06, 0.01);
    EXPECT_FLOAT_EQ(GetFilterParameter(h.Filter(2), P::Q), 3.0f);
}

TEST(OmbrelSettingsGainTest, GainLinesSetTheLinkAndTruncateToHalfDecibels) {
    EngineHarness h;
    h.engine->LoadSettings(Document("\t<left_compensation_gain>3.25</left_compensation_gain>\n"
                                    "\t<right_compensation_gain>3.25</right_compensation_gain>\n"));
    EXPECT_EQ(h.engine->GainLink(0)->GetValue(), 0);
    EXPECT_EQ(h.GetHost(kLeftGainId), 3.0);
    const std::string written = Written(h);
    EXPECT_NE(written.find("\t<left_compensation_gain>3</left_compensation_gain>\n"),
              std::string::npos);
    h.engine->LoadSettings(Document("\t<compensation_gain>-2.5</compensation_gain>\n"));
    EXPECT_EQ(h.engine->GainLink(0)->GetValue(), 1);
    EXPECT_EQ(h.GetHost(kRightGainId), -2.5);

    EngineHarness mono(kMono);
    mono.SetHost(kLeftGainId, 4.0f);
    const std::string monoText = Written(mono);
    EXPECT_NE(monoText.find("\t<compensation_gain>4</compensation_gain>\n"), std::string::npos);
    EXPECT_EQ(monoText.find("left_compensation_gain"), std::string::npos);
}

TEST(OmbrelSettingsMergeTest, MergeAddsToTheConfigurationOnceAndKeepsItsNumbers) {
    EngineHarness h;
    h.engine->SetMergeOnLoad(true);
    h.engine->LoadSettings(Document(Element(1, kPeak)));
    EXPECT_EQ(h.Types(), (std::vector<FilterType>{kLowShelf, kParametric, kHiShelf, kParametric}));
    EXPECT_EQ(h.engine->FilterNumber(h.Filter(3)), 4);
    h.engine->LoadSettings(Document(Element(1, kPeak)));
    EXPECT_EQ(h.Types(), (std::vector<FilterType>{kParametric}));
}

TEST(OmbrelSampleRateTest, FiltersKeepTheirHertzAcrossARateChange) {
    EngineHarness h;
    SetFilterParameter(h.Filter(1), P::Frequency, 5000.0f / 48000.0f);
    h.engine->SelectConfiguration(1, false);
    SetFilterParameter(h.Filter(1), P::Frequency, 18000.0f / 48000.0f);
    h.engine->SelectConfiguration(0, false);
    h.engine->SetSampleRate(96000.0f);
    EXPECT_NEAR(h.Hz(h.Filter(1)), 5000.0, 1e-2);
    EXPECT_EQ(h.engine->CurrentConfiguration(), 0);
    h.engine->SetSampleRate(32000.0f);
    h.engine->SelectConfiguration(1, false);
    EXPECT_TRUE(h.Filter(1)->flags.Load() & F::OutOfRange);
    EXPECT_EQ(h.Filters().size(), 3u);
}

// A document load swaps chains under a running audio thread: the audio never sees a half-built
// chain, never produces a non-finite sample, and (under ThreadSanitizer) races with nothing.
TEST(OmbrelConcurrencyTest, AudioKeepsRunningWhileDocumentsLoad) {
    EngineHarness h;
    std::atomic<bool> stop{false};
    std::atomic<int> blocks{0};
    std::atomic<bool> finite{true};
    std::thread audio([&] {
        Block input(2, std::vector<float>(256));
        for (size_t i = 0; i < 256; ++i)
            input[0][i] = input[1][i] = static_cast<float>(0.5 * std::sin(0.05 * static_cast<double>(i)));
        while (!stop.load()) {
            const Block out = h.Process(input);
            for (const auto& channel : out) {
                for (float sample : channel) {
                    if (!std::isfinite(sample)) finite = false;
                }
            }
            ++blocks;
        }
    });
    for (int round = 0; round < 40; ++round)
        h.engine->LoadSettings(FactoryProgram(round % 19));
    while (blocks.load() < 20)
        std::this_thread::yield();
    stop = true;
    audio.join();
    EXPECT_TRUE(finite.load());
}

}  // namespace
}  // namespace vorix::test
