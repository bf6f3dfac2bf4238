// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/run/run_orders.h"

#include <gtest/gtest.h>

#include <string>

namespace tavlo::cli {
namespace {

using Orders = std::vector<RunOrder>;

/// The bytes that keys send, and the letters of the controls in brackets.
std::string Spelled(const Orders& orders) {
  std::string text;
  for (const RunOrder& order : orders) {
    switch (order.act) {
      case RunAct::Key: text += KeyByte(order.key); break;
      case RunAct::Pause: text += "<P>"; break;
      case RunAct::Play: text += "<r>"; break;
      case RunAct::SingleStep: text += "<T>"; break;
      case RunAct::Reset: text += "<0>"; break;
      case RunAct::Stop: text += "<S>"; break;
    }
  }
  return text;
}

std::string Typed(const std::string& bytes) {
  TypedKeys keys;
  Orders orders;
  for (const char c : bytes) {
    if (const auto order = keys.Take(c)) orders.push_back(*order);
  }
  return Spelled(orders);
}

struct TypedRow {
  const char* typed;
  const char* sent;
};

TEST(TypedKeys, EachKeyHasItsOrder) {
  for (const TypedRow& row : {TypedRow{"0123456789.", "0123456789."},
                              {"\r", "\r"},
                              {"\n", "\r"},
                              {"\b", "\b"},
                              {"\x7f", "\b"},
                              {"yY+", "+++"},
                              {"nN-", "---"},
                              {"\x1b[A\x1b[B\x1b[C\x1b[D", "ABDC"},
                              {"\x1bOA\x1bOB\x1bOC\x1bOD", "ABDC"},
                              {"\x1b[1;5A", "A"},
                              {"pP", "<P><P>"},
                              {"rR", "<r><r>"},
                              {"tT", "<T><T>"},
                              {"zZ", "<0><0>"},
                              {"sS", "<S><S>"}}) {
    EXPECT_EQ(Typed(row.typed), row.sent) << row.sent;
  }
}

TEST(TypedKeys, WhatIsNoKeyIsDropped) {
  EXPECT_EQ(Typed("abcdefghijklm ABCD,;*/\t\x01\x04\xC3\xA4"), "");
  EXPECT_EQ(Typed("\x1b[H\x1b[3~\x1b[15~\x1b[Z\x1bOP"), "");
  EXPECT_EQ(Typed("\x1b[H7"), "7");
}

TEST(TypedKeys, TheEscapeKeyAloneSwallowsNothing) {
  EXPECT_EQ(Typed("\x1b\x1b\x1b[A"), "A");
  EXPECT_EQ(Typed("\x1b"
                  "7"),
            "7");
}

TEST(TypedKeys, NoByteInAnyStateIsTakenForAControlThatItIsNot) {
  for (const std::string& before : {std::string(), std::string("\x1b"), std::string("\x1b[")}) {
    for (int value = 0; value < 256; ++value) {
      const char c = static_cast<char>(value);
      const std::string sent = Typed(before + c);
      const bool control = std::string("pPrRtTzZsS").find(c) != std::string::npos && !before.ends_with('[');
      EXPECT_EQ(sent.size() == 3, control) << before.size() << ' ' << value;
      EXPECT_TRUE(sent.size() <= 1 || control) << before.size() << ' ' << value;
    }
  }
}

struct LineRow {
  const char* line;
  const char* sent;
};

TEST(OrdersOfLine, AnEntryIsItsKeysAndEnter) {
  for (const LineRow& row : {LineRow{"12.5", "12.5\r"},
                             {"-3", "-3\r"},
                             {"+0.25", "+0.25\r"},
                             {"7", "7\r"},
                             {"  42\t\r", "42\r"},
                             {"", "\r"},
                             {"   ", "\r"}}) {
    const auto orders = OrdersOfLine(row.line);
    ASSERT_TRUE(orders) << row.line;
    EXPECT_EQ(Spelled(*orders), row.sent) << row.line;
  }
}

TEST(OrdersOfLine, AWordIsOneKeyOrControl) {
  for (const LineRow& row :
       {LineRow{"yes", "+"}, {"no", "-"},     {"y", "+"},       {"n", "-"},        {"+", "+"},
        {"-", "-"},          {"up", "A"},     {"down", "B"},    {"left", "C"},     {"right", "D"},
        {"bksp", "\b"},      {"enter", "\r"}, {"pause", "<P>"}, {"resume", "<r>"}, {"step", "<T>"},
        {"reset", "<0>"},    {"key 3", "3"},  {"Key .", "."},   {"stop", "<S>"},   {"YES", "+"},
        {" Stop \r", "<S>"}}) {
    const auto orders = OrdersOfLine(row.line);
    ASSERT_TRUE(orders) << row.line;
    EXPECT_EQ(Spelled(*orders), row.sent) << row.line;
  }
}

TEST(OrdersOfLine, AnythingElseOrdersNothing) {
  for (const char* line : {"1 2", "12a", "yes no", "1,5", "stop!", "A", "\x1b[A", "1\x08", "++a", "\xff",
                           "key", "key ", "key 12", "key x", "key  1"}) {
    EXPECT_FALSE(OrdersOfLine(line)) << line;
  }
}

}  // namespace
}  // namespace tavlo::cli
