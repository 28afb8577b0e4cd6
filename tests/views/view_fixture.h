// A view of 400 x 300 pixels of a small map, without a tool.
#pragma once

#include <gtest/gtest.h>

#include "support/fake_view_host.h"
#include "support/small_map.h"
#include "views/map_view.h"

namespace ferrowand {

class ViewTest : public testing::Test {
 protected:
  // So many units a pixel, and what is in the upper left corner.
  void Place(float scale, int u, int v) {
    view.transform.scaleu = scale;
    view.transform.scalev = -scale;
    view.transform.originu = static_cast<std::int16_t>(u);
    view.transform.originv = static_cast<std::int16_t>(v);
  }

  SmallMap small;
  Options options;
  Tool* tool = nullptr;
  ViewList list;
  FakeViewHost host;
  MapView view{small.map, host, list, options, tool};
};

}  // namespace ferrowand
