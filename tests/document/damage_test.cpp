// Of a damaged map everything that stood before the damage is still there, and what was read can be
// written and read again.
#include <random>
#include <set>

#include "document/document_fixture.h"
#include "operations/brush_check.h"
#include "support/damage.h"
#include "support/temp_dir.h"

namespace ferrowand {
namespace {

struct Counts {
  std::size_t entities = 0;
  std::size_t faces = 0;
};

// In the brushes that are closed before the place, one face a line.
Counts CountBefore(const std::string& text, std::size_t place) {
  Counts counts;
  std::size_t open = 0;
  for (std::size_t at = 0; at < place; ++at) {
    const bool lineStart = at > 0 && text[at - 1] == '\n';
    if (lineStart && text.compare(at, 3, "\t\t(") == 0) ++open;
    if (lineStart && text[at] == '{') ++counts.entities;
    if (lineStart && text[at] == '}') counts.faces += std::exchange(open, 0);
  }
  return counts;
}

std::vector<const Brush*> BrushesIn(const Map& map) {
  std::vector<const Brush*> brushes;
  ForEachEntity(map, [&](const entity& e) { brushes.push_back(&e.brush); });
  return brushes;
}

class DamageTest : public DocumentTest {
 protected:
  void Check(const std::string& damaged, std::size_t place) {
    recorder.messages.clear();
    const auto map = ReadText(damaged);
    ASSERT_NE(map, nullptr);
    std::set<std::string> kinds;
    for (const Message& message : recorder.messages) {
      if (message.title == "Parsing Error") {
        EXPECT_TRUE(kinds.insert(message.text.substr(0, 20)).second) << message.text;
      }
    }
    QuakeText(*map);
    const auto again = ReadText(ExtendedText(*map));
    const auto first = BrushesIn(*map), read = BrushesIn(*again);
    const Counts expected = CountBefore(damaged, place);
    std::size_t faces = 0;
    for (const Brush* brush : first) faces += static_cast<std::size_t>(brush->getNumFaces());
    EXPECT_GE(first.size(), expected.entities);
    EXPECT_GE(faces, expected.faces);
    ASSERT_EQ(read.size(), first.size());
    // What cannot be written in whole units is known beforehand; everything else comes back.
    for (std::size_t i = 0; i < first.size(); ++i) {
      if (!SurvivesSaving(*first[i], reporter)) continue;
      EXPECT_EQ(read[i]->getNumFaces(), first[i]->getNumFaces());
    }
  }

  void CheckCost(const Objects& whole, const std::string& damaged) {
    recorder.messages.clear();
    const auto map = ReadText(damaged);
    const Objects left(*map);
    const Boxes boxes(recorder);
    EXPECT_LE(whole.LostIn(left), 1u) << damaged;
    EXPECT_LE(boxes.mostOfAKind, 1u) << damaged;
    EXPECT_LE(boxes.summaries, 1u) << damaged;
    EXPECT_TRUE(left.Count() >= whole.Count() || map->readWithLoss()) << damaged;
  }

  const std::string text = FileText(FERROWAND_TEST_DATA "/one_of_each.xmp");
};

TEST_F(DamageTest, WhatStoodBeforeTheDamageIsStillThere) {
  constexpr char NASTY[] = {'\0', '"', '{', '}', '(', '/', '-', 'x', '9', ' ', '\n', '\xff'};
  std::mt19937 random(11);
  for (std::size_t place = 0; place < text.size() && !HasFailure(); ++place) {
    SCOPED_TRACE(place);
    Check(text.substr(0, place), place);
    if (place % 2 != 0) continue;
    std::string changed = text;
    changed[place] = NASTY[random() % std::size(NASTY)];
    Check(changed, place);
  }
}

// Of every third byte one bit, and every line away or twice, in either format.
TEST_F(DamageTest, AtMostTheObjectThatIsHitIsLost) {
  const std::string quake = FileText(FERROWAND_TEST_DATA "/organised.map");
  const auto original = ReadText(quake);
  std::mt19937 random(5);
  for (const std::string& text : {quake, ExtendedText(*original)}) {
    const Objects whole(*ReadText(text));
    for (std::size_t place = 0; place < text.size() && !HasFailure(); ++place) {
      if (place % 3 == 0) {
        std::string damaged = text;
        damaged[place] = static_cast<char>(damaged[place] ^ (1 << random() % 8));
        CheckCost(whole, damaged);
      }
      if (text[place] != '\n') continue;
      const std::size_t end = text.find('\n', place + 1);
      if (end == text.npos) continue;
      CheckCost(whole, std::string(text).erase(place, end - place));
      CheckCost(whole, std::string(text).insert(place, text.substr(place, end - place)));
    }
  }
}

// Nor does any flood of damage take more than its length.
TEST_F(DamageTest, FloodsOfAPieceEnd) {
  for (const std::string piece : {"{", "}", "(", "\"", "/", "//", "{(", "{}", "\"\"", "a"}) {
    std::string flood = text.substr(0, text.size() / 2);
    while (flood.size() < 100'000) flood += piece;
    Check(flood, text.size() / 2);
  }
}

}  // namespace
}  // namespace ferrowand
