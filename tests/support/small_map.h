// A new map for tests, and quick ways to put things into it.
#pragma once

#include <initializer_list>
#include <memory>
#include <utility>

#include "document/classes/entity_class.h"
#include "document/map.h"
#include "support/recorder.h"

namespace ferrowand {

struct SmallMap {
  MessageRecorder sink;
  Reporter reporter{sink};
  LoadProgress progress;
  GameData data{reporter, progress};
  Map map{data};

  using Keys = std::initializer_list<std::pair<const char*, const char*>>;

  // At the parent itself, or in the map's current layer.
  entity& Add(Keys keys, entity* parent = nullptr) {
    auto made = std::make_unique<entity>(*map.classSet);
    for (const auto& [name, value] : keys) made->SetKey(name, value);
    return *(parent ? parent : &map)->AddChild(std::move(made));
  }

  entity& AddCuboid(const Vec3& mins, const Vec3& maxs, entity* parent = nullptr) {
    auto made = std::make_unique<entity>(*map.classSet);
    made->SetKey("classname", "brush");
    for (int axis = 0; axis < 3; ++axis) {
      Vec3 across(0, 0, 0), up(0, 0, 0);
      across[(axis + 1) % 3] = up[(axis + 2) % 3] = 16;
      made->brush.AddFace(maxs + across, maxs, maxs + up);
      made->brush.AddFace(mins + up, mins, mins + across);
    }
    made->brush.Rebuild(reporter);
    return *(parent ? parent : &map)->AddChild(std::move(made));
  }
};

}  // namespace ferrowand
