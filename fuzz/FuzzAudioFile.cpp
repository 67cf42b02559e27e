// Any bytes as the input file of a render, through the tool's own entry: the render succeeds or
// fails with status 2 and one message, and a failed render leaves no output file behind.

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "FuzzSupport.h"
#include "vorix/CommandLine.h"

using namespace vorix;
namespace fs = std::filesystem;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fs::path folder = [] {
        fs::path made = fs::temp_directory_path() / ("vorix-fuzz-audio-" + std::to_string(getpid()));
        fs::create_directories(made);
        return made;
    }();
    const fs::path input = folder / "in.wav";
    const fs::path output = folder / "out.wav";
    std::ofstream(input, std::ios::binary).write(reinterpret_cast<const char*>(data),
                                                 static_cast<std::streamsize>(size));
    fs::remove(output);
    std::ostringstream out, err;
    const int status = cli::RunVorix({"render", input.string(), output.string(), "--program",
                                      "1", "--quiet"},
                                     out, err);
    if (status != 0 && status != 2) fuzz::Broken("a render of a file ends in a usage error");
    if (status == 2 && fs::exists(output)) fuzz::Broken("a failed render left an output file");
    if (status == 2 && err.str().empty()) fuzz::Broken("a failed render said nothing");
    return 0;
}
