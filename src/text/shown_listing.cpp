// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "text/shown_listing.h"

#include <algorithm>
#include <utility>

#include "platform/encoding.h"
#include "platform/number_format.h"

namespace tavlo {
namespace {

/// Columns by which rows without a number stand right of those with one.
constexpr int kContinuationIndent = 4;
constexpr int kParagraph = 2;

PaperBlock HeadingBlock(const std::vector<std::string>& heading) {
  PaperBlock block;
  for (const std::string& row : heading) {
    block.push_back(
        {.text = ShownMessage(row), .style = block.empty() ? PaperStyle::Title : PaperStyle::Plain});
  }
  return block;
}

PaperRow HeadingRow(std::string_view text) {
  return {.text = ShownText(text), .style = PaperStyle::Heading};
}

/// A text that brings its own blanks stands by the columns of the page instead.
std::string_view WithoutBlanks(std::string_view text) {
  return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

PaperBlock LineBlock(const ListedLine& line) {
  PaperBlock block;
  for (const LongRow& row : line.rows) {
    block.push_back({.text = ShownText(row.text),
                     .number = row.number ? Joined(*row.number) : "",
                     .indent = row.indent + (row.number ? 0 : kContinuationIndent)});
  }
  return block;
}

/// A heading never stands alone at the end of a page: it keeps to the first of its paragraphs.
void AddSection(PaperDocument& document, std::string_view heading, const std::vector<std::string>& rows) {
  PaperBlock block = {HeadingRow(heading)};
  for (const std::string& row : rows) {
    block.push_back({.text = ShownText(WithoutBlanks(row)), .indent = kParagraph});
    document.blocks.push_back(std::exchange(block, {}));
  }
  if (!block.empty()) document.blocks.push_back(std::move(block));
}

}  // namespace

std::string AsText(const Listing& listing, const std::vector<ReferenceSection>& reference) {
  std::string text;
  const auto add = [&text](const std::string& row) { text += row + '\n'; };
  for (const std::string& row : listing.heading) add(ShownMessage(row));
  add(ShownText(listing.hardware_heading));
  for (const std::string& row : listing.hardware) add(ShownText(row));
  for (const ListedLine& line : listing.lines) {
    for (const LongRow& row : line.rows) add(ShownText(AsPrinted(row)));
  }
  for (const ReferenceSection& section : reference) {
    add("");
    add(ShownText(section.heading));
    for (const std::string& row : section.rows) add("  " + ShownText(row));
  }
  return text;
}

PaperDocument OnPaper(const Listing& listing, std::string_view file_name,
                      const std::vector<ReferenceSection>& reference) {
  PaperDocument document = {.title = ShownText(listing.heading.front()),
                            .file_name = ShownMessage(file_name),
                            .blocks = {HeadingBlock(listing.heading)}};
  AddSection(document, listing.hardware_heading, listing.hardware);
  document.blocks.push_back({PaperRow{}});
  for (const ListedLine& line : listing.lines) document.blocks.push_back(LineBlock(line));
  for (const ReferenceSection& section : reference) AddSection(document, section.heading, section.rows);
  return document;
}

}  // namespace tavlo
