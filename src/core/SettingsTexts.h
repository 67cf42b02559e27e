#pragma once

#include <cstddef>

namespace vorix {

// The maker's full name. A settings chunk that lacks it near its start is not ours.
inline constexpr const char* kMakerName = "Zorvane Sound Works";

// How far into a chunk the maker's name is looked for.
inline constexpr std::size_t kMakerNameSearchBytes = 500;

// The header line of a program document: the start, the product name, the end.
inline constexpr const char* kProgramHeaderStart = "<!-- Zorvane Sound Works ";
inline constexpr const char* kProgramHeaderEnd = " Program Settings -->";

// The lines that open and close one program block of a program document, and their attributes.
inline constexpr const char* kProgramOpening = "<program";
inline constexpr const char* kProgramClosing = "</program>";
inline constexpr const char* kProgramNumberAttribute = "number";
inline constexpr const char* kProgramNameAttribute = "name";

// The longest settings text that is read. Real documents are a few kilobytes; anything near this
// size is damage or a wrong file, and reading it would only hold up the instance.
inline constexpr std::size_t kMaxSettingsTextBytes = 4 * 1024 * 1024;

// Zero bytes behind the text of every chunk: a chunk's text is not otherwise terminated.
inline constexpr std::size_t kChunkTailBytes = 16;

// Program documents are read through a line buffer of this size, so a line of
// kProgramLineBufferSize - 1 characters or more is outside the format.
inline constexpr std::size_t kProgramLineBufferSize = 256;

// The element that carries the engine's view options inside a settings text.
inline constexpr const char* kAttributesOpening = "<attributes>";
inline constexpr const char* kAttributesClosing = "</attributes>";

// The framework's own settings form: the archive's title around the maker's notice, and the name
// of the metadata object inside it.
inline constexpr const char* kSettingsArchiveTitleStart = "ZOR Plugin Settings (";
inline constexpr const char* kSettingsArchiveTitleEnd = ")";
inline constexpr const char* kSettingsMetadataName = "Settings Metadata";

// What the user reads when settings cannot be loaded or saved. The two blanks behind a sentence
// belong to the texts, also where nothing follows them.
inline constexpr const char* kUnableToLoadSettings = "Unable to load settings.";
inline constexpr const char* kSettingsCorrupted =
    "These are not valid settings or the settings have been corrupted.  ";
inline constexpr const char* kSettingsHeaderMissing =
    "These are not valid settings or the settings have been corrupted.  "
    "(Unable to find the header.)";
inline constexpr const char* kSettingsCarriageReturns =
    "These are not valid settings or the settings have been corrupted.  "
    "(Contains illegal carriage returns.)";
inline constexpr const char* kNoMemoryToLoadSettings =
    "There is insufficient memory available. Cannot load the settings.";
inline constexpr const char* kNoMemoryToSaveSettings =
    "There is insufficient memory available to save settings.";
inline constexpr const char* kUnableToSaveSettings = "Unable to save settings.";
inline constexpr const char* kUnknownSaveError = "An unknown error occurred.";
inline constexpr const char* kNoMemoryForProgram = "There is insufficient memory available.";

// The kind that every settings message gives the error display.
inline constexpr int kSettingsErrorKind = 2;

}  // namespace vorix
