// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QJsonArray>
#include <array>
#include <functional>
#include <optional>
#include <vector>

#include "road.h"
#include "terminal_process.h"

namespace tavlo::testing {
namespace {

/// The real companion with surroundings that the test makes: `prepare` runs in the new process before it.
class BareProcess {
 public:
  BareProcess(const QStringList& arguments, const std::function<void()>& prepare) {
    std::vector<std::string> words = {TAVLO_CLI};
    for (const QString& argument : arguments) words.push_back(argument.toStdString());
    std::vector<char*> pointers;
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);
    pid_ = fork();
    if (pid_ != 0) return;
    // The test's own process ignores it, and that would be handed down.
    signal(SIGPIPE, SIG_DFL);
    for (int descriptor = 0; descriptor <= 2; ++descriptor) dup2(open("/dev/null", O_RDWR), descriptor);
    prepare();
    for (int descriptor = 3; descriptor < 100; ++descriptor) close(descriptor);
    execv(TAVLO_CLI, pointers.data());
    _exit(127);
  }
  ~BareProcess() {
    if (pid_ <= 0 || ended_) return;
    ::kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
  }
  BareProcess(const BareProcess&) = delete;
  BareProcess& operator=(const BareProcess&) = delete;

  void Signal(int signal) const { ::kill(pid_, signal); }
  /// The exit code, a signal's number below 0, or nothing if it does not end within ten seconds.
  [[nodiscard]] std::optional<int> Wait() {
    const QDeadlineTimer limit(10000);
    int status = 0;
    while (waitpid(pid_, &status, WNOHANG) == 0) {
      if (limit.hasExpired()) return std::nullopt;
      QThread::msleep(5);
    }
    ended_ = true;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  }

 private:
  pid_t pid_ = -1;
  bool ended_ = false;
};

/// Two ends of a pipe that holds one page, and of which nobody reads anything.
class StalledPipe {
 public:
  StalledPipe() {
    EXPECT_EQ(pipe2(ends_.data(), O_CLOEXEC), 0);
    fcntl(ends_[1], F_SETPIPE_SZ, 4096);
    const std::array<char, 4096> page{};
    EXPECT_EQ(write(ends_[1], page.data(), page.size()), static_cast<ssize_t>(page.size()));
  }
  ~StalledPipe() {
    for (const int end : ends_) close(end);
  }
  StalledPipe(const StalledPipe&) = delete;
  StalledPipe& operator=(const StalledPipe&) = delete;
  [[nodiscard]] int In() const { return ends_[1]; }

 private:
  std::array<int, 2> ends_{-1, -1};
};

class Surroundings : public CompanionRoad {
 protected:
  void StartHubWith(const std::function<void()>& write_program) {
    write_program();
    StartHub();
    ASSERT_EQ(Download().code, 0);
  }
  void StartHubThatMoves() {
    StartHubWith([this] { LongMove(); });
  }
  /// Two lines that jump to one another and so talk without end.
  void StartHubThatTalks() {
    StartHubWith([this] {
      Line(1).Type = GT;
      Line(1).LineNum = 1;
      Line(2).Type = GT;
      Line(2).LineNum = 0;
    });
  }
  [[nodiscard]] QStringList RunArguments(const QStringList& more = {}) const {
    return QStringList{"run", "--no-status", "--port", hub->Link()} + more;
  }
  [[nodiscard]] QJsonObject HubState() const { return QJsonDocument::fromJson(hub->State()).object(); }
  [[nodiscard]] bool AxisMoves() const {
    return Eventually([&] { return HubState()["axes"].toArray()[0].toObject()["moving"].toBool(); });
  }
  /// The program has been stopped and the axis has come to rest.
  [[nodiscard]] bool MachineRests() const {
    return Eventually([&] {
      const QJsonObject state = HubState();
      bool moves = false;
      for (const QJsonValue& axis : state["axes"].toArray()) moves |= axis.toObject()["moving"].toBool();
      return state["state"].toString() == "idle" && !moves;
    });
  }
};

TEST_F(Surroundings, ARunEndsAndStopsTheMachineWhicheverDescriptorsAreClosed) {
  StartHubThatMoves();
  for (int closed = 1; closed < 8; ++closed) {
    BareProcess run(RunArguments({"--for", "0.3"}), [closed] {
      for (int descriptor = 0; descriptor <= 2; ++descriptor) {
        if ((closed >> descriptor & 1) != 0) close(descriptor);
      }
    });
    EXPECT_EQ(run.Wait(), 0) << "closed: " << closed;
    EXPECT_TRUE(HubGotLast("XIS")) << "closed: " << closed << ' ' << Received().constData();
    EXPECT_TRUE(MachineRests());
  }
}

TEST_F(Surroundings, EveryCommandEndsWithItsDescriptorsClosed) {
  StartHub();
  const QString link = hub->Link();
  const QString file = File();
  const QString copy = folder_.filePath("copy.TVH");
  const QString image = folder_.filePath("image");
  const std::vector<QStringList> commands = {{"--version"},
                                             {"--help"},
                                             {"help"},
                                             {"show", file},
                                             {"check", file},
                                             {"compile", file},
                                             {"compile", file, "-o", image},
                                             {"decode", image, "-o", copy},
                                             {"download", file, "--port", link},
                                             {"upload", copy, "--port", link},
                                             {"verify", file, "--port", link},
                                             {"run", "--for", "0", "--port", link},
                                             {"terminal", "--port", link},
                                             {"identify", "--port", link, "--trace"},
                                             {"stop", "--port", link},
                                             {"ports"}};
  for (const QStringList& command : commands) {
    BareProcess tavlo(command, [] {
      for (int descriptor = 0; descriptor <= 2; ++descriptor) close(descriptor);
    });
    EXPECT_EQ(tavlo.Wait(), 0) << command.join(' ').toStdString();
  }
}

TEST_F(Surroundings, EverySignalThatWouldEndOrHaltItStopsTheMachineFirst) {
  StartHubThatMoves();
  const std::vector<int> ending = {SIGHUP,  SIGINT,  SIGQUIT,   SIGALRM, SIGTERM,  SIGUSR1,
                                   SIGUSR2, SIGPIPE, SIGXCPU,   SIGXFSZ, SIGIO,    SIGVTALRM,
                                   SIGPROF, SIGPWR,  SIGSTKFLT, SIGTSTP, SIGRTMIN, SIGRTMAX};
  for (const int signal : ending) {
    BareProcess run(RunArguments(), [] {});
    ASSERT_TRUE(HubGotLast("XI")) << signal;
    run.Signal(signal);
    EXPECT_EQ(run.Wait(), 130) << signal;
    EXPECT_TRUE(HubGotLast("XIS")) << signal;
  }
  EXPECT_TRUE(MachineRests());
}

TEST_F(Surroundings, ACrashStopsTheMachineToo) {
  StartHubThatMoves();
  for (const int signal : {SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGSYS}) {
    BareProcess run(RunArguments(), [] {
      const rlimit no_core = {0, 0};
      setrlimit(RLIMIT_CORE, &no_core);
    });
    ASSERT_TRUE(HubGotLast("XI")) << signal;
    run.Signal(signal);
    EXPECT_EQ(run.Wait(), -signal);
    EXPECT_TRUE(HubGotLast("XIS")) << signal;
  }
  EXPECT_TRUE(MachineRests());
}

TEST_F(Surroundings, ACrashedTerminalLeavesThePassthrough) {
  StartHub();
  // The test keeps the other end open: the terminal would close at the end of its input.
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
  BareProcess terminal({"terminal", "--port", hub->Link()}, [&] {
    const rlimit no_core = {0, 0};
    setrlimit(RLIMIT_CORE, &no_core);
    dup2(ends[0], STDIN_FILENO);
  });
  ASSERT_TRUE(HubGotLast("H"));
  terminal.Signal(SIGABRT);
  EXPECT_EQ(terminal.Wait(), -SIGABRT);
  EXPECT_TRUE(HubGotLast("H0HM\r"));
  for (const int end : ends) close(end);
}

TEST_F(Surroundings, AnAlarmThatWasSetBeforeStopsTheMachine) {
  StartHubThatMoves();
  BareProcess run(RunArguments(), [] { alarm(1); });
  EXPECT_EQ(run.Wait(), 130);
  EXPECT_TRUE(HubGotLast("XIS"));
}

TEST_F(Surroundings, AReaderWhoHasStoppedTakingKeepsNoStopFromTheMachine) {
  StartHubThatTalks();
  for (const bool out : {true, false}) {
    const StalledPipe pipe;
    BareProcess run(RunArguments({"--for", "0.5", "--trace"}),
                    [&] { dup2(pipe.In(), out ? STDOUT_FILENO : STDERR_FILENO); });
    EXPECT_EQ(run.Wait(), out ? 1 : 0) << "rows of the result are lost, or only of the trace";
    EXPECT_TRUE(HubGotLast("S"));
    EXPECT_TRUE(MachineRests());
  }
}

TEST_F(Surroundings, CtrlCStopsTheMachineAlthoughNobodyReads) {
  StartHubThatTalks();
  const StalledPipe pipe;
  BareProcess run(RunArguments({"--json"}), [&] {
    dup2(pipe.In(), STDOUT_FILENO);
    dup2(pipe.In(), STDERR_FILENO);
  });
  // The hub goes on being served: far more than the pipe could tell of.
  ASSERT_TRUE(Eventually([&] { return Received().count('I') > 500; }));
  run.Signal(SIGINT);
  EXPECT_TRUE(HubGotLast("S"));
  EXPECT_TRUE(MachineRests());
  EXPECT_EQ(run.Wait(), 130);
}

TEST_F(Surroundings, ATerminalThatIsHeldKeepsNoStopFromTheMachine) {
  StartHubThatTalks();
  TerminalProcess run({TAVLO_CLI, "run", "--no-status", "--port", hub->Link().toStdString()});
  ASSERT_TRUE(run.Shows("1\tstarted"));
  run.Type("\x13");
  const auto before = Received().count('I');
  ASSERT_TRUE(Eventually([&] { return Received().count('I') > before + 500; })) << "the hub is served";
  run.Type("\x03");
  EXPECT_TRUE(HubGotLast("S"));
  EXPECT_TRUE(MachineRests());
  run.Type("\x11");
  EXPECT_EQ(run.Wait(), 130);
}

TEST_F(Surroundings, CtrlZStopsTheMachineForAHaltedRunServesNothing) {
  StartHubThatMoves();
  TerminalProcess run({TAVLO_CLI, "run", "--port", hub->Link().toStdString()});
  ASSERT_TRUE(run.Shows("1\tstarted"));
  run.Type("\x1a");
  EXPECT_EQ(run.Wait(), 130);
  EXPECT_TRUE(HubGotLast("S"));
}

TEST_F(Surroundings, AFullFileEndsTheRunWithAWord) {
  StartHubThatMoves();
  BareProcess run(RunArguments(), [] { dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO); });
  EXPECT_EQ(run.Wait(), 1);
  EXPECT_TRUE(HubGotLast("XIS"));
  const std::string rows = folder_.filePath("rows").toStdString();
  BareProcess limited(RunArguments(), [&rows] {
    // Enough for the files by which the port is locked.
    constexpr rlim_t kMost = 10000;
    const int file = open(rows.c_str(), O_WRONLY | O_CREAT, 0600);
    if (ftruncate(file, kMost) != 0 || lseek(file, 0, SEEK_END) < 0) _exit(127);
    const rlimit limit = {kMost, kMost};
    setrlimit(RLIMIT_FSIZE, &limit);
    dup2(file, STDOUT_FILENO);
  });
  EXPECT_EQ(limited.Wait(), 1);
  EXPECT_TRUE(HubGotLast("XIS"));
}

}  // namespace
}  // namespace tavlo::testing
