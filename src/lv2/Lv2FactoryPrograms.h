#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vorix {

// One factory program as the bundle offers it for a preset: its number, its name and its
// settings document, the text the core loads for the program.
struct Lv2FactoryProgram {
    std::int32_t number = 0;
    std::string name;
    std::string settings;
};

// The programs of the product's program document, by number, read as the core reads them: the
// lines between a program's opening and closing lines, each with its line feed; numbers at or
// beyond `programCount` are left out, and a later block of the same number replaces an earlier
// one. Build time; throws std::runtime_error for a document that the core would refuse.
std::vector<Lv2FactoryProgram> ReadLv2FactoryPrograms(std::string_view document,
                                                      std::string_view productName,
                                                      std::int32_t programCount);

}  // namespace vorix
