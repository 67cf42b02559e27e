#include "vorix/HelpTexts.h"

namespace vorix::cli {
namespace {

struct CommandHelp {
    std::string_view command;
    std::string_view text;
};

constexpr std::string_view kToolHelp = R"(usage: vorix COMMAND [ARGUMENTS]

Vorix, the multi-filter equalizer, on the command line.

commands:
  render IN OUT       render an audio file through a factory program or a settings file
  programs            list the factory programs by number and name
  show-program N      print the settings document of a factory program
  response            print the frequency response of a program or settings file as CSV
  demo [DIR]          remove mains hum from a made-up recording, and measure it

"vorix COMMAND --help" tells more of each. Exit status: 0 done, 1 wrong command line,
2 the work failed; every error is one line on the standard error.
)";

constexpr CommandHelp kCommandHelp[] = {
    {"render", R"(usage: vorix render IN OUT [--program N|NAME] [--settings FILE.vrx]
                    [--set PARAM=VALUE]... [--block N] [--float] [--quiet]

Renders the audio file IN (mono or stereo; WAV, AIFF, FLAC and whatever else libsndfile reads)
through Vorix into OUT, at IN's rate. OUT's name says its kind: .wav, .aif or .aiff, .flac. It
has IN's sample format, or 32-bit float with --float. OUT appears only when it is complete.

  --program N|NAME     a factory program, by number, by name, or by a prefix of its name that
                       fits one program only (letter case aside); "vorix programs" lists them
  --settings FILE.vrx  a settings file saved by the editor, instead of a program
  --set PARAM=VALUE    a host parameter change after the settings, before the audio: PARAM is
                       an internal name (prmControl_0_Gain, prmLeftGain) or the editor's name
                       ("A: Gain", "Left Gain"); VALUE in the parameter's units, held to its
                       range as a host's control holds it; may be given several times
  --block N            the host's block size, 1 to 4096 samples (default 4096)
  --float              write 32-bit float samples
  --quiet              no progress bar (it shows only on a terminal, for renders of more than
                       about two seconds)

Without --program or --settings the render uses a new instance's own filters.
)"},
    {"programs", R"(usage: vorix programs

Lists the factory programs, one per line: the number, a tab, the name.
)"},
    {"show-program", R"(usage: vorix show-program N|NAME [--rate HZ] [--channels 1|2]

Prints the settings document that the engine writes after loading factory program N: the content
a settings file of that program has. The rate (default 44100 Hz) and channel count (default 2)
are the engine's.
)"},
    {"response", R"(usage: vorix response [--program N|NAME | --settings FILE.vrx]
                      [--set PARAM=VALUE]... [--rate HZ] [--channels 1|2]
                      [--points N | --freqs F1,F2,...]

Prints the steady-state gain of the whole plug-in per channel as CSV with the header
frequency_hz,left_db,right_db: the filters that process each channel, and its output trim, in
decibels (at least -240). By default 200 frequencies spaced logarithmically from 10 Hz to the
smaller of 20000 Hz and half the rate (default 44100 Hz); --points sets how many (at least 2),
--freqs names them (0 to half the rate). A mono engine (--channels 1) repeats the left column.
--set changes a host parameter after the settings, as for render.
)"},
    {"demo", R"(usage: vorix demo [DIR]

Makes a 20-second 48 kHz stereo recording of music-like sound with 60 Hz mains hum and its 2nd
to 5th harmonics, renders it through the factory program against 60 Hz hum, writes both into
DIR (default ./vorix-demo), and prints the level of each hum component before and after, what
the program's filter gives at that frequency, and the change of the music's level away from the
hum.
)"},
};

}  // namespace

std::string_view HelpFor(std::string_view command) {
    if (command.empty()) return kToolHelp;
    for (const CommandHelp& help : kCommandHelp) {
        if (help.command == command) return help.text;
    }
    return {};
}

}  // namespace vorix::cli
