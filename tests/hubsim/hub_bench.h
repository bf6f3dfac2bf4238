// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "hubsim/hub.h"
#include "hubsim/wire_lines.h"

namespace tavlo::hubsim {

/// A message of the hub and when it came, in seconds since the start of the run.
struct Message {
  int header = 0;
  int b2 = 0;
  int b3 = 0;
  int b4 = 0;
  double at = 0;

  [[nodiscard]] int Line() const { return b2 * 16 + b3; }
  bool operator==(const Message& other) const {
    return header == other.header && b2 == other.b2 && b3 == other.b3 && b4 == other.b4;
  }
};

inline std::ostream& operator<<(std::ostream& out, const Message& message) {
  return out << '{' << message.header << ' ' << message.b2 << ' ' << message.b3 << ' ' << message.b4 << " at "
             << message.at << '}';
}

/// A hub and a PC that holds its simulated time.
class HubBench {
 public:
  explicit HubBench(const HubOptions& options = {}) : hub(options) {}

  Hub hub;
  double now = 5000;
  bool acknowledging = true;
  /// What came for the operator terminal.
  std::string text;

  std::string Ask(std::string_view bytes) {
    hub.Receive(bytes, now);
    return hub.TakeOutput();
  }

  void Wait(double seconds) {
    now += seconds;
    hub.Advance(now);
  }

  /// Downloads `lines`, empty ones behind them, and expects the hub's sum.
  void Download(const std::vector<std::string>& lines, const std::string& system = SystemOf(1),
                const std::string& pool = std::string(1, '\0')) {
    ASSERT_EQ(Ask("F"), "Y");
    unsigned sum = 0;
    const auto send = [&](const std::string& bytes) {
      for (const char byte : bytes) sum += static_cast<unsigned char>(byte);
      ASSERT_EQ(Ask(bytes), "Y");
    };
    for (std::size_t line = 0; line < kLineCount; ++line) send(line < lines.size() ? lines[line] : Empty());
    for (std::size_t at = 0; at < system.size(); at += 32) send(system.substr(at, 32));
    for (std::size_t at = 0; at < pool.size(); at += 32) send(pool.substr(at, 32));
    ASSERT_EQ(Ask("K"), Big2(static_cast<int>(sum % 65536)));
  }

  /// Sends a command of the run and gives what the hub tells at once.
  std::vector<Message> Send(std::string_view command) {
    hub.Receive(command, now);
    return Collect();
  }

  /// Starts the program without the terminal and lets it run.
  std::vector<Message> Run(double seconds) {
    started_ = now;
    std::vector<Message> messages = Send("X");
    Append(messages, Go(seconds));
    return messages;
  }

  /// Lets time pass in the steps that the hub asks for.
  std::vector<Message> Go(double seconds) {
    const double end = now + seconds;
    std::vector<Message> messages = Collect();
    while (true) {
      const auto next = hub.NextEvent();
      if (!next || *next > end) break;
      now = std::max(now, *next);
      hub.Advance(now);
      Append(messages, Collect());
    }
    now = end;
    hub.Advance(now);
    Append(messages, Collect());
    return messages;
  }

  /// Takes what the hub tells now and acknowledges what is to be acknowledged. What is no message is for the
  /// operator terminal.
  std::vector<Message> Collect() {
    std::vector<Message> messages;
    for (std::string bytes = hub.TakeOutput(); !bytes.empty(); bytes = hub.TakeOutput()) {
      for (std::size_t at = 0; at < bytes.size();) {
        const bool message = static_cast<unsigned char>(bytes[at]) >= 128;
        if (message) {
          EXPECT_LE(at + 4, bytes.size());
          if (at + 4 <= bytes.size()) Take(bytes.substr(at, 4), messages);
        } else {
          text += bytes[at];
        }
        at += message ? 4 : 1;
      }
    }
    return messages;
  }

  /// Starts the program with the terminal and lets it run.
  std::vector<Message> RunWithTerminal(double seconds) {
    started_ = now;
    std::vector<Message> messages = Send("M");
    Append(messages, Go(seconds));
    text.clear();
    return messages;
  }

  /// The line events alone: "+3" a line started, "-3" finished, "~3" goes on beside the program.
  static std::string LineEvents(const std::vector<Message>& messages) {
    std::string text;
    for (const Message& message : messages) {
      const char* mark = message.header == 254   ? "+"
                         : message.header == 237 ? "-"
                         : message.header == 236 ? "~"
                                                 : nullptr;
      if (mark == nullptr) continue;
      if (!text.empty()) text += ' ';
      text += mark + std::to_string(message.Line());
    }
    return text;
  }

  /// When the first message with this header and line came, -1 if none did.
  static double TimeOf(const std::vector<Message>& messages, int header, int line) {
    for (const Message& message : messages) {
      if (message.header == header && message.Line() == line) return message.at;
    }
    return -1;
  }

  static int Count(const std::vector<Message>& messages, int header) {
    return static_cast<int>(std::ranges::count(messages, header, &Message::header));
  }

 private:
  static void Append(std::vector<Message>& to, const std::vector<Message>& more) {
    to.insert(to.end(), more.begin(), more.end());
  }

  void Take(const std::string& bytes, std::vector<Message>& messages) {
    const auto at = [&](std::size_t index) {
      return static_cast<int>(static_cast<unsigned char>(bytes[index]));
    };
    messages.push_back({at(0), at(1), at(2), at(3), now - started_});
    EXPECT_GE(at(0), 128);
    for (std::size_t index = 1; index < 4; ++index) EXPECT_LT(at(index), 128);
    if (acknowledging && (at(0) == 254 || at(0) == 236)) hub.Receive("I", now);
  }

  double started_ = 0;
};

}  // namespace tavlo::hubsim
