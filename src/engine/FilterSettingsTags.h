#pragma once

#include <cstdint>
#include <string_view>

#include "dsp/FilterTypes.h"

namespace vorix {

// The element and attribute names of a filter settings document, shared by its writer and its
// reader. The reader finds them by substring, one line at a time, so the bracketed forms are what
// it looks for. An element's closing tag is its opening tag with "/" after the "<".

inline constexpr std::string_view kDocumentOpening = "<vorix_filter_settings";
inline constexpr std::string_view kDocumentClosing = "</vorix_filter_settings>";
inline constexpr std::string_view kVersionAttribute = "version";

inline constexpr std::string_view kCompensationGainTag = "<compensation_gain>";
inline constexpr std::string_view kLeftCompensationGainTag = "<left_compensation_gain>";
inline constexpr std::string_view kRightCompensationGainTag = "<right_compensation_gain>";

// An element line is recognised by its start up to the "=" of its one attribute.
inline constexpr std::string_view kElementOpening = "<filter_element number=";
inline constexpr std::string_view kElementNumberAttribute = "number";
inline constexpr std::string_view kElementClosing = "</filter_element>";

inline constexpr std::string_view kFilterOpening = "<filter ";
inline constexpr std::string_view kFilterClosing = "</filter>";

inline constexpr std::string_view kEnabledAttribute = "enabled";
inline constexpr std::string_view kSelectedAttribute = "selected";
inline constexpr std::string_view kChannelAttribute = "channel";
inline constexpr std::string_view kControlSlotAttribute = "auto_ctl";

inline constexpr std::string_view kTrueText = "true";
inline constexpr std::string_view kFalseText = "false";
inline constexpr std::string_view kBothChannelsText = "both";
inline constexpr std::string_view kLeftChannelText = "left";
inline constexpr std::string_view kRightChannelText = "right";

// The editor's locks as attributes of a filter line, in the order they are written. bwLock takes
// a blank behind it as well: that is how documents have always looked, and since attributes are
// found by name it does no harm.
struct LockAttribute {
    uint32_t flag;
    std::string_view name;
    bool blankBehind;
};
inline constexpr LockAttribute kLockAttributes[] = {
    {FilterFlags::FreqLock, "freqLock", false},   {FilterFlags::GainLock, "gainLock", false},
    {FilterFlags::BwLock, "bwLock", true},        {FilterFlags::QLock, "QLock", false},
    {FilterFlags::SlopeLock, "slopeLock", false},
};

inline constexpr std::string_view kDescriptionTag = "<filter_description>";
inline constexpr std::string_view kDescriptionClosing = "</filter_description>";
inline constexpr std::string_view kTypeTag = "<type>";
inline constexpr std::string_view kNameTag = "<name>";
inline constexpr std::string_view kParameterListTag = "<param_list>";
inline constexpr std::string_view kParameterListClosing = "</param_list>";

// Sections of an External filter. A section list is recognised by its bare name, a section by
// its opening without the ">", coefficients by "<b" or "<a" and the index digit behind them.
inline constexpr std::string_view kSectionListName = "section_list";
inline constexpr std::string_view kSectionListTag = "<section_list>";
inline constexpr std::string_view kSectionListClosing = "</section_list>";
inline constexpr std::string_view kSectionOpening = "<section";
inline constexpr std::string_view kSectionTag = "<section>";
inline constexpr std::string_view kSectionClosing = "</section>";
inline constexpr std::string_view kNumeratorOpening = "<b";
inline constexpr std::string_view kDenominatorOpening = "<a";
inline constexpr int kCoefficientsPerSection = 3;

// The words of the three whole-number parameters of a harmonic filter. The reader looks for
// kDecayingWord's stem, so any text holding "decay" means decaying.
inline constexpr std::string_view kFundamentalWord = "fundamental";
inline constexpr std::string_view kOddWord = "odd";
inline constexpr std::string_view kEvenWord = "even";
inline constexpr std::string_view kConstantWord = "constant";
inline constexpr std::string_view kDecayingWord = "decaying";
inline constexpr std::string_view kDecayStem = "decay";

// The bits of harmonic_components.
inline constexpr int kFundamentalComponent = 1;
inline constexpr int kOddComponents = 2;
inline constexpr int kEvenComponents = 4;

}  // namespace vorix
