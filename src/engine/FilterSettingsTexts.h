#pragma once

#include "core/SettingsTexts.h"

namespace vorix {

// The fixed texts of a filter settings document and of a failed load.

// The maker's notice, the first line of every document written.
inline constexpr const char* kFilterSettingsNotice =
    "<!-- Copyright (c) Zorvane Sound Works, 2026 -->";

// The version a document must carry, character for character, to be read.
inline constexpr const char* kFilterSettingsVersion = "Zorvane Sound Works Vorix Settings v1.0";

// The title and the general text of a failed load are the core's own settings texts; the two
// blanks behind the sentence belong to the text.
inline constexpr const char* kFilterSettingsFailureTitle = kUnableToLoadSettings;
inline constexpr const char* kFilterSettingsCorrupted = kSettingsCorrupted;

// The general text with the reason that no document was found in the text at all.
inline constexpr const char* kNoFilterSettingsFound =
    "These are not valid settings or the settings have been corrupted.  (No settings found.)";

// A document whose version differs, whatever else it holds.
inline constexpr const char* kFilterSettingsVersionRefused =
    "These settings are not readable by this version of Vorix.";

// What replaces the text when memory ran out during a load.
inline constexpr const char* kNoMemoryForFilterSettings = kNoMemoryForProgram;

}  // namespace vorix
