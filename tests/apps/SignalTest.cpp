// The tool as a process, ended by signals: whatever ends it, no hidden temporary file stays, and
// an older output of the name is left as it was.

#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <chrono>
#include <cstdint>
#include <thread>

#include "CliTestSupport.h"

namespace vorix::test {
namespace {

const std::string kTool = VORIX_TOOL_PATH;

// A 16-bit stereo WAV header that promises ten minutes of audio.
std::string EndlessWavHeader() {
    const auto word = [](std::uint32_t v, int bytes) {
        std::string text;
        for (int k = 0; k < bytes; ++k)
            text.push_back(static_cast<char>((v >> (8 * k)) & 0xFF));
        return text;
    };
    const std::uint32_t rate = 48000;
    const std::uint32_t data = rate * 600 * 4;
    return "RIFF" + word(36 + data, 4) + "WAVEfmt " + word(16, 4) + word(1, 2) + word(2, 2) +
           word(rate, 4) + word(rate * 4, 4) + word(4, 2) + word(16, 2) + "data" + word(data, 4);
}

// A pipe in the folder that the test keeps open at both ends, so that the tool reads what the
// test gives it and then waits for more, in the middle of its work.
class Feed {
  public:
    explicit Feed(const std::string& path) {
        EXPECT_EQ(mkfifo(path.c_str(), 0600), 0);
        descriptor_ = open(path.c_str(), O_RDWR | O_CLOEXEC);
        EXPECT_GE(descriptor_, 0);
    }
    ~Feed() { close(descriptor_); }
    void Give(const std::string& bytes) const {
        EXPECT_EQ(write(descriptor_, bytes.data(), bytes.size()),
                  static_cast<ssize_t>(bytes.size()));
    }

  private:
    int descriptor_ = -1;
};

// The tool as a child process, its standard error kept.
class Child {
  public:
    explicit Child(std::vector<std::string> args, int ignoredSignal = 0) {
        args.insert(args.begin(), kTool);
        std::vector<char*> argv;
        for (std::string& arg : args)
            argv.push_back(arg.data());
        argv.push_back(nullptr);
        int pipeEnds[2];
        EXPECT_EQ(pipe2(pipeEnds, O_CLOEXEC), 0);
        pid_ = fork();
        if (pid_ == 0) {
            // Signals that dump core would leave a core file in the test's folder.
            const rlimit noCore{0, 0};
            setrlimit(RLIMIT_CORE, &noCore);
            if (ignoredSignal != 0) signal(ignoredSignal, SIG_IGN);
            dup2(pipeEnds[1], STDERR_FILENO);
            execv(argv[0], argv.data());
            _exit(127);
        }
        close(pipeEnds[1]);
        errPipe_ = pipeEnds[0];
    }
    ~Child() {
        if (pid_ > 0 && !reaped_) {
            kill(pid_, SIGKILL);
            Wait();
        }
        close(errPipe_);
    }
    void Signal(int signal) const { kill(pid_, signal); }
    // Waits, within a generous bound for slow builds, until the tool has `path` open. (Before
    // its start the child is a copy of the test, holding the test's own descriptors.)
    void AwaitOpen(const std::string& path) const {
        const fs::path wanted = fs::canonical(path);
        const fs::path process = "/proc/" + std::to_string(pid_);
        for (int attempt = 0; attempt < 3000; ++attempt) {
            std::error_code error;
            const bool started = fs::read_symlink(process / "exe", error) == fs::canonical(kTool);
            for (fs::directory_iterator entry(process / "fd", error), end;
                 started && !error && entry != end; entry.increment(error)) {
                if (fs::read_symlink(entry->path(), error) == wanted) return;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        ADD_FAILURE() << "the tool never opened " << path;
    }
    // The wait status; the standard error is read as far as the child wrote it. A child that
    // does not end within a generous bound is killed, and the test fails rather than hangs.
    int Wait() {
        int status = 0;
        pid_t ended = 0;
        for (int attempt = 0; attempt < 3000 && (ended = waitpid(pid_, &status, WNOHANG)) == 0;
             ++attempt) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        if (ended == 0) {
            ADD_FAILURE() << "the tool did not end";
            kill(pid_, SIGKILL);
            waitpid(pid_, &status, 0);
        }
        reaped_ = true;
        char buffer[512];
        for (ssize_t n; (n = read(errPipe_, buffer, sizeof buffer)) > 0;)
            err_.append(buffer, static_cast<std::size_t>(n));
        return status;
    }
    const std::string& Err() const { return err_; }

  private:
    pid_t pid_ = -1;
    int errPipe_ = -1;
    bool reaped_ = false;
    std::string err_;
};

// Waits, within a generous bound for slow builds, until the folder holds a hidden file of at
// least `bytes`: the render's output under way.
std::string AwaitTemporaryFile(const TempFolder& folder, std::uintmax_t bytes) {
    for (int attempt = 0; attempt < 3000; ++attempt) {
        for (const std::string& name : folder.Names()) {
            std::error_code error;
            if (name[0] == '.' && fs::file_size(folder / name, error) >= bytes) return name;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    ADD_FAILURE() << "the render never began its output";
    return {};
}

std::string Silence(std::size_t frames) {
    return std::string(frames * 4, '\x01');
}

class RenderEndedBySignal : public ::testing::TestWithParam<int> {};

TEST_P(RenderEndedBySignal, LeavesNoTemporaryFileAndTheOlderOutputAlone) {
    const int signal = GetParam();
    TempFolder folder;
    const Feed feed(folder / "in.wav");
    WriteText(folder / "out.wav", "older");
    const std::vector<std::string> before = folder.Names();
    feed.Give(EndlessWavHeader() + Silence(8192));
    Child child({"render", folder / "in.wav", folder / "out.wav", "--block", "256"});
    AwaitTemporaryFile(folder, 4096);
    child.Signal(signal);
    const int status = child.Wait();

    if (signal == SIGINT || signal == SIGTERM) {
        ASSERT_TRUE(WIFEXITED(status)) << status;
        EXPECT_EQ(WEXITSTATUS(status), 2);
        EXPECT_EQ(child.Err(), "vorix render: interrupted, so no output was written.\n");
    } else {
        ASSERT_TRUE(WIFSIGNALED(status)) << status;
        EXPECT_EQ(WTERMSIG(status), signal);
    }
    EXPECT_EQ(folder.Names(), before);
    std::ifstream older(folder / "out.wav");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(older), {}), "older");
}

INSTANTIATE_TEST_SUITE_P(Signals, RenderEndedBySignal,
                         ::testing::Values(SIGHUP, SIGINT, SIGQUIT, SIGABRT, SIGUSR1, SIGUSR2,
                                           SIGPIPE, SIGALRM, SIGTERM, SIGXCPU, SIGXFSZ, SIGVTALRM,
                                           SIGPROF, SIGPWR, SIGRTMIN + 1),
                         [](const auto& info) {
                             const char* name = sigabbrev_np(info.param);
                             return std::string(name != nullptr ? name : "RealTime");
                         });

// A background job started with hang-ups ignored keeps rendering through one, and still cleans
// up when it is stopped.
TEST(RenderSignals, KeepsASignalIgnoredThatItWasStartedWithIgnored) {
    TempFolder folder;
    const Feed feed(folder / "in.wav");
    feed.Give(EndlessWavHeader() + Silence(4096));
    Child child({"render", folder / "in.wav", folder / "out.wav", "--block", "256"}, SIGHUP);
    AwaitTemporaryFile(folder, 4 * 4096);
    child.Signal(SIGHUP);
    feed.Give(Silence(8192));
    AwaitTemporaryFile(folder, 4 * 12288);
    child.Signal(SIGTERM);
    const int status = child.Wait();
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 2) << status;
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"in.wav"});
}

// A settings file that is a pipe nobody writes to: an interrupt ends the wait at once.
TEST(RenderSignals, InterruptEndsTheWaitForASettingsFile) {
    TempFolder folder;
    const Feed feed(folder / "settings.vrx");
    Child child({"response", "--settings", folder / "settings.vrx"});
    // The pipe is open at both ends, so the tool waits in its read until the signal comes.
    child.AwaitOpen(folder / "settings.vrx");
    child.Signal(SIGINT);
    const int status = child.Wait();
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 2) << status;
    EXPECT_EQ(child.Err(), "vorix response: interrupted.\n");
}

}  // namespace
}  // namespace vorix::test
