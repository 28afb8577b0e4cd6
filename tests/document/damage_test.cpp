// Damaged files: cut at every place, and with every byte changed. Nothing may crash or repeat
// itself, and what stood before the damage must still be there.
#include <fstream>
#include <iterator>
#include <random>
#include <set>

#include "document/document_fixture.h"
#include "operations/brush_check.h"

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

Counts CountIn(const Map& map) {
  Counts counts;
  for (const Brush* brush : BrushesIn(map)) {
    ++counts.entities;
    counts.faces += static_cast<std::size_t>(brush->getNumFaces());
  }
  return counts;
}

class DamageTest : public DocumentTest {
 protected:
  void Check(const std::string& text, std::size_t place) {
    recorder.messages.clear();
    const auto map = ReadText(text);
    ASSERT_NE(map, nullptr);
    std::set<std::string> kinds;
    for (const Message& message : recorder.messages) {
      if (message.title == "Parsing Error") {
        EXPECT_TRUE(kinds.insert(message.text.substr(0, 20)).second) << message.text;
      }
    }
    const Counts expected = CountBefore(text, place);
    EXPECT_GE(CountIn(*map).entities, expected.entities);
    EXPECT_GE(CountIn(*map).faces, expected.faces);

    QuakeText(*map);
    const auto again = ReadText(ExtendedText(*map));
    EXPECT_GE(CountIn(*again).entities, expected.entities);
    // What cannot be written in whole units is known beforehand; everything else comes back.
    const auto saved = BrushesIn(*map), read = BrushesIn(*again);
    ASSERT_EQ(read.size(), saved.size());
    for (std::size_t i = 0; i < saved.size(); ++i) {
      if (!SurvivesSaving(*saved[i], reporter)) continue;
      EXPECT_EQ(read[i]->getNumFaces(), saved[i]->getNumFaces());
    }
  }
};

TEST_F(DamageTest, WhatStoodBeforeTheDamageIsStillThere) {
  constexpr char NASTY[] = {'\0', '"', '{', '}', '(', '/', '-', 'x', '9', ' ', '\n', '\xff'};
  std::mt19937 random(11);
  std::ifstream file(FERROWAND_TEST_DATA "/one_of_each.xmp", std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  ASSERT_FALSE(text.empty());
  for (std::size_t place = 0; place < text.size() && !HasFailure(); ++place) {
    SCOPED_TRACE(place);
    Check(text.substr(0, place), place);
    if (place % 2 != 0) continue;
    std::string changed = text;
    changed[place] = NASTY[random() % std::size(NASTY)];
    Check(changed, place);
  }
}

}  // namespace
}  // namespace ferrowand
