#include <atomic>
#include <cmath>
#include <regex>
#include <sstream>
#include <thread>

#include "FilterTestHelpers.h"
#include "core/PluginCore.h"
#include "engine/FactoryPrograms.h"
#include "dsp/FilterDescription.h"
#include "engine/FilterSettingsReader.h"
#include "engine/FilterSettingsWriter.h"

namespace vorix::test {
namespace {

using F = FilterFlags;

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

// Each factory program's settings text, as a settings text stands: no line feed behind its end.
std::vector<std::string> FactoryProgramTexts() {
    std::vector<std::string> programs;
    for (const std::string& line : Lines(FactoryProgramsDocument())) {
        if (line.starts_with("<program "))
            programs.emplace_back();
        else if (line != "</program>" && !programs.empty())
            programs.back() += (programs.back().empty() ? "" : "\n") + line;
    }
    return programs;
}

FilterSettingsDocument Read(const std::string& text, float rate = 48000.0f, int channels = 2) {
    std::istringstream in(text);
    std::string failure;
    return ReadFilterSettingsDocument(in, rate, channels, failure);
}

std::string Write(const FilterSettingsDocument& doc, float rate = 48000.0f) {
    std::ostringstream out;
    WriteFilterSettingsDocument(out, doc, rate);
    return out.str();
}

// The text the user reads when the document is refused; "" if it was read.
std::string FailureOf(const std::string& text, int channels = 2) {
    std::istringstream in(text);
    std::string failure;
    try {
        ReadFilterSettingsDocument(in, 48000.0f, channels, failure);
    } catch (const PluginCore::InvalidSettingsData&) {
        return failure;
    }
    return "";
}

const std::string kOpening =
    "<vorix_filter_settings version=\"Zorvane Sound Works Vorix Settings v1.0\">\n";

std::string Document(const std::string& body) {
    return "<!-- notice -->\n" + kOpening + body + "</vorix_filter_settings>\n";
}

// One element with one filter of the given line attributes, type and parameter lines.
std::string Element(const std::string& attributes, const std::string& type = "ParametricEQ",
                    const std::string& parameters = "<gain_db>-6</gain_db>\n",
                    const std::string& name = "") {
    return "\t<filter_element number=\"1\">\n\t\t<filter " + attributes +
           ">\n<filter_description>\n<type>" + type + "</type>\n<name>" + name +
           "</name>\n<param_list>\n" + parameters +
           "</param_list>\n</filter_description>\n</filter>\n\t</filter_element>\n";
}

// The filters of two elements in one.
std::string OneElement(const std::string& a, const std::string& b) {
    return a.substr(0, a.rfind("\t</filter_element>")) + b.substr(b.find('\n') + 1);
}

const FilterSettingsSlot& Slot(const FilterSettingsDocument& doc, int slot, std::size_t at = 0) {
    return doc.elements.at(at).slots[slot];
}

float Parameter(const FilterSettingsSlot& slot, FilterParameterId id) {
    for (const auto& [key, value] : slot.description.parameters)
        if (key == id) return value;
    ADD_FAILURE() << "no parameter " << FilterParameterKey(id);
    return NAN;
}

// Equal lines, or lines whose only difference is in the last digits of their element's number.
::testing::AssertionResult SameUpToRounding(const std::string& expected,
                                            const std::string& actual) {
    const std::vector<std::string> a = Lines(expected), b = Lines(actual);
    const std::regex numberElement(R"(^(\s*<\w+>)(-?[0-9.e+-]+)(</\w+>)$)");
    for (std::size_t i = 0; i < std::max(a.size(), b.size()); ++i) {
        const std::string x = i < a.size() ? a[i] : "(none)", y = i < b.size() ? b[i] : "(none)";
        std::smatch mx, my;
        if (x == y) continue;
        if (std::regex_match(x, mx, numberElement) && std::regex_match(y, my, numberElement) &&
            mx[1] == my[1] && mx[3] == my[3]) {
            const double u = std::stod(mx[2]), v = std::stod(my[2]);
            if (std::fabs(u - v) <= 1e-6 * std::max(1.0, std::fabs(u))) continue;
        }
        return ::testing::AssertionFailure() << "line " << i + 1 << ": " << x << " | " << y;
    }
    return ::testing::AssertionSuccess();
}

// ---- Factory programs both ways ----

TEST(FilterSettingsRoundTripTest, EveryFactoryProgramIsWrittenBackLineForLine) {
    const std::vector<std::string> programs = FactoryProgramTexts();
    ASSERT_EQ(programs.size(), 19u);
    for (float rate : {44100.0f, 48000.0f}) {
        for (std::size_t i = 0; i < programs.size(); ++i) {
            SCOPED_TRACE(::testing::Message() << "program " << i << " at " << rate);
            const std::string written = Write(Read(programs[i], rate), rate);
            EXPECT_TRUE(SameUpToRounding(programs[i], written));
            // Reading what was written changes nothing more: no value drifts from one save to
            // the next.
            EXPECT_EQ(Write(Read(written, rate), rate), written);
        }
    }
}

TEST(FilterSettingsRoundTripTest, FactoryProgramsReadAsTheEngineKeepsTheirValues) {
    const std::vector<std::string> programs = FactoryProgramTexts();
    const FilterSettingsDocument basic = Read(programs[0]);
    EXPECT_EQ(basic.attributesLine,
              "\t<attributes>handles=1,labels=1,selected=1,sort=0,zoom=1"
              "</attributes>");
    ASSERT_EQ(basic.elements.size(), 3u);
    EXPECT_EQ(Slot(basic, 1).description.flags, F::Selected);
    EXPECT_EQ(Slot(basic, 1).controlSlot, 0);
    EXPECT_EQ(Slot(basic, 0, 2).description.type, kHiShelf);
    EXPECT_FLOAT_EQ(Parameter(Slot(basic, 0, 2), P::Frequency), 10000.0f / 48000.0f);

    const FilterSettingsDocument stereo = Read(programs[7]);  // Pseudo Stereo: split pairs
    EXPECT_FLOAT_EQ(stereo.leftGain, -3.0f);
    EXPECT_FLOAT_EQ(stereo.rightGain, -3.0f);
    EXPECT_FALSE(stereo.gainsUnlinked);
    EXPECT_EQ(Slot(stereo, 0).description.flags,
              F::Selected | F::LeftOnly | F::FreqLock | F::BwLock);
    EXPECT_EQ(Slot(stereo, 1).description.flags, F::RightOnly | F::FreqLock | F::BwLock);
    EXPECT_FLOAT_EQ(Parameter(Slot(stereo, 1), P::Gain), 3.0f);
    EXPECT_EQ(Slot(stereo, 1).controlSlot, -1);

    const FilterSettingsSlot hum = Slot(Read(programs[9]), 0);
    EXPECT_EQ(hum.description.type, kHarmonic4);
    EXPECT_EQ(Parameter(hum, P::HarmonicComponents), 7.0f);
    EXPECT_EQ(Parameter(hum, P::ComponentGain), 1.0f);
    EXPECT_EQ(Parameter(hum, P::ReverseGainDecay), 0.0f);

    const FilterSettingsSlot telephone = Slot(Read(programs[17]), 1);
    EXPECT_EQ(telephone.description.name, "Telephone");
    ASSERT_EQ(telephone.description.numerators.size(), 4u);
    EXPECT_EQ(telephone.description.numerators[0][1], 0.00648718746f);
    EXPECT_EQ(telephone.description.denominators[0][2], 0.812131882f);
}

// ---- Writer ----

FilterSettingsSlot Filled(FilterType type, uint32_t flags,
                          std::vector<std::pair<FilterParameterId, float>> parameters,
                          int32_t control = -1) {
    FilterSettingsSlot slot;
    slot.description.type = type;
    slot.description.flags = flags;
    slot.description.parameters = std::move(parameters);
    slot.controlSlot = control;
    slot.filled = true;
    return slot;
}

TEST(FilterSettingsWriterTest, AFilterLineWithEveryAttributeHasItsBlanksWhereTheyBelong) {
    FilterSettingsDocument doc;
    doc.elements.resize(1);
    doc.elements[0].slots[0] = Filled(kParametric, F::LeftOnly | F::ChannelDeleted, {});
    doc.elements[0].slots[1] =
        Filled(kParametric, F::Disabled | F::Selected | F::RightOnly | F::Locks, {}, 7);
    EXPECT_EQ(Lines(Write(doc)).at(4),
              "\t\t<filter enabled=\"false\" selected=\"true\" channel=\"right\" freqLock=\"1\" "
              "gainLock=\"1\" bwLock=\"1\"  QLock=\"1\" slopeLock=\"1\" auto_ctl=\"7\">");
}

TEST(FilterSettingsWriterTest, WritesAWholeDocumentInItsExactLayout) {
    FilterSettingsDocument doc;
    doc.hasAttributes = true;
    doc.attributesLine = "<attributes>sort=1</attributes>";
    doc.leftGain = -1.5f;
    doc.rightGain = 2.0f;
    doc.gainsUnlinked = true;
    doc.elements.resize(2);
    doc.elements[0].slots[0] = Filled(kLowShelf2, F::LeftOnly, {{P::Gain, 5.99999905f}});
    doc.elements[0].slots[1] = Filled(kLowShelf2, F::RightOnly | F::ChannelDeleted, {});
    doc.elements[1].slots[0] = Filled(kHarmonic8, 0,
                                      {{P::Frequency, 60.0f / 48000.0f},
                                       {P::HarmonicComponents, 5.0f},
                                       {P::ComponentGain, 0.0f},
                                       {P::ReverseGainDecay, 1.0f},
                                       {P::Bandwidth, 0.00999999978f}},
                                      3);
    doc.elements[1].slots[0].description.name = "Hum<x";
    std::ostringstream out;
    out.precision(2);
    WriteFilterSettingsDocument(out, doc, 48000.0f);
    EXPECT_EQ(out.precision(), 2);
    EXPECT_EQ(out.str(), R"(<!-- Copyright (c) Zorvane Sound Works, 2026 -->
<vorix_filter_settings version="Zorvane Sound Works Vorix Settings v1.0">
	<attributes>sort=1</attributes>
	<compensation_gain>-1.5</compensation_gain>
	<left_compensation_gain>-1.5</left_compensation_gain>
	<right_compensation_gain>2</right_compensation_gain>
	<filter_element number="1">
		<filter enabled="true" channel="left">
			<filter_description>
				<type>LoShelfEQ2</type>
				<name></name>
				<param_list>
					<gain_db>5.99999905</gain_db>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="2">
		<filter enabled="true" channel="both" auto_ctl="3">
			<filter_description>
				<type>8HarmonicParEQ</type>
				<name>Hum</name>
				<param_list>
					<frequency_hz>60.000000</frequency_hz>
					<harmonic_components>fundamental,,even</harmonic_components>
					<component_gain>constant</component_gain>
					<rev_gain_decay>true</rev_gain_decay>
					<bandwidth_oct>0.00999999978</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
</vorix_filter_settings>)");
}

TEST(FilterSettingsWriterTest, ComponentTextsKeepTheirCommasAndReadBackToTheirBits) {
    const char* const texts[] = {"",     "fundamental,,",     "odd,",     "fundamental,odd,",
                                 "even", "fundamental,,even", "odd,even", "fundamental,odd,even"};
    for (int bits = 0; bits < 8; ++bits) {
        FilterDescription d;
        d.type = kHarmonic4;
        d.parameters = {{P::HarmonicComponents, static_cast<float>(bits)}};
        std::stringstream text;
        WriteFilterDescription(text, d, "", 48000.0f);
        EXPECT_EQ(Lines(text.str()).at(4), std::string("\t\t<harmonic_components>") + texts[bits] +
                                               "</harmonic_components>");
        std::string opening;
        std::getline(text, opening);  // the reader starts after <filter_description>
        FilterDescription back;
        ReadFilterDescription(text, back, 48000.0f);
        EXPECT_EQ(back.parameters, d.parameters) << texts[bits];
    }
}

// ---- Reader: refusals ----

TEST(FilterSettingsReaderTest, RefusesAMissingDocumentOrAnotherVersionWithTheirOwnTexts) {
    EXPECT_EQ(FailureOf("<!-- notice -->\n<attributes>x=1</attributes>\n"),
              "These are not valid settings or the settings have been corrupted.  "
              "(No settings found.)");
    EXPECT_EQ(FailureOf("<vorix_filter_settings version=\"Zorvane Sound Works Vorix Settings "
                        "v1.1\">\n" +
                        Element("enabled=\"true\" channel=\"both\"")),
              "These settings are not readable by this version of Vorix.");
}

TEST(FilterSettingsReaderTest, RefusesBrokenStructureWithTheGeneralText) {
    const std::string general =
        "These are not valid settings or the settings have been corrupted.  ";
    const std::string sections = "<section_list>\n<section>\n";
    const std::string broken[] = {
        "\t<filter_element number=>\n\t</filter_element>\n",
        Element("selected=\"true\" channel=\"both\""),
        Element("enabled=\"true\""),
        Element("enabled=\"true\" channel=\"both\"", "External", sections + "<b3>1</b3>\n"),
        Element("enabled=\"true\" channel=\"both\"", "External", sections + "<a1 0.5\n"),
        Element("enabled=\"true\" channel=\"both\"", "External", sections + "<b-1>1</b-1>\n"),
        Element("enabled=\"true\" channel=\"both\"", "External", "<section_list>\n<b0>1</b0>\n"),
        Element("enabled=\"true\" channel=\"both\"", "External", sections + "<b"),
    };
    for (const std::string& body : broken)
        EXPECT_EQ(FailureOf(Document(body)), general) << body;
}

// ---- Reader: tolerance ----

TEST(FilterSettingsReaderTest, TextThatIsNoFiniteNumberReadsAsZero) {
    const std::string parameters =
        "<gain_db>loud</gain_db>\n<frequency_hz>nan</frequency_hz>\n"
        "<bandwidth_oct>1e99</bandwidth_oct>\n";
    const FilterSettingsDocument doc = Read(Document(
        "<compensation_gain> +2.5dB</compensation_gain>\n<left_compensation_gain>+-1"
        "</left_compensation_gain>\n" +
        Element("enabled=\"true\" channel=\"both\" auto_ctl=\"x\"", "ParametricEQ", parameters)));
    EXPECT_EQ(doc.leftGain, 0.0f);
    EXPECT_EQ(doc.rightGain, 2.5f);
    EXPECT_TRUE(doc.gainsUnlinked);
    EXPECT_EQ(Slot(doc, 0).controlSlot, 0);
    EXPECT_EQ(Slot(doc, 0).description.parameters,
              (std::vector<std::pair<FilterParameterId, float>>{
                  {P::Gain, 0.0f}, {P::Frequency, 0.0f}, {P::Bandwidth, 0.0f}}));
}

TEST(FilterSettingsReaderTest, SkipsUnknownLinesAndAttributesAndKeepsOneValuePerParameter) {
    const FilterSettingsDocument doc = Read(Document(
        "\t<mystery>1</mystery>\n" +
        Element("colour=\"red\" enabled=\"yes\" channel=\"both\" gainLock=\"0\" QLock=\"2\"",
                "Bogus",
                "<bandwidth_oct>2</bandwidth_oct>\n<junk/>\n<gain_db>1</gain_db>\n"
                "<gain_db>-4</gain_db>\n")));
    ASSERT_EQ(doc.elements.size(), 1u);
    EXPECT_FALSE(doc.hasAttributes);
    EXPECT_EQ(Slot(doc, 0).description.type, kNoFilterType);
    EXPECT_EQ(Slot(doc, 0).description.flags, F::Disabled | F::QLock);
    EXPECT_EQ(
        Slot(doc, 0).description.parameters,
        (std::vector<std::pair<FilterParameterId, float>>{{P::Gain, -4.0f}, {P::Bandwidth, 2.0f}}));
}

TEST(FilterSettingsReaderTest, SeveralAttributeLinesMergeAsTheAttributeStoreWouldTakeThem) {
    const FilterSettingsDocument doc = Read(Document(
        "\t<attributes>zoom=1,sort=0</attributes>\n\t<attributes>sort=2,labels=1</attributes>\n"));
    EXPECT_EQ(doc.attributesLine, "<attributes>labels=1,sort=2,zoom=1</attributes>");
}

TEST(FilterSettingsReaderTest, CarriageReturnsAndAMissingEndChangeNothing) {
    const std::string program = FactoryProgramTexts().at(16);  // sections and a name
    std::string crlf = std::regex_replace(program, std::regex("\n"), "\r\n");
    EXPECT_EQ(Write(Read(crlf)), Write(Read(program)));
    crlf.resize(crlf.find("</filter_element>"));
    EXPECT_EQ(Read(crlf).elements.size(), 1u);
}

TEST(FilterSettingsReaderTest, NamesAreCutAtThirteenCharacters) {
    const auto name = [](const std::string& given) {
        return Slot(Read(Document(
                        Element("enabled=\"true\" channel=\"both\"", "ParametricEQ", "", given))),
                    0)
            .description.name;
    };
    EXPECT_EQ(name("Infrasonic-A"), "Infrasonic-A");
    EXPECT_EQ(name("Twenty characters ok"), "Twenty charac");
}

// ---- Reader: elements ----

const std::string kRightOnly = Element(
    "enabled=\"true\" selected=\"true\" channel=\"right\" "
    "bwLock=\"1\"  auto_ctl=\"4\"",
    "LoShelfEQ", "<gain_db>9</gain_db>\n");

TEST(FilterSettingsReaderTest, ARightFilterAloneOnStereoGetsAHollowLeftHalf) {
    const FilterSettingsDocument doc = Read(Document(kRightOnly));
    const FilterSettingsSlot &left = Slot(doc, 0), &right = Slot(doc, 1);
    EXPECT_TRUE(right.filled);
    EXPECT_EQ(right.description.flags, F::Selected | F::RightOnly | F::BwLock);
    EXPECT_EQ(right.controlSlot, 4);
    EXPECT_FALSE(left.filled);
    EXPECT_EQ(left.description.flags, F::LeftOnly | F::ChannelDeleted | F::Disabled);
    EXPECT_EQ(left.description.type, kLowShelf);
    EXPECT_EQ(left.description.parameters, right.description.parameters);
    EXPECT_EQ(left.controlSlot, -1);
    // The hollow half is not written; the working half is, as the right one.
    EXPECT_EQ(Write(Read(Write(doc))), Write(doc));
    EXPECT_EQ(Lines(Write(doc)).at(4),
              "\t\t<filter enabled=\"true\" selected=\"true\" "
              "channel=\"right\" bwLock=\"1\"  auto_ctl=\"4\">");
}

TEST(FilterSettingsReaderTest, ARightFilterAloneOnMonoBecomesTheOnlyFilter) {
    const FilterSettingsDocument doc = Read(Document(kRightOnly), 48000.0f, 1);
    EXPECT_TRUE(Slot(doc, 0).filled);
    EXPECT_EQ(Slot(doc, 0).description.flags, F::Selected | F::BwLock);
    EXPECT_FLOAT_EQ(Parameter(Slot(doc, 0), P::Gain), 9.0f);
    EXPECT_EQ(Slot(doc, 0).controlSlot, 4);
    EXPECT_FALSE(Slot(doc, 1).filled);
    EXPECT_EQ(Slot(doc, 1).controlSlot, -1);
}

TEST(FilterSettingsReaderTest, HalvesOfAPairLearnTheirSidesAndABothFilterSharesItsSwitch) {
    const std::string split = Element("enabled=\"false\" channel=\"left\"") +
                              Element("enabled=\"true\" channel=\"both\"");
    const FilterSettingsDocument stereo = Read(Document(split));
    EXPECT_EQ(Slot(stereo, 0).description.flags, F::Disabled | F::LeftOnly);
    EXPECT_EQ(Slot(stereo, 1).description.flags, F::RightOnly | F::ChannelDeleted | F::Disabled);
    EXPECT_EQ(Slot(stereo, 0, 1).description.flags, 0u);
    EXPECT_EQ(Slot(stereo, 1, 1).description.flags, 0u);
    EXPECT_EQ(Slot(Read(Document(split), 48000.0f, 1), 0).description.flags, F::Disabled);
    // A switched-off both filter whose right half a later line replaced: the switch still holds
    // for the right half, and the left one learns that it is a left half.
    const FilterSettingsDocument overridden =
        Read(Document(OneElement(Element("enabled=\"false\" channel=\"both\""),
                                 Element("enabled=\"true\" channel=\"right\""))));
    EXPECT_EQ(Slot(overridden, 0).description.flags, F::Disabled | F::LeftOnly);
    EXPECT_EQ(Slot(overridden, 1).description.flags, F::Disabled | F::RightOnly);
}

// 25000 Hz is taken as 20000 Hz, which 48000 Hz carries and 32000 Hz does not; below 0 Hz is 0 Hz.
TEST(FilterSettingsReaderTest, FrequenciesAreCappedAndThoseTheRateCannotCarryAreOutOfRange) {
    const auto read = [](const std::string& hz, float rate, const char* channel = "both") {
        return Read(Document(Element(std::string("enabled=\"true\" channel=\"") + channel + "\"",
                                     "2ndOrdLowpass", "<frequency_hz>" + hz + "</frequency_hz>\n")),
                    rate);
    };
    const FilterSettingsDocument at48k = read("25000", 48000.0f);
    EXPECT_EQ(Slot(at48k, 0).description.flags, 0u);
    EXPECT_FLOAT_EQ(Parameter(Slot(at48k, 0), P::Frequency), 20000.0f / 48000.0f);
    const FilterSettingsDocument at32k = read("25000", 32000.0f, "left");
    EXPECT_EQ(Slot(at32k, 0).description.flags, F::LeftOnly | F::OutOfRange);
    EXPECT_EQ(Slot(at32k, 1).description.flags,
              F::RightOnly | F::ChannelDeleted | F::Disabled | F::OutOfRange);
    EXPECT_FLOAT_EQ(Parameter(Slot(at32k, 0), P::Frequency), 0.625f);
    // Exactly the highest frequency of the rate is still inside it.
    EXPECT_EQ(Slot(read("20000", 44100.0f), 0).description.flags, 0u);
    EXPECT_EQ(Slot(read("14513", 32000.0f), 0).description.flags, F::OutOfRange);
    EXPECT_EQ(Slot(read("14512", 32000.0f), 0).description.flags, 0u);
    EXPECT_EQ(Parameter(Slot(read("-50", 48000.0f), 0), P::Frequency), 0.0f);
}

// ---- Records from descriptions ----

TEST(FilterFromDescriptionTest, AppliesParametersThroughTheClampsThenNameAndFlags) {
    PoolWithChain pc;
    pc.Add(kNotch);
    FilterDescription d;
    d.type = kLowShelf;
    d.flags = F::Selected | F::GainLock;
    d.name = "A name far too long";
    d.parameters = {{P::Gain, 30.0f}, {P::Slope, 0.5f}};
    OpaqueFilterData* f = CreateFilterFromDescription(pc.chain, d);
    ASSERT_NE(f, nullptr);
    EXPECT_EQ(NextFilter(FirstFilter(pc.chain)), f);
    EXPECT_EQ(pc.chain->count, 2);
    EXPECT_EQ(f->chain, pc.chain);
    EXPECT_NEAR(GetFilterParameter(f, P::Gain), 24.0, 1e-5);
    EXPECT_FLOAT_EQ(GetFilterParameter(f, P::Slope), 0.5f);
    EXPECT_FLOAT_EQ(GetFilterParameter(f, P::Frequency), 0.0022675737f);  // default kept
    EXPECT_EQ(f->name, "A name far to");
    EXPECT_EQ(f->flags, d.flags);
    d.type = kNoFilterType;
    EXPECT_EQ(CreateFilterFromDescription(pc.chain, d), nullptr);
    EXPECT_EQ(pc.chain->count, 2);
}

// The audio thread walks the chain while records are added: each must be complete, sections and
// flags included, the moment it can be reached (ThreadSanitizer sees any early publication).
TEST(FilterFromDescriptionTest, ARecordIsCompleteBeforeTheAudioThreadCanReachIt) {
    PoolWithChain pc;
    FilterDescription d;
    d.type = kExternalFilter;
    d.flags = F::Disabled;
    d.numerators.assign(4, {0.5f, 0.0f, 0.0f});
    d.denominators.assign(4, {1.0f, 0.0f, 0.0f});
    std::atomic<bool> done{false};
    std::atomic<int> incomplete{0};
    std::thread audio([&] {
        std::vector<float> block(16, 1.0f);
        while (!done.load()) {
            for (OpaqueFilterData* f = FirstFilter(pc.chain); f != nullptr; f = NextFilter(f)) {
                if (f->flags != F::Disabled || AsExternal(f)->sections.size() != 4) ++incomplete;
                f->process.Load()(f, block.data(), block.data(), 16);
            }
        }
    });
    for (int i = 0; i < 1000; ++i)
        ASSERT_NE(CreateFilterFromDescription(pc.chain, d), nullptr);
    done = true;
    audio.join();
    EXPECT_EQ(incomplete.load(), 0);
    EXPECT_EQ(pc.chain->count, 1000);
}

}  // namespace
}  // namespace vorix::test
