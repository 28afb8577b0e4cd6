#include "base/text_reader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/cases.h"
#include "support/recorder.h"
#include "support/temp_dir.h"

namespace ferrowand {
namespace {

using Strings = std::vector<std::string>;

// A reader on a file of that text.
struct Reading {
  explicit Reading(const std::string& text, std::uint16_t window = TextReader::WINDOW)
      : reader(reporter) {
    reader.Open(dir.Write("text", text), window);
  }

  Strings Tokens() {
    Strings tokens;
    for (std::string token; !reader.AtEof(); tokens.push_back(token)) reader.ReadToken(token, 50);
    return tokens;
  }

  std::string Rest() {
    std::string rest;
    while (!reader.AtEof()) rest += static_cast<char>(reader.GetChar());
    return rest;
  }

  TempDir dir;
  MessageRecorder recorder;
  Reporter reporter{recorder};
  TextReader reader;
};

bool Asserted(const MessageRecorder& recorder, const std::string& line,
              const std::string& expression) {
  return recorder.messages.size() == 1 &&
         recorder.messages[0].text.starts_with("At line " + line + " in file ..\\winfile.cpp: \"" +
                                               expression + "\". GetLastError:0.");
}

// Text in which every place differs from its neighbours.
std::string LongText(std::size_t size) {
  std::string text;
  for (unsigned i = 0; text.size() < size; ++i) text += std::to_string(i) + (i % 7 ? " " : "\n");
  text.resize(size);
  return text;
}

TEST(TextReader, AMissingFileLeavesTheReaderClosedAndSilent) {
  MessageRecorder recorder;
  Reporter reporter(recorder);
  TextReader reader(reporter);
  reader.Open(TempDir().Path("nothing"));
  EXPECT_FALSE(reader.IsOpen());
  EXPECT_TRUE(reader.AtEof());
  EXPECT_EQ(reader.PeekChar(), 0);
  EXPECT_TRUE(recorder.messages.empty());
}

TEST(TextReader, EveryWindowSizeReadsTheSameTextForwardsAndBackwards) {
  const std::string text = LongText(40000);
  for (const std::uint16_t window : {0, 10, 11, 12, 17, 32768, 39999, 40000, 40001}) {
    Reading reading(text, window);
    for (std::size_t i = 0; i < text.size(); ++i) {
      ASSERT_EQ(reading.reader.GetChar(), text[i]) << i;
      reading.reader.UngetChar();
      ASSERT_EQ(reading.reader.GetChar(), text[i]) << i;
    }
    EXPECT_TRUE(reading.reader.AtEof());
    for (std::size_t i = text.size(); i-- > 0;) {
      reading.reader.UngetChar();
      ASSERT_EQ(reading.reader.Offset(), i);
      ASSERT_EQ(reading.reader.PeekChar(), text[i]) << i;
    }
    EXPECT_TRUE(reading.recorder.messages.empty());
  }
}

TEST(TextReader, BeyondTheEndBytesAreZeroAndTheOffsetGoesOn) {
  Reading reading("ab");
  reading.reader.SeekTo(2);
  EXPECT_TRUE(reading.reader.AtEof());
  EXPECT_EQ(reading.reader.PeekChar(), 0);
  EXPECT_EQ(reading.reader.GetChar(), 0);
  EXPECT_EQ(reading.reader.Offset(), 3u);
  reading.reader.UngetChar();
  reading.reader.UngetChar();
  EXPECT_EQ(reading.reader.GetChar(), 'b');
  reading.reader.SeekTo(0);
  reading.reader.UngetChar();
  EXPECT_TRUE(Asserted(reading.recorder, "253", "0"));
  EXPECT_EQ(reading.reader.GetChar(), 'a');
}

TEST(TextReader, SeparatorsAreTokensOfTheirOwn) {
  const std::pair<std::string, Strings> cases[] = {
      {std::string("a\0b", 3), {"a", "b"}},  // a zero byte ends a token and is white space
      {"(12", {"(", "12"}},
      {"-8", {"-", "8"}},
      {"a.b", {"a", ".", "b"}},
      {"1.5", {"1", ".", "5"}},
      {"=![](){}\"/,:;+-*<>|&.\\", {"=", "!", "[", "]", "(", ")", "{", "}", "\"", "/", ",",
                                    ":", ";", "+", "-", "*", "<", ">", "|", "&",  ".", "\\"}},
      {"a#$%'?@^_`~b", {"a#$%'?@^_`~b"}},
      {" \t\r\n one \t two", {"one", "two"}},
      {"end ", {"end", ""}},  // the blank is skipped, and beyond it there is only a zero
      {std::string(120, 'x') + " y",
       {std::string(50, 'x'), std::string(50, 'x'), std::string(20, 'x'), "y"}},
  };
  for (const auto& [text, tokens] : cases) {
    EXPECT_EQ(Reading(text).Tokens(), tokens) << text;
  }
}

TEST(TextReader, TokensAndWordsAreTheSameInEveryWindow) {
  const std::string text = "(){}()[]<>+-()a(bc)d{}\"\"==!!..,,;;::" + LongText(5000) + "\n";
  const Strings tokens = Reading(text).Tokens();
  for (const std::uint16_t window : {10, 11, 12, 13, 29}) {
    EXPECT_EQ(Reading(text, window).Tokens(), tokens);
    Reading words(text), read(text, window);
    std::string word, token;
    while (!read.reader.AtEof()) {
      ASSERT_EQ(read.reader.PeekChar(), text[read.reader.Offset()]);
      EXPECT_EQ(read.reader.ReadWord(token, 50), words.reader.ReadWord(word, 50));
      EXPECT_EQ(token, word);
    }
  }
}

// A zero byte ends the text but not the count; a tab is part of a word; and the last one takes
// zeros from beyond the end up to its limit.
TEST(TextReader, WordsEndAtBlanksAndLineEndsOnly) {
  const Cases<std::string, std::size_t, std::size_t, std::string> cases{
      {std::string("ab\0cd x", 7), 50, 5, "ab"},
      {"abc\tdef ghi", 50, 7, "abc\tdef"},
      {" \t abc", 2, 2, "ab"},
      {"\r\nx\r\n", 50, 1, "x"},
      {"-16", 50, 50, "-16"},
      {"", 50, 50, ""}};
  for (const auto& [text, limit, count, expected] : cases) {
    Reading reading(text);
    std::string word;
    EXPECT_EQ(reading.reader.ReadWord(word, limit), count) << text;
    EXPECT_EQ(word, expected);
  }
}

TEST(TextReader, SkippingCountsWhatItPasses) {
  Reading reading(std::string(" \0\t\r\nline one\r\nlast", 19), 10);
  EXPECT_EQ(reading.reader.SkipWhitespace(), 5u);
  EXPECT_EQ(reading.reader.SkipLine(), 9u);
  EXPECT_EQ(reading.reader.PeekChar(), 'l');
  EXPECT_EQ(reading.reader.SkipLine(), 4u);
  EXPECT_TRUE(reading.reader.AtEof());
  EXPECT_EQ(reading.reader.SkipLine(), 0u);
  EXPECT_EQ(reading.reader.SkipWhitespace(), 0u);
}

TEST(TextReader, SkipPastStopsBehindOrAtTheCharacter) {
  const std::string text = LongText(50) + "{ab";
  Reading reading(text, 10);
  EXPECT_EQ(reading.reader.SkipPast('{', false), 50u);
  EXPECT_EQ(reading.reader.PeekChar(), '{');
  EXPECT_EQ(reading.reader.SkipPast('{', true), 0u);
  EXPECT_EQ(reading.reader.PeekChar(), 'a');
  EXPECT_EQ(reading.reader.SkipPast('{', false), 2u);
  EXPECT_EQ(reading.reader.PeekChar(), 'b') << "goes back by one without a match too";
}

TEST(TextReader, ReadUntilStopsAtTheCharacterTheLimitOrTheEnd) {
  Reading reading("value\"next");
  std::string text;
  EXPECT_EQ(reading.reader.ReadUntil('"', text, 3, true), 3u);
  EXPECT_EQ(text, "val");
  EXPECT_EQ(reading.reader.ReadUntil('"', text, 2, true), 2u);
  EXPECT_EQ(reading.reader.ReadUntil('"', text, 50, false), 0u);
  EXPECT_EQ(reading.reader.PeekChar(), '"');
  EXPECT_EQ(reading.reader.ReadUntil('"', text, 50, true), 0u);
  EXPECT_EQ(reading.reader.ReadUntil('"', text, 50, true), 4u);
  EXPECT_EQ(text, "next");
}

TEST(TextReader, ReadUntilAnyLooksAtTheDelimiterAndGoesBackOneByteMore) {
  Reading reading("name,rest");
  std::string text;
  EXPECT_EQ(reading.reader.ReadUntilAny(",;", text, 50, true), 4u);
  EXPECT_EQ(text, "name");
  EXPECT_EQ(reading.reader.PeekChar(), ',');
  reading.reader.SeekTo(0);
  EXPECT_EQ(reading.reader.ReadUntilAny(",;", text, 50, false), 4u);
  EXPECT_EQ(reading.reader.PeekChar(), 'e');
  reading.reader.SeekTo(0);
  EXPECT_EQ(reading.reader.ReadUntilAny(",;", text, 2, false), 2u);
  EXPECT_EQ(reading.reader.PeekChar(), 'a');
  reading.reader.SeekTo(5);
  EXPECT_EQ(reading.reader.ReadUntilAny(",;", text, 50, true), 50u);
  EXPECT_EQ(text, "rest");
}

TEST(TextReader, AnUnexpectedCharacterIsAFailedAssertionAndConsumed) {
  Reading reading("(x)");
  reading.reader.Expect('(');
  EXPECT_TRUE(reading.recorder.messages.empty());
  reading.reader.Expect(')');
  EXPECT_TRUE(Asserted(reading.recorder, "346", "c==chr"));
  EXPECT_EQ(reading.reader.GetChar(), ')');
}

TEST(TextReader, FindWordOverlooksAWordThatEndsTheFile) {
  const std::pair<const char*, int> cases[] = {
      {"a (QUAKED) b", 1}, {"x QUAKED", 2}, {"QUAKED ", 1}, {"xQUAKED\n", 2}, {"", 2}};
  for (const auto& [text, result] : cases) {
    EXPECT_EQ(Reading(text).reader.FindWord("QUAKED"), result) << text;
  }
}

TEST(TextReader, ReadBytesCrossesWindowsAndGivesZerosBeyondTheEnd) {
  const std::string text = LongText(95);
  Reading reading(text, 10);
  reading.reader.GetChar();
  std::string bytes(100, '?');
  reading.reader.ReadBytes(bytes.data(), 100);
  EXPECT_EQ(bytes, text.substr(1) + std::string(6, '\0'));
  EXPECT_EQ(reading.reader.Offset(), 101u);
}

TEST(TextReader, EveryKindOfLineEndCountsOnce) {
  for (const std::string end : {"\n", "\r\n", "\r"}) {
    Reading reading("one" + end + "two" + end + end + "four", 10);
    std::vector<unsigned> lines;
    while (!reading.reader.AtEof()) {
      if (reading.reader.PeekChar() >= 'a') lines.push_back(reading.reader.LineNumber());
      reading.reader.GetChar();
    }
    EXPECT_EQ(lines, (std::vector<unsigned>{1, 1, 1, 2, 2, 2, 4, 4, 4, 4}));
    reading.reader.SeekTo(0);
    EXPECT_EQ(reading.reader.LineNumber(), 1u);
    EXPECT_EQ(reading.Rest(), "one" + end + "two" + end + end + "four");
  }
}

TEST(TextReader, AFileThatShrinksWhileItIsReadIsReportedOnceAndReadsAsZeros) {
  Reading reading(std::string(1000, 'x'), 10);
  reading.dir.Write("text", "");
  std::string token;
  while (!reading.reader.AtEof()) reading.reader.ReadToken(token, 50);
  ASSERT_EQ(reading.recorder.messages.size(), 1u);
  EXPECT_NE(reading.recorder.messages[0].text.find("ReadFile"), std::string::npos);

  // A reader that is opened again knows nothing of the file before.
  reading.reader.Open(reading.dir.Write("text", std::string(1000, '\0')), 10);
  EXPECT_TRUE(reading.reader.HasZeroBytes());
  reading.reader.Open(reading.dir.Write("text", std::string(5, '\0') + std::string(100, 'x')), 10);
  while (!reading.reader.AtEof()) reading.reader.ReadToken(token, 50);
  EXPECT_TRUE(reading.reader.HasZeroBytes()) << "in the first of several windows";
  reading.reader.Open(reading.dir.Write("text", std::string(1000, 'x')), 10);
  EXPECT_FALSE(reading.reader.HasZeroBytes());
  reading.dir.Write("text", "");
  while (!reading.reader.AtEof()) reading.reader.ReadToken(token, 50);
  EXPECT_EQ(reading.recorder.messages.size(), 2u);
}

}  // namespace
}  // namespace ferrowand
