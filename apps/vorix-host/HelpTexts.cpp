#include "vorix-host/HelpTexts.h"

namespace vorix {
namespace {

constexpr const char* kHostHelp = R"(Usage: vorix-host [--module PATH] COMMAND [OPTIONS]

Loads a Vorix plug-in file the way a host does, through its exported entries,
and drives its inserts: controls, the render call, meters and saved chunks.

Commands:
  types                  list the effect types: id, name, page tables
  controls [--type ID]   list the controls of an insert of a type or session
  render [--type ID] IN OUT
                         render audio through an insert, block by block

Options:
  --module PATH          the plug-in file; by default the Vorix.so built or
                         installed with this host
  --help                 show this text, or a command's with COMMAND --help

Exit status: 0 on success, 1 for a wrong command line, 2 when the work failed.
)";

constexpr const char* kTypesHelp = R"(Usage: vorix-host [--module PATH] types

Lists the effect types of the plug-in file in the order the file gives them,
one per line: the type's id, the first name of its name set, and the name of
its control-surface page tables, separated by tabs.
)";

constexpr const char* kControlsHelp =
    R"(Usage: vorix-host [--module PATH] controls [--type ID] [--load SESSION]
                                           [--rate HZ]

Makes an insert of the effect type ID and lists its controls, one per line,
separated by tabs: number, id, name, kind (continuous or discrete), the
bottom and top of its range, and its present value, as the insert shows them.

  --type ID              the effect type, such as StRT or mnRT; taken from the
                         session when --load is given without it
  --load SESSION         restores the insert's chunks from a session file
                         first, so that the list shows the saved values
  --rate HZ              the sample rate of the insert (default 48000)
)";

constexpr const char* kRenderHelp =
    R"(Usage: vorix-host [--module PATH] render [--type ID] IN OUT [OPTIONS]

Plays IN through one insert into OUT, one render call per block, as a host
plays a track. OUT is written whole or not at all.

  IN                     an audio file (WAV, AIFF, FLAC, ...), or a generated
                         sine: sine:HZ[:AMPLITUDE[:SECONDS]] (defaults 1000 Hz,
                         0.5, 2 seconds); its channels must be the insert's
  OUT                    the output, in the format of IN; 32-bit float WAV for
                         a generated sine
  --type ID              the effect type, such as StRT or mnRT; taken from the
                         session when --load is given without it
  --control C=VALUE      sets control C, its number or its four-character id,
                         before the first block; VALUE is read as the control
                         reads typed text: "2.5k", "-3 dB", "1" (repeatable)
  --automate C=VALUE@SECONDS
                         changes control C before the first block that starts
                         at or after SECONDS into the track (repeatable)
  --load SESSION         restores the insert's chunks from a session file
                         before the controls are set
  --save SESSION         saves every chunk of the insert to a session file
                         after the render
  --block N              the host's block size in samples (default 1024)
  --rate HZ              the sample rate of a generated sine (default 48000)
  --meters               prints the latency and the meters after the render
)";

}  // namespace

const char* HelpFor(std::string_view command) noexcept {
    if (command.empty()) return kHostHelp;
    if (command == "types") return kTypesHelp;
    if (command == "controls") return kControlsHelp;
    if (command == "render") return kRenderHelp;
    return nullptr;
}

}  // namespace vorix
