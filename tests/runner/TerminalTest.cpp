// vornadel-host at a real terminal: the runner as a separate process whose standard input,
// output and errors are a pseudo-terminal, typed into one command at a time after each prompt,
// as a person would.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <chrono>
#include <string>
#include <vector>

#include "LineEditor.hpp"
#include "RunHost.h"

namespace {

struct TerminalSession {
    int status = -1;     // the exit status; -1 when the runner did not exit normally in time
    std::string screen;  // everything the terminal showed (the typed lines echoed), without CR
};

class Terminal {
public:
    Terminal() {
        master_ = posix_openpt(O_RDWR | O_NOCTTY);
        if (master_ >= 0 && (grantpt(master_) != 0 || unlockpt(master_) != 0)) Close();
    }
    ~Terminal() { Close(); }

    bool Open() const { return master_ >= 0; }

    // Starts the runner on the terminal's other side: the test plug-in on the fixture part, as
    // a user of its own, in text format (as for a person).
    void StartRunner(const std::string& scratch, const std::vector<std::string>& env = {}) {
        const std::string home = runnertest::Scratch(scratch).string();
        for (const std::string& variable : env) env_.push_back(variable);
        Start({(runnertest::BinaryFolder() / "vornadel-host").string(), runnertest::FixturePart("bracket.part.json"),
               "--plugin", runnertest::TestPlugin(), "--localappdata", home, "--desktop", home + "/desktop"});
    }

    // Starts the program args[0] with args on the terminal's other side.
    void Start(const std::vector<std::string>& args) {
        const std::string slave = ptsname(master_);
        pid_ = fork();
        if (pid_ != 0) return;
        setsid();
        setenv("TERM", "xterm", 1);  // a person's terminal says what it is
        for (const std::string& variable : env_) putenv(const_cast<char*>(variable.c_str()));
        const int fd = open(slave.c_str(), O_RDWR);
        if (fd < 0) _exit(127);
        dup2(fd, 0);
        dup2(fd, 1);
        dup2(fd, 2);
        if (chdir(runnertest::SourceFolder().c_str()) != 0) _exit(127);
        std::vector<char*> argv;
        for (const std::string& a : args) argv.push_back(const_cast<char*>(a.c_str()));
        argv.push_back(nullptr);
        execv(argv[0], argv.data());
        _exit(127);
    }

    // Reads what the terminal shows until text appears after what earlier waits found, or the
    // runner ends; false then, and after 20 s.
    bool WaitFor(const std::string& text) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (std::chrono::steady_clock::now() < deadline) {
            const size_t found = screen_.find(text, seen_);
            if (found != std::string::npos) {
                seen_ = found + text.size();
                return true;
            }
            pollfd p{master_, POLLIN, 0};
            if (poll(&p, 1, 100) <= 0) continue;
            char buffer[4096];
            const ssize_t got = read(master_, buffer, sizeof buffer);
            if (got <= 0) return false;  // the runner has ended and closed the terminal
            for (ssize_t i = 0; i < got; ++i)
                if (buffer[i] != '\r') screen_ += buffer[i];
        }
        return false;
    }

    // Types the bytes as they stand; a line needs its "\n". With line editing the runner reads
    // the terminal raw: what is typed before it switched (and flushed the input) would be lost,
    // so typing waits for the switch, as a person sees the prompt only once it is ready.
    void Type(const std::string& typed) {
        if (runner::kEditsLines) {
            const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
            termios mode{};
            while (tcgetattr(master_, &mode) == 0 && (mode.c_lflag & ICANON) != 0 &&
                   std::chrono::steady_clock::now() < deadline)
                usleep(2000);
        }
        ASSERT_EQ(static_cast<ssize_t>(typed.size()), write(master_, typed.data(), typed.size()));
    }

    TerminalSession Finish() {
        WaitFor("\x01never shown");  // reads until the runner closes the terminal (or 20 s)
        TerminalSession session;
        session.screen = screen_;
        int status = 0;
        if (waitpid(pid_, &status, 0) == pid_ && WIFEXITED(status)) session.status = WEXITSTATUS(status);
        return session;
    }

private:
    void Close() {
        if (master_ >= 0) close(master_);
        master_ = -1;
    }

    int master_ = -1;
    pid_t pid_ = -1;
    std::vector<std::string> env_;  // NAME=VALUE for the runner's environment
    std::string screen_;
    size_t seen_ = 0;  // the end of what the last successful wait found
};

size_t Count(const std::string& text, const std::string& part) {
    size_t n = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++n;
    return n;
}

const char kPrompt[] = "vornadel> ";

}  // namespace

TEST(RunnerTerminal, APersonTypesCommandsAtThePrompt) {
    Terminal terminal;
    ASSERT_TRUE(terminal.Open());
    terminal.StartRunner("terminal");
    ASSERT_TRUE(terminal.WaitFor(kPrompt)) << "a prompt once the dialog is shown";
    terminal.Type("help\n");
    ASSERT_TRUE(terminal.WaitFor(kPrompt));
    terminal.Type("click 9\n");
    ASSERT_TRUE(terminal.WaitFor(kPrompt)) << "a mistake does not end the session";
    terminal.Type("press button03\n");
    ASSERT_TRUE(terminal.WaitFor(kPrompt));
    terminal.Type("show tree\n");
    ASSERT_TRUE(terminal.WaitFor(kPrompt));
    terminal.Type("close\n");
    const TerminalSession s = terminal.Finish();

    EXPECT_EQ(1, s.status) << "the session ended with close; a command had failed\n" << s.screen;
    EXPECT_EQ(5u, Count(s.screen, kPrompt)) << "one prompt per command, none after close\n" << s.screen;
    EXPECT_EQ(1u, Count(s.screen, "[Tree tree_control0]")) << "the blocks are drawn once, when the dialog appears";
    EXPECT_EQ(2u, Count(s.screen, u8"名称      数量  状态  备注  颜色  实体\n"))
        << "the tree: when the dialog appears and on show tree, never twice for one show";
    EXPECT_EQ(1u, Count(s.screen, "  click <row> [<column>]")) << "help lists the commands";
    EXPECT_EQ(1u, Count(s.screen, "stdin:2: the tree has no row 9\n")) << "the error in the script's form";
    EXPECT_EQ(1u, Count(s.screen, "| update_cb button03\n")) << "the plug-in's message box for the press";
}

TEST(RunnerTerminal, EndOfInputClosesTheDialog) {
    Terminal terminal;
    ASSERT_TRUE(terminal.Open());
    terminal.StartRunner("terminal-eof");
    ASSERT_TRUE(terminal.WaitFor(kPrompt));
    terminal.Type("\x04");  // Ctrl-D at the start of a line
    const TerminalSession s = terminal.Finish();
    EXPECT_EQ(0, s.status) << s.screen;
    EXPECT_EQ(1u, Count(s.screen, kPrompt));
}

// The line is edited as typed: Ctrl-A goes to its start, the Up arrow brings back the line before.
TEST(RunnerTerminal, LinesAreEditedAndRemembered) {
    Terminal terminal;
    ASSERT_TRUE(terminal.Open());
    terminal.StartRunner("terminal-editing");
    ASSERT_TRUE(terminal.WaitFor(kPrompt));
    terminal.Type("ress button03\x01p\n");
    ASSERT_TRUE(terminal.WaitFor("| update_cb button03\n")) << "Ctrl-A, then the missing p";
    ASSERT_TRUE(terminal.WaitFor(kPrompt));
    terminal.Type("\x1b[A\n");
    ASSERT_TRUE(terminal.WaitFor("| update_cb button03\n")) << "the Up arrow repeats the line";
    ASSERT_TRUE(terminal.WaitFor(kPrompt));
    terminal.Type("close\n");
    const TerminalSession s = terminal.Finish();
    EXPECT_EQ(0, s.status) << s.screen;
    EXPECT_EQ(2u, Count(s.screen, "| update_cb button03\n")) << s.screen;
}

// Long work shows where it stands on standard error at a terminal; here every piece of work is
// "long" (VORNADEL_PROGRESS_AFTER_MS=0). The line is wiped before anything else is printed.
TEST(RunnerTerminal, LongWorkShowsProgressAtTheTerminal) {
    Terminal terminal;
    ASSERT_TRUE(terminal.Open());
    terminal.StartRunner("terminal-progress", {"VORNADEL_PROGRESS_AFTER_MS=0"});
    ASSERT_TRUE(terminal.WaitFor(kPrompt));
    terminal.Type("close\n");
    const TerminalSession s = terminal.Finish();
    EXPECT_EQ(0, s.status) << s.screen;
    EXPECT_LE(1u, Count(s.screen, "vornadel-host: reading bracket.part.json: 2 of 2 bodies ...")) << s.screen;
    EXPECT_LE(1u, Count(s.screen, "vornadel-host: the plug-in builds its dialog for 2 bodies: ")) << s.screen;
    EXPECT_LE(1u, Count(s.screen, "vornadel-host: stdin:1 runs ...")) << s.screen;
    EXPECT_EQ(1u, Count(s.screen, "+-- information: testplugin\n| ufusr\n")) << "the message box after the wiped line, whole";
}

TEST(RunnerTerminal, NoProgressWhenStandardErrorIsNoTerminal) {
    const runnertest::HostRun run = runnertest::RunTestPlugin({"-e", "close"}, {"VORNADEL_PROGRESS_AFTER_MS=0"});
    EXPECT_EQ(0, run.status) << run.err;
    EXPECT_EQ("", run.err);
}
