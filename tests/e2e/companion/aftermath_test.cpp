// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <QJsonArray>
#include <tuple>

#include "road.h"

namespace tavlo::testing {
namespace {

/// A command that is killed, and where.
struct Killed {
  const char* name;
  const char* command;
  /// What keeps the hub where the blow is to find it; empty if it stays there by itself.
  const char* failure;
  /// What the hub has got last when the blow falls.
  const char* until;
};

/// What follows it.
struct Following {
  const char* name;
  const char* command;
};

void PrintTo(const Killed& killed, std::ostream* out) {
  *out << killed.name;
}
void PrintTo(const Following& following, std::ostream* out) {
  *out << following.name;
}

class Aftermath : public CompanionRoad, public ::testing::WithParamInterface<std::tuple<Killed, Following>> {
 protected:
  void SetUp() override {
    Line(1).Type = FL;
    Line(1).Dist = 2000000;
    const bool uploads = QByteArray(std::get<0>(GetParam()).command).startsWith("upload");
    StartHub(uploads ? QStringList{"--pace"} : QStringList{});
    ASSERT_EQ(Download().code, 0);
  }
  [[nodiscard]] QStringList Arguments(const QString& command) {
    QStringList words = command.split(' ');
    words.replaceInStrings("FILE", File());
    words.replaceInStrings("COPY", folder_.filePath("copy.TVH"));
    return words << "--port" << hub->Link();
  }
  /// A command for a drive that is not there, whose answer is waited for.
  [[nodiscard]] QString Input() const {
    QFile commands(folder_.filePath("commands"));
    EXPECT_TRUE(commands.open(QIODevice::WriteOnly));
    commands.write("9A\n");
    return commands.fileName();
  }
  void Kill(const Killed& killed) {
    if (*killed.failure != 0) hub->Command("fail " + QByteArray(killed.failure));
    const auto heard = Received().size();
    const bool terminal = QByteArray(killed.command).startsWith("terminal");
    TavloProcess tavlo(Arguments(killed.command), terminal ? Input() : QProcess::nullDevice());
    const QByteArray until = killed.until;
    ASSERT_TRUE(Eventually([&] { return Received().mid(heard).endsWith(until); })) << killed.name;
    tavlo.Signal(SIGKILL);
    static_cast<void>(tavlo.Wait());
    hub->Command("fail none");
  }
  [[nodiscard]] bool HubComesToRest(const QString& state) const {
    return Eventually([&] {
      const QJsonObject now = QJsonDocument::fromJson(hub->State()).object();
      return now["state"].toString() == state && !now["axes"].toArray()[0].toObject()["moving"].toBool();
    });
  }
};

TEST_P(Aftermath, TheNextCommandSettlesTheLineAndDoesItsWork) {
  const auto& [killed, following] = GetParam();
  Kill(killed);
  const Ended ended = Tavlo(Arguments(following.command));
  const bool half = *killed.failure != 0;
  const bool reads = QByteArray(following.command).startsWith("verify");
  // What a broken download left behind is no whole program, and a comparison may find that.
  EXPECT_TRUE(ended.code == 0 || (half && reads && ended.code == 7)) << ended.code << ended.err;
  // A stop asks nothing, and so does not learn of a passthrough.
  const bool passes_through =
      QByteArray(killed.command).startsWith("terminal") && QByteArray(following.command).startsWith("stop");
  EXPECT_TRUE(HubComesToRest(passes_through ? "passthrough" : "idle")) << hub->State().constData();
}

INSTANTIATE_TEST_SUITE_P(
    Each, Aftermath,
    ::testing::Combine(
        ::testing::Values(Killed{"DownloadAtItsStart", "download FILE", "silent-f", "F"},
                          Killed{"DownloadAmongItsLines", "download FILE", "silent-line:100", "\x0b\x0b\x0b"},
                          Killed{"Upload", "upload COPY", "", "U"}, Killed{"RunThatMoves", "run", "", "XI"},
                          Killed{"Terminal", "terminal --wait 30", "", "H9A\r\n"}),
        ::testing::Values(Following{"Identify", "identify"}, Following{"Download", "download FILE"},
                          Following{"Verify", "verify FILE"}, Following{"Terminal", "terminal"},
                          Following{"Stop", "stop"})),
    [](const auto& test) {
      return std::string(std::get<0>(test.param).name) + "Then" + std::get<1>(test.param).name;
    });

}  // namespace
}  // namespace tavlo::testing
