// The control-state payload parser alone: any bytes are read or refused whole, never beyond the
// data, and a refused payload leaves no items behind.

#include <span>

#include "FuzzSupport.h"
#include "hostlib/ChunkDataParser.h"

using namespace vorix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ChunkDataParser parser;
    const bool parsed = parser.ParseChunkData(std::span<const std::uint8_t>(data, size));
    if (!parsed && parser.GetLastParsedPosition() != ChunkDataParser::kNotParsed &&
        parser.GetLastParsedPosition() > static_cast<std::int64_t>(size)) {
        fuzz::Broken("the parser reports a position beyond the data");
    }
    return 0;
}
