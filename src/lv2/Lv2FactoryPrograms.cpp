#include "lv2/Lv2FactoryPrograms.h"

#include <cstdlib>
#include <map>
#include <stdexcept>

#include "core/ProgramDocumentReader.h"
#include "core/SettingsLines.h"
#include "core/SettingsTexts.h"

namespace vorix {

namespace {

bool Contains(std::string_view text, const char* piece) {
    return text.find(piece) != std::string_view::npos;
}

}  // namespace

std::vector<Lv2FactoryProgram> ReadLv2FactoryPrograms(std::string_view document,
                                                      std::string_view productName,
                                                      std::int32_t programCount) {
    ProgramDocumentReader reader(document);
    if (!reader.FindHeader(productName))
        throw std::runtime_error("program document header missing");
    std::map<std::int32_t, Lv2FactoryProgram> programs;
    std::string line;
    while (reader.NextLine(line)) {
        if (!Contains(line, kProgramOpening)) continue;
        // As the core reads it: a negative number counts as its absolute value.
        const std::int64_t number = std::llabs(
            static_cast<std::int64_t>(GetIntLineAttribute(line, kProgramNumberAttribute)));
        if (number >= programCount) continue;
        const auto slot = static_cast<std::int32_t>(number);
        Lv2FactoryProgram program{slot, GetLineAttribute(line, kProgramNameAttribute), {}};
        while (reader.NextLine(line) && !Contains(line, kProgramClosing)) {
            program.settings += line;
            program.settings += '\n';
        }
        programs[slot] = std::move(program);
    }
    if (reader.HitLongLine()) throw std::runtime_error("program document line too long");
    std::vector<Lv2FactoryProgram> ordered;
    for (auto& entry : programs)
        ordered.push_back(std::move(entry.second));
    return ordered;
}

}  // namespace vorix
