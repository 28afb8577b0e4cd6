// What the tests of the game data share.
#pragma once

#include <gtest/gtest.h>

#include "base/path_text.h"
#include "base/progress.h"
#include "gamedata/palette.h"
#include "support/recorder.h"
#include "support/temp_dir.h"

namespace ferrowand {

class GameDataTest : public testing::Test {
 protected:
  TempDir dir;
  MessageRecorder recorder;
  Reporter reporter{recorder};
  SearchPath path;
  Palette palette;
};

}  // namespace ferrowand
