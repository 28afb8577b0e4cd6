// What a running program has around its maps, with nobody there to be told anything.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "document/game_data.h"

namespace ferrowand::bench {

class QuietSink : public MessageSink {
 public:
  Answer Show(const Message& message) override {
    return message.buttons == Buttons::Ok ? Answer::Ok : Answer::No;
  }
  void Beep() override {}
  void FatalExit(const std::string&) override {}
  void Exit(int) override {}
};

struct Program {
  // Game data is looked for in `folder`, then in what ships with the program.
  explicit Program(const std::string& folder) {
    if (!folder.empty()) data.searchPath.Add(folder);
    data.searchPath.Add(FERROWAND_DATA);
    data.palette.Load(data.searchPath, {}, reporter);
    data.wads.LoadDefault("quake.wad");
    data.classes.LoadDefault("ents.qc");
  }

  QuietSink sink;
  Reporter reporter{sink};
  LoadProgress progress;
  GameData data{reporter, progress};
};

// The real maps to measure on: those of the folder FERROWAND_CORPUS, by name; none without it.
inline std::vector<std::filesystem::path> CorpusMaps() {
  std::vector<std::filesystem::path> maps;
  const char* folder = std::getenv("FERROWAND_CORPUS");
  if (!folder) return maps;
  for (const auto& file : std::filesystem::directory_iterator(folder)) {
    if (file.path().extension() == ".map") maps.push_back(file.path());
  }
  std::ranges::sort(maps);
  return maps;
}

}  // namespace ferrowand::bench
