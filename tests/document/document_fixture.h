// What the tests of the document share: game data without files, and maps from text.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "base/text_reader.h"
#include "document/classes/special_classes.h"
#include "document/map.h"
#include "support/map_text.h"
#include "support/recorder.h"
#include "support/temp_dir.h"

namespace ferrowand {

class DocumentTest : public testing::Test {
 protected:
  DocumentTest() {
    data.searchPath.Add("");  // the name alone, wherever the tests are started
  }

  void LoadShippedClasses() {
    data.searchPath.Add(FERROWAND_DATA);
    data.classes.LoadDefault("ents.qc");
  }
  std::unique_ptr<Map> ReadText(const std::string& text) {
    return LoadMap(data, temp.Write("input.xmp", text));
  }

  const entity* FindNamed(const entity& tree, const std::string& name) {
    const entity* found = nullptr;
    ForEachEntity(tree, [&](const entity& e) {
      const char* value = e.GetKey("XMPentityname");
      if (!found && value && name == value) found = &e;
    });
    return found;
  }

  MessageRecorder recorder;
  Reporter reporter{recorder};
  LoadProgress progress;
  GameData data{reporter, progress};
  TempDir temp;
};

}  // namespace ferrowand
