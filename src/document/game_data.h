// What the maps of one running program share: palette, WADs, entity classes, what is shown of them,
// and the way to the user. One is made by the program's entry and outlives every map.
#pragma once

#include <string>

#include "base/path_text.h"
#include "base/progress.h"
#include "base/report.h"
#include "document/classes/class_set.h"
#include "document/reach.h"
#include "gamedata/palette.h"
#include "gamedata/wad_library.h"

namespace ferrowand {

struct GameData {
  GameData(Reporter& reporter_, LoadProgress& progress_)
      : reporter(reporter_),
        progress(progress_),
        wads(searchPath, palette, reporter, progress),
        classes(searchPath, reporter, progress) {}

  Reporter& reporter;
  LoadProgress& progress;
  SearchPath searchPath;
  ShownKinds shown;
  Palette palette;
  WadLibrary wads;
  ClassLibrary classes;
  std::string action;  // of the user, under way; empty for none
};

}  // namespace ferrowand
