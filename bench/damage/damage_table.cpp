// What damage costs a map: every byte of a small map flipped in every bit, and random damage of
// each kind to the maps of the folder FERROWAND_CORPUS, in both formats. A row a kind: the tries,
// the most objects that one try lost (the one that was hit is one of them), the most brushes that
// are with other owners, the most boxes of one kind and summaries of one load, and the tries in
// which there were fewer objects and nothing was said.
//
//     ferrowand_damage TRIES SMALL_MAP
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

#include "base/text_reader.h"
#include "program.h"
#include "support/damage.h"
#include "support/temp_dir.h"

namespace ferrowand::bench {
namespace {

enum class Damage { Flip, Cut, DropLine, DoubleLine, DropBrace, DoubleBrace };
constexpr const char* DAMAGE_NAMES[] = {"flip",         "cut",           "line dropped",
                                        "line doubled", "brace dropped", "brace doubled"};

bool IsBrace(char c) {
  return c == '{' || c == '}';
}

std::size_t StartOfLine(const std::string& text, std::size_t place) {
  return place == 0 ? 0 : text.rfind('\n', place - 1) + 1;
}

// The text with one damage at a random place.
std::string Damaged(const std::string& text, Damage damage, std::mt19937& random) {
  std::size_t place = random() % text.size();
  std::string damaged = text;
  if (damage == Damage::Flip) {
    damaged[place] = static_cast<char>(damaged[place] ^ (1 << random() % 8));
    return damaged;
  }
  if (damage == Damage::Cut) return text.substr(0, place);
  if (damage == Damage::DropBrace || damage == Damage::DoubleBrace) {
    while (!IsBrace(text[place])) place = (place + 1) % text.size();
  }
  const std::size_t start = StartOfLine(text, place);
  const std::size_t length = text.find('\n', place) + 1 - start;
  const bool drops = damage == Damage::DropLine || damage == Damage::DropBrace;
  return drops ? damaged.erase(start, length) : damaged.insert(start, text.substr(start, length));
}

struct Row {
  std::size_t tries = 0, lost = 0, beyondOne = 0, scattered = 0, boxes = 0, summaries = 0,
              silent = 0;
};

class Survey {
 public:
  explicit Survey(const std::string& folder) : game_(reporter_, progress_) {
    game_.searchPath.Add(folder);
    game_.searchPath.Add(folder + "/");
  }

  std::unique_ptr<Map> Read(const std::string& text) {
    recorder_.messages.clear();
    TextReader reader(reporter_);
    reader.OpenText(text);
    auto map = std::make_unique<Map>(game_);
    unsigned flags = 0;
    do flags = map->ReadMap(reader, flags);
    while (map->readProgress() != 0);
    return map;
  }

  void Try(const Objects& whole, const std::string& damaged, std::size_t gone, Row& row) {
    const auto map = Read(damaged);
    const Objects left(*map);
    const Boxes boxes(recorder_);
    ++row.tries;
    const std::size_t missing = whole.LostIn(left);
    const std::size_t lost = missing - std::min(missing, gone);
    row.beyondOne += lost > 1;
    row.lost = std::max(row.lost, lost);
    row.scattered = std::max(row.scattered, whole.ScatteredIn(left));
    row.boxes = std::max(row.boxes, boxes.mostOfAKind);
    row.summaries = std::max(row.summaries, boxes.summaries);
    row.silent += left.Count() < whole.Count() && recorder_.messages.empty();
  }

  static void Print(const std::string& name, const Row& row) {
    std::printf(
        "%-28s %7zu tries, most lost %3zu (more than one: %zu), elsewhere %3zu, boxes %zu, "
        "summaries %zu, silent %zu\n",
        name.c_str(), row.tries, row.lost, row.beyondOne, row.scattered, row.boxes, row.summaries,
        row.silent);
    std::fflush(stdout);
  }

 private:
  MessageRecorder recorder_;
  Reporter reporter_{recorder_};
  LoadProgress progress_;
  GameData game_;
};

void FlipEveryBit(Survey& survey, const std::string& name, const std::string& text) {
  const auto map = survey.Read(text);
  const Objects whole(*map);
  Row row;
  for (std::size_t place = 0; place < text.size(); ++place) {
    for (int bit = 0; bit < 8; ++bit) {
      std::string damaged = text;
      damaged[place] = static_cast<char>(damaged[place] ^ (1 << bit));
      survey.Try(whole, damaged, 0, row);
    }
  }
  Survey::Print("every bit, " + name, row);
}

// Objects whose closing brace is there.
std::size_t ClosedIn(const std::string& text) {
  std::size_t closed = 0;
  for (std::size_t at = text.find('}'); at != text.npos; at = text.find('}', at + 1)) ++closed;
  return closed;
}

void DamageAll(Survey& survey, const std::vector<std::string>& texts, const std::string& name,
               std::size_t tries) {
  std::mt19937 random(1);
  std::vector<std::unique_ptr<Map>> maps;
  for (const std::string& text : texts) maps.push_back(survey.Read(text));
  for (const Damage damage : {Damage::Flip, Damage::DropLine, Damage::DoubleLine, Damage::DropBrace,
                              Damage::DoubleBrace, Damage::Cut}) {
    Row row;
    for (std::size_t i = 0; i < texts.size(); ++i) {
      const Objects whole(*maps[i]);
      for (std::size_t t = 0; t < tries / texts.size(); ++t) {
        const std::string damaged = Damaged(texts[i], damage, random);
        // What lies behind a cut is gone.
        const std::size_t gone =
            damage == Damage::Cut ? whole.Count() - std::min(whole.Count(), ClosedIn(damaged)) : 0;
        survey.Try(whole, damaged, gone, row);
      }
    }
    Survey::Print(std::string(DAMAGE_NAMES[static_cast<int>(damage)]) + ", " + name, row);
  }
}

int Run(int argc, char** argv) {
  const std::size_t tries = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 3000;
  const char* corpus = std::getenv("FERROWAND_CORPUS");
  Survey survey(corpus ? corpus : "");
  if (argc > 2) {
    const std::string small = FileText(argv[2]);
    FlipEveryBit(survey, "map", small);
    const auto map = survey.Read(small);
    FlipEveryBit(survey, "xmp", map->ExtendedText({}));
  }
  std::vector<std::string> quake, extended;
  for (const auto& path : CorpusMaps()) {
    quake.push_back(FileText(path));
    extended.push_back(survey.Read(quake.back())->ExtendedText({}));
  }
  if (quake.empty()) return 0;
  DamageAll(survey, quake, "map", tries);
  DamageAll(survey, extended, "xmp", tries);
  return 0;
}

}  // namespace
}  // namespace ferrowand::bench

int main(int argc, char** argv) {
  return ferrowand::bench::Run(argc, argv);
}
